// What the summary says about tempo, meter, memory locations, pan law, recording, timecode and
// grid.
#include "report/account_time.hpp"

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_meters_named = 8;
constexpr double ms_a_second = 1000.0;

void print_ramps(TextBuffer& out, const TempoTallies& tempo, std::int64_t sample_rate) {
    const RampTallies& ramps = tempo.ramps;
    if (tempo.ramps_wanted && ramps.written == 0 && ramps.left_as_steps == 0) {
        out.print(
            "      --tempo-ramps: no drawn ramp here; every tempo event is a\n"
            "      single step in Pro Tools, and is written as one.\n");
    }
    if (ramps.left_as_steps > 0) {
        out.print(
            "      %d ramp(s) left as Pro Tools' steps: the tempos needed to\n"
            "      play the same beats on straight lines lie too far from the\n"
            "      stored ones. Those stretches play exactly as in Pro Tools.\n",
            ramps.left_as_steps);
    }
    if (ramps.written > 0) {
        out.print(
            "      --tempo-ramps: %d drawn ramp(s) written as a REAPER ramp you can grab\n"
            "      and reshape, instead of the run of fixed steps Pro Tools stores.\n"
            "      No tempo event moves by more than %.3f ms (%.1f samples).\n",
            ramps.written, ramps.greatest_difference_seconds * ms_a_second,
            ramps.greatest_difference_seconds * static_cast<double>(sample_rate));
    }
}

void print_meter_changes(TextBuffer& out, const MeterChanges& meters) {
    if (meters.changes.empty()) return;
    const int count = count_of(meters.changes);
    const std::size_t named = std::min(meters.changes.size(), max_meters_named);
    out.print("  NOTE: this session has %d meter change(s) after the first,\n", count);
    for (const MeterPoint& meter : std::span(meters.changes).first(named)) {
        out.print("      %u/%u at bar %d\n", meter.numerator, meter.denominator, meter.bar);
    }
    if (meters.changes.size() > named) {
        out.print("      ... and %d more\n", count - static_cast<int>(named));
    }
    out.print(
        "      All %d are written as REAPER time signature changes, at\n"
        "      the places where Pro Tools has them.\n",
        count);
}

void print_repeated_meters(TextBuffer& out, const MeterChanges& meters) {
    if (meters.repeated.empty()) return;
    out.print(
        "  %d meter event(s) repeat the meter already in force -- no bar\n"
        "      line moves because of them, and they are not written:%s\n",
        count_of(meters.repeated), meters_at_bars(meters.repeated, max_meters_named).c_str());
}

void print_meters(TextBuffer& out, const MeterChanges& meters) {
    if (!meters.has_map) {
        out.print("  no meter map in this session: 4/4 throughout\n");
        return;
    }
    out.print("  meter %d/%d, read from the session\n", static_cast<int>(meters.first.numerator),
              static_cast<int>(meters.first.denominator));
    if (meters.measure_offset != 0) {
        out.print(
            "  The session begins at bar %d, and so does the project:\n"
            "      its ruler counts bars from there.\n",
            meters.measure_offset + 1);
    }
    print_meter_changes(out, meters);
    print_repeated_meters(out, meters);
}

std::string joined(const std::set<int>& numbers) {
    std::string list;
    for (const int number : numbers) {
        list += formatted(list.empty() ? "%d" : ", %d", number);
    }
    return list;
}

void print_location_colours(TextBuffer& out, const MarkerTallies& locations) {
    if (locations.coloured > 0) {
        out.print(
            "      %d of them carried a marker color. A marker Pro Tools\n"
            "      shows in its default color is left to REAPER's default.\n",
            locations.coloured);
    }
    if (locations.unknown_colours > 0) {
        out.print(
            "      %d marker(s) carry a Pro Tools color this build cannot\n"
            "      name, and keep REAPER's default color. Please send the\n"
            "      session in, and say which colors Pro Tools shows. Palette\n"
            "      index(es): %s\n",
            locations.unknown_colours, joined(locations.unknown_colour_slots).c_str());
    }
}

void print_locations(TextBuffer& out, const MarkerTallies& locations) {
    if (locations.markers > 0) {
        out.print("  %d memory location(s) written as REAPER markers\n", locations.markers);
    }
    if (locations.regions > 0) {
        out.print(
            "  %d written as REAPER REGIONS -- those are Pro Tools\n"
            "      selections, which have an end as well as a start.\n",
            locations.regions);
    }
    print_location_colours(out, locations);
    if (locations.without_time > 0) {
        out.print(
            "  %d memory location(s) have time property NONE and were NOT\n"
            "      written: they recall a zoom, a view or the like and have no\n"
            "      place on the timeline where REAPER could show them.\n",
            locations.without_time);
    }
    const bool any_written = locations.markers > 0 || locations.regions > 0;
    if (any_written && locations.coloured == 0 && locations.unknown_colours == 0) {
        out.print(
            "      None carried a stored marker color, so REAPER shows them\n"
            "      in its own default color.\n");
    }
}

}  // namespace

