// Which of Pro Tools' two themes the colours of a project are taken from.
#pragma once

#include "mix/colour_theme.hpp"
#include "run/run_options.hpp"
#include "session/session_version.hpp"

namespace tanrove {

/// The theme asked for, or the one of the version that saved the session.
ColourTheme colour_theme(const RunOptions& options, const SessionVersion& version);

}  // namespace tanrove
