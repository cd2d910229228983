// The account's sentences about tracks that play into surround buses.
#include "report/account_panners.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr CountRow<PannerTallies> panned_rows[] = {
    {&PannerTallies::mono,
     "  %d mono track(s) panned into a surround bus arrive with\n"
     "      ReaSurroundPan set from Pro Tools' panner: position, divergence,\n"
     "      center %% and the LFE level (sessions from Pro Tools 2026 and\n"
     "      later; an older session's LFE level is not read).\n"},
    {&PannerTallies::stereo,
     "  %d stereo track(s) panned into a surround bus arrive with\n"
     "      ReaSurroundPan set from Pro Tools' left and right panners:\n"
     "      each channel's position and divergence, center %%, side %% and\n"
     "      the LFE level (Pro Tools 2026 sessions). Panner automation on a\n"
     "      stereo source is not carried.\n"},
    {&PannerTallies::with_sends,
     "      %d of the panned tracks have sends, which Pro Tools takes in front of the\n"
     "      panner: there it plays on channels 3 and up, and the sends on 1/2.\n"},
};

constexpr CountRow<PannerTallies> rows_of_losses[] = {
    {&PannerTallies::lanes_left_out,
     "  %d surround panner automation lane(s) not written: a stereo source's\n"
     "      panner, or a session older than Pro Tools 2026.\n"},
    {&PannerTallies::unknown_layouts,
     "  %d track(s) feed a surround bus whose layout this build cannot\n"
     "      place; they arrive without a surround panner.\n"},
    {&PannerTallies::without_settings,
     "  %d track(s) feed a surround bus and hold no panner settings this build can\n"
     "      read; they arrive without a surround panner.\n"},
};

constexpr CountRow<PannerTallies> rows_of_limits[] = {
    {&PannerTallies::straight_moves,
     "  NOTE: %d surround panner move(s) are straight lines between their\n"
     "      points: this session has more of them than a mix can have.\n"},
    {&PannerTallies::lanes_past_limit,
     "  WARNING: %d surround panner automation lane(s) are NOT written: tracks\n"
     "      that could not be merged would each repeat them without end.\n"},
};

void print_straight_to_hardware(TextBuffer& out, const std::vector<std::string>& tracks) {
    constexpr std::size_t max_listed_tracks = 12;
    if (tracks.empty()) return;
    out.print(
        "  NOTE: %d track(s) are panned straight into a surround output, with no aux in\n"
        "      between. They play to the master in stereo, without that position:%s\n",
        count_of(tracks), quoted_names(tracks, max_listed_tracks).c_str());
}

}  // namespace

void print_panners(TextBuffer& out, const PannerTallies& tallies) {
    print_rows(out, tallies, panned_rows);
    if (tallies.envelopes > 0) {
        out.print(
            "  %d surround panner automation envelope(s) written on ReaSurroundPan\n"
            "      (%d points): position, divergence, center %% and LFE move as they\n"
            "      do in Pro Tools.\n",
            tallies.envelopes, tallies.envelope_points);
    }
    print_rows(out, tallies, rows_of_losses);
    if (tallies.unknown_layouts > 0 || tallies.without_settings > 0) {
        out.append("      Without one a track plays on the first two channels of its bus.\n");
    }
    print_straight_to_hardware(out, tallies.straight_to_hardware);
    print_rows(out, tallies, rows_of_limits);
}

}  // namespace tanrove
