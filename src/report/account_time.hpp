// The summary's sentences on the project's head: tempo, meter, memory locations, pan law, recording
// format, timecode and grid. Each function prints one place of the summary's order.
#pragma once

#include <cstdint>

#include "base/formatted_text.hpp"
#include "project/project_head.hpp"

namespace tanrove {

/// `sample_rate` is the session's, in Hz.
void print_tempo_lines(TextBuffer& out, const TempoTallies& tempo, std::int64_t sample_rate);
void print_meter_and_locations(TextBuffer& out, const MeterChanges& meters,
                               const MarkerTallies& locations);
void print_pan_law(TextBuffer& out, const PanLaw& law);
void print_bit_depth(TextBuffer& out, const RecordFormat& recording);
void print_timecode(TextBuffer& out, const TimecodeRuler& timecode);
void print_grid(TextBuffer& out, const EditGrid& grid);

/// One of the lines that close the console text: a bit depth that the project does not hold.
void print_session_depth_note(TextBuffer& out, const RecordFormat& recording);

}  // namespace tanrove
