// The head of the account: what was read, what was written, and how much of it there is.
#pragma once

#include "base/formatted_text.hpp"
#include "project/track_block.hpp"
#include "report/account_facts.hpp"

namespace tanrove {

/// Who saved the session, its rate and tempo.
void print_session_read(TextBuffer& out, const AccountFacts& facts);

/// The path of the project, or that a check wrote none.
void print_project_written(TextBuffer& out, const AccountFacts& facts);

/// A word of care about sessions of a Pro Tools that this tool was not tested against.
void print_version_note(TextBuffer& out, const AccountFacts& facts);

/// Tracks, clips and notes, behind an empty line.
void print_counts(TextBuffer& out, const WrittenTallies& written);

}  // namespace tanrove
