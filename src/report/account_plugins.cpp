// Every insert of a written track has one outcome; the lists are those outcomes, by name.
#include "report/account_plugins.hpp"

#include <algorithm>
#include <functional>
#include <map>

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_multi_mono = 8;

constexpr CountRow<ChainTallies> bypassed_rows[] = {
    {&ChainTallies::carried_bypassed, "  %d plug-in(s) carried across bypassed\n"},
    {&ChainTallies::master_slots, "  %d insert(s) on the Master Fader carried\n"},
};

constexpr CountRow<ChainTallies> offline_rows[] = {
    {&ChainTallies::inactive_offline,
     "  %d plug-in(s) were INACTIVE in Pro Tools, written offline\n"
     "      and bypassed: Pro Tools did not run them either\n"},
    {&ChainTallies::written_offline,
     "  %d of them written OFFLINE - no DSP, no RAM, one click to restore\n"},
};

constexpr CountRow<PluginLaneTallies> automation_rows[] = {
    {&PluginLaneTallies::points, "  %d plug-in parameter automation points\n"},
    {&PluginLaneTallies::placed_by_id,
     "      %d automated control(s) placed by the parameter number that\n"
     "      the plug-in itself gave Pro Tools\n"},
    {&PluginLaneTallies::placed_by_name,
     "      %d automated control(s) placed by matching their name in a\n"
     "      table of the plug-in's parameters in REAPER\n"},
    {&PluginLaneTallies::unassigned,
     "  %d automation lane(s) written SWITCHED OFF, titled \"ASSIGN\": which\n"
     "      of the plug-in's parameters they move is not known, and a guess\n"
     "      could turn the wrong knob. Their points are there: in REAPER,\n"
     "      give each its parameter and switch it on\n"},
    {&PluginLaneTallies::on_defaults,
     "  %d automation lane(s) NOT carried on plug-ins that arrive at their\n"
     "      defaults, hold a Pro Tools-only slot or are left out\n"},
    {&PluginLaneTallies::on_stand_ins,
     "  %d automation lane(s) NOT carried on Avid plug-ins written as\n"
     "      REAPER's own: they keep the value that the session was saved with\n"},
    {&PluginLaneTallies::of_bypass,
     "  %d plug-in bypass automation lane(s) NOT carried -- the plug-in\n"
     "      keeps the bypass state that the session was saved with\n"},
};

using OutcomeFilter = std::function<bool(const PluginOutcome&)>;

int count_outcomes(const ChainTallies& tallies, const OutcomeFilter& is_meant) {
    return static_cast<int>(std::ranges::count_if(tallies.outcomes, is_meant));
}

OutcomeFilter of_kind(OutcomeKind kind) {
    return [kind](const PluginOutcome& outcome) { return outcome.kind == kind; };
}

/// One line a plug-in, sorted by name, with the reason of its first instance.
void print_outcomes(TextBuffer& out, const ChainTallies& tallies, const OutcomeFilter& is_meant,
                    const char* reason = nullptr) {
    struct Listed {
        int count = 0;
        std::string reason;
    };
    std::map<std::string, Listed> by_name;
    for (const PluginOutcome& outcome : tallies.outcomes) {
        if (!is_meant(outcome)) continue;
        Listed& listed = by_name[shown_name(outcome.display_name)];
        if (listed.count++ == 0) listed.reason = reason == nullptr ? outcome.reason : reason;
    }
    for (const auto& [name, listed] : by_name) {
        out.print("      %-24s x%d   %s\n", name.c_str(), listed.count, listed.reason.c_str());
    }
}

/// A line for each loss, with how many have it.
void print_notes(TextBuffer& out, const std::map<std::string, int>& notes) {
    for (const auto& [note, count] : notes) out.print("      %s (x%d)\n", note.c_str(), count);
}

