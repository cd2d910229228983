// Comments of tracks and markers as the project's notes.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "mix/track_comments.hpp"
#include "project/markers.hpp"

namespace tanrove {

/// The lines of the notes in track order, each as it stands behind its "|": the first line of a
/// comment behind its track's name, the others indented under it. A comment without text gives no
/// line.
std::vector<std::string> notes_lines(std::span<const TrackComment> comments);

/// The same for the comments of memory locations, each behind the number and the name that Pro
/// Tools shows: REAPER's markers have no comments. Counts them.
std::vector<std::string> marker_notes_lines(std::span<const MemoryLocation> locations,
                                            MarkerTallies& tallies);

}  // namespace tanrove
