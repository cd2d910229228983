// What clip groups became.
#include "report/account_clip_groups.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

void print_clip_groups(TextBuffer& out, const ClipGroupTallies& tallies,
                       const WrittenTallies& written) {
    if (tallies.groups > 0) {
        out.print(
            "  %d clip group(s) laid out as the %d clip(s) they play -- REAPER has\n"
            "      no clip groups, so each one is written flat, same places, same audio\n",
            tallies.groups, tallies.pieces);
        if (tallies.fades > 0) {
            out.print(
                "      %d fade(s) inside those groups: %d fade-in(s) and %d fade-out(s) carried\n"
                "      on the pieces (v202); %d could not be bound to an edge and were left off\n",
                tallies.fades, tallies.fade_ins, tallies.fade_outs, tallies.fades_left_off);
        }
        print_count(
            out, tallies.spread_fades,
            "      %d fade(s) of whole groups run over several of their clips: these follow\n"
            "      the fade with their volume envelopes, as Pro Tools plays it\n");
    }
    print_count(out, written.placeholders,
                "  %d clip group(s) hold no audio (placeholders, as an ADR cue list has\n"
                "      them) and are written as empty items: same places, same names\n");
    if (tallies.unreadable > 0) {
        out.print(
            "  WARNING: %d clip group piece(s) could not be read, so that audio is\n"
            "      NOT in the project. On:%s\n"
            "      Please send the session in.\n",
            tallies.unreadable, quoted_names(tallies.unreadable_on, no_cap).c_str());
    }
}

}  // namespace tanrove