void print_offline_placed(TextBuffer& out, const ChainTallies& tallies,
                          const IdentityFindings& findings) {
    const auto placed = of_kind(OutcomeKind::without_settings);
    const int count = count_outcomes(tallies, placed);
    if (count == 0) return;
    out.print(
        "    %d placed OFFLINE - the plug-in is named but its\n"
        "      Pro Tools settings are not in the project. Bring it online and\n"
        "      set it by ear against the Pro Tools mix:\n",
        count);
    print_outcomes(out, tallies, placed);
    const int without_class = count_outcomes(tallies, [&](const PluginOutcome& outcome) {
        return placed(outcome) && findings.without_class.contains(outcome.key);
    });
    if (without_class == 0) return;
    out.print(
        "      (%d of these were named from a .vst3 entry, whose class\n"
        "      REAPER's list does not tell; if one shows as missing, open\n"
        "      REAPER, rescan plug-ins and convert again)\n",
        without_class);
}

void print_left_out(TextBuffer& out, const ChainTallies& tallies) {
    const auto print = [&](OutcomeKind kind, CountText text) {
        const int count = count_outcomes(tallies, of_kind(kind));
        if (count == 0) return;
        text.print(out, count);
        print_outcomes(out, tallies, of_kind(kind));
    };
    print(OutcomeKind::left_out_without_settings,
          "    %d skipped - Pro Tools stored no transferable state:\n");
}

void print_not_there(TextBuffer& out, const ChainTallies& tallies) {
    const auto left_out = of_kind(OutcomeKind::left_out_not_installed);
    if (const int count = count_outcomes(tallies, left_out); count > 0) {
        out.print(
            "    %d NOT INSTALLED for REAPER on this machine and LEFT OUT (as\n"
            "      asked, --skip-missing-fx):\n",
            count);
        print_outcomes(out, tallies, left_out);
    }
    if (const int count = count_outcomes(tallies, of_kind(OutcomeKind::left_out_unheard));
        count > 0) {
        out.print(
            "    %d LEFT OUT because Pro Tools did not play them: bypassed or\n"
            "      inactive (as asked, --skip-bypassed-fx)\n",
            count);
    }
}

void print_needs(TextBuffer& out, const ChainTallies& tallies) {
    out.append(
        "    WHAT REAPER NEEDS INSTALLED, AND WHAT IT DOES NOT:\n"
        "      nothing of Pro Tools: the session file is all that is read.\n"
        "      REAPER cannot load an AAX: a plug-in of the project has to be on\n"
        "      this machine as VST or CLAP too, REAPER's own excepted.\n");
    const OutcomeFilter missing = [](const PluginOutcome& outcome) {
        return outcome.not_installed && (outcome.kind == OutcomeKind::carried ||
                                         outcome.kind == OutcomeKind::without_settings);
    };
    if (count_outcomes(tallies, missing) > 0) {
        out.append(
            "      These are in the project, and REAPER's list of this machine does\n"
            "      not have them. They show as missing until they are installed:\n");
        print_outcomes(out, tallies, missing, "not installed for REAPER here");
    }
    // Of REAPER's own, and of what only Pro Tools has, the list would tell nothing.
    const int to_check = count_outcomes(tallies, [](const PluginOutcome& outcome) {
        return outcome.kind != OutcomeKind::aax_only && outcome.format != "reaper";
    });
    if (!tallies.plugin_list_missing || to_check == 0) return;
    out.append(
        "      This run could not check which of them you have: REAPER's own\n"
        "      plug-in list was not found on this computer. REAPER writes that\n"
        "      list when it scans plug-ins, so open REAPER once, then check the\n"
        "      session again and the missing ones are named exactly.\n");
}

void print_not_recognized(TextBuffer& out, const ChainTallies& tallies) {
    const auto unknown = of_kind(OutcomeKind::not_recognized);
    const int count = count_outcomes(tallies, unknown);
    if (count == 0) return;
    out.print(
        "    %d not recognized:\n"
        "      Avid's own stock processors exist only as AAX and no tool can\n"
        "      load those; for the others, rescan plug-ins in REAPER and\n"
        "      convert again, or teach one with --learn. They are NOT in the\n"
        "      project: what they did to the sound is missing\n",
        count);
    print_outcomes(out, tallies, unknown);
}

