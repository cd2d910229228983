// What cannot be had in REAPER stands beside what can.
#include "report/account_trims.hpp"

#include <string>
#include <vector>

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_tracks = 8;

constexpr CountRow<TrimTallies> instance_rows[] = {
    {&TrimTallies::instances,
     "  %d Avid Trim instance(s). Trim is AAX only and cannot load in\n"
     "      REAPER, so REAPER's own means do what it did:\n"},
    {&TrimTallies::gains_carried,
     "      %d of them sit in their slot as REAPER's Volume Adjustment\n"
     "      (JS), with the same gain\n",
     qualifies_previous},
    {&TrimTallies::inverted_tracks,
     "      %d track(s) that they turn over have their polarity inverted\n"},
};

constexpr CountRow<TrimTallies> gain_rows[] = {
    {&TrimTallies::different_gains,
     "      %d unlinked Trim(s) have a different gain per channel; the\n"
     "      first channel's plays on both: check them by ear\n"},
    {&TrimTallies::on_wide_tracks,
     "      %d Trim(s) on a track wider than stereo keep the Pro Tools-only\n"
     "      slot: their gain is NOT carried\n"},
};

}  // namespace

void print_trims(TextBuffer& out, const TrimTallies& tallies) {
    print_named_below(out, tallies.cancelled,
                      "  %d track(s) carry an EVEN number of inverting Trims, which cancel:\n"
                      "      they arrive upright, as Pro Tools plays them\n",
                      max_tracks);
    print_rows(out, tallies, instance_rows);
    print_named_below(out, tallies.below_measured,
                      "      %d Trim gain(s) are below -12 dB, beyond the measured range:\n"
                      "      they follow its lowest part on. Check them by ear\n",
                      max_tracks);
    print_rows(out, tallies, gain_rows);
}

void print_trims_of_sides(TextBuffer& out, const TrimTallies& tallies) {
    print_count(out, tallies.one_sided,
                "  %d track(s) have Avid Trim polarity on ONE channel only (an unlinked\n"
                "      multi-mono Trim): REAPER's Channel Polarity Control (JS) stands\n"
                "      first in their chain and turns that side over\n");
    print_named_below(out, tallies.mixed_wide,
                      "  %d surround Trim(s) flip polarity on some channels but not others:\n"
                      "      the track follows the first two, all others are NOT carried\n",
                      max_tracks);
}

void print_trims_switched_off(TextBuffer& out, const TrimTallies& tallies) {
    print_count(out, tallies.switched_off,
                "  %d Avid Trim(s) had polarity switched on but were BYPASSED or\n"
                "      inactive: they turn nothing over, in Pro Tools and here\n");
}

void print_strips_without_switch(TextBuffer& out, const TrimTallies& tallies) {
    print_count(out, tallies.without_switch,
                "  %d strip(s) inverted by Avid Trim have no phase switch in\n"
                "      REAPER, whose master has none: their polarity is NOT carried\n");
}

}  // namespace tanrove
