// Moves the video tracks to the top of the track list, where Pro Tools shows them. They are written
// last, when the place of every other track is settled.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/whole_file.hpp"

namespace tanrove {

/// The identifiers of video tracks count from here.
constexpr unsigned video_track_seed = 70000;

/// The project's text with its `count` video tracks in front of all others, the sources of sends
/// counted anew. nullopt if they are there already, or if the text is not what was expected.
std::optional<std::string> with_video_tracks_first(std::string_view text, std::size_t count);

/// The same on the file. True if the file was changed; otherwise it is what it was.
bool move_video_tracks_first(const std::string& path, std::size_t count, const DiskSteps& disk);

}  // namespace tanrove
