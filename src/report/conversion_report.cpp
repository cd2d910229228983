// Head, conditions and track list stand here; the other sections follow in their own files.
#include "report/conversion_report.hpp"

#include <algorithm>
#include <string_view>

#include "base/utf8.hpp"
#include "base/version.hpp"
#include "report/account_colours.hpp"
#include "report/count_rows.hpp"
#include "report/name_lists.hpp"
#include "report/report_sections.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_version_bytes = 40;
constexpr std::size_t name_columns = 34;
constexpr char first_printable = ' ';
constexpr char last_printable = '~';

bool is_version(const std::string& text) {
    return !text.empty() && text.size() <= max_version_bytes &&
           std::ranges::all_of(text,
                               [](char c) { return c >= first_printable && c <= last_printable; });
}

void print_session_line(TextBuffer& out, const ReportFacts& facts, const RunTallies& tallies) {
    out.print("session  Pro Tools %d%s, %lld Hz", facts.session_major,
              facts.session_is_or_later ? " or later" : "",
              static_cast<long long>(facts.sample_rate_hz));
    if (facts.bit_depth.bits > 0) {
        out.print(", %d-bit%s", facts.bit_depth.bits, facts.bit_depth.is_float ? " float" : "");
    }
    const std::string label(tallies.head.timecode.label);
    if (!label.empty()) out.print(", %s", label.c_str());
    out.print(", %g BPM%s\n", facts.tempo_bpm, facts.has_tempo_map ? " (tempo map)" : "");
}

void print_head(TextBuffer& out, const ReportFacts& facts, const RunTallies& tallies) {
    out.append(
        "vorlane conversion report\n"
        "=========================\n\n");
    out.print("made with   vorlane %s\n", is_version(facts.application_version)
                                              ? facts.application_version.c_str()
                                              : "(unreleased)");
    out.append("conversion  Pro Tools session (.ptx) to REAPER project (.rpp)\n");
    out.print("converter   build %s\n", build_text);
    if (!facts.problem_kind.empty()) {
        out.print("problem     %s: %s\n", facts.problem_kind.c_str(),
                  shown_name(facts.problem_detail).c_str());
    }
    out.append("\nsource   " + shown_name(facts.session_path) + "\n");
    if (facts.check_only) {
        out.append("output   (not written: this was a check)\n");
    } else {
        out.append("output   " + shown_name(facts.project_path) + "\n");
    }
    print_session_line(out, facts, tallies);
    if (facts.audio_format != AudioFormat::unknown) {
        out.append(facts.audio_format == AudioFormat::wav ? "audio    WAV files\n"
                                                          : "audio    AIFF files\n");
    }
    const TimecodeRuler& ruler = tallies.head.timecode;
    if (facts.has_session_start && !ruler.start.empty()) {
        out.append("start    " + ruler.start + "\n");
        if (!ruler.runs_at.empty()) {
            out.print(
                "         (REAPER has no %s drop-frame ruler: the project's ruler\n"
                "         runs at %s non-drop)\n",
                std::string(ruler.runs_at).c_str(), std::string(ruler.runs_at).c_str());
        }
    }
    out.append("\n");
}

void print_tracks_written(TextBuffer& out, const ReportFacts& facts, const RunTallies& tallies) {
    const int bare = tallies.bare_strip_tracks;
    const int tracks = count_of(tallies.track_facts) - bare;
    out.print("%d tracks (%d audio/aux, %d instrument), %d clips, %d MIDI notes\n", tracks,
              tracks - facts.instrument_tracks, facts.instrument_tracks, tallies.written.clips,
              tallies.written.notes);
    print_count(out, bare, "plus %d send-return bus track(s)\n");
}

