// One track as it will be written, every decision taken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mix/panner_plan.hpp"
#include "session/midi_track_settings.hpp"
#include "timeline/clip_item.hpp"
#include "timeline/envelope_point.hpp"
#include "timeline/midi_item.hpp"

namespace tanrove {

/// An alternate playlist kept as a lane of its track.
struct LanePlan {
    std::string name;
    std::vector<ClipItem> clips;
};

/// REAPER's item timebase of a track; beats count for the position only.
enum class TrackTimebase : std::int8_t { unknown = -1, time = 0, beats_position = 2 };

/// The mixer's values of a track, in REAPER's units.
struct MixerPlan {
    double gain = 1;  ///< linear
    double pan = 0;   ///< -1 left to +1 right
    double dual_pan_left = -1;
    double dual_pan_right = 1;
    int automation_mode = 0;      ///< REAPER's: 0 trim/read, 1 read, 2 touch, 3 write, 4 latch
    bool automation_off = false;  ///< Pro Tools plays none of it, nor that of the sends
    bool soloed = false;
    bool solo_safe = false;
    bool polarity_inverted = false;
    bool plays_to_parent = true;  ///< reaches its folder or the master, not only its sends
};

/// What the values of an envelope are; decides its default shape.
enum class EnvelopeKind : std::uint8_t { volume, mute, pan };

/// One automation envelope of a track, a receive or the master, as it is written.
struct EnvelopePlan {
    std::string block;  ///< REAPER's name of it: "VOLENV2", "MUTEENV", ...
    EnvelopeKind kind = EnvelopeKind::volume;
    bool active = true;
    bool armed = false;
    std::vector<EnvelopePoint> points;  ///< in time order; none: the envelope is not written
};

/// A send as the track that receives it has it.
struct ReceivePlan {
    std::size_t source = 0;  ///< index among the plans
    int mode = 0;            ///< 0 post fader, 3 pre fader
    double gain = 1;         ///< linear
    double pan = 0;          ///< -1 to 1
    bool muted = false;
    std::vector<EnvelopePlan> envelopes;  ///< volume, mute
    int width_code = 0;                   ///< 0 stereo, else (channels / 2) << 10
    int destination_channel = 0;          ///< the first, from 0
};

/// In REAPER's numbers of a receive's channels: the one channel, not the pair from it on.
constexpr int single_channel = 1024;

/// The output of a track into the aux that takes its bus.
struct ChannelReceive {
    std::size_t source = 0;
    int width_code = 0;  ///< 0 stereo, else (channels / 2) << 10, and the first channel
    /// Given: this channel alone, counted from the first that the source plays to its output.
    std::optional<int> source_channel = {};
    int destination_code = 0;  ///< 0: the channels from the first on, else a `single_channel`
};

/// The render that a track delivered frozen plays in place of its items.
struct FrozenRender {
    double start = 0;  ///< seconds, likewise the others
    double length = 0;
    double source_offset = 0;
    std::string path;
};

/// REAPER's folder state of a track: the two numbers of its `ISBUS` line.
struct FolderState {
    int kind = 0;   ///< 0 plain, 1 opens a folder, 2 closes folders
    int depth = 0;  ///< 1 on a folder, minus the number of folders that it closes on their last
};

/// REAPER's mark for a track without a colour of its own.
constexpr std::uint32_t default_track_colour = 16576;

struct TrackPlan {
    std::string name;           ///< written to the project
    std::string session_name;   ///< as Pro Tools shows it; empty on a split alternate
    std::string lane_parent;    ///< name of the strip of an alternate playlist that has one
    std::string original_name;  ///< name before the lane suffix was appended
    std::vector<LanePlan> lanes;
    double leg_pan = 0;  ///< -1 or +1 on an unmerged left or right leg
    /// Index of the strip row that gave the track its place; nullopt where none asked for it.
    std::optional<std::size_t> strip_row;
    bool is_midi = false;
    bool is_vca = false;          ///< a VCA master: no sound, and its fader set from the start
    std::vector<ClipItem> clips;  ///< ordered by `start`
    std::vector<MidiItem> midi_items;
    MidiTrackSettings midi_settings;  ///< what each MIDI item sends at its start
    bool is_alternate = false;        ///< another playlist of a track, not on its lanes
    bool is_lane_child = false;       ///< a "?" record
    std::string lane_child_parent;
    bool inactive = false;
    bool voice_off = false;

    int channels = 1;  ///< 2 for a merged pair, the legs of a fold, the width of a bare strip
    bool width_unknown = false;  ///< `channels` is not what the session says, only what is written
    bool is_bare_strip = false;  ///< made for a strip or folder that no channel of clips belongs to
    int folded_width = 0;        ///< legs of a surround fold, else 0
    TrackTimebase timebase = TrackTimebase::unknown;
    bool muted = false;
    bool strip_is_mono = false;  ///< decides the pan mode
    bool unmatched_alternate = false;
    int height_pixels = 0;  ///< in the arrange window; 0 where the session has none
    MixerPlan mixer;
    std::uint32_t colour = default_track_colour;  ///< 0x1BBGGRR, or the default
    bool hidden = false;                          ///< in both windows
    FolderState folder;
    bool is_basic_folder = false;  ///< a container: no sound runs through it
    std::vector<std::uint32_t>
        group_flags;                     ///< the words of the `GROUP_FLAGS` line, none for no line
    std::optional<int> pan_mode;         ///< of the `PANMODE` line, nullopt for no line
    int written_channels = 2;            ///< even: what REAPER gives the track
    std::optional<int> parent_channels;  ///< only so many go on: the others hold keys
    /// What the keys of plug-ins hear, on channels behind the track's own.
    std::vector<ReceivePlan> key_receives;
    /// For each plug-in with a key input the channel that its key begins on, from 0; none where it
    /// hears no key.
    std::vector<std::optional<int>> key_channels;
    std::vector<ChannelReceive> channel_receives;
    std::vector<ReceivePlan> receives;
    std::vector<EnvelopePlan> envelopes;      ///< in the order in which they are written
    std::optional<PannerPlan> panner;         ///< into the surround bus that it plays into
    std::optional<FrozenRender> frozen = {};  ///< given: delivered frozen
    std::vector<std::string> comment_lines;   ///< of the item that holds the track's comment

    bool has_surround_panner() const { return panner.has_value(); }
};

}  // namespace tanrove
