// From the records of a session to the plan of its project: hands each stage what it needs, in the
// order of the stages.
#pragma once

#include <vector>

#include "mix/plan_mix.hpp"
#include "project/media_search.hpp"
#include "project/project_head.hpp"
#include "report/run_tallies.hpp"
#include "run/run_options.hpp"
#include "run/session_records.hpp"

namespace tanrove {

/// What the plan is made from. What only planning needs moves into it.
struct PlanningRecords {
    const ClipRecords& clips;
    const TimeRecords& time;
    const StripRecords& strips;
    const VideoRecords& video;
    std::vector<Strip> mixer;
    RoutingRecords routing;
    MidiRecords midi;
    ColourTheme theme;
    double rate_hz = 48000;  ///< above 0
};

/// Everything that is written, every decision taken.
struct ProjectPlan {
    HeadPlan head;
    MixPlan mix;
    std::vector<ChainPlan> chains;        ///< in step with the mix's tracks
    std::vector<ChainPlan> strip_chains;  ///< in step with its strip tracks
    std::vector<ChainPlan> take_chains;   ///< of items: Clip Effects
};

ProjectPlan plan_project(const RunOptions& options, PlanningRecords records, RunTallies& tallies);

/// Finds the tracks that arrive frozen. The renders are looked for on the disk.
void plan_freezes(ProjectPlan& project, const BlockIndex& index, const ClipRecords& clips,
                  const TimeRecords& time, bool keep_frozen, MediaSearch& media,
                  FrozenTallies& tallies);

}  // namespace tanrove
