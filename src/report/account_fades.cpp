// Sentences on fades.
#include "report/account_fades.hpp"

#include "report/count_rows.hpp"

namespace tanrove {

namespace {

constexpr CountRow<FadeTallies> binding_rows[] = {
    {&FadeTallies::without_edge, "  %d fades sat on no kept clip edge\n"},
    {&FadeTallies::not_understood, "  %d fade records not understood\n"},
};

constexpr CountText as_envelope =
    "  %d fade(s) have a shape REAPER's fade cannot make. Each is written\n"
    "      as a volume envelope on the item, following Pro Tools' curve; the\n"
    "      item's own fade is left empty there.\n";

constexpr CountText shape_without_envelope =
    "  %d fade(s) have a shape REAPER's fade cannot make exactly and could\n"
    "      not take an envelope (shortened by an edit, or cut by the edge of\n"
    "      a clip group). Each is written as the nearest REAPER shape.\n";

constexpr CountText step_presets =
    "      %d of them are step presets: Pro Tools jumps at one end of the fade\n"
    "      where a REAPER fade slopes.\n";

constexpr CountText unmeasured_settings =
    "  %d fade(s) use a shape setting not yet measured against Pro Tools.\n"
    "      Each is written as the plain fade of its slope.\n";

constexpr CountText neutral_s_curves =
    "  %d S-curve fade(s) at the neutral setting written as straight lines,\n"
    "      as Pro Tools plays them\n";

void print_approximated(TextBuffer& out, const FadeTallies& tallies, const TakeTallies& takes) {
    const int approximated = tallies.approximated + takes.fades_as_nearest_shape;
    if (approximated <= 0) return;
    if (tallies.plain_fades) {
        out.print(
            "  %d fade(s) have a shape REAPER's fade cannot make exactly. With\n"
            "      \"Use REAPER fades only\" on, each is written as the\n"
            "      nearest REAPER shape, up to %.1f dB from Pro Tools inside the fade.\n",
            approximated, tallies.worst_db);
    } else {
        print_count(out, approximated, shape_without_envelope);
    }
    print_count(out, tallies.approximated_steps + takes.steps_as_nearest_shape, step_presets);
}

}  // namespace

void print_fade_counts(TextBuffer& out, const FadeTallies& tallies) {
    if (tallies.fade_ins + tallies.fade_outs + tallies.crossfades <= 0) return;
    out.print("  %d fade-ins, %d fade-outs, %d crossfades\n", tallies.fade_ins, tallies.fade_outs,
              tallies.crossfades);
}

void print_fade_shapes(TextBuffer& out, const FadeTallies& tallies, const TakeTallies& takes) {
    print_rows(out, tallies, binding_rows);
    print_count(out, takes.fades_as_envelope, as_envelope);
    print_approximated(out, tallies, takes);
    print_count(out, tallies.unmeasured, unmeasured_settings);
}

void print_neutral_s_curves(TextBuffer& out, const FadeTallies& tallies) {
    print_count(out, tallies.neutral_s_curves, neutral_s_curves);
}

}  // namespace tanrove
