// Every sentence about colours says where the colour comes from: the session, its coding, or us.
#include "report/account_colours.hpp"

#include <array>
#include <optional>
#include <string>

#include "report/count_rows.hpp"

namespace tanrove {

namespace {

constexpr std::array<const char*, 8> scheme_names = {
    "None",        "Tracks and MIDI Channels", "Tracks and MIDI Devices", "Groups", "Track Type",
    "Track Color", "Marker Locations",         "Clip List Color"};
constexpr std::int32_t track_colour_scheme = 5;

/// The coding's name in Pro Tools; nullptr where the session states none that is known.
const char* scheme_name(std::optional<std::int32_t> scheme) {
    if (!scheme || *scheme < 0) return nullptr;
    const auto number = static_cast<std::size_t>(*scheme);
    return number < scheme_names.size() ? scheme_names[number] : nullptr;
}

void print_without_colour(TextBuffer& out, const ColourTallies& tallies) {
    if (tallies.tracks_without <= 0) return;
    out.print(
        "  %d track(s) have no color set. Pro Tools does not STORE a\n"
        "      color that nobody chose: it draws one by the session's color\n",
        tallies.tracks_without);
    const char* scheme = scheme_name(tallies.schemes.track);
    if (scheme == nullptr) {
        out.print(
            "      coding, and this session does not say which. They keep\n"
            "      REAPER's default.\n");
    } else {
        out.print(
            "      coding. Here that is \"%s\", which gives these\n"
            "      tracks none. They keep REAPER's default.\n",
            scheme);
    }
}

void print_coded_tracks(TextBuffer& out, const ColourTallies& tallies) {
    const char* scheme = scheme_name(tallies.schemes.track);
    if (tallies.tracks_by_scheme <= 0 || scheme == nullptr) return;
    out.print(
        "  %d track(s) had NO color of their own and were given the one\n"
        "      Pro Tools DISPLAYS for them, under this session's\n"
        "      \"%s\" color coding.\n"
        "      That scheme is stored IN THE SESSION, so the color is the\n"
        "      same everywhere and is not this machine's preference.\n",
        tallies.tracks_by_scheme, scheme);
}

constexpr CountRow<ColourTallies> coded_clip_rows[] = {
    {&ColourTallies::clips_by_scheme,
     "      %d clip(s) with no color of their own were given the tint\n"
     "      that Pro Tools draws for them under this coding.\n"},
    {&ColourTallies::scheme_not_measured,
     "      %d clip(s) sit in a row whose tint under this coding has\n"
     "      not been measured from Pro Tools: theirs is a close shade.\n"},
    {&ColourTallies::clips_left,
     "      %d clip(s) with no color of their own are left for REAPER\n"
     "      to draw in the color of their track.\n"},
};

void print_coded_clips(TextBuffer& out, const ColourTallies& tallies) {
    const char* scheme = scheme_name(tallies.schemes.clip);
    const bool has_clips = coloured_clips(tallies) + tallies.clips_left > 0;
    if (scheme == nullptr || !has_clips || tallies.clip_colours_off) return;
    out.print(
        "  Clip color coding in this session: \"%s\".\n"
        "      Clips that carry their OWN color are converted with it.\n",
        scheme);
    if (tallies.lane_clips > 0) {
        out.print(
            "      %d clip(s) on alternate playlist lanes with no color of\n"
            "      their own take that of the same recording; others take\n"
            "      %s.\n",
            tallies.lane_clips,
            tallies.schemes.clip == track_colour_scheme ? "their track's color"
                                                        : "what the coding draws");
    }
    print_rows(out, tallies, coded_clip_rows);
    if (tallies.clips_left > 0) {
        out.print(
            "      What Pro Tools displays for a clip with no color of its\n"
            "      own depends on that coding; REAPER has nothing like it.\n");
    }
}

constexpr CountRow<ColourTallies> device_rows[] = {
    {&ColourTallies::instrument_feeds,
     "  %d track(s) feeding a plug-in instrument keep REAPER's default\n"
     "      color: Pro Tools colors MIDI tracks by hardware port here.\n"},
    {&ColourTallies::tracks_without_output,
     "  %d MIDI/instrument track(s) have no MIDI output assigned. Pro\n"
     "      Tools colors them by that output, so they keep REAPER's\n"
     "      default color.\n"},
    {&ColourTallies::groups_without_slot,
     "  %d group(s) had no readable slot number, so their tracks\n"
     "      keep REAPER's default color.\n"},
};

void print_own_clips(TextBuffer& out, const ColourTallies& tallies) {
    if (tallies.clips_own > 0) {
        out.print(
            "  %d clip(s) carried a color, %d distinct Pro Tools palette\n"
            "      index(es). Clips sharing an index share a REAPER color, so\n"
            "      the GROUPING is exact; the shade is as close as the palette\n"
            "      allows.\n",
            tallies.clips_own, count_of(tallies.own_places));
    }
    print_count(out, tallies.clips_hand_picked,
                "      %d of them carry a hand-picked palette color from the lower\n"
                "      rows of the palette, whose shades were measured.\n");
    print_count(out, tallies.clips_off_palette,
                "      WARNING: %d clip(s) carry a palette index off the known\n"
                "      grid. They are given a distinct color so the grouping still\n"
                "      transfers, but the shade is invented. Please send the\n"
                "      session in.\n");
    print_count(out, tallies.coloured_rows_left,
                "      NOTE: %d further colored placement(s) in the session\n"
                "      are no clips of this project: they, or the playlists that\n"
                "      they lie on, were left out.\n");
}

void print_theme(TextBuffer& out, const ColourTallies& tallies) {
    const ColourTheme& theme = tallies.theme;
    const char* older =
        theme.session_older ? " This session predates the Dark theme (2020.11)." : "";
    if (theme.dark && theme.chosen) {
        out.print(
            "  Clip colors follow Pro Tools' Dark theme, as chosen (%d\n"
            "      measured, %d derived).%s\n",
            tallies.dark_measured, tallies.dark_derived, older);
    } else if (theme.dark && tallies.dark_measured + tallies.dark_derived > 0) {
        out.print(
            "  Clip colors follow Pro Tools' Dark theme (%d measured, %d\n"
            "      derived from the Classic theme), which sessions of this\n"
            "      version open in; --pt-theme classic gives the other.\n",
            tallies.dark_measured, tallies.dark_derived);
    } else if (!theme.dark && theme.chosen) {
        out.print("  Clip colors follow Pro Tools' Classic theme, as chosen.\n");
    }
}

constexpr CountRow<ColourTallies> row_rows[] = {
    {&ColourTallies::tracks_without_row,
     "  %d track(s) had no stored display row, so their position in\n"
     "      the track list stands for it in the color coding.\n"},
    {&ColourTallies::tracks_past_rows,
     "  %d track(s) sit past position 26. Their color follows the\n"
     "      16-row cycle of the rows above, which has not been checked\n"
     "      against Pro Tools for tracks there.\n"},
};

}  // namespace

int coloured_clips(const ColourTallies& tallies) {
    return tallies.clips_own + tallies.lane_clips + tallies.clips_by_scheme +
           tallies.midi_clips_as_listed;
}

void print_colour_options(TextBuffer& out, const ColourTallies& tallies) {
    if (tallies.track_colours_off) {
        out.print(
            "  --no-track-colors: every track is in REAPER's default color;\n"
            "      %d would carry one otherwise.\n",
            tallies.tracks_own + tallies.tracks_by_scheme);
    }
    if (!tallies.clip_colours_off) return;
    print_count(out, coloured_clips(tallies),
                "  --no-clip-colors: %d clip(s) that would carry a color are\n"
                "      in their track's color instead.\n");
}

void print_track_colours(TextBuffer& out, const ColourTallies& tallies) {
    if (tallies.track_colours_off) return;
    print_count(out, tallies.tracks_own,
                "  %d track(s) carried a color onto REAPER track colors\n");
    print_without_colour(out, tallies);
    print_count(out, tallies.tracks_off_palette,
                "  NOTE: %d track record(s) held a value where the color belongs\n"
                "      that is not on Pro Tools' track palette. Those tracks are given\n"
                "      a color of their own, which may not be the shade that Pro Tools\n"
                "      shows.\n");
}

void print_colour_coding(TextBuffer& out, const ColourTallies& tallies) {
    if (!tallies.track_colours_off) print_coded_tracks(out, tallies);
    print_coded_clips(out, tallies);
    if (!tallies.track_colours_off) print_rows(out, tallies, device_rows);
}

void print_clip_colours(TextBuffer& out, const ColourTallies& tallies) {
    if (tallies.clip_colours_off) return;
    print_own_clips(out, tallies);
    print_theme(out, tallies);
}

void print_unmeasured_colours(TextBuffer& out, const ColourTallies& tallies) {
    if (!tallies.clip_colours_off) {
        print_count(out, tallies.midi_clips_as_listed,
                    "  %d MIDI clip(s) drawn in Pro Tools' MIDI clip color under\n"
                    "      \"Clip List Color\" arrive in that light blue.\n");
        if (tallies.clips_not_measured > 0) {
            std::string places;
            for (const auto place : tallies.unmeasured_places) {
                places += (places.empty() ? " " : ", ") + std::to_string(place);
            }
            out.print(
                "  %d clip(s) carry a Pro Tools auto-assigned color (palette index%s)\n"
                "      whose clip shade has not been measured from Pro Tools. They\n"
                "      keep their track's color.\n",
                tallies.clips_not_measured, places.c_str());
        }
    }
    if (!tallies.track_colours_off) print_rows(out, tallies, row_rows);
}

}  // namespace tanrove
