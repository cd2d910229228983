// The small empty item whose notes are a track's comment.
#pragma once

#include <cstdint>

#include "base/text_sink.hpp"
#include "mix/track_plan.hpp"

namespace tanrove {

/// Writes the item at the start of the track, if the plan has lines of a comment. `index` is the
/// track's place in the project; the item's identifier is made from it.
void write_comment_item(TextSink& out, const TrackPlan& plan, std::uint32_t index);

}  // namespace tanrove
