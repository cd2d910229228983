// The central record of the timeline: one thing that plays on a track, in seconds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/rare.hpp"

namespace tanrove {

enum class FadeSide : std::uint8_t { fade_in, fade_out };

/// The curve of a Pro Tools fade on one side, as its record tells it.
struct FadeSpec {
    std::uint32_t family = 0;  ///< 1 equal power, other values equal gain
    std::int32_t type = 0;     ///< 0 standard, 1 S-curve, 2 preset, 3 step
    std::int32_t setting = 0;
};

/// The fade at one end of a clip.
struct ClipFade {
    double length = 0;  ///< seconds
    double shape = 0;   ///< REAPER's fade shape, 0 to 7
    double curve = 0;   ///< REAPER's fade curve, -1 to 1
    /// REAPER has no such fade: the item's volume envelope follows `spec`.
    bool as_envelope = false;
    FadeSpec spec = {};
    double spec_length = 0;  ///< seconds: the length that the envelope was decided for
};

/// A fade that need not end where the clip does: a clip group's fade runs over several clips.
struct FadeCurve {
    FadeSide side = FadeSide::fade_in;
    FadeSpec spec = {};
    double start = 0;   ///< seconds from the clip's own start; below 0 in front of it
    double length = 0;  ///< seconds
};

/// A place in the item and the place in its source that sounds there, both in seconds.
struct StretchMarker {
    double item_position = 0;
    double source_position = 0;
};

/// A point of a clip's drawn gain line.
struct ClipGainLinePoint {
    double position = 0;  ///< samples from the start of the clip's audio file
    double gain_db = 0;
};

/// The stored position of a clip that no placement of its own put there: no lookup may hit it.
constexpr std::uint64_t no_stored_position = std::numeric_limits<std::uint64_t>::max();

/// The plug-ins of an item's take.
struct TakeFx {
    std::size_t chain = 0;     ///< place in the project's chains of takes
    std::uint32_t number = 0;  ///< running number of the item among those with take FX
};

/// What a clip has of fades.
struct ClipFades {
    ClipFade fade_in;
    ClipFade fade_out;
    std::vector<FadeCurve> fade_curves = {};  ///< of its groups' fades, beside those
};

/// How a clip plays at another speed or pitch than its file.
struct ClipStretch {
    double warped_length = 0;  ///< on the timeline, of the warped slice; 0 when none
    std::optional<double> warp_origin_samples = {};  ///< of its file: where its map has place 0
    std::vector<StretchMarker> stretch_markers = {};
    double pitch_shift = 0;  ///< semitones
};

/// The clip gain of a clip and of its groups.
struct ClipGain {
    double clip_gain_db = 0;   ///< fixed, the clip's and its group's
    double fixed_gain_db = 0;  ///< the clip's own part of it
    std::vector<ClipGainLinePoint> gain_envelope = {};
};

/// What ties a clip to clip groups.
struct ClipGrouping {
    std::string_view group_name = {};  ///< of the group that holds the clip; empty outside one
    std::vector<std::uint32_t> inner_groups = {};  ///< definitions of those inside that hold it
    /// On the row of a clip group, as it is drawn until its pieces take its place: the number of
    /// the group's definition. `source_offset` is then where its window begins in the group.
    std::optional<std::uint32_t> clip_group = {};
};

/// Times are seconds of the session timeline unless the name says otherwise. A session has hundreds
/// of thousands of clips: names are views on its lists, and what few clips have stands beside them.
struct ClipItem {
    std::uint32_t region = 0;           ///< index in the session's region table
    std::uint32_t index_on_track = 0;   ///< running number of the placement on its track
    std::uint64_t stored_position = 0;  ///< as stored; its low 32 bits are the key of lookups
    std::size_t placed_at = 0;          ///< where its row's 0x104f begins in the image; 0 unknown
    std::int32_t edit_row = -1;         ///< row in the track's edit list
    std::uint32_t loop_pass = 0;        ///< running number in its loop, 0 for the first pass

    double start = 0;  ///< the raw stored position until the timebase is known
    double length = 0;
    double source_offset = 0;
    std::uint32_t source_offset_samples = 0;
    std::int32_t colour_place = -2;  ///< stored clip colour, -2 none
    double placed_start = 0;         ///< before crossfades and covering
    double placed_length = 0;        ///< on the timeline, likewise
    double playrate = 1.0;
    double sync_offset = 0;  ///< from the clip's start to its sync point; 0 none

    std::string_view name;
    std::string_view file;          ///< audio file name without its folder
    std::string file_kind() const;  ///< lower-cased extension; empty where it has none

    Rare<ClipFades> fades;
    Rare<ClipStretch> stretch;
    Rare<ClipGain> gain;
    Rare<ClipGrouping> grouping;
    Rare<TakeFx> take_fx;

    std::optional<std::uint32_t> colour = {};        ///< written to the item: 0x1BBGGRR
    std::optional<std::uint16_t> file_channel = {};  ///< the only one it plays; nothing: all
    std::int8_t take_pan = 0;  ///< -1 left leg, +1 right leg of a split stereo pair
    bool muted = false;
    bool locked = false;
    bool polarity_inverted = false;
    bool head_of_file = false;  ///< starts within 63 samples of its file and bears no edit number
    bool crossfaded = false;    ///< a crossfade joins this clip's tail to the next clip
    bool crossfaded_head = false;      ///< a crossfade joins its head to the clip before
    bool stretched = false;            ///< elastic warp has replaced `length`
    bool has_clip_gain = false;        ///< `gain` holds a fixed gain
    bool is_fade_reference = false;    ///< a fade's rendered file, kept on demand: it has no row
    bool is_placeholder = false;       ///< an empty item: a clip group that holds no audio
    bool tail_kept = false;            ///< this clip's tail survives over the next clip
    bool drawn_over_next = false;      ///< row overlap kind 1
    bool drawn_over_previous = false;  ///< row overlap kind 2
    bool covered = false;              ///< other clips lie over all of it
};

/// Where REAPER snaps the item, in seconds from its start: the sync point when it lies inside the
/// item, else 0.
double snap_offset(const ClipItem& clip);

/// A place in a file as the whole number of samples that an item keeps; 0 where it lies in front
/// of the file.
std::uint32_t offset_in_samples(std::int64_t offset);

/// True if the clip starts so close to its file's head that it was recorded as one piece with it,
/// and no edit gave it its name.
bool begins_with_its_file(const ClipItem& clip);

/// Orders clips by `start`; equal starts keep their order.
void order_by_start(std::vector<ClipItem>& clips);

/// The name without its folder, cut at the last "/" or "\\".
std::string_view without_folder(std::string_view path);

/// True if the name ends in "-" and digits, as Pro Tools names what an edit leaves of a clip.
bool ends_in_edit_number(std::string_view name);

}  // namespace tanrove
