// Faders, pans and automation of the tracks: what their strips say, in REAPER's units.
#pragma once

#include <vector>

#include "mix/level_tallies.hpp"
#include "mix/strip_routes.hpp"
#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"
#include "session/track_name_set.hpp"

namespace tanrove {

/// Gives every plan its gain, pan, mute, automation mode, pan mode and envelopes.
void plan_levels(std::vector<TrackPlan>& plans, const TrackStrips& strips, const Routes& routes,
                 EnvelopePlanner& envelopes, LevelTallies& tallies);

/// The strips that have neither a row nor a track, as plans of their mixer alone; none of those
/// whose tracks were left out.
std::vector<TrackPlan> plan_strip_tracks(const std::vector<TrackPlan>& plans,
                                         const TrackNameSet& left_out, const MixerRecords& mixer,
                                         EnvelopePlanner& envelopes, LevelTallies& tallies);

}  // namespace tanrove
