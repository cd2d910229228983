// Faders, pans and automation of the tracks: what their strips say, in REAPER's units.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "mix/level_tallies.hpp"
#include "mix/mixer_lookup.hpp"
#include "mix/track_plan.hpp"

namespace tanrove {

/// Tracks that play to one channel of a stereo output: -1 or +1 by their shown name.
using OutputSides = std::map<std::string, int, std::less<>>;

/// Gives every plan its gain, pan, mute, automation mode, pan mode and envelopes.
void plan_levels(std::vector<TrackPlan>& plans, const MixerLookup& mixer, const OutputSides& sides,
                 EnvelopePlanner& envelopes, LevelTallies& tallies);

/// The strips that no track took up, as plans of their mixer alone; none of those whose tracks
/// were left out.
std::vector<TrackPlan> plan_strip_tracks(const std::vector<TrackPlan>& plans,
                                         const TrackNameSet& left_out, const MixerLookup& mixer,
                                         EnvelopePlanner& envelopes, LevelTallies& tallies);

}  // namespace tanrove
