// Pro Tools draws its colours in two themes, a classic one and a dark one: which of them a project
// gets, and why.
#pragma once

namespace tanrove {

/// The theme whose colours the clips get.
struct ColourTheme {
    bool dark = false;
    bool chosen = false;         ///< by the user; else the one that the session's version had
    bool session_older = false;  ///< than the Dark theme
};

}  // namespace tanrove
