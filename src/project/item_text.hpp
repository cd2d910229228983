// The text of one `<ITEM`: what a clip of the session becomes in the project.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "base/text_sink.hpp"
#include "plugins/fx_slot.hpp"
#include "timeline/clip_item.hpp"
#include "timeline/take_envelope.hpp"

namespace tanrove {

/// Place of an item on a track with fixed lanes.
struct LanePlace {
    std::size_t lane = 0;  ///< from 0, below `count`
    std::size_t count = 1;
};

// Lines that items of several kinds share.
void write_item_colour(TextSink& out, const ClipItem& clip);
void write_lane_place(TextSink& out, const LanePlace& place);

/// Writes a clip as an audio item of one take, which `take` plans. `path` is the full path of its
/// file; `place` is given on a track with lanes, `take_chains` are the project's. Every number of
/// the clip must be finite.
void write_audio_item(TextSink& out, const ClipItem& clip, const TakePlan& take,
                      const std::string& path, const std::optional<LanePlace>& place,
                      std::span<const ChainPlan> take_chains = {});

}  // namespace tanrove
