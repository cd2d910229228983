// A clip 0x2628, offsets from its 'Z': u32 count n of the name at 9, text at 13, behind it the
// three-point header of the clip. An audio clip's stands at the head of a region 0x2629; those of
// clip groups, MIDI and video stand elsewhere.
#include "session/freeze_renders.hpp"

#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t least_size = 12;
constexpr std::uint32_t largest_size = 4000;

constexpr std::size_t name_count_at = 9;
constexpr std::size_t name_at = 13;
constexpr std::size_t max_render_name_bytes = 200;
constexpr std::size_t widest_number = 5;
constexpr std::size_t widest_start = 8;  // the top byte marks ticks and is no part of the number
constexpr std::uint64_t start_bits = (std::uint64_t{1} << 8 * position_width) - 1;
constexpr std::size_t widest_gap = 8;

/// The name without a '-' and the digits behind it; nullopt where it does not end so.
std::optional<std::string_view> without_number(std::string_view name) {
    const auto last = name.find_last_not_of("0123456789");
    const bool numbered = last != std::string_view::npos && last + 1 < name.size();
    if (!numbered || name[last] != '-') return std::nullopt;
    return name.substr(0, last);
}

bool is_of_region(const BlockIndex& index, const Block& clip) {
    const Block* region =
        clip.at < block_payload_at ? nullptr : index.at(clip.at - block_payload_at);
    return region != nullptr && region->content_type == block_type::audio_region &&
           clip.end() <= region->end();
}

FreezeRender read_render(ByteView image, const Block& clip, std::string_view name) {
    FreezeRender render{.name = std::string(name)};
    const auto point = readThreePoint(image, clip.at + name_at + name.size(), clip.end());
    if (!point) return render;
    if (point->first_width > widest_number || point->second_width > widest_number) return render;
    if (point->third_width > widest_start || point->gap_width > widest_gap) return render;
    render.source_offset = static_cast<double>(point->source_offset);
    render.length = static_cast<double>(point->length);
    render.start = static_cast<double>(point->start & start_bits);
    return render;
}

}  // namespace

FreezeRenders readFreezeRenders(const BlockIndex& index, std::span<const std::string> track_names) {
    const ByteView image = index.image();
    FreezeRenders renders;
    for (const auto& name : track_names) renders.try_emplace(name);
    for (const Block& clip : index.of_type(block_type::clip).all()) {
        if (clip.size < least_size || clip.size > largest_size) continue;
        if (!is_of_region(index, clip)) continue;
        const auto name =
            readCountedText(image, clip.at + name_count_at, max_render_name_bytes, clip.end());
        if (!name || name->empty()) continue;
        // Two tracks can claim one clip: "Gtr-03" is a track's own name and a render of "Gtr".
        for (const auto track : {name, without_number(*name)}) {
            if (!track) continue;
            const auto found = renders.find(*track);
            if (found != renders.end()) found->second.push_back(read_render(image, clip, *name));
        }
    }
    std::erase_if(renders, [](const auto& entry) { return entry.second.empty(); });
    return renders;
}

}  // namespace tanrove
