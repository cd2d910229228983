// The last words of the account: where the audio files lie, and what to do if REAPER misses one.
#pragma once

#include "base/formatted_text.hpp"
#include "project/media_search.hpp"
#include "project/track_block.hpp"
#include "report/account_facts.hpp"

namespace tanrove {

/// Files that lie in folders beside the media folder, and whether the project points there.
void print_sibling_files(TextBuffer& out, const MediaTallies& media, const WrittenTallies& written);

/// Files that lie nowhere, by name.
void print_missing_files(TextBuffer& out, const MediaTallies& media);

/// Files that REAPER cannot be told of, by path.
void print_untold_paths(TextBuffer& out, const WrittenTallies& written);

/// That long files take REAPER a while when it first opens them.
void print_long_media(TextBuffer& out, const LongMedia& found);

/// The media folder that the project points to, and what to do where it is wrong.
void print_media_folder(TextBuffer& out, const AccountFacts& facts, const WrittenTallies& written);

/// What left this computer: nothing, or a summary that the user switched on.
void print_privacy(TextBuffer& out, bool usage_shared);

}  // namespace tanrove
