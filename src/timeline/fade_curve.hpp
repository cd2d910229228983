// The gain that Pro Tools plays inside a fade: the curve that an item's volume envelope follows
// where REAPER has no fade of that form.
#pragma once

#include <optional>

#include "timeline/clip_item.hpp"

namespace tanrove {

/// The same fade with its type and setting in the few forms that have a curve of their own:
/// standard, S-curve, equal gain preset and step. Nullopt for settings whose curve nobody has
/// measured.
std::optional<FadeSpec> normal_form(const FadeSpec& spec, FadeSide side);

/// Pro Tools' linear gain, 0 to 1, at the fraction `t` of the fade; `t` outside 0 to 1 counts as
/// the nearer end. A fade whose curve is not known is a straight line.
double fade_gain(const FadeSpec& spec, FadeSide side, double t);

}  // namespace tanrove
