// Which folder each audio file of the session lay in on its author's machine.
#pragma once

#include <map>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// File name to folder name, the first file of a name winning.
using AudioFileFolders = std::map<std::string, std::string>;

AudioFileFolders readAudioFileFolders(const BlockIndex& index);

}  // namespace tanrove
