// The text of the video tracks and of the movies on them.
#pragma once

#include <vector>

#include "base/text_sink.hpp"
#include "mix/video_plan.hpp"
#include "project/movie_search.hpp"
#include "project/track_block.hpp"

namespace tanrove {

/// Writes the tracks one behind the other. Their identifiers count from `video_track_seed`, by
/// which they are found again when they move to the top.
void write_video_tracks(TextSink& out, const std::vector<VideoTrackPlan>& tracks,
                        MovieSearch& movies, VideoTallies& tallies, WrittenTallies& written);

}  // namespace tanrove
