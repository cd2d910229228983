// The account's sentences about tracks that play into surround buses.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/plan_panners.hpp"

namespace tanrove {

/// Behind the auxes that take surround buses.
void print_panners(TextBuffer& out, const PannerTallies& tallies);

}  // namespace tanrove
