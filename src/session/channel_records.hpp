// Channel records: the numbers of one mixer channel. They stand in strip rows and in send slots
// alike.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Offset of the channel record inside its send channel.
constexpr std::size_t record_in_slot = 9;

/// The controls of a surround panner: left-right on the front and the rear line, front-rear, the
/// three divergences, center percentage. Positions are -100 to 100, percentages 0 to 100.
constexpr std::size_t panner_control_count = 7;
using PannerNumbers = std::array<std::int32_t, panner_control_count>;

/// A channel of a strip has one panner, or one for each side.
constexpr std::size_t max_panners = 2;

/// Faders stand between these, in tenths of a dB; anything else is no fader.
constexpr std::int32_t min_fader_tenths = -1450;
constexpr std::int32_t max_fader_tenths = 125;

struct ChannelRecord {
    std::size_t at = 0;  ///< position of the 'Z'
    std::size_t end = 0;
    bool link = false;    ///< in a send's record: the send leaves in front of the fader
    double fader_db = 0;  ///< -145 to 12.5
    bool muted = false;
    std::int32_t pan = 0;        ///< the left or the only knob, as stored: -100 left to 100 right
    std::int32_t pan_right = 0;  ///< as stored
    /// What stands where the panners' numbers do; nullopt where that is a plain pan, or no numbers.
    std::array<std::optional<PannerNumbers>, max_panners> panners = {};

    std::size_t payload() const { return at + block_payload_at; }
    /// Where the fader stands: the position by which a record is given to its strip.
    std::size_t fader_position() const { return payload() + 1; }
};

/// The record in a block of type 0x1029; nullopt where a limit is broken.
std::optional<ChannelRecord> read_channel_record(ByteView image, const Block& block);

/// All channel records, in order of position.
std::vector<ChannelRecord> read_channel_records(const BlockIndex& index);

}  // namespace tanrove
