// The account's sentences about picture.
#pragma once

#include "base/formatted_text.hpp"
#include "mix/colour_tallies.hpp"
#include "mix/video_plan.hpp"

namespace tanrove {

/// Behind the MIDI on sample-based tracks, in front of the groups left alone.
void print_video(TextBuffer& out, const VideoTallies& tallies, const ColourTallies& colours);

}  // namespace tanrove
