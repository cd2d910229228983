// A display record 0x2015, one a strip, opens with a child block. With E the child's end:
//
//   E + 1   u8 shown
//   E + 6   u16 height in pixels
//   E + 8   u32 count of 0 to 65535 and the track's comment
//   ..      on audio tracks a 0x2104, on video tracks a 0x2105; i16 track colour at its end + 1
//   E + 23  i16 track colour on strips without such a child, moved by the comment's length
//   ..      in front of the colour u8 timebase, 1 samples, 2 ticks
//   ..      0x2434, behind it u32 row in the edit window; without that child, the last 4 bytes
//
// The u8 behind the record is solo safe. The other switches stand in the strip row: its 0x102d, at
// offset 9, holds the 0x2619; u8 soloed, u8 automation mode and u8 trim follow that. The row of a
// master fader has an audio row at offset 9, and that the 0x102d.
#include "session/track_displays.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"
#include "session/strip_table.hpp"

namespace tanrove {

namespace {

constexpr std::array<std::uint16_t, 2> row_holder_types = {block_type::strip_identity,
                                                           block_type::aux_row};

constexpr std::size_t shown_at = 1;  // these count from the first child's end
constexpr std::size_t height_at = 6;
constexpr std::size_t comment_length_at = 8;
constexpr std::size_t comment_at = 12;
constexpr std::size_t colour_at = 23;
constexpr std::size_t max_comment_bytes = 65535;

constexpr std::size_t row_width = 4;
constexpr std::size_t colour_width = 2;
constexpr std::int16_t no_colour = -2;
constexpr std::uint8_t sample_timebase = 1;
constexpr std::uint8_t tick_timebase = 2;

constexpr std::size_t automation_behind_name = 1;
constexpr std::size_t trim_behind_name = 2;
constexpr std::uint8_t automation_mode_count = 6;

std::optional<bool> read_switch(ByteView image, std::size_t at, std::size_t limit) {
    if (at >= limit || !image.holds(at, 1) || image.u8(at) > 1) return std::nullopt;
    return image.u8(at) == 1;
}

/// The comment of the record whose first child ends at `child_end`; empty where none is stored.
std::string_view comment_of(ByteView image, const Block& record, std::size_t child_end) {
    const auto comment =
        readCountedText(image, child_end + comment_length_at, max_comment_bytes, record.end());
    return comment.value_or(std::string_view());
}

std::int32_t display_row_of(const BlockIndex& index, const Block& record) {
    std::size_t at = record.end() - row_width;
    if (const Block* anchor = index.first_child(record, block_type::row_anchor)) {
        if (anchor->end() > at) return 0;
        at = anchor->end();
    }
    return at < record.payload() ? 0 : index.image().i32(at);
}

/// Where the record's colour stands; nullopt where it has none.
std::optional<std::size_t> colour_place(const BlockIndex& index, const Block& record) {
    const Block* child = index.first_child(record);
    if (child == nullptr) return std::nullopt;
    std::size_t at = child->end() + colour_at;
    const Block* mark = index.first_child(record, block_type::audio_colour_mark);
    if (mark == nullptr) mark = index.first_child(record, block_type::video_colour_mark);
    if (mark != nullptr && mark->end() > at) {
        at = mark->end() + 1;
    } else {
        at += comment_of(index.image(), record, child->end()).size();
    }
    if (at + colour_width > record.end()) return std::nullopt;
    return at;
}

std::optional<bool> read_timebase(const BlockIndex& index, const Block& record) {
    const auto colour = colour_place(index, record);
    const std::uint8_t timebase = colour ? index.image().u8(*colour - 1) : std::uint8_t{0};
    if (timebase != sample_timebase && timebase != tick_timebase) return std::nullopt;
    return timebase == tick_timebase;
}

/// `comment_budget` is what all comments together may still take: no more than the image has,
/// though records of a damaged one overlap.
TrackDisplay read_display(const BlockIndex& index, const Block& record,
                          std::size_t& comment_budget) {
    const ByteView image = index.image();
    TrackDisplay display;
    display.display_row = display_row_of(index, record);
    display.solo_safe = read_switch(image, record.end(), image.size());
    display.tick_based = read_timebase(index, record);
    const Block* child = index.first_child(record);
    if (child == nullptr || child->end() + comment_at >= record.end()) return display;
    display.shown = image.u8(child->end() + shown_at) != 0;
    display.height = image.u16(child->end() + height_at);
    const auto comment = comment_of(image, record, child->end());
    if (comment.size() > comment_budget) return display;
    comment_budget -= comment.size();
    display.comment = comment;
    return display;
}

/// Pairs rows and records by the strip table, whose order the records have: a row finds its own
/// place there by name.
void pair_by_name(const BlockIndex& index, std::span<const StripRow> rows,
                  std::span<const Block> records, std::vector<const Block*>& pairs) {
    const auto table = readStripTable(index);
    std::map<std::string_view, std::size_t> place_of_name;
    for (std::size_t i = 0; i < table.size(); ++i) place_of_name.emplace(table[i].name, i);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto place = place_of_name.find(shown_name(rows[i]));
        if (place == place_of_name.end() || place->second >= records.size()) continue;
        pairs[i] = &records[place->second];
    }
}

/// For each row its display record; nullptr for none. Where there are not as many records as rows,
/// a record goes with the row that it stands in, or behind in the 0x261c of an audio track or the
/// 0x261e of an aux.
std::vector<const Block*> pair_records(const BlockIndex& index, std::span<const StripRow> rows) {
    const BlockList& records = index.of_type(block_type::track_display);
    std::vector<const Block*> pairs(rows.size(), nullptr);
    if (rows.size() == records.all().size()) {
        for (std::size_t i = 0; i < rows.size(); ++i) pairs[i] = &records.all()[i];
        return pairs;
    }
    std::vector<std::size_t> starts;
    starts.reserve(rows.size());
    for (const StripRow& row : rows) starts.push_back(row.start);
    const auto holding = index.of_types(row_holder_types);
    const auto holders = smallest_enclosing(holding, starts);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::size_t end = holders[i] == nullptr ? rows[i].end : holders[i]->end();
        pairs[i] = records.first_inside(rows[i].start, end);
    }
    const bool none_found = std::ranges::all_of(pairs, [](auto pair) { return pair == nullptr; });
    if (none_found) pair_by_name(index, rows, records.all(), pairs);
    return pairs;
}

