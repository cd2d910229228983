// The one list of what did not come across whole. Each item that is printed counts once.
#include <algorithm>
#include <map>

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"
#include "report/report_sections.hpp"

namespace tanrove {

namespace {

/// The list as it grows.
class LookList {
public:
    LookList(TextBuffer& out, const RunTallies& tallies) : out_(out), tallies_(tallies) {}

    int items() const { return items_; }

    void add_aax_only() {
        const auto is_meant = [](const PluginOutcome& o) {
            return o.kind == OutcomeKind::aax_only;
        };
        if (!add_plugins(is_meant,
                         "  AAX ONLY - no VST/VST3 version of these exists, so no converter\n"
                         "  can move them. Print or commit these tracks in Pro Tools:\n")) {
            return;
        }
        const auto& outcomes = tallies_.chains.outcomes;
        const auto all = std::ranges::count_if(outcomes, is_meant);
        const auto heard = std::ranges::count_if(
            outcomes, [&](const PluginOutcome& o) { return is_meant(o) && o.processed_audio(); });
        if (heard == 0) {
            out_.append("    None of these processed audio: the mix is unaffected.\n");
            return;
        }
        out_.print(
            "    %d of these processed audio, so that much of the mix\n"
            "    is not carried.%s\n",
            static_cast<int>(heard), heard < all ? " The rest did not touch the sound." : "");
    }

    /// The plug-ins that are meant, by name, under a title; false where there are none.
    template <typename IsMeant>
    bool add_plugins(IsMeant is_meant, const char* title) {
        std::map<std::string, int> by_name;
        for (const PluginOutcome& outcome : tallies_.chains.outcomes) {
            if (is_meant(outcome)) ++by_name[shown_name(outcome.display_name)];
        }
        if (by_name.empty()) return false;
        ++items_;
        out_.append(title);
        for (const auto& [name, count] : by_name) {
            out_.print("    %-24s x%d\n", name.c_str(), count);
        }
        return true;
    }

    void add_plugins(OutcomeKind kind, const char* title) {
        add_plugins([kind](const PluginOutcome& o) { return o.kind == kind; }, title);
    }

    void add_count(int count, CountText text) {
        if (print_count(out_, count, text)) ++items_;
    }

    void add_names(const std::vector<std::string>& names, CountText text) {
        if (!print_count(out_, count_of(names), text)) return;
        ++items_;
        for (const std::string& name : names) out_.append("    " + shown_name(name) + "\n");
    }

private:
    TextBuffer& out_;
    const RunTallies& tallies_;
    int items_ = 0;
};

void add_all_plugins(LookList& list) {
    list.add_aax_only();
    list.add_plugins(OutcomeKind::not_recognized,
                     "  not recognized. An Avid stock plug-in is AAX only and cannot\n"
                     "  be transferred by any tool; anything else we can add -\n"
                     "  send this report in:\n");
    list.add_plugins(OutcomeKind::without_settings,
                     "  placed OFFLINE - named, settings not carried (reasons above):\n");
    list.add_plugins(OutcomeKind::left_out_without_settings,
                     "  no transferable state stored by Pro Tools:\n");
    list.add_plugins(
        [](const PluginOutcome& o) { return o.not_installed && o.kind == OutcomeKind::carried; },
        "  installed in Pro Tools but NOT for REAPER on this machine\n"
        "  (settings were written; install these and they load):\n");
    list.add_plugins(OutcomeKind::left_out_not_installed,
                     "  NOT installed for REAPER on this machine, and LEFT OUT as asked\n"
                     "  (install these and convert again to keep them):\n");
}

/// How many warnings of the console tell what the list tells as well.
int warnings_in_list(const RunTallies& tallies) {
    return static_cast<int>(!tallies.mix.levels.wide_strips.empty()) +
           static_cast<int>(!tallies.chains.multi_mono.empty()) +
           static_cast<int>(!tallies.media.missing_files.empty());
}

}  // namespace

int print_needs_look(TextBuffer& out, const RunTallies& tallies, int console_warnings) {
    out.append("\nNEEDS A LOOK\n");
    LookList list(out, tallies);
    add_all_plugins(list);
    list.add_names(tallies.mix.levels.wide_strips,
                   "  %d mixer strip(s) of an unrecognized width (pan not converted):\n");
    list.add_names(tallies.chains.multi_mono,
                   "  %d unlinked multi-mono instance(s) - only channel 1's settings\n"
                   "  were written; check these by hand:\n");
    list.add_count(tallies.mix.routing.unresolved_keys,
                   "  %d sidechain key input(s) could not be resolved\n");
    list.add_count(tallies.timeline.fades.not_understood, "  %d fade record(s) not understood\n");
    list.add_count(tallies.mix.tracks.tracks_without_strip_row,
                   "  %d track(s) matched no strip row (appended at the end)\n");
    list.add_names(tallies.media.missing_files,
                   "  %d referenced audio file(s) not in \"Audio Files\" or beside it:\n");
    if (list.items() == 0 && console_warnings > 0) {
        out.append(
            "  nothing in this list; but the console account of this run has\n"
            "  warnings. Read those as well.\n");
    } else if (list.items() == 0) {
        out.append("  nothing - everything in this session was carried across\n");
    } else if (console_warnings > warnings_in_list(tallies)) {
        out.append(
            "  The console account of this run has warnings beyond this list.\n"
            "  Read those as well.\n");
    }
    return list.items();
}

}  // namespace tanrove
