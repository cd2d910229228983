// Names of tracks, as Pro Tools shows them: which of them something is true of.
#pragma once

#include <functional>
#include <set>
#include <string>

namespace tanrove {

using TrackNameSet = std::set<std::string, std::less<>>;

}  // namespace tanrove
