// The account of a run, as the console prints it. Its three pieces are printed at three moments of
// the run: after the writing, after the media search, and at the very end.
#pragma once

#include <string>

#include "report/account_facts.hpp"
#include "report/run_tallies.hpp"

namespace tanrove {

/// Everything that was carried, approximated or left out.
std::string console_account(const AccountFacts& facts, const RunTallies& tallies);

/// Where the session's audio files lie. `tallies.media` must stand.
std::string media_account(const RunTallies& tallies);

/// What the user should know on opening the project, and what left this computer.
std::string closing_notes(const AccountFacts& facts, const RunTallies& tallies);

}  // namespace tanrove