void print_tempo_lines(TextBuffer& out, const TempoTallies& tempo, std::int64_t sample_rate) {
    if (tempo.changes > 0) {
        out.print("  tempo map with %d changes\n", tempo.changes);
        print_ramps(out, tempo, sample_rate);
    }
    if (tempo.first_point_refused) {
        out.print(
            "  NOTE: the first event of this session's tempo map holds a tempo\n"
            "      that is not between 5 and 500 BPM in quarter notes, so the map\n"
            "      was left out and the project runs at %g BPM throughout.\n"
            "      Check it against Pro Tools: what stands on bars and beats may\n"
            "      have moved. --tempo gives the project another tempo.\n",
            tempo.bpm);
    }
    if (tempo.breaks_off.event > 0) {
        out.print(
            "  NOTE: this session's tempo map breaks off at its event %d of %d: a\n"
            "      tempo that is not between 5 and 500 BPM in quarter notes, or a\n"
            "      place in front of the session's start or of the event before\n"
            "      it. What follows was left out, and from %.3f s on the project\n"
            "      runs at %g BPM.\n"
            "      Check it against Pro Tools: what stands on bars and beats may\n"
            "      have moved.\n",
            tempo.breaks_off.event, tempo.breaks_off.stored, tempo.last_seconds, tempo.last_bpm);
    }
}

void print_meter_and_locations(TextBuffer& out, const MeterChanges& meters,
                               const MarkerTallies& locations) {
    print_meters(out, meters);
    print_locations(out, locations);
}

void print_pan_law(TextBuffer& out, const PanLaw& law) {
    if (!law.known) {
        out.print(
            "  *** Pan Depth enum %d is not one this build knows.\n"
            "      PANLAW was written as -3.0 dB, Pro Tools' default.\n"
            "      Check Setup > Pan Depth against REAPER's pan law.\n",
            law.stored);
        return;
    }
    out.print(
        "  Pan law: %.1f dB, read from the session's Pan Depth\n"
        "      and written as the project's pan law.\n",
        law.depth_db);
    if (law.worst_error_db > 0) {
        out.print(
            "      Centered and hard-panned tracks play as in Pro Tools. REAPER has\n"
            "      no pan law that follows Pro Tools' curve at this depth, so a\n"
            "      track panned part of the way plays up to %.1f dB from Pro Tools.\n",
            law.worst_error_db);
    }
}

void print_bit_depth(TextBuffer& out, const RecordFormat& recording) {
    if (recording.is_aiff && recording.bits > 0) {
        out.print(
            "  Bit depth: %d-bit AIFF session; REAPER's recording format is\n"
            "      left at its default, 24-bit WAV. To record AIFF, choose it\n"
            "      under Project settings > Media.\n",
            recording.bits);
    }
    if (recording.written) {
        out.print(
            "  Bit depth: %d-bit%s written as REAPER's recording format, so\n"
            "      what you record there matches the session.\n",
            recording.bits, recording.is_float ? " float" : "");
    }
}

void print_timecode(TextBuffer& out, const TimecodeRuler& timecode) {
    const std::string rate(timecode.rate);
    const std::string runs_at(timecode.runs_at);
    if (timecode.written) {
        out.print(
            "  Timecode: %s fps, Session Start %s (%.4f s) written as\n"
            "      REAPER's project start time and ruler.\n",
            rate.c_str(), timecode.start.c_str(), timecode.offset_seconds);
    }
    if (timecode.written && timecode.may_be_pulled_down) {
        out.print(
            "      Pro Tools stores 24 and 23.976 the same way, and with no\n"
            "      second record of the rate this is taken as 24. If the session\n"
            "      is at 23.976, choose that rate in REAPER's project settings.\n");
    }
    if (timecode.runs_at == "30") {
        out.print(
            "      REAPER has no 30 drop-frame setting; the ruler runs at 30\n"
            "      non-drop: the same speed, without the numbers Pro Tools skips.\n");
    } else if (!timecode.runs_at.empty()) {
        out.print(
            "      REAPER has no %s drop-frame setting; the ruler runs at %s\n"
            "      non-drop: the same speed, without the numbers Pro Tools skips.\n",
            runs_at.c_str(), runs_at.c_str());
    }
}

const char* unit_words(CountUnit unit) {
    switch (unit) {
        case CountUnit::minutes:
            return "minutes and seconds";
        case CountUnit::timecode:
            return "timecode";
        case CountUnit::feet:
            return "feet and frames";
        case CountUnit::samples:
            return "samples";
        case CountUnit::bars:
            break;
    }
    return "bars and beats";
}

std::string nudge_text(const GridSetting& nudge) {
    if (nudge.unit != CountUnit::bars) return nudge.text;
    return formatted("%ld| %ld| %03ld", static_cast<long>(nudge.bars),
                     static_cast<long>(nudge.beats), static_cast<long>(nudge.ticks));
}

void print_grid(TextBuffer& out, const EditGrid& grid) {
    if (grid.quarter_notes) {
        out.print("  Edit grid written as REAPER's grid (%g of a quarter note).\n",
                  *grid.quarter_notes);
    }
    if (grid.other_unit) {
        out.print(
            "  The edit grid counts %s (%s). It is not written:\n"
            "      REAPER keeps the grid that it has.\n",
            unit_words(grid.other_unit->unit), grid.other_unit->text.c_str());
    }
    if (grid.nudge) {
        out.print(
            "      Nudge (%s) is not carried: REAPER keeps its\n"
            "      nudge amount in the program, not in the project.\n",
            nudge_text(*grid.nudge).c_str());
    }
}

void print_session_depth_note(TextBuffer& out, const RecordFormat& recording) {
    const bool is_told = recording.written || recording.is_aiff;
    const bool is_default = recording.bits == 24 && !recording.is_float;
    if (recording.bits == 0 || is_told || is_default) return;
    out.print(
        "  The session records at %d-bit%s. Existing audio is unaffected\n"
        "      (each file states its own depth), but REAPER's own recording\n"
        "      format is left at its default -- set it if you will overdub.\n",
        recording.bits, recording.is_float ? " float" : "");
}

}  // namespace tanrove
