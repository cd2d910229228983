// Which tanrove this is, for `--version` and the summaries that name it.
#pragma once

namespace tanrove {

constexpr const char* version_text = "1.0.2";
constexpr const char* build_text = "308";

}  // namespace tanrove
