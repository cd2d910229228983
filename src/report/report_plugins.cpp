// What became of every plug-in, instance by instance, and what REAPER needs for them.
#include <algorithm>
#include <map>

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"
#include "report/report_sections.hpp"

namespace tanrove {

namespace {

constexpr const char* master_name = "(the master)";

bool is_left_out(const PluginOutcome& outcome) {
    return outcome.kind == OutcomeKind::left_out_not_installed;
}

bool is_marked_missing(const PluginOutcome& outcome) {
    return outcome.not_installed &&
           (outcome.kind == OutcomeKind::carried || outcome.kind == OutcomeKind::without_settings);
}

template <typename IsMeant>
int count_of(const ChainTallies& chains, IsMeant is_meant) {
    return static_cast<int>(std::ranges::count_if(chains.outcomes, is_meant));
}

int count_of_kind(const ChainTallies& chains, OutcomeKind kind) {
    return count_of(chains, [kind](const PluginOutcome& o) { return o.kind == kind; });
}

const char* tag(OutcomeKind kind) {
    if (kind == OutcomeKind::carried) return "[settings]";
    return kind == OutcomeKind::without_settings ? "[defaults]" : "[dropped ]";
}

void print_missing(TextBuffer& out, const ChainTallies& chains) {
    const int marked = count_of(chains, [](const PluginOutcome& outcome) {
        return outcome.not_installed && outcome.kind == OutcomeKind::carried;
    });
    if (marked == 1) {
        out.append(
            "  1 is marked (not installed): its settings WERE written, and it\n"
            "  loads as soon as that plug-in is installed for REAPER.\n");
    } else {
        print_count(out, marked,
                    "  %d are marked (not installed): the settings WERE written, and\n"
                    "  they load as soon as those plug-ins are installed for REAPER.\n");
    }
    const int left_out = count_of(chains, is_left_out);
    if (left_out == 1) {
        out.append("  1 is not installed for REAPER here and was left out, as asked.\n");
    } else {
        print_count(out, left_out,
                    "  %d are not installed for REAPER here and were left out, as asked.\n");
    }
}

void print_instance(TextBuffer& out, const PluginOutcome& outcome) {
    out.print("    %2d %s %-26s", outcome.slot, tag(outcome.kind),
              shown_name(outcome.display_name).c_str());
    if (outcome.automation_points > 0) {
        out.print("  %d automation point(s)", outcome.automation_points);
    }
    if (is_marked_missing(outcome)) out.append("  (not installed for REAPER here)");
    if (!outcome.reason.empty()) out.append("  - " + shown_name(outcome.reason));
    out.append("\n");
}

/// The first instances behind `at`, under the name of their track; moves `at` behind them.
void print_instances_of(TextBuffer& out, const std::string& track, int count,
                        const std::vector<PluginOutcome>& outcomes, std::size_t& at) {
    if (count <= 0) return;
    out.append("  " + shown_name(track) + "\n");
    for (; count > 0 && at < outcomes.size(); --count) print_instance(out, outcomes[at++]);
}

}  // namespace

void print_every_plugin(TextBuffer& out, const ChainTallies& chains,
                        const std::vector<TrackFacts>& tracks) {
    const int all = count_of(chains.outcomes);
    if (all == 0) return;
    const int carried = count_of_kind(chains, OutcomeKind::carried);
    const int defaults = count_of_kind(chains, OutcomeKind::without_settings);
    out.append("\nEVERY PLUG-IN, AND WHAT HAPPENED TO IT\n");
    out.print(
        "  %d instance(s): %d arrived with Pro Tools settings, %d inserted at\n"
        "  the plug-in's own defaults, %d could not be inserted.\n",
        all, carried, defaults, all - carried - defaults);
    print_missing(out, chains);
    out.append(
        "\n  key:  [settings]  arrived with its Pro Tools settings\n"
        "        [defaults]  inserted, but Pro Tools stored nothing to carry\n"
        "        [dropped ]  not inserted; the line says why\n\n");
    // The master's stand in front in the project, and behind the tracks in the list.
    std::size_t master_at = 0;
    auto at = static_cast<std::size_t>(std::max(chains.outcomes_on_master, 0));
    for (std::size_t i = 0; i < chains.outcomes_a_track.size(); ++i) {
        const std::string track = i < tracks.size() ? tracks[i].name : "";
        print_instances_of(out, track, chains.outcomes_a_track[i], chains.outcomes, at);
    }
    print_instances_of(out, master_name, chains.outcomes_on_master, chains.outcomes, master_at);
}

void print_plugin_names(TextBuffer& out, const ChainTallies& chains) {
    out.append("\nPLUG-INS\n");
    out.print("  %d instance(s) found, %d written with their settings\n", count_of(chains.outcomes),
              count_of_kind(chains, OutcomeKind::carried));
    std::map<std::string, int> by_name;
    for (const PluginOutcome& outcome : chains.outcomes) {
        ++by_name[shown_name(outcome.display_name)];
    }
    for (const auto& [name, count] : by_name) out.print("    %-24s x%d\n", name.c_str(), count);
    if (by_name.empty()) return;
    out.append(
        "\n  WHAT REAPER NEEDS INSTALLED, AND WHAT IT DOES NOT\n"
        "    Nothing about Pro Tools has to be installed for this to work,\n"
        "    and none of its plug-ins: the session file is all that is read.\n"
        "    REAPER cannot load an AAX. Every plug-in listed above also has\n"
        "    to exist here as VST, VST2 or VST3 to be heard in REAPER.\n"
        "\n    IF A PLUG-IN IS MISSING\n"
        "    1. Search for its name in an insert slot of REAPER.\n"
        "    2. If it is not there: Options > Preferences > Plug-ins > VST >\n"
        "       Re-scan, and convert again.\n"
        "    3. If it is in REAPER's list and still did not come across,\n"
        "       send this file to vorlane's support.\n"
        "\n    IF REAPER CRASHES OR HANGS opening the project\n"
        "    Open it with FX offline (File > Open project, \"Open with FX\n"
        "    offline\") and bring the plug-ins back one at a time.\n");
    if (!chains.plugin_list_missing) return;
    out.append(
        "    This run could not check which of them you have: REAPER's\n"
        "    own plug-in list was not found on this computer. REAPER\n"
        "    writes that list when it scans plug-ins, so open REAPER\n"
        "    once, then check the session again and the missing ones\n"
        "    are named exactly.\n");
}

}  // namespace tanrove
