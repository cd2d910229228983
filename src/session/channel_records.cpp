// A channel record 0x1029, of a block size of 157 at least:
//
//   9    u8 link byte, 0 or 1
//   10   i32 fader, tenths of a dB, -1450 to 125
//   14   u32 mute word, 1 is muted
//   22   i32 left or only pan, -100 to 100; on a strip that feeds a surround path the first of the
//        seven numbers of its panner, the others zero elsewhere
//   50   i32 right pan, likewise
#include "session/channel_records.hpp"

#include <algorithm>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t link_at = 9;
constexpr std::size_t fader_at = 10;
constexpr std::size_t mute_at = 14;
constexpr std::size_t pan_at = 22;
constexpr std::size_t pan_right_at = 50;

// A block beyond these is no channel record.
constexpr std::uint32_t min_record_size = 157;
constexpr std::uint8_t max_link = 1;

constexpr std::uint32_t muted_word = 1;
constexpr double tenths = 10.0;
constexpr std::int32_t max_panner_number = 100;

std::optional<PannerNumbers> read_panner(ByteView image, std::size_t at) {
    PannerNumbers numbers = {};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = image.i32(at + i * sizeof(std::int32_t));
        if (numbers[i] < -max_panner_number || numbers[i] > max_panner_number) return std::nullopt;
    }
    const bool is_plain_pan = std::all_of(numbers.begin() + 1, numbers.end(),
                                          [](std::int32_t number) { return number == 0; });
    return is_plain_pan ? std::nullopt : std::optional(numbers);
}

}  // namespace

std::optional<ChannelRecord> read_channel_record(ByteView image, const Block& block) {
    if (block.size < min_record_size) return std::nullopt;
    const std::uint8_t link = image.u8(block.at + link_at);
    if (link > max_link) return std::nullopt;
    const std::int32_t fader = image.i32(block.at + fader_at);
    if (fader < min_fader_tenths || fader > max_fader_tenths) return std::nullopt;
    return ChannelRecord{
        .at = block.at,
        .end = block.end(),
        .link = link != 0,
        .fader_db = fader / tenths,
        .muted = image.u32(block.at + mute_at) == muted_word,
        .pan = image.i32(block.at + pan_at),
        .pan_right = image.i32(block.at + pan_right_at),
        .panners = {read_panner(image, block.at + pan_at),
                    read_panner(image, block.at + pan_right_at)},
    };
}

std::vector<ChannelRecord> read_channel_records(const BlockIndex& index) {
    std::vector<ChannelRecord> records;
    for (const Block& block : index.of_type(block_type::channel_record).all()) {
        if (auto record = read_channel_record(index.image(), block)) records.push_back(*record);
    }
    return records;
}

}  // namespace tanrove
