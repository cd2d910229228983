// The session's frame rate and start, stored twice in one block (0x204d): first at the base rate,
// then at the rate itself, which may be a multiple of it. Pro Tools 12.8 ends the block behind the
// text of the day; sessions of 2019 have both. From the 'Z':
//
//   9       u8 code of the base rate
//   18      u32 session start in frames of the base rate
//   34      u32 count n and a text of n bytes, the length of a day ("24:00:00:00")
//   38 + n  u32 code of the rate itself
//   42 + n  u32 session start in frames of that rate
#include "session/timecode.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t min_timecode_size = 22;
constexpr std::size_t base_code_at = 9;
constexpr std::size_t base_start_at = 18;
constexpr std::size_t day_count_at = 34;
constexpr std::size_t day_at = 38;
constexpr std::size_t max_day_bytes = 64;
constexpr std::size_t extended_bytes = 8;

// Codes of the rates that sessions can have, the names that they go by, and the rate that stands in
// for each drop-frame rate that has no ruler in the project.
constexpr TimecodeInfo timecode_rows[] = {
    {9, 9, 1, "23.976", "23.976 fps", ""},
    {1, 1, 1, "24", "24 fps", ""},
    {2, 2, 1, "25", "25 fps", ""},
    {3, 3, 1, "29.97", "29.97 fps", ""},
    {5, 5, 1, "29.97 drop", "29.97 fps drop frame", ""},
    {7, 7, 1, "30", "30 fps", ""},
    {8, 8, 1, "30 drop", "30 fps drop frame", "30"},
    {15, 9, 2, "47.952", "47.952 fps", ""},
    {16, 1, 2, "48", "48 fps", ""},
    {10, 2, 2, "50", "50 fps", ""},
    {11, 3, 2, "59.94", "59.94 fps", ""},
    {12, 5, 2, "59.94 drop", "59.94 fps drop frame", "59.94"},
    {13, 7, 2, "60", "60 fps", ""},
    {14, 8, 2, "60 drop", "60 fps drop frame", "60"},
    {17, 2, 4, "100", "100 fps", ""},
    {18, 3, 4, "119.88", "119.88 fps", ""},
    {19, 5, 4, "119.88 drop", "119.88 fps drop frame", "119.88"},
    {20, 7, 4, "120", "120 fps", ""},
    {21, 8, 4, "120 drop", "120 fps drop frame", "120"},
};

std::optional<ByteView> first_record(const BlockIndex& index) {
    for (const Block& block : index.of_type(block_type::timecode).all()) {
        if (block.size < min_timecode_size) continue;
        return index.image().window(block.at, block.end() - block.at);
    }
    return std::nullopt;
}

std::optional<ExtendedTimecode> read_extended(ByteView record) {
    if (!record.holds(day_count_at, day_at - day_count_at)) return std::nullopt;
    const std::size_t day_bytes = record.u32(day_count_at);
    if (day_bytes > max_day_bytes) return std::nullopt;
    const std::size_t at = day_at + day_bytes;
    if (!record.holds(at, extended_bytes)) return std::nullopt;
    return ExtendedTimecode{.code = record.u32(at), .start_frames = record.u32(at + 4)};
}

bool applies(const TimecodeInfo& row, const FrameRate& base,
             const std::optional<ExtendedTimecode>& extended) {
    if (row.base_code != base.base_code) return false;
    if (!extended) return row.multiplier == 1;
    return row.extended_code == extended->code &&
           extended->start_frames / row.multiplier == base.start_frames;
}

}  // namespace

std::optional<FrameRate> readFrameRate(const BlockIndex& index) {
    const auto record = first_record(index);
    if (!record) return std::nullopt;
    return FrameRate{.base_code = record->u8(base_code_at),
                     .start_frames = record->u32(base_start_at)};
}

std::optional<ExtendedTimecode> readExtendedTimecode(const BlockIndex& index) {
    const auto record = first_record(index);
    return record ? read_extended(*record) : std::nullopt;
}

const TimecodeInfo* find_timecode(const FrameRate& base,
                                  const std::optional<ExtendedTimecode>& extended) {
    for (const TimecodeInfo& row : timecode_rows) {
        if (applies(row, base, extended)) return &row;
    }
    return nullptr;
}

}  // namespace tanrove
