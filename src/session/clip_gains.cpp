// Clip gain table 0x2637, offsets from its 'Z': u32 number of entries at 9, the entries from 13.
// Entry, offsets from its first byte:
//   4       u32 length L, 14 and a multiple of 8; the entry ends at 8 + L
//   10      u32 number of points, which L must agree with
//   22      points: u32 position, f32 gain in dB
//
// A clip's 0x2628 block holds the u32 number of its entry. In the plain form those are the block's
// last four bytes. Else they are found by the marker at c: u32 0x0004ffff, with a u32 4 at c + 4
// (in some at c + 8). They stand at c + 27 if the block goes on behind them; and where a block
// stands at c + 10 (a warp map), 17 bytes behind its end.
#include "session/clip_gains.hpp"

#include <algorithm>
#include <optional>
#include <string_view>

#include "session/clip_names.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t gain_table_type = 0x2637;
constexpr std::size_t entry_count_at = 9;
constexpr std::size_t first_entry_at = 13;
constexpr std::uint32_t max_entries = 100000;

// Fields of an entry.
constexpr std::size_t entry_length_at = 4;
constexpr std::size_t entry_head = 8;  // bytes that the length does not count
constexpr std::size_t point_count_at = 10;
constexpr std::size_t points_at = 22;
constexpr std::size_t length_without_points = 14;
constexpr std::size_t point_width = 8;
constexpr std::size_t point_gain_at = 4;

// A gain at or beyond these is no gain.
constexpr double gain_floor_db = -145.0;
constexpr double gain_ceiling_db = 37.0;

// The place of a clip's entry number.
constexpr std::uint32_t least_clip_size = 8;
constexpr std::uint32_t largest_plain_size = 39;
constexpr std::size_t number_width = 4;
constexpr std::string_view marker("\xff\xff\x04\x00", 4);
constexpr std::uint32_t marker_number = 4;
constexpr std::size_t first_marker_at = 13;
constexpr std::size_t number_behind_marker = 27;
constexpr std::size_t child_behind_marker = 10;
constexpr std::size_t number_behind_child = 17;

ClipGainEntry read_entry(ByteView image, std::size_t at, std::size_t count) {
    ClipGainEntry entry;
    entry.reserve(std::max<std::size_t>(count, 1));
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = at + points_at + i * point_width;
        const double gain = static_cast<double>(image.f32(point + point_gain_at));
        const bool is_gain = gain > gain_floor_db && gain < gain_ceiling_db;
        entry.push_back({static_cast<double>(image.u32(point)), is_gain ? gain : 0});
    }
    if (entry.empty()) entry.push_back({});
    return entry;
}

void read_table(const BlockIndex& index, ClipGainLines& gains) {
    const auto tables = index.of_type(gain_table_type).all();
    if (tables.empty()) return;
    const ByteView image = index.image();
    const Block& table = tables.front();
    const std::uint32_t count = image.u32(table.at + entry_count_at);
    if (count > max_entries) return;
    std::size_t at = table.at + first_entry_at;
    for (std::uint32_t i = 0; i < count && at + entry_head <= table.end(); ++i) {
        const std::size_t length = image.u32(at + entry_length_at);
        const bool is_entry = length >= length_without_points &&
                              length % point_width == length_without_points % point_width;
        if (!is_entry || length > table.end() - at - entry_head) return;
        const std::size_t points = (length - length_without_points) / point_width;
        if (image.u32(at + point_count_at) != points) ++gains.count_disagreements;
        gains.entries.push_back(read_entry(image, at, points));
        at += entry_head + length;
    }
}

/// Every place of the marker, in order: found once, since clips can hold clips.
std::vector<std::size_t> find_markers(ByteView image, const BlockList& clips) {
    auto markers = find_in(image, clips.reach(), marker);
    std::erase_if(markers, [&](std::size_t c) {
        return image.u32(c + 4) != marker_number && image.u32(c + 8) != marker_number;
    });
    return markers;
}

std::size_t number_place_by_marker(ByteView image, std::size_t c, std::size_t end,
                                   std::size_t plain_place) {
    std::size_t place = plain_place;
    if (c + number_behind_marker + number_width < end) place = c + number_behind_marker;
    const std::size_t child = c + child_behind_marker;
    if (isBlockAt(image, child, end)) {
        const std::size_t child_end = child + block_size_base + image.u32(child + block_size_at);
        const std::size_t behind = child_end + number_behind_child;
        if (behind + number_width <= end) place = behind;
    }
    return place;
}

/// Where the clip's entry number stands; nullopt for a block too small to hold one.
std::optional<std::size_t> number_place(ByteView image, const Block& clip,
                                        const std::vector<std::size_t>& markers) {
    if (clip.size < least_clip_size) return std::nullopt;
    const std::size_t plain_place = clip.end() - number_width;
    if (clip.size <= largest_plain_size) return plain_place;
    const auto behind = std::upper_bound(markers.begin(), markers.end(), plain_place);
    if (behind == markers.begin() || *(behind - 1) < clip.at + first_marker_at) return plain_place;
    return number_place_by_marker(image, *(behind - 1), clip.end(), plain_place);
}

/// Calls `use(name, entry number)` for every clip with an entry, in image order.
template <typename Use>
void for_each_clip(const BlockIndex& index, std::size_t entry_count, Use use) {
    if (entry_count == 0) return;
    const ByteView image = index.image();
    const BlockList& clips = index.of_type(clip_name_type);
    const auto markers = find_markers(image, clips);
    for (const Block& clip : clips.all()) {
        const auto place = number_place(image, clip, markers);
        if (!place) continue;
        const std::size_t number = image.u32(*place);
        if (number >= entry_count) continue;
        if (const auto name = read_clip_name(image, clip)) use(std::string(*name), number);
    }
}

}  // namespace

ClipGainLines readClipGains(const BlockIndex& index) {
    ClipGainLines gains;
    read_table(index, gains);
    for_each_clip(index, gains.entries.size(), [&](const std::string& clip, std::size_t number) {
        if (gains.entries[number].size() >= 2) gains.entry_of_clip[clip] = number;
    });
    return gains;
}

std::map<std::string, double> readFirstClipGains(const BlockIndex& index) {
    ClipGainLines table;
    read_table(index, table);
    std::map<std::string, double> gains;
    for_each_clip(index, table.entries.size(), [&](const std::string& clip, std::size_t number) {
        gains[clip] = table.entries[number].front().gain_db;
    });
    return gains;
}

}  // namespace tanrove
