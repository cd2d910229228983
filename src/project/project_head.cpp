// The head's plan from the session's records, and its lines in their order.
#include "project/project_head.hpp"

#include "project/envelope_text.hpp"
#include "project/fx_chain_text.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

void write_notes(TextSink& out, const std::vector<std::string>& notes) {
    if (notes.empty()) return;
    out.line(1, "<NOTES 0 2");
    for (const std::string& line : notes) out.line(2, "|%s", line.c_str());
    out.line(1, ">");
}

void write_edit_modes(TextSink& out) {
    out.line(1, "RIPPLE 0");
    out.line(1, "GROUPOVERRIDE 0 0 0");
    out.line(1, "AUTOXFADE 1");
}

void write_rate_and_tempo(TextSink& out, const HeadPlan& plan) {
    out.line(1, "SAMPLERATE %lld 0 0", static_cast<long long>(plan.sample_rate));
    out.line(1, "TEMPO %g %d %d", plan.tempo_bpm, static_cast<int>(plan.meter.numerator),
             static_cast<int>(plan.meter.denominator));
    out.line(1, "PLAYRATE 1 0 0.25 4");
}

void write_ruler(TextSink& out, const TimecodeRuler& ruler, int measure_offset) {
    if (ruler.written || measure_offset != 0) {
        const double offset_seconds = ruler.written ? ruler.offset_seconds : 0;
        out.line(1, "PROJOFFS %.10f %d 0", offset_seconds, measure_offset);
    }
    if (!ruler.written) return;
    out.line(1, "TIMEMODE 1 5 -1 %d %d 0 -1 0", ruler.nominal_fps,
             static_cast<int>(ruler.drop_mode));
}

void write_recording(TextSink& out, const RecordFormat& format) {
    out.line(1, "<RECORD_CFG");
    if (format.written) out.line(2, "%s", wav_record_config(format.bits).c_str());
    out.line(1, ">");
    out.line(1, "<APPLYFX_CFG");
    out.line(1, ">");
    out.line(1, "RENDER_FILE \"\"");
}

void write_tempo_envelope(TextSink& out, const TempoEnvelope& points) {
    if (points.empty()) return;
    out.line(1, "<TEMPOENVEX");
    for (const TempoEnvelopePoint& point : points) {
        const int shape = static_cast<int>(point.shape);
        if (point.flag == TempoPointFlag::tempo) {
            out.line(2, "PT %.10f %.6f %d", point.position_seconds, point.bpm, shape);
        } else {
            out.line(2, "PT %.10f %.6f %d %ld 0 %d", point.position_seconds, point.bpm, shape,
                     static_cast<long>(point.signature), static_cast<int>(point.flag));
        }
    }
    out.line(1, ">");
}

void write_pan_law(TextSink& out, const PanLaw& law) {
    out.line(1, "PANLAW %.10f", law.gain);
    if (law.flags != 0) out.line(1, "PANLAWFLAGS %d", law.flags);
}

/// Returns the points of its envelopes.
int write_master(TextSink& out, const MasterPlan& master) {
    out.line(1, "MASTER_VOLUME %.9f %.6f -1 -1.000000 1.000000", master.gain, master.pan);
    out.line(1, "MASTER_PANMODE 3");
    if (master.has_fader) out.line(1, "MASTERAUTOMODE %d", master.automation_off ? 0 : 1);
    int points = 0;
    for (const EnvelopePlan& envelope : master.envelopes) {
        points += write_envelope(out, 1, envelope);
    }
    return points;
}

}  // namespace

HeadPlan plan_project_head(const HeadRecords& records, bool tempo_ramps, HeadTallies& tallies) {
    const TempoClock clock(records.tempo.map, records.tempo.bpm);
    tallies.meters = meter_changes(records.meters);
    tallies.timecode = plan_timecode_ruler(records.frame_rate, records.extended_timecode);
    tallies.recording = plan_record_format(records.audio_format, records.bit_depth);
    tallies.pan_law = pan_law(records.pan_depth);
    tallies.grid = plan_grid(records.grid_and_nudge, tallies.meters.first);

    return {
        .notes = {},
        .sample_rate = records.sample_rate,
        .tempo_bpm = printable(records.tempo.bpm),
        .meter = tallies.meters.first,
        .timecode = tallies.timecode,
        .measure_offset = tallies.meters.measure_offset,
        .recording = tallies.recording,
        .tempo_envelope =
            plan_tempo_envelope(records.tempo, clock, tallies.meters, tempo_ramps, tallies.tempo),
        .markers = plan_markers(records.locations, clock, records.sample_rate, tallies.markers),
        .pan_law = tallies.pan_law,
        .grid = tallies.grid,
        .master = {},
        .master_chain = {},
    };
}

int write_project_head(TextSink& out, const HeadPlan& plan) {
    out.line(0, "<REAPER_PROJECT 0.1 \"7.0\" 0");
    write_notes(out, plan.notes);
    write_edit_modes(out);
    write_rate_and_tempo(out, plan);
    write_ruler(out, plan.timecode, plan.measure_offset);
    write_recording(out, plan.recording);
    write_tempo_envelope(out, plan.tempo_envelope);
    write_markers(out, plan.markers);
    out.line(1, "MASTERMUTESOLO %d", plan.master.muted ? 1 : 0);
    out.line(1, "MASTER_NCH %d 2", plan.master.channels);
    write_pan_law(out, plan.pan_law);
    if (plan.grid.quarter_notes) {
        out.line(1, "GRID 3199 8 %.14g 8 1 0 0 0", *plan.grid.quarter_notes);
    }
    const int points = write_master(out, plan.master);
    write_fx_chain(out, 1, "MASTERFXLIST", plan.master_chain);
    return points;
}

void write_project_end(TextSink& out) {
    out.line(0, ">");
}

}  // namespace tanrove
