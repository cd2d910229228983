// The gain that Pro Tools plays inside a fade: the curve that an item's volume envelope follows
// where REAPER has no fade of that form.
#pragma once

#include <cstdint>
#include <optional>

#include "timeline/clip_item.hpp"

namespace tanrove {

/// The family of fades that keep the power; the others keep the gain.
constexpr std::uint32_t equal_power_family = 1;

/// Pro Tools' types of fades.
namespace fade_type {
constexpr std::int32_t standard = 0;
constexpr std::int32_t s_curve = 1;
constexpr std::int32_t preset = 2;
constexpr std::int32_t step = 3;
}  // namespace fade_type

/// The same fade with its type and setting in the few forms that have a curve of their own:
/// standard, S-curve, equal gain preset and step. Nullopt for settings whose curve nobody has
/// measured.
std::optional<FadeSpec> normal_form(const FadeSpec& spec, FadeSide side);

/// Pro Tools' linear gain, 0 to 1, at the fraction `t` of the fade; `t` outside 0 to 1 counts as
/// the nearer end. A fade whose curve is not known is a straight line.
double fade_gain(const FadeSpec& spec, FadeSide side, double t);

}  // namespace tanrove
