// Looped clips (Clip > Loop): the passes of a repeated clip, and clips that end with their loop.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "session/clip_groups.hpp"
#include "session/loop_records.hpp"
#include "timeline/loop_tallies.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

/// Passes that one run writes beyond the first of each clip; one session byte can ask for
/// thousands.
constexpr std::size_t max_passes_of_run = 100'000;

/// Markers that the passes of one run repeat.
constexpr std::size_t max_markers_of_passes = 1'000'000;

/// A looped clip in a clip group.
struct MemberLoop {
    std::uint32_t passes = 1;
    double pass_seconds = 0;  ///< of each pass; 0: all that the clip has
};

/// The session's loop settings, looked up by placement.
class ClipLooper {
public:
    explicit ClipLooper(std::span<const LoopRecord> records);

    bool empty() const { return loops_.empty(); }

    /// Writes each loop of a number of passes end to end, clip groups as well as clips, orders both
    /// by start, and lists the loops that cannot be written so.
    void write_passes(TimelineTrack& track, double rate_hz, LoopTallies& tallies);

    /// Lists the loops of placements other than audio that no track's clip has taken. MIDI regions
    /// are numbered apart from audio, so a clip never takes a MIDI loop, whatever its key.
    void list_unmatched(LoopTallies& tallies) const;

    /// How the clip that a member of a clip group's list places there repeats. Counts its loop, or
    /// lists it under the track's name.
    MemberLoop loop_member(const ClipGroupMember& member, const ClipItem& clip,
                           const std::string& track, LoopTallies& tallies);

    /// Ends clips and groups set by Loop Length where their loop ends, counted from where they were
    /// placed; a loop longer than what was placed is listed. What does not play covers nothing, so
    /// this comes in front of the covering.
    void end_loops(TimelineTrack& track, LoopTallies& tallies) const;

private:
    /// A record of an audio placement, and whether a clip has taken it.
    struct KeyedLoop {
        const LoopRecord* record = nullptr;
        bool taken = false;
    };

    std::size_t place_of(std::uint64_t key, bool in_group) const;
    std::size_t place_of(const ClipItem& clip) const;
    std::size_t placed(std::size_t at) const;
    void write_passes(std::vector<ClipItem>& clips, const TimelineTrack& track, double rate_hz,
                      LoopTallies& tallies);
    void end_loop(ClipItem& clip, const TimelineTrack& track, LoopTallies& tallies) const;
    bool can_afford(const ClipItem& clip, std::size_t passes);

    std::span<const LoopRecord> records_;
    std::vector<std::pair<std::size_t, std::size_t>> by_placement_;  ///< places in `loops_`
    std::vector<KeyedLoop> loops_;  ///< clips', then groups', by their keys, audio's in front
    std::size_t passes_left_ = max_passes_of_run;
    std::size_t markers_left_ = max_markers_of_passes;
};

}  // namespace tanrove
