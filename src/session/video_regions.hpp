// What the clips of video tracks play: the session's own list of them, and its list of movies.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// What numbers of the picture count. Each says so itself.
enum class VideoUnit : std::uint8_t { samples, ticks, frames };

/// A stretch of a movie.
struct VideoRegion {
    std::string name;
    VideoUnit unit = VideoUnit::frames;  ///< of the two numbers
    std::uint64_t source_offset = 0;
    std::uint64_t length = 0;
    std::uint32_t movie = 0;  ///< place in the list of movies
};

/// In the order by which video clips number them. One that cannot be read keeps its place, without
/// a length.
std::vector<VideoRegion> read_video_regions(const BlockIndex& index);

}  // namespace tanrove
