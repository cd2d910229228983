// What placing the clips on the timeline counts for the account.
#pragma once

#include "timeline/clip_gain_plan.hpp"
#include "timeline/clip_group_tallies.hpp"
#include "timeline/cover_clips.hpp"
#include "timeline/fade_tallies.hpp"
#include "timeline/loop_tallies.hpp"
#include "timeline/stretch_tallies.hpp"

namespace tanrove {

struct TimelineTallies {
    int tick_based_tracks = 0;
    int sample_based_tracks = 0;
    int unpaired_tracks = 0;          ///< took the timebase that every record agrees on
    int unpaired_are_tick_based = 0;  ///< 1: that timebase is ticks
    int judged_without_records = 0;   ///< judged by the size of their positions: no records at all
    int judged_between_records = 0;   ///< judged likewise: the records do not agree
    int sync_points = 0;              ///< clips that are placed by their sync point
    int sync_table_refused = 0;       ///< 1: there are sync points, and no telling whose they are
    int fade_references_dropped = 0;  ///< rendered files of fades among the placements
    int deleted_placements = 0;       ///< placements kept for the undo queue alone
    int stacked_placements = 0;       ///< left out: another clip stands at their moment
    FadeTallies fades = {};
    CoveringTallies covering = {};
    ClipGroupTallies clip_groups = {};
    ClipGainTallies gain = {};
    StretchTallies stretch = {};
    LoopTallies loops = {};
};

}  // namespace tanrove