void print_frozen_and_solos(TextBuffer& out, const RunTallies& tallies) {
    const FrozenTallies& frozen = tallies.frozen;
    print_count(out, frozen.delivered,
                "%d frozen track(s) delivered FROZEN (Keep frozen tracks frozen is on); Track > "
                "Unfreeze\n"
                "in REAPER restores the source and plug-ins\n");
    const int unfrozen = frozen.frozen_tracks - frozen.delivered;
    if (unfrozen > 0) {
        out.print(
            "%d frozen track(s) converted UNFROZEN - original audio with the\n"
            "plug-ins live and editable (%d internal freeze record(s) left out)\n",
            unfrozen, unfrozen);
    }
    const SoloTallies& solos = tallies.mix.solos;
    if (solos.dropped <= 0) return;
    out.print(
        "%d track(s) soloed AND muted in Pro Tools arrive muted with their solo off\n"
        "(REAPER would play a soloed track through its mute)%s\n",
        solos.dropped,
        solos.solo_track > 0 ? "; an empty soloed track,\n"
                               "\"Pro Tools solo (the soloed tracks were muted)\", keeps the rest "
                               "silent"
                             : "");
}

void print_midi_switches(TextBuffer& out, const MidiTallies& midi) {
    print_count(out, midi.unmuted_events,
                "\"Play MIDI notes Pro Tools silences\" is on: %d MIDI event(s) Pro\n"
                "Tools does not play (outside a clip's boundary) written unmuted\n");
    if (midi.truncation_wanted) {
        out.print(
            "\"Cut MIDI notes at clip edge\" is on: %d note(s) Pro Tools plays past\n"
            "a clip edge are cut there\n",
            midi.notes_past_edge);
    }
}

void print_stand_ins(TextBuffer& out, const ReportFacts& facts, const ChainTallies& chains) {
    const StandInTallies& stand_ins = chains.stand_ins;
    const bool sides_declined = chains.trims.one_sided_declined > 0;
    if (facts.no_stand_ins && (stand_ins.declined > 0 || sides_declined)) {
        out.print(
            "\"Replace Avid plug-ins with REAPER's\" is off: %d Avid plug-in(s) left\n"
            "as named, switched-off slots instead of REAPER's own%s\n",
            stand_ins.declined, sides_declined ? ";\none-sided Trim polarity not carried" : "");
    } else if (facts.no_stand_ins) {
        out.append(
            "\"Replace Avid plug-ins with REAPER's\" is off; no Avid plug-in in this\n"
            "session had a REAPER stand-in\n");
    }
    print_count(out, stand_ins.written,
                "%d Avid plug-in(s) written as REAPER's own equivalents (stand-ins;\n"
                "EQ exact in design, dynamics close, not identical)\n");
    print_count(out, stand_ins.one_pole_filters,
                "%d EQ3 high-pass or low-pass filter(s) set to 6 or 18 dB/oct use\n"
                "REAPER's Simple 1-Pole Filter for 6 dB/oct of the slope\n");
}

void print_colour_switches(TextBuffer& out, const ColourTallies& colours) {
    if (colours.track_colours_off) {
        out.append("\"Leave out track colors\" is on: tracks in REAPER's default color\n");
    }
    if (colours.clip_colours_off) {
        out.print(
            "\"Leave out clip colors\" is on: %d clip(s) that would carry a color\n"
            "are in their track's color instead\n",
            coloured_clips(colours));
    }
}

void print_builds(TextBuffer& out, const IdentityFindings& builds) {
    if (!builds.kept_on_vst3.empty()) {
        std::vector<CountedName> names;
        int instances = 0;
        for (const auto& [key, kept] : builds.kept_on_vst3) {
            names.push_back({shown_name(kept.display_name), kept.instances});
            instances += kept.instances;
        }
        out.print(
            "--prefer-vst2: %d plug-in(s) kept on their VST3 build so their\n"
            "settings carry: %s.\n"
            "Their VST2 builds keep settings in a form that Pro Tools' do not fit\n",
            instances, counted_names(names).c_str());
    }
    if (!builds.kontakt) return;
    out.print(
        "Kontakt: %d instance(s) written for %s, the Kontakt installed\n"
        "here. Pro Tools saved them with Kontakt 6%s\n",
        builds.kontakt->instances, builds.kontakt->name.c_str(),
        builds.kontakt->predicted ? ", and version 7 takes its settings:\ncheck that they load"
                                  : "");
}

