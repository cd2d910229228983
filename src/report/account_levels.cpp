// The account's sentences about faders, pans, solos and the look of the tracks.
#include "report/account_levels.hpp"

#include <string>
#include <vector>

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_name_lines = 8;

}  // namespace

void print_mixer_strips(TextBuffer& out, const LevelTallies& tallies) {
    print_count(out, tallies.mixer_strips, "  %d mixer strips (faders, pans, mute)\n");
}

void print_views_and_solos(TextBuffer& out, const ViewTallies& views, const SoloTallies& solos) {
    print_count(out, views.hidden_tracks,
                "  %d track(s) are HIDDEN in Pro Tools and arrive hidden in both\n"
                "      of REAPER's windows, the arrange view and the mixer.\n");
    print_count(out, views.tracks_with_height,
                "  %d track(s) carry their Pro Tools track HEIGHT, in pixels as\n"
                "      the session stores it.\n");
    if (!solos.soloed.empty()) {
        out.print("  %d track(s) are SOLOED in the session and arrive soloed:%s\n",
                  count_of(solos.soloed), quoted_names(solos.soloed, no_cap).c_str());
    }
    if (!solos.solo_safe.empty()) {
        out.print("  %d track(s) are SOLO SAFE and arrive solo-defeated:%s\n",
                  count_of(solos.solo_safe), quoted_names(solos.solo_safe, no_cap).c_str());
    }
}

void print_soloed_and_muted(TextBuffer& out, const SoloTallies& tallies) {
    print_count(out, tallies.dropped,
                "  %d track(s) were soloed AND muted in Pro Tools, which keeps\n"
                "      such a track silent. REAPER would play it through its mute,\n"
                "      so it arrives muted with its solo off.\n");
    if (tallies.solo_track > 0) {
        out.print(
            "      Every soloed track was muted, so the track \"Pro Tools solo\n"
            "      (the soloed tracks were muted)\" is added: it is empty and\n"
            "      soloed, and keeps the rest silent. Unsolo it to hear them.\n");
    }
    print_count(out, tallies.kept_with_mute_lane,
                "  %d soloed, muted track(s) with mute automation keep their solo: REAPER\n"
                "      plays a soloed track through its mute, Pro Tools does not.\n");
}

void print_sides_and_wide_strips(TextBuffer& out, const LevelTallies& tallies) {
    if (!tallies.one_sided.empty()) {
        out.print(
            "  %d track(s) output to ONE channel of a stereo output, so Pro Tools\n"
            "      plays the whole track from that side; written with both pan\n"
            "      knobs hard to that side:\n%s",
            count_of(tallies.one_sided),
            one_name_a_line(tallies.one_sided, max_name_lines).c_str());
    }
    print_count(out, tallies.panners_left_still,
                "  %d surround/multichannel strip(s) carry PAN automation that is NOT\n"
                "      written: a surround strip has no single pan, and its panner lanes\n"
                "      are not named in the session. Volume, trim and mute automation ARE\n"
                "      carried. If the panner's moves matter, please send the session in.\n");
    if (!tallies.wide_strips.empty()) {
        out.print(
            "  WARNING: %d mixer strip(s) are neither mono nor stereo and\n"
            "      arrive without a pan. Level, mute and their automation are\n"
            "      right; if a panner was positioned, set it by hand in REAPER:\n%s",
            count_of(tallies.wide_strips),
            one_name_a_line(tallies.wide_strips, max_name_lines).c_str());
    }
}

}  // namespace tanrove
