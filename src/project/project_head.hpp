// The head of the project: every line from the opening tag to the master's, ahead of the tracks.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/text_sink.hpp"
#include "mix/master_fader.hpp"
#include "plugins/fx_slot.hpp"
#include "project/edit_grid.hpp"
#include "project/markers.hpp"
#include "project/meter_changes.hpp"
#include "project/pan_law.hpp"
#include "project/project_notes.hpp"
#include "project/record_format.hpp"
#include "project/tempo_envelope.hpp"
#include "project/timecode_ruler.hpp"
#include "session/session_settings.hpp"

namespace tanrove {

/// What the session's readers found for the head. The spans belong to the caller.
struct HeadRecords {
    std::int64_t sample_rate = 48000;
    SessionTempo tempo = {};
    std::span<const MeterPoint> meters = {};
    std::span<const MemoryLocation> locations = {};
    std::optional<FrameRate> frame_rate = {};
    std::optional<ExtendedTimecode> extended_timecode = {};
    AudioFormat audio_format = AudioFormat::unknown;
    std::optional<BitDepth> bit_depth = {};
    std::optional<int> pan_depth = {};
    std::optional<GridAndNudge> grid_and_nudge = {};
};

/// The head as it will be written, every decision taken.
struct HeadPlan {
    std::vector<std::string> notes;  ///< from `notes_lines`; empty for no notes
    std::int64_t sample_rate = 48000;
    double tempo_bpm = default_tempo_bpm;
    MeterPoint meter;
    TimecodeRuler timecode;
    int measure_offset = 0;  ///< of the first bar's number from 1
    RecordFormat recording;
    TempoEnvelope tempo_envelope;  ///< empty for no envelope
    std::vector<MarkerPlan> markers;
    PanLaw pan_law;
    EditGrid grid;
    MasterPlan master;       ///< at rest until the mix has planned it
    ChainPlan master_chain;  ///< the plug-ins of the master fader
};

/// What the account tells of the head.
struct HeadTallies {
    TempoTallies tempo;
    MeterChanges meters;
    MarkerTallies markers;
    PanLaw pan_law;
    RecordFormat recording;
    TimecodeRuler timecode;
    EditGrid grid;
};

/// Everything but `notes` and `master`, which come from the tracks and the mixer.
HeadPlan plan_project_head(const HeadRecords& records, bool tempo_ramps, HeadTallies& tallies);

/// Opens the project and leaves it open for the tracks. Returns the points of the master's
/// envelopes.
int write_project_head(TextSink& out, const HeadPlan& plan);

/// Closes the project.
void write_project_end(TextSink& out);

}  // namespace tanrove
