// The plain description of what lies on a track: clips, fades and clip groups.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tanrove::builder {

/// A fade or crossfade. Types: 0 standard, 1 S-curve, 2 preset, 3 step.
struct FadeSpec {
    std::uint8_t kind = 3;     ///< 1 crossfade, 2 fade-out, 3 fade-in
    std::uint32_t pre = 0;     ///< samples in front of the centre
    std::uint32_t length = 0;  ///< samples of the whole fade
    std::uint8_t slope = 2;    ///< curve family: 1 equal power, else equal gain
    bool linked = false;
    std::uint8_t in_type = 0;
    std::int16_t in_setting = 0;
    std::uint8_t out_type = 0;
    std::int16_t out_setting = 0;
};

/// An elastic clip's points: session time in the map's unit, and samples of the file.
struct WarpSpec {
    std::vector<std::pair<std::uint64_t, double>> points = {};
    bool in_ticks = false;  ///< then positions and anchor count from the session's origin
    std::uint64_t anchor = 0;
};

struct PitchSpec {
    std::int32_t semitones = 0;
    float cents = 0;
    bool short_form = false;  ///< in the bytes that the short form keeps for it
};

/// One entry of the gain table.
struct GainEntrySpec {
    std::vector<std::pair<std::uint32_t, float>> points = {};  ///< samples and dB
    std::optional<std::uint8_t> counted = {};                  ///< instead of the true count
};

/// A looped placement.
struct LoopSpec {
    std::uint8_t mode = 2;  ///< 1 Loop Length, 2 number of loops
    std::uint32_t count = 0;
    std::uint32_t length = 0;  ///< samples
    std::uint32_t extra = 0;
    std::uint32_t size = 59;  ///< what the block says of its own size
};

/// One placement on a track's playlist. Positions are samples, or ticks from the session's origin
/// on a tick-based track.
struct ClipSpec {
    std::string region = {};  ///< name of the region it plays
    std::int64_t position = 0;
    std::int64_t source_offset = 0;  ///< samples into the file
    std::int64_t length = 0;         ///< samples
    std::uint16_t file_index = 0;
    std::uint16_t file_channel = 0;  ///< of a file that holds several
    /// On a track of several channels: a region and a file of its own for each, named ".L", ".R"
    /// and ".3" on, the files standing behind `file_index` one by one. Else all channels share one.
    bool file_per_channel = false;
    std::uint32_t sync_samples = 0;  ///< from the clip's head to its sync point
    bool is_fade = false;            ///< a fade's row: plays nothing of its own
    FadeSpec fade = {};              ///< of a fade's row; the rows number their fades in order
    bool muted = false;
    bool locked = false;
    std::uint8_t overlap = 3;  ///< 1 over the next, 2 over the previous, 3 ordinary
    std::optional<int> colour = {};
    std::optional<std::uint32_t> clip_group = {};  ///< the row holds this clip group and no region
    /// Kept for the undo queue only: the track's list has the clip, its edit list has no row.
    bool deleted = false;

    std::vector<std::pair<std::uint32_t, float>> gain = {};  ///< samples of the file, and dB
    std::optional<WarpSpec> warp = {};
    PitchSpec pitch = {};
    std::uint64_t effects_identity = 0;
    std::optional<LoopSpec> loop = {};
};

/// A clip group: what rows and members call by its place in the list of groups. Positions of its
/// members are samples from the group's head.
struct ClipGroupSpec {
    std::string name = {};
    std::uint64_t length = 0;  ///< samples
    std::vector<ClipSpec> members = {};
    std::int64_t start = 0;  ///< of its window, samples of the group
    std::optional<float> gain_db = {};
    std::optional<std::uint32_t> list_of = {};  ///< plays that group's list instead of `members`
};

}  // namespace tanrove::builder
