// Clip gain table 0x2637, offsets from its 'Z': u32 number of entries at 9, the entries from 13. An
// entry is a record of events whose values are f32, gains in dB; its points are all of its events.
// One that does not close is read by its length alone, offsets from its first byte:
//   4       u32 length L, 14 and a multiple of 8; the entry ends at 8 + L
//   10      u32 number of points, which L must agree with
//   22      points: u32 position, f32 gain in dB
//
// A clip's 0x2628 block holds the u32 number of its entry behind the marker at c, u32 0x0004ffff:
//   c + 4   u16 4, u32 N, N blocks, 17 bytes, the number, which is mostly the block's end
// In another form a u32 4 stands at c + 8; there the number is at c + 27 if the block goes on
// behind it, or 17 bytes behind a block at c + 10. Without a marker the block's last four bytes are
// it.
#include "session/clip_gains.hpp"

#include <algorithm>
#include <optional>
#include <string_view>

#include "session/automation_events.hpp"
#include "session/block_types.hpp"
#include "session/clip_names.hpp"

namespace tanrove {

namespace {

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
constexpr std::size_t gain_width = 4;

// A gain at or beyond these is no gain.
constexpr double gain_floor_db = -145.0;
constexpr double gain_ceiling_db = 37.0;

// The place of a clip's entry number.
constexpr std::uint32_t least_clip_size = 8;
constexpr std::uint32_t largest_plain_size = 39;
constexpr std::size_t number_width = 4;
constexpr std::string_view marker("\xff\xff\x04\x00", 4);
constexpr std::size_t first_marker_at = 13;
constexpr std::uint32_t marker_number = 4;
constexpr std::size_t marker_number_at = 4;
constexpr std::size_t block_count_at = 6;
constexpr std::size_t blocks_behind_marker = 10;
constexpr std::uint32_t max_blocks = 4096;
constexpr std::size_t number_behind_blocks = 17;
constexpr std::size_t other_marker_number_at = 8;
constexpr std::size_t other_number_behind_marker = 27;

/// A gain out of the fader's reach reads as none.
double gain_db(ByteView image, std::size_t at) {
    const auto gain = static_cast<double>(image.f32(at));
    return gain > gain_floor_db && gain < gain_ceiling_db ? gain : 0;
}

ClipGainEntry entry_of_events(ByteView image, const EventRecord& record) {
    ClipGainEntry entry;
    entry.reserve(record.event_count);
    for_each_event(image, record, [&](double position, std::size_t value_at) {
        entry.push_back({position, gain_db(image, value_at)});
    });
    return entry;
}

ClipGainEntry entry_of_points(ByteView image, std::size_t at, std::size_t count) {
    ClipGainEntry entry;
    entry.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t point = at + points_at + i * point_width;
        entry.push_back(
            {static_cast<double>(image.u32(point)), gain_db(image, point + point_gain_at)});
    }
    return entry;
}

/// The entry at `at`, of this length; nullopt where the table breaks off.
std::optional<ClipGainEntry> read_entry(ByteView image, std::size_t at, std::size_t length,
                                        int& count_disagreements) {
    const std::size_t end = at + entry_head + length;
    const auto record = read_event_record(image, at, end, gain_width);
    if (record) return entry_of_events(image, *record);
    const bool is_entry = length >= length_without_points &&
                          length % point_width == length_without_points % point_width;
    if (!is_entry) return std::nullopt;
    const std::size_t points = (length - length_without_points) / point_width;
    if (image.u32(at + point_count_at) != points) ++count_disagreements;
    return entry_of_points(image, at, points);
}

void read_table(const BlockIndex& index, ClipGains& gains) {
    const auto tables = index.of_type(block_type::clip_gain_table).all();
    if (tables.empty()) return;
    const ByteView image = index.image();
    const Block& table = tables.front();
    const std::uint32_t count = image.u32(table.at + entry_count_at);
    if (count > max_entries) return;
    std::size_t at = table.at + first_entry_at;
    for (std::uint32_t i = 0; i < count && at + entry_head <= table.end(); ++i) {
        const std::size_t length = image.u32(at + entry_length_at);
        if (length > table.end() - at - entry_head) return;
        auto entry = read_entry(image, at, length, gains.count_disagreements);
        if (!entry) return;
        if (entry->empty()) entry->push_back({});
        gains.entries.push_back(std::move(*entry));
        at += entry_head + length;
    }
}

bool has_number(ByteView image, std::size_t c) {
    return image.u16(c + marker_number_at) == marker_number;
}

bool has_number_in_other_form(ByteView image, std::size_t c) {
    return image.u32(c + other_marker_number_at) == marker_number;
}

/// Every place of the marker, in order: found once, since clips can hold clips.
std::vector<std::size_t> find_markers(ByteView image, const BlockList& clips) {
    auto markers = find_in(image, clips.reach(), marker);
    std::erase_if(markers, [&](std::size_t c) {
        return !has_number(image, c) && !has_number_in_other_form(image, c);
    });
    return markers;
}

/// The number's place behind the blocks that the marker counts; nullopt if they do not fit.
std::optional<std::size_t> place_behind_blocks(ByteView image, std::size_t c, std::size_t end) {
    const std::uint32_t blocks = image.u32(c + block_count_at);
    if (blocks > max_blocks) return std::nullopt;
    std::size_t at = c + blocks_behind_marker;
    for (std::uint32_t i = 0; i < blocks; ++i) {
        if (!isBlockAt(image, at, end)) return std::nullopt;
        at += block_size_base + image.u32(at + block_size_at);
    }
    if (at + number_behind_blocks + number_width > end) return std::nullopt;
    return at + number_behind_blocks;
}

std::size_t place_in_other_form(ByteView image, std::size_t c, std::size_t end,
                                std::size_t plain_place) {
    std::size_t place = plain_place;
    if (c + other_number_behind_marker + number_width < end) {
        place = c + other_number_behind_marker;
    }
    const std::size_t child = c + blocks_behind_marker;
    if (isBlockAt(image, child, end)) {
        const std::size_t child_end = child + block_size_base + image.u32(child + block_size_at);
        const std::size_t behind = child_end + number_behind_blocks;
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
    const std::size_t c = *(behind - 1);
    if (has_number_in_other_form(image, c)) {
        return place_in_other_form(image, c, clip.end(), plain_place);
    }
    return place_behind_blocks(image, c, clip.end()).value_or(plain_place);
}

/// Gives the clips their entries, in image order: of those that share a name the last one counts.
void read_clips(const BlockIndex& index, ClipGains& gains) {
    if (gains.entries.empty()) return;
    const ByteView image = index.image();
    const BlockList& clips = index.of_type(block_type::clip);
    const auto markers = find_markers(image, clips);
    for (const Block& clip : clips.all()) {
        const ClipKind kind = clip_kind(index, clip);
        const auto place = number_place(image, clip, markers);
        if (kind == ClipKind::other || !place) continue;
        const std::size_t number = image.u32(*place);
        const auto name = read_clip_name(image, clip);
        if (number >= gains.entries.size() || !name) continue;
        NamedClipGains& named = kind == ClipKind::audio ? gains.audio : gains.groups;
        const ClipGainEntry& entry = gains.entries[number];
        named.fixed_db[std::string(*name)] = entry.front().gain_db;
        if (entry.size() >= 2) named.line_of_clip[std::string(*name)] = number;
    }
}

}  // namespace

ClipGains readClipGains(const BlockIndex& index) {
    ClipGains gains;
    read_table(index, gains);
    read_clips(index, gains);
    return gains;
}

}  // namespace tanrove
