#include "report/account_master.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

void print_master_order(TextBuffer& out, const MasterTallies& tallies) {
    if (tallies.tracks_through_master > 0) {
        out.print(
            "  The Pro Tools master fader is written as a track of its own, \"%s\n"
            "      (Pro Tools master fader)\": %d track(s) play through that track to\n"
            "      REAPER's master, which holds the master's plug-ins and stands at\n"
            "      0 dB. Pro Tools runs a master fader's plug-ins after the fader and\n"
            "      REAPER runs the master's before; this keeps Pro Tools' order.\n",
            shown_name(tallies.name).c_str(), tallies.tracks_through_master);
    }
    if (tallies.track_failed) {
        print_count(out, tallies.insert_count,
                    "  NOTE: the master fader could not be given a track of its own, so\n"
                    "      REAPER runs the master's %d plug-in(s) before the fader: one that\n"
                    "      reacts to level is fed a different level than in Pro Tools.\n");
    }
    if (tallies.is_moved_before_plugins) {
        out.print(
            "  NOTE: the master fader %s, and Pro Tools runs its\n"
            "      %d plug-in(s) after the fader. With \"Keep the master fader on\n"
            "      REAPER's master\" on, REAPER runs those plug-ins before the fader:\n"
            "      a plug-in that reacts to level is fed a different level than in\n"
            "      Pro Tools.\n",
            tallies.is_automated ? "is automated" : "is away from 0 dB", tallies.insert_count);
    }
}

void print_master_place(TextBuffer& out, const MasterTallies& tallies) {
    if (tallies.master_faders == 0) return;
    const std::string name = shown_name(tallies.name);
    if (tallies.tracks_through_master > 0) {
        out.print("  master fader \"%s\" carried as the track \"%s (Pro Tools master fader)\"\n",
                  name.c_str(), name.c_str());
    } else {
        out.print("  master fader \"%s\" carried onto the REAPER master\n", name.c_str());
    }
}

void print_further_masters(TextBuffer& out, const MasterTallies& tallies) {
    if (tallies.master_faders < 2) return;
    print_count(out, tallies.master_faders,
                "  WARNING: this session has %d MASTER FADERS. REAPER has exactly\n"
                "      one master, so only the first was carried. The others are\n"
                "      NOT in the .rpp -- neither their gain nor their inserts.\n"
                "      Pro Tools also allows them at any width (mono, stereo, LCR,\n"
                "      5.1); anything past stereo is untested here.\n"
                "      If a second master was doing real work, print through it\n"
                "      before converting.\n");
}

}  // namespace tanrove
