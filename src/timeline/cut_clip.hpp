// Clips under the knife: what is left of one where another covers it, or its group's window ends.
#pragma once

#include "timeline/clip_item.hpp"

namespace tanrove {

/// Ends the clip `length` seconds behind its start, with its markers and fades.
void cut_tail(ClipItem& clip, double length);

/// Ends fades that are longer than the clip where it ends.
void clamp_fades(ClipItem& clip);

/// Takes the first `cut` seconds off the clip: what is left plays as it did.
void start_later(ClipItem& clip, double cut, double rate_hz);

}  // namespace tanrove
