// Track comments as the project's notes.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "mix/track_comments.hpp"

namespace tanrove {

/// The lines of the notes in track order, each as it stands behind its "|": the first line of a
/// comment behind its track's name, the others indented under it. A comment without text gives no
/// line.
std::vector<std::string> notes_lines(std::span<const TrackComment> comments);

}  // namespace tanrove
