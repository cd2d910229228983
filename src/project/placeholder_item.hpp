// The empty item in place of a clip group that holds no audio, such as a cue of a recording list.
#pragma once

#include <cstdint>
#include <optional>

#include "base/text_sink.hpp"
#include "project/item_text.hpp"
#include "timeline/clip_item.hpp"

namespace tanrove {

/// `number` counts these items over the whole project.
void write_placeholder_item(TextSink& out, const ClipItem& clip, std::uint32_t number,
                            const std::optional<LanePlace>& place);

}  // namespace tanrove