void print_aax_only(TextBuffer& out, const ChainTallies& tallies) {
    const auto only_aax = of_kind(OutcomeKind::aax_only);
    const int count = count_outcomes(tallies, only_aax);
    if (count == 0) return;
    out.print("    %d cannot transfer - AAX only, no VST/VST3 version exists:\n", count);
    print_outcomes(out, tallies, only_aax);
    const int heard = count_outcomes(tallies, [&](const PluginOutcome& outcome) {
        return only_aax(outcome) && outcome.processed_audio();
    });
    if (heard == 0) {
        out.print("      None of these processed audio: the mix is unaffected.\n");
        return;
    }
    out.print(
        "      Avid ships these with Pro Tools in AAX form only. No other host\n"
        "      can load them; where a slot holds the name, replace it there.\n"
        "      %d of these processed audio, so that much of the mix is\n"
        "      missing until something stands in for them.\n",
        heard);
}

}  // namespace

void print_bypassed_plugins(TextBuffer& out, const ChainTallies& tallies) {
    print_rows(out, tallies, bypassed_rows);
}

void print_offline_plugins(TextBuffer& out, const ChainTallies& tallies) {
    print_rows(out, tallies, offline_rows);
}

void print_misled_keys(TextBuffer& out, const ChainTallies& tallies) {
    print_count(out, tallies.master_keys,
                "  WARNING: %d sidechained plug-in(s) on the Master Fader hear NO key:\n"
                "      REAPER's master takes no sends that could bring it. Print their\n"
                "      work in Pro Tools, or key them on a track in front of the master\n");
    const int misled = count_of(tallies.misled_claps);
    if (!print_count(out, misled,
                     "  WARNING: %d keyed plug-in(s) are written as their CLAP build, which\n"
                     "      listens to channels 3/4, and their key plays on others: set\n"
                     "      their pins in REAPER, or convert without --prefer-clap:\n")) {
        return;
    }
    out.print("%s", one_name_a_line(tallies.misled_claps, no_cap).c_str());
}

void print_midi_triggers(TextBuffer& out, const ChainTallies& tallies) {
    if (tallies.midi_switched_off.empty()) return;
    out.print("  %d plug-in(s) on MIDI tracks had MIDI triggering switched off:\n",
              count_of(tallies.midi_switched_off));
    out.print("%s", one_name_a_line(tallies.midi_switched_off, no_cap).c_str());
    out.print(
        "      Pro Tools leaves this on but routes nothing to it, so it never\n"
        "      acts; in REAPER the track's notes would drive it. Keep it with\n"
        "      --keep-plugin-midi\n");
}

void print_plugin_automation(TextBuffer& out, const ChainTallies& tallies) {
    print_rows(out, tallies.lanes, automation_rows);
}

void print_clip_effects(TextBuffer& out, const ClipEffectsTallies& tallies) {
    print_count(out, tallies.inverted,
                "  %d clip(s) had Clip Effects POLARITY switched on: carried as\n"
                "      the polarity of their take\n");
    if (tallies.carried > 0) {
        std::vector<CountedName> parts;
        for (const auto& [part, count] : tallies.parts) parts.push_back({part, count});
        out.print(
            "  %d clip(s) carry Pro Tools Clip Effects, written as take FX on\n"
            "      REAPER's own plug-ins (EQ and filters exact; dynamics close,\n"
            "      not identical): %s\n",
            tallies.carried, counted_names(parts).c_str());
    }
    if (tallies.notes.empty() && tallies.of_groups == 0) return;
    out.append("  Clip Effects approximated or left out:\n");
    print_notes(out, tallies.notes);
    print_count(out, tallies.of_groups,
                "      %d clip group(s) have Clip Effects of their own: not carried,\n"
                "      their clips keep theirs\n");
}

