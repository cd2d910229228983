// Sentences on clip gain and on the envelopes that play it.
#include "report/account_clip_gain.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr CountRow<ClipGainTallies> gain_rows[] = {
    {&ClipGainTallies::clips, "  %d clips given clip gain\n"},
    {&ClipGainTallies::in_groups_with_gain,
     "  %d clip(s) inside a clip group given the group's own clip gain as well,\n"
     "      as Pro Tools plays it.\n"},
};

constexpr CountRow<TakeTallies> envelope_rows[] = {
    {&TakeTallies::gain_envelopes,
     "  %d of them carried a clip gain ENVELOPE, written as REAPER\n"
     "      take volume envelopes. Points outside the clip are kept by\n"
     "      interpolating to its edge, as Pro Tools plays them.\n"},
};

constexpr CountRow<ClipGainTallies> table_rows[] = {
    {&ClipGainTallies::lines_past_limit,
     "  WARNING: %d drawn clip gain line(s) are NOT in the project: together\n"
     "      they hold more points than this tool takes. Those clips play\n"
     "      at their fixed gain.\n"},
    {&ClipGainTallies::count_disagreements,
     "  WARNING: %d clip gain entr(ies) state a point count that disagrees\n"
     "      with their own length. The length was used, because the walk to\n"
     "      the next entry depends on it, but this session holds a variant of\n"
     "      the clip gain table nobody has seen. The gain on those clips may\n"
     "      be wrong. Please send the session in.\n"},
};

}  // namespace

void print_clip_gain(TextBuffer& out, const ClipGainTallies& gain) {
    print_rows(out, gain, gain_rows);
    if (gain.in_groups_with_line <= 0) return;
    out.print(
        "  WARNING: %d clip(s) sit in a clip group whose own clip gain is a drawn\n"
        "      line, which is NOT carried (a fixed group gain is):%s\n",
        gain.in_groups_with_line, quoted_names(gain.groups_with_line, no_cap).c_str());
}

void print_clip_gain_envelopes(TextBuffer& out, const ClipGainTallies& gain,
                               const TakeTallies& takes) {
    print_rows(out, takes, envelope_rows);
    if (takes.gain_envelopes > 0 && takes.gain_ramps > 0) {
        out.print(
            "      %d clip gain ramp(s) follow Pro Tools' fader between their points:\n"
            "      %d points added along the way.\n",
            takes.gain_ramps, takes.gain_ramp_points);
    }
    print_rows(out, gain, table_rows);
}

}  // namespace tanrove
