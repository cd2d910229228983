// Video tracks, what lies on them, and how the session plays picture.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/video_regions.hpp"

namespace tanrove {

struct VideoClip {
    std::uint32_t track_index = 0;        ///< place in the list of video tracks
    std::uint32_t region = 0;             ///< place in the list of video clips
    double position = 0;                  ///< as stored
    VideoUnit unit = VideoUnit::samples;  ///< of the position
    std::int16_t colour = 0;              ///< place on the palette, -2 none
    std::uint32_t muted = 0;
    bool locked = false;
};

/// The clips in image order, and the names of the video tracks that they count by.
struct VideoClips {
    std::vector<VideoClip> clips;
    std::vector<std::string> track_names;
};

/// What the session says of its picture as a whole.
struct VideoInfo {
    std::vector<std::string> names;       ///< file names
    std::vector<std::string> movies;      ///< file names as the list of movies numbers them
    std::optional<double> frame_rate;     ///< frames a second
    std::optional<std::int32_t> quality;  ///< as stored
};

VideoClips readVideoClips(const BlockIndex& index);

/// The picture's rate as stored; nullopt where nothing near a usual rate is there.
std::optional<double> readVideoRate(const BlockIndex& index);

/// The code of the playback quality; nullopt where the session does not say.
std::optional<std::int32_t> readVideoQuality(const BlockIndex& index);

/// File names, rate and quality together.
VideoInfo read_video_info(const BlockIndex& index);

}  // namespace tanrove