void print_master(TextBuffer& out, const MasterTallies& master) {
    if (master.master_faders == 0) return;
    const std::string name = shown_name(master.name);
    if (master.tracks_through_master > 0) {
        out.print("master fader \"%s\" carried as the track \"%s (Pro Tools master fader)\"\n",
                  name.c_str(), name.c_str());
    } else {
        out.print("master fader \"%s\" carried onto the REAPER master\n", name.c_str());
    }
}

/// The name in so many columns: cut between characters, or padded.
std::string in_columns(const std::string& name, std::size_t columns) {
    const std::string text = valid_utf8(shown_name(name));
    std::string_view rest = text;
    std::size_t used = 0;
    while (!rest.empty() && used < columns) {
        rest.remove_prefix(character_bytes(rest));
        ++used;
    }
    return text.substr(0, text.size() - rest.size()) + std::string(columns - used, ' ');
}

void print_track_list(TextBuffer& out, const RunTallies& tallies) {
    out.append("\nTRACK LIST (Pro Tools edit-window order)\n");
    out.print("  %-3s %-34s %5s %5s %3s\n", "#", "name", "clips", "notes", "fx");
    const ChainTallies& chains = tallies.chains;
    for (std::size_t i = 0; i < tallies.track_facts.size(); ++i) {
        const TrackFacts& track = tallies.track_facts[i];
        const int plugins = i < chains.outcomes_a_track.size() ? chains.outcomes_a_track[i] : 0;
        const bool empty = track.clips == 0 && track.notes == 0 && plugins == 0;
        out.print("  %-3d %s %5d %5d %3d%s\n", static_cast<int>(i) + 1,
                  in_columns(track.name, name_columns).c_str(), track.clips, track.notes, plugins,
                  empty ? "   (empty)" : "");
    }
    if (chains.outcomes_on_master > 0) {
        out.print("  %-3s %s %5d %5d %3d\n", "M", in_columns("(the master)", name_columns).c_str(),
                  0, 0, chains.outcomes_on_master);
    }
}

void print_privacy(TextBuffer& out, bool usage_shared) {
    if (usage_shared) {
        out.append(
            "\nPRIVACY\n"
            "  The converter that wrote this report has no network code. It\n"
            "  wrote an anonymous summary of this conversion (counts, and\n"
            "  which plug-ins converted how), which vorlane sends because\n"
            "  usage summaries are on in Help > App settings (what it holds\n"
            "  is told there). The summary holds no track, clip or\n"
            "  file names, no paths and no audio. Nothing else about this\n"
            "  session was transmitted from this computer.\n\n");
    } else {
        out.append(
            "\nPRIVACY\n"
            "  This conversion sent nothing from this computer: the converter\n"
            "  that wrote this report has no network code. No information\n"
            "  about this session was transmitted: no upload, no telemetry,\n"
            "  no usage reporting.\n\n");
    }
    out.append(
        "  This report is your property. It names your tracks, your\n"
        "  plug-ins and the paths to your files. No one receives it\n"
        "  unless you send it. Review its contents before providing it\n"
        "  to any third party.\n");
}

}  // namespace

ConversionReport conversion_report(const ReportFacts& facts, const RunTallies& tallies) {
    TextBuffer out;
    print_head(out, facts, tallies);
    print_tracks_written(out, facts, tallies);
    print_frozen_and_solos(out, tallies);
    print_count(out, tallies.clip_effects.carried,
                "Clip Effects on %d clip(s) written as take FX with REAPER's own\n"
                "plug-ins (EQ and filters exact; dynamics close, not identical)\n");
    print_midi_switches(out, tallies.mix.midi);
    print_stand_ins(out, facts, tallies.chains);
    print_colour_switches(out, tallies.mix.colours);
    print_builds(out, tallies.builds);
    print_master(out, tallies.mix.master);
    print_track_list(out, tallies);
    print_every_plugin(out, tallies.chains, tallies.track_facts);
    print_plugin_names(out, tallies.chains);
    const int needs_look = print_needs_look(out, tallies, facts.console_warnings);
    print_picture_and_wide_tracks(out, tallies);
    print_privacy(out, facts.usage_shared);
    return {out.text(), needs_look};
}

}  // namespace tanrove
