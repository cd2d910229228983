// The video tracks of the project: which there are, how they look, and what plays on them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/session_lists.hpp"
#include "session/strip_rows.hpp"
#include "session/tempo_map.hpp"
#include "session/track_displays.hpp"
#include "session/video_clips.hpp"

namespace tanrove {

/// A stretch of a movie on a track. Times are seconds.
struct VideoItem {
    double start = 0;
    double length = 0;
    double source_offset = 0;
    std::string name;
    std::string movie;  ///< file name
    bool locked = false;
    std::int16_t colour_place = -2;            ///< stored clip colour, -2 none
    std::optional<std::uint32_t> colour = {};  ///< written to the item: 0x1BBGGRR
};

struct VideoTrackPlan {
    std::string name;
    std::uint32_t colour = default_track_colour;
    bool hidden = false;
    int height_pixels = 0;  ///< in the arrange window; 0 where the session has none
    std::vector<VideoItem> items;
};

struct VideoPlan {
    std::vector<VideoTrackPlan> tracks;
    bool stands_first = true;  ///< no track but the master stands above a video track
};

/// The last two count clips that are not in the project: a video track then lacks an item.
struct VideoTallies {
    int tracks = 0;
    int items = 0;
    std::optional<double>
        frame_rate;      ///< given where the session measures what is written in frames
    bool at_top = true;  ///< the tracks stand in front of all others
    bool reduced_quality = false;
    std::vector<std::string> missing_movies;    ///< written, and found nowhere
    std::vector<std::string> movies_elsewhere;  ///< paths outside the folder for movies
    int clips_without_region = 0;  ///< their number leads to nothing that can be played
    int clips_without_movie = 0;   ///< the clip's name tells none of the movies
};

/// What the plan is made from.
struct VideoInput {
    VideoClips video;
    VideoInfo info;
    std::span<const VideoRegion> regions;  ///< what the clips play
    std::span<const StripRow> rows;
    std::span<const TrackDisplay> displays;  ///< one a row
    double rate_hz = 48000;                  ///< above 0
};

/// One track for each video playlist in its order, then one for each video row without a playlist.
/// A clip that plays no known stretch of a known movie is left out and counted.
VideoPlan plan_video(const VideoInput& input, const TempoClock& clock, VideoTallies& tallies);

}  // namespace tanrove
