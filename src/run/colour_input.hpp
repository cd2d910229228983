// What a conversion's tracks and clips are coloured by.
#pragma once

#include <span>

#include "mix/plan_colours.hpp"
#include "project/markers.hpp"
#include "run/run_options.hpp"
#include "run/session_records.hpp"

namespace tanrove {

/// `markers` are the project's, regions among them.
ColourInput colour_input(const RunOptions& options, const ColourTheme& theme,
                         const ClipRecords& clips, const StripRecords& strips,
                         const MidiRecords& midi, std::span<const MarkerPlan> markers);

}  // namespace tanrove
