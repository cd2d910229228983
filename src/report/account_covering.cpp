// What became of clips that lie under other clips.
#include "report/account_covering.hpp"

#include "report/count_rows.hpp"

namespace tanrove {

namespace {

constexpr CountRow<CoveringTallies> covering_rows[] = {
    {&CoveringTallies::later_heads,
     "  %d clip head(s) start later, under the clip Pro Tools draws over them\n"},
    {&CoveringTallies::muted_clips,
     "  %d clip(s) muted, covered end to end by the clip drawn over them\n"},
    {&CoveringTallies::silenced_tails,
     "  %d clip tail(s) silenced under a MUTED covering clip\n"
     "    (Pro Tools renders silence there; the mute does not reveal the tail)\n"},
};

}  // namespace

void print_covering(TextBuffer& out, const CoveringTallies& tallies) {
    print_rows(out, tallies, covering_rows);
}

}  // namespace tanrove
