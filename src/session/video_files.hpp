// The movies that the session names, and where they lay on its author's machine.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Names of the session's movies in image order, each once. A movie is told by its extension.
std::vector<std::string> readVideoFiles(const BlockIndex& index);

/// File names of the list of movies in its order, by which clips name their movie; empty names for
/// movies whose file is not among the list's.
std::vector<std::string> read_movie_list(const BlockIndex& index);

/// File name to path, volume first, with '/' between the parts; of several paths of one name the
/// first. A movie whose volume is not known has no entry.
std::map<std::string, std::string> readVideoPaths(const BlockIndex& index);

}  // namespace tanrove
