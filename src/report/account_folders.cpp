// The account's sentences about folder tracks.
#include "report/account_folders.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

void print_moves(TextBuffer& out, const FolderTallies& tallies) {
    print_named(out, tallies.folders_moved,
                "      %d Basic folder(s) sat inside a Routing folder in Pro Tools, where their\n"
                "      tracks skip that folder's fader and inserts. REAPER would send them\n"
                "      through it, so they follow it here instead of sitting inside it:");
    print_named(out, tallies.tracks_moved,
                "      %d track(s) sat inside a Routing folder in Pro Tools but play to the\n"
                "      main output, not through the folder (their output is not the folder),\n"
                "      so they follow the folder here instead of sitting inside it:");
    print_named(out, tallies.could_not_move,
                "      %d track(s) or Basic folder(s) inside a Routing folder could not be\n"
                "      moved out (tracks routed into that folder follow them), so in REAPER\n"
                "      they play through that folder's fader, which Pro Tools does not do.\n"
                "      Move them out by hand:");
}

}  // namespace

void print_folders(TextBuffer& out, const FolderTallies& tallies) {
    if (tallies.folders() == 0) return;
    out.print(
        "  %d folder track(s): %d Routing folder(s) written as REAPER folders whose\n"
        "      members sum through the folder's fader and inserts, as in Pro Tools;\n"
        "      %d Basic folder(s) as REAPER folders with nothing in the path.\n",
        tallies.folders(), tallies.routing_written, tallies.basic_written);
    print_count(out, tallies.empty, "      %d empty folder(s) arrive as plain tracks.\n");
    print_count(out, tallies.all_members_moved_out,
                "      %d Routing folder(s) arrive as plain tracks: nothing is routed into\n"
                "      them (every member plays to the main output, listed below).\n");
    print_count(out, tallies.nested,
                "      %d folder(s) sit inside another folder, nested the same way in REAPER\n"
                "      (read from the session's folder table, v206).\n");
    print_moves(out, tallies);
    if (tallies.by_order > 0) {
        out.append(
            "      The session's folder table could not be read, so folder members are\n"
            "      inferred from track order: a track right after a folder's members may\n"
            "      land inside it. Check folder contents against Pro Tools.\n");
    }
    print_count(out, tallies.maybe_nested,
                "      A folder inside a folder could not be placed: %d folder(s) that may\n"
                "      have been nested arrive beside the other folder, not inside it.\n");
    print_named(out, tallies.not_written,
                "      %d folder(s) could not be written as folders because their members\n"
                "      are not written next to them (a MIDI or instrument member, or an\n"
                "      unmatched track):");
}

}  // namespace tanrove
