// Elastic audio on the timeline: clips get the length that their warp maps give them, and markers
// that put every point of the map on its place.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "session/pitch_shifts.hpp"
#include "timeline/stretch_tallies.hpp"
#include "timeline/timeline_track.hpp"
#include "timeline/warp_slice.hpp"

namespace tanrove {

/// Sets `warped_length` and the origin of each clip with a usable map. Nothing else of the clip
/// changes yet: fades bind to where it ends, and still move its edges in the file.
void measure_warped_clips(std::vector<TimelineTrack>& tracks, const WarpSlicer& slicer);

/// Gives clips their pitch shift, in semitones, by their names.
void shift_pitch(std::vector<TimelineTrack>& tracks, const PitchShifts& shifts,
                 StretchTallies& tallies);

void shift_pitch(ClipItem& clip, const PitchShifts& shifts, StretchTallies& tallies);

/// Stretches a clip that has a map: length, playrate, markers. One serves the whole run: the points
/// that it may look at are counted over all clips. What it is made from must outlive it.
using WarpOneClip = std::function<void(ClipItem&)>;
WarpOneClip clip_warper(const WarpSlicer& slicer, const TempoMap& tempo_map,
                        StretchTallies& tallies);

void warp_clips(std::vector<TimelineTrack>& tracks, const WarpOneClip& warp);

}  // namespace tanrove
