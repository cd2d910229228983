// From Pro Tools' fade shapes to REAPER's: the nearest of the eight shapes that REAPER has, and
// whether it is near enough or a volume envelope follows the curve instead.
#pragma once

#include <cstdint>

#include "session/fades.hpp"
#include "timeline/clip_item.hpp"
#include "timeline/fade_curve.hpp"
#include "timeline/fade_tallies.hpp"

namespace tanrove {

/// REAPER's fade for one side of a Pro Tools fade.
struct ReaperFade {
    double shape = 0;
    double curve = 0;
    double error_db = 0;           ///< from Pro Tools where it is worst; 0: as good as equal
    bool unmeasured = false;       ///< its setting is not known: the plain fade of its family
    bool neutral_s_curve = false;  ///< an S-curve without bend, which Pro Tools plays straight
};

ReaperFade reaper_fade(const FadeSpec& spec, FadeSide side);

/// What the record says of the side. A record without shapes is the plain fade of its family.
ReaperFade reaper_fade(const FadeRecord& record, FadeSide side);

/// The curve that the record has on this side.
FadeSpec clip_fade_spec(const FadeRecord& record, FadeSide side);

/// What a fade may become where REAPER's shapes do not reach Pro Tools' curve.
enum class FadeForm : std::uint8_t {
    exact,  ///< a volume envelope
    plain,  ///< the nearest shape all the same
};

/// The record's fade on one side of a clip, `length` seconds long; counts what its shape became.
/// Whether an envelope follows it in the end is settled, and counted, where the item is written.
ClipFade clip_fade(const FadeRecord& record, FadeSide side, double length, FadeForm form,
                   FadeTallies& tallies);

/// Counts a side that is written as the nearest shape although that differs by `error_db`.
void count_approximated(double error_db, FadeTallies& tallies);

}  // namespace tanrove
