// The account's sentences about tracks that were left out, or kept although they were to go.
#include "report/account_left_out.hpp"

#include "report/name_lists.hpp"

namespace tanrove {

void print_click_player(TextBuffer& out, const ClickTallies& tallies) {
    if (tallies.player.empty()) return;
    out.print(
        "  Pro Tools' click is on and \"%s\" plays it. REAPER's metronome is\n"
        "      left off. Click II is an AAX and plays nothing in REAPER: switch\n"
        "      the metronome on to hear a click.\n",
        shown_name(tallies.player).c_str());
}

void print_left_out_tracks(TextBuffer& out, const ClickTallies& clicks,
                           const LeaveOutTallies& tallies) {
    if (!clicks.left_out.empty()) {
        out.print("  %d Click track(s) left out (--no-click):%s\n", count_of(clicks.left_out),
                  quoted_names(clicks.left_out, no_cap).c_str());
    }
    print_named(out, tallies.hidden, "  %d hidden track(s) left out (--skip-hidden-tracks):");
    print_named(out, tallies.inactive, "  %d inactive track(s) left out (--skip-inactive-tracks):");
    print_named(out, tallies.kept,
                "  %d hidden or inactive track(s) KEPT, because a written track needs them:");
    for (const std::string& name : clicks.kept_whole) {
        out.print(
            "  \"%s\" holds a Click II but also something else (inserts, sends, clips or\n"
            "      a name another track shares), so the click toggle leaves it in, whole.\n",
            shown_name(name).c_str());
    }
}

}  // namespace tanrove