void read_switches(const BlockIndex& index, const StripRow& row, TrackDisplay& display) {
    const Block* attributes = index.at(row.start + block_payload_at);
    if (attributes != nullptr && attributes->content_type == block_type::audio_row) {
        attributes = index.at(attributes->payload());
    }
    if (attributes == nullptr || attributes->content_type != block_type::track_attributes) return;
    const Block* name = index.first_child(*attributes, block_type::strip_name);
    if (name == nullptr) return;
    const ByteView image = index.image();
    const std::size_t limit = attributes->end();
    display.soloed = read_switch(image, name->end(), limit);
    display.trim_mode = read_switch(image, name->end() + trim_behind_name, limit);
    const std::size_t mode_at = name->end() + automation_behind_name;
    if (mode_at < limit && image.u8(mode_at) < automation_mode_count) {
        display.automation_mode = static_cast<AutomationMode>(image.u8(mode_at));
    }
}

}  // namespace

std::vector<TrackDisplay> readTrackDisplays(const BlockIndex& index,
                                            std::span<const StripRow> rows) {
    const auto pairs = pair_records(index, rows);
    std::vector<TrackDisplay> displays(rows.size());
    std::size_t comment_budget = index.image().size();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (pairs[i] != nullptr) displays[i] = read_display(index, *pairs[i], comment_budget);
        read_switches(index, rows[i], displays[i]);
    }
    return displays;
}

std::vector<TrackColour> readTrackColours(const BlockIndex& index, std::span<const StripRow> rows) {
    const auto pairs = pair_records(index, rows);
    std::vector<TrackColour> colours;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto place = pairs[i] == nullptr ? std::nullopt : colour_place(index, *pairs[i]);
        const std::int16_t colour = place ? index.image().i16(*place) : no_colour;
        if (colour != no_colour) colours.push_back({shown_name(rows[i]), colour});
    }
    return colours;
}

bool is_track_palette_index(std::int16_t index) {
    // Two places between the palette's rows of 23 are not drawn.
    return index >= 25 && index <= 95 && index != 48 && index != 72;
}

}  // namespace tanrove
