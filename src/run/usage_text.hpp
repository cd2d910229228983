// The text of `tanrove --help`.
#pragma once

#include <string>

namespace tanrove {

/// The whole help text, from what the program is to its last line.
std::string usage_text();

}  // namespace tanrove
