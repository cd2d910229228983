// Values that follow from clips alone: what their names say, where they snap and in which order
// they start.
#include "timeline/clip_item.hpp"

#include <algorithm>
#include <utility>

namespace tanrove {

namespace {

constexpr std::uint32_t max_head_samples = 63;

char lower_cased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

double snap_offset(const ClipItem& clip) {
    return clip.sync_offset > 0 && clip.sync_offset < clip.length ? clip.sync_offset : 0;
}

std::uint32_t offset_in_samples(std::int64_t offset) {
    constexpr std::int64_t most = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp<std::int64_t>(offset, 0, most));
}

bool begins_with_its_file(const ClipItem& clip) {
    return clip.source_offset_samples <= max_head_samples && !ends_in_edit_number(clip.name);
}

// Most tracks are stored in order. Clips are large: the others sort numbers and move each once.
void order_by_start(std::vector<ClipItem>& clips) {
    if (std::ranges::is_sorted(clips, {}, &ClipItem::start)) return;
    std::vector<std::pair<double, std::size_t>> order;
    order.reserve(clips.size());
    for (std::size_t i = 0; i < clips.size(); ++i) order.emplace_back(clips[i].start, i);
    std::ranges::sort(order);
    std::vector<ClipItem> ordered;
    ordered.reserve(clips.size());
    for (const auto& [start, number] : order) ordered.push_back(std::move(clips[number]));
    clips = std::move(ordered);
}

std::string_view without_folder(std::string_view path) {
    std::size_t begin = path.size();
    while (begin > 0 && path[begin - 1] != '/' && path[begin - 1] != '\\') --begin;
    return path.substr(begin);
}

std::string ClipItem::file_kind() const {
    const auto dot = file.rfind('.');
    if (dot == std::string_view::npos) return {};
    std::string kind(file.substr(dot + 1));
    for (char& c : kind) c = lower_cased(c);
    return kind;
}

bool ends_in_edit_number(std::string_view name) {
    const auto last_other = name.find_last_not_of("0123456789");
    return last_other != std::string_view::npos && last_other + 1 < name.size() &&
           name[last_other] == '-';
}

}  // namespace tanrove
