// The account's sentences about folder tracks.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/folder_depths.hpp"

namespace tanrove {

/// Behind the soloed, muted tracks, in front of what groups link beyond the faders.
void print_folders(TextBuffer& out, const FolderTallies& tallies);

}  // namespace tanrove
