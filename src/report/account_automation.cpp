// The account's sentences about the automation of tracks and sends.
#include "report/account_automation.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

void print_send_points(TextBuffer& out, const WrittenTallies& written) {
    print_count(out, written.send_points, "  %d send automation points\n");
}

void print_automation_points(TextBuffer& out, const WrittenTallies& written) {
    if (written.automation_points == 0) return;
    out.print("  %d automation points across %d tracks\n", written.automation_points,
              written.automated_tracks);
}

void print_dual_pan_points(TextBuffer& out, const LevelTallies& tallies) {
    if (tallies.dual_pan_points == 0) return;
    out.print("  %d dual-pan point(s) on %d stereo track(s) (REAPER dual pan)\n",
              tallies.dual_pan_points, tallies.dual_pan_tracks);
}

void print_modes_and_parked_faders(TextBuffer& out, const LevelTallies& tallies) {
    print_count(out, tallies.set_to_read,
                "  %d automated track(s) set to Read (Trim/Read would\n"
                "      apply the fader on top of its own automation)\n");
    print_count(out, tallies.parked_faders,
                "  %d fader(s) parked at unity so the volume envelope alone\n"
                "      carries the level, not the fader times the envelope\n");
}

void print_automation_modes(TextBuffer& out, const LevelTallies& tallies) {
    if (!tallies.automation_off.empty()) {
        out.print(
            "  %d track(s) have automation mode OFF in Pro Tools:%s\n"
            "      Pro Tools ignores their automation. They arrive in Trim/Read with\n"
            "      every envelope written INACTIVE, so the moves are kept but not\n"
            "      played -- the same thing Pro Tools does.\n",
            count_of(tallies.automation_off), quoted_names(tallies.automation_off, no_cap).c_str());
    }
    print_count(out, tallies.other_modes,
                "  %d track(s) use an automation mode other than Read and arrive\n"
                "      in REAPER's own: Touch and Write as they are, Latch and\n"
                "      Touch/Latch as Latch.\n");
}

void print_followed_ramps(TextBuffer& out, const EnvelopeTallies& tallies) {
    if (tallies.followed_ramps > 0) {
        out.print(
            "  %d volume automation ramp(s) follow Pro Tools' fader between their\n"
            "      two breakpoints: %d points added along the way.\n",
            tallies.followed_ramps, tallies.ramp_points);
    }
    print_count(out, tallies.ramps_past_limit,
                "  NOTE: %d volume automation ramp(s) are straight lines of gain\n"
                "      instead: this session has more ramps than a mix can have.\n");
    print_count(out, tallies.lanes_past_limit,
                "  WARNING: %d automation lane(s) are NOT written: tracks that could not\n"
                "      be merged would each repeat them, and there is no end to it.\n");
}

}  // namespace tanrove
