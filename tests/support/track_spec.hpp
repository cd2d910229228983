// The plain description of one track of a built session: what it is called, what it shows, and what
// lies on it. The record families take from it what they store.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/clip_spec.hpp"
#include "support/midi_spec.hpp"
#include "support/plugin_spec.hpp"

namespace tanrove::builder {

enum class TrackKind : std::uint8_t {
    audio,
    aux,
    master,
    vca,
    midi,
    instrument,
    video,
    basic_folder,    ///< a folder without a channel of its own
    routing_folder,  ///< a folder whose members play through it
};

/// A playlist of the track that is not the one that plays. It counts in the track list as a
/// further track of the same name.
struct AlternatePlaylistSpec {
    std::string name = {};
    std::vector<ClipSpec> clips = {};
};

/// One automation lane. Positions are samples, or ticks from the session's origin on a tick-based
/// track; values are stored as they are: tenths of a dB, -100 to 100, or 0 and 1.
struct LaneSpec {
    struct Point {
        std::int64_t position = 0;
        int value = 0;
    };

    std::optional<int> initial = {};  ///< nothing: what the channel itself says
    std::vector<Point> points = {};
};

/// One send of a track.
struct SendSpec {
    std::string target;
    double level_db = 0;
    bool pre_fader = false;
    bool muted = false;
    int pan = 0;
    std::optional<int> pan_right = {};  ///< a send with two knobs
    LaneSpec level_lane = {};
    LaneSpec mute_lane = {};
    LaneSpec pan_lane = {};
    LaneSpec pan_right_lane = {};
};

/// One surround panner: its controls as lanes, in the order in which they are stored.
using PannerSpec = std::vector<LaneSpec>;

/// The same as numbers alone, as older sessions have them.
using StoredPannerSpec = std::array<int, 7>;

struct TrackSpec {
    std::string name = {};           ///< as shown now
    std::string original_name = {};  ///< under which it was made; empty: the same
    TrackKind kind = TrackKind::audio;
    int channels = 1;

    bool active = true;
    bool voice_off = false;
    bool hidden = false;
    std::uint16_t height = 51;  ///< pixels
    std::string comment = {};
    std::optional<int> colour = {};  ///< place on the track palette
    bool colour_mark = true;         ///< the display record has one; none did before 12.8

    bool soloed = false;
    bool solo_safe = false;
    std::uint8_t automation_mode = 1;  ///< 0 off, 1 read, 2 touch, 3 latch, 4 write, 5 touch/latch
    bool trim = false;

    double fader_db = 0;
    bool muted = false;
    std::optional<int> pan = {};        ///< nothing: centre, or hard left on a stereo track
    std::optional<int> pan_right = {};  ///< nothing: hard right on a stereo track
    std::string output = "Out 1-2";     ///< empty: the track plays into nothing
    std::string input = {};             ///< name of the I/O path it takes
    bool input_is_bus = false;
    std::vector<SendSpec> sends = {};
    std::vector<InsertSpec> inserts = {};  ///< ten at most
    LaneSpec volume_lane = {};
    LaneSpec mute_lane = {};
    LaneSpec pan_lane = {};
    LaneSpec pan_right_lane = {};
    std::optional<LaneSpec> trim_lane = LaneSpec{};
    std::vector<PannerSpec> panners = {};               ///< in place of the pan lanes
    std::vector<StoredPannerSpec> stored_panners = {};  ///< in place of the pans
    std::optional<LaneSpec> lfe_lane = {};              ///< of the panners

    /// Blocks of the strip row behind its active mark, in place of what stands there otherwise:
    /// send channels, lanes, MIDI settings.
    Bytes mixer = {};

    bool tick_based = false;
    std::vector<ClipSpec> clips = {};
    std::vector<AlternatePlaylistSpec> alternates = {};

    /// Of a MIDI or instrument track.
    std::vector<MidiClipSpec> midi_clips = {};
    MidiSettingsSpec midi_settings = {};
    RealTimeSpec real_time = {};

    bool folder_row = false;  ///< a Basic folder that has a strip row, without a channel

    bool has_row() const { return kind != TrackKind::basic_folder || folder_row; }
    const std::string& first_name() const { return original_name.empty() ? name : original_name; }
};

}  // namespace tanrove::builder
