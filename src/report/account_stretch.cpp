// Sentences on elastic audio and looped clips.
#include "report/account_stretch.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"
#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr CountRow<StretchTallies> warp_rows[] = {
    {&StretchTallies::pitch_shifted, "  %d clips pitch-shifted\n"},
    {&StretchTallies::with_markers, "  %d clips carry elastic warp markers\n"},
    {&StretchTallies::trims_with_markers,
     "  %d of them are trims of a take, warped from the slice\n", qualifies_previous},
    {&StretchTallies::unsliced, "  %d clips carry a warp map that could not be sliced\n"},
    {&StretchTallies::past_marker_limit,
     "  WARNING: %d stretched clip(s) play at one even rate: with the points of\n"
     "      their warp maps the project would hold more stretch markers than\n"
     "      this tool writes into one.\n"},
};

constexpr CountText barely_stretched =
    "      %d of those are stretched by less than 0.1%%: each is written at the\n"
    "      length Pro Tools gives the clip, so its end stays in place\n";

constexpr CountText across_tempo_changes =
    "  %d stretched clip(s) cross a tempo change and follow the tempo on\n"
    "      both sides of the change, as in Pro Tools\n";

constexpr CountText ended_by_length =
    "  %d looped clip(s) set by Loop Length end where Pro Tools ends them (the\n"
    "      loop is shorter than the clip).\n";

constexpr CountText loops_with_fades =
    "      %d of them have fades, kept on every pass: how Pro Tools fades a\n"
    "      looped clip is not measured yet.\n";

const char* reason_of(LoopRefusal refusal) {
    switch (refusal) {
        case LoopRefusal::unknown_shape:
            return "a loop record of an unknown shape";
        case LoopRefusal::unreadable_count:
            return "an unreadable loop count";
        case LoopRefusal::stretched_or_crossfaded:
            return "stretched or crossfaded";
        case LoopRefusal::unknown_mode:
            return "an unknown loop mode";
        case LoopRefusal::too_many_passes:
            return "more passes than this tool writes";
        default:
            return "not an audio clip";
    }
}

void print_unlooped(TextBuffer& out, const UnloopedClip& unlooped) {
    if (unlooped.refusal == LoopRefusal::no_clip) {
        const char* kind =
            unlooped.placement_type == block_type::midi_placement ? "MIDI" : "non-audio";
        out.print("\n      a %s placement at sample %u (not an audio clip)", kind,
                  unlooped.stored_position);
        return;
    }
    out.print("\n      %s \"%s\" at %.2f s (%s)", shown_name(unlooped.track).c_str(),
              shown_name(unlooped.clip).c_str(), unlooped.start_seconds,
              reason_of(unlooped.refusal));
}

/// Under the clips that Loop Length ends; where it ends none, under a head of their own.
void print_short_loops(TextBuffer& out, const LoopTallies& tallies) {
    if (tallies.short_loops == 0) return;
    if (tallies.ended_by_length == 0) {
        print_count(out, tallies.short_loops,
                    "  WARNING: %d looped clip(s) set by Loop Length are not as long as the\n"
                    "      loop:\n");
    }
    for (const ShortLoop& loop : tallies.listed_short_loops) {
        out.print("      %s \"%s\" at %.2f s: Pro Tools' loop is %.2f s long, written %.2f s\n",
                  shown_name(loop.track).c_str(), shown_name(loop.clip).c_str(), loop.start_seconds,
                  loop.loop_seconds, loop.written_seconds);
    }
    const auto unlisted =
        static_cast<std::size_t>(tallies.short_loops) - tallies.listed_short_loops.size();
    if (unlisted > 0) out.print("      ... and %zu more\n", unlisted);
}

}  // namespace

void print_stretch(TextBuffer& out, const StretchTallies& tallies) {
    print_rows(out, tallies, warp_rows);
    const int stretched = tallies.by_map + tallies.inferred;
    if (stretched == 0) return;
    out.print("  %d clips stretched, %d of them read from the session\n", stretched,
              tallies.by_map);
    print_count(out, tallies.barely, barely_stretched);
}

void print_inferred_tracks(TextBuffer& out, const StretchTallies& tallies) {
    for (const InferredStretch& inferred : tallies.inferred_tracks) {
        out.print("      stretch %.4f on %s\n", inferred.rate, shown_name(inferred.track).c_str());
    }
}

void print_stretch_across_tempo_changes(TextBuffer& out, const StretchTallies& tallies) {
    print_count(out, tallies.across_tempo_changes, across_tempo_changes);
}

void print_loops(TextBuffer& out, const LoopTallies& tallies) {
    if (tallies.looped > 0) {
        out.print(
            "  %d looped clip(s) (Clip > Loop) written as their %d passes, end to end,\n"
            "      as Pro Tools plays them.\n",
            tallies.looped, tallies.passes);
    }
    print_count(out, tallies.ended_by_length, ended_by_length);
    print_short_loops(out, tallies);
    print_count(out, tallies.with_fades, loops_with_fades);
    if (tallies.unlooped == 0) return;
    out.print("  WARNING: %d looped clip(s) (Clip > Loop) NOT written as loops:", tallies.unlooped);
    for (const UnloopedClip& unlooped : tallies.listed) print_unlooped(out, unlooped);
    const auto unlisted = static_cast<std::size_t>(tallies.unlooped) - tallies.listed.size();
    if (unlisted > 0) out.print("\n      ... and %zu more", unlisted);
    out.print(
        "\n      Each arrives as the clip is stored, not as Pro Tools loops it.\n"
        "      Check those clips' length in REAPER against Pro Tools.\n");
}

}  // namespace tanrove
