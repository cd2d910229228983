// The plain description of MIDI: what a stream holds, what lies on a MIDI track and how it plays.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"

namespace tanrove::builder {

/// A note; times in ticks from the session's origin, which a clip's `head` counts from too.
struct NoteSpec {
    std::int64_t position = 0;
    std::int64_t length = 240000;
    std::uint8_t key = 60;
    std::uint8_t velocity = 80;
};

struct ControllerSpec {
    std::uint16_t kind = 1;  ///< 1 pitch bend, 4 aftertouch, 2 and 256 times the number: controller
    std::int64_t position = 0;
    std::uint32_t value = 0;
};

struct SysexSpec {
    std::int64_t position = 0;
    Bytes data = {};
};

/// One stream. Controllers of one kind that follow each other share a list.
struct MidiStreamSpec {
    std::vector<NoteSpec> notes = {};
    std::vector<ControllerSpec> controllers = {};
    std::vector<SysexSpec> sysex = {};
    std::optional<std::uint32_t> counted = {};  ///< instead of the true number of notes
};

/// A clip on a MIDI track, with a region and a stream of its own. `position` is in ticks from the
/// session's origin, or in samples on a sample-based track.
struct MidiClipSpec {
    std::string region = {};
    std::int64_t position = 0;
    std::int64_t length = 0;
    std::int64_t head = 0;  ///< where in the stream's time the clip begins
    MidiStreamSpec stream = {};
    bool muted = false;
    bool locked = false;
    std::uint8_t overlap = 3;
    int colour = -2;
    std::optional<std::uint32_t> clip_group = {};
};

struct MidiSettingsSpec {
    int volume = 96;
    int pan = 64;
    int patch = -128;
    std::int32_t output = 0;                     ///< number of a MIDI output, counted from 1
    bool plays_instrument = false;               ///< the one of this identity
    std::optional<std::uint64_t> identity = {};  ///< makes the record the longer one of later years
};

struct RealTimeSpec {
    bool quantize = false;
    std::uint8_t swing = 0;
    bool duration = false;
    std::uint8_t duration_value = 0;
    bool delay = false;
    std::int32_t delay_ticks = 0;
    bool velocity = false;
    std::uint8_t velocity_scale = 100;
    int velocity_offset = 0;
    bool transpose = false;
    int octaves = 0;
    int semitones = 0;
    std::uint32_t grid_size = 59;  ///< of the quantize grid, which moves all behind it
    bool without_grid = false;     ///< other bytes where the grid stands
};

struct MidiOutputSpec {
    std::string name = {};  ///< empty: an output without a name record
    int number = 1;
    std::optional<std::int32_t> node = {};  ///< a plug-in's
    bool short_node = false;                ///< as before 12.8: it does not tell which one
    std::optional<std::uint8_t> port = {};
    bool node_beside_name = false;  ///< instead of in the name record
};

}  // namespace tanrove::builder