void print_stand_ins(TextBuffer& out, const StandInTallies& tallies) {
    print_count(out, tallies.written,
                "  %d Avid plug-in(s) arrive as REAPER's own equivalents, in the\n"
                "      same slots and with the same settings: EQ exact in design,\n"
                "      dynamics close, not identical\n");
    if (tallies.eq_fits.fitted_bands > 0) {
        out.print(
            "      EQ3: %d band(s) fitted onto ReaEQ to follow Pro Tools' own\n"
            "      curves up to 20 kHz, with %d section(s) more; the worst is\n"
            "      %.2f dB off\n",
            tallies.eq_fits.fitted_bands, tallies.eq_fits.extra_sections, tallies.eq_fits.worst_db);
    }
    print_count(out, tallies.one_pole_filters,
                "      EQ3: %d high-pass or low-pass filter(s) set to 6 or 18\n"
                "      dB/oct use REAPER's Simple 1-Pole Filter for 6 dB/oct of\n"
                "      the slope\n");
    if (tallies.notes.empty()) return;
    out.append("  Avid stand-ins approximated or left out:\n");
    print_notes(out, tallies.notes);
}

void print_stand_in_options(TextBuffer& out, const ChainTallies& tallies) {
    if (!tallies.stand_ins.none_wanted) return;
    if (tallies.stand_ins.declined == 0) {
        out.print(
            "  --no-stand-ins: on; no Avid plug-in in this session had a\n"
            "      stand-in\n");
    } else {
        out.print(
            "  --no-stand-ins: %d Avid plug-in(s) left in their slot under\n"
            "      their own name, where REAPER's own could have played for them\n",
            tallies.stand_ins.declined);
    }
    print_count(out, tallies.trims.one_sided_declined,
                "      %d track(s) where a Trim flips one side only play both sides\n"
                "      upright\n");
}

void print_plugin_builds(TextBuffer& out, const IdentityFindings& findings) {
    if (!findings.kept_on_vst3.empty()) {
        int instances = 0;
        std::vector<CountedName> names;
        for (const auto& [key, kept] : findings.kept_on_vst3) {
            instances += kept.instances;
            names.push_back({kept.display_name, kept.instances});
        }
        out.print(
            "  --prefer-vst2: %d plug-in(s) kept on their VST3 build so their\n"
            "      settings arrive: %s\n",
            instances, counted_names(names).c_str());
    }
    if (!findings.kontakt) return;
    out.print(
        "  Kontakt: %d instance(s) written for %s, the Kontakt installed\n"
        "      here%s\n",
        findings.kontakt->instances, shown_name(findings.kontakt->name).c_str(),
        findings.kontakt->predicted ? ", as version 7 takes its settings: check that they load"
                                    : "");
}

void print_clap_builds(TextBuffer& out, const IdentityFindings& findings) {
    print_count(out, count_of(findings.moved_to_clap),
                "  %d plug-in(s) written as their CLAP build (--prefer-clap),\n"
                "      with their settings\n");
    print_count(out, count_of(findings.kept_from_clap),
                "  %d plug-in(s) kept on their VST build under --prefer-clap: how\n"
                "      their CLAP build stores settings is not measured yet\n");
}

void print_plugins(TextBuffer& out, const ChainTallies& tallies, const IdentityFindings& findings) {
    print_count(out, tallies.without_strip,
                "  WARNING: %d plug-in(s) are NOT in the project: the session does\n"
                "      not say which track they stand on.\n");
    if (tallies.outcomes.empty()) return;
    out.print("  %d plug-in instances found, %d written with their settings\n",
              count_of(tallies.outcomes), count_outcomes(tallies, of_kind(OutcomeKind::carried)));
    print_left_out(out, tallies);
    print_offline_placed(out, tallies, findings);
    print_not_there(out, tallies);
    print_needs(out, tallies);
    print_not_recognized(out, tallies);
    print_aax_only(out, tallies);
    if (tallies.multi_mono.empty()) return;
    out.print(
        "  WARNING: %d unlinked MULTI-MONO instance(s). Pro Tools stores\n"
        "      settings for each channel, and REAPER's plug-in has one set:\n"
        "      those of the first channel play on all of them:\n%s",
        count_of(tallies.multi_mono), one_name_a_line(tallies.multi_mono, max_multi_mono).c_str());
}

}  // namespace tanrove
