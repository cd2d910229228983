// Sentences on the items as a whole.
#include "report/account_items.hpp"

#include "report/count_rows.hpp"

namespace tanrove {

namespace {

constexpr CountText locked_clips =
    "  %d clip(s) were locked in Pro Tools and are LOCKED in REAPER.\n"
    "      REAPER has one lock for an item, so a clip that was only\n"
    "      Time-locked is locked for edits as well.\n";

}  // namespace

void print_item_timebase(TextBuffer& out, const WrittenTallies& written) {
    if (written.time_tracks <= 0 && written.beats_tracks <= 0) return;
    out.print(
        "  Item timebase written per track: %d Time (sample-based), %d\n"
        "      Beats, position only (tick-based). A tempo change in REAPER\n"
        "      leaves the first where they are and moves the others with\n"
        "      their bars, as it does in Pro Tools.\n",
        written.time_tracks, written.beats_tracks);
}

void print_locked_clips(TextBuffer& out, const WrittenTallies& written) {
    print_count(out, written.locked_clips, locked_clips);
}

}  // namespace tanrove
