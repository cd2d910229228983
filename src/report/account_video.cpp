// What became of the video tracks: printed where there is one, and where clips of one were lost.
#include "report/account_video.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_missing_movies = 6;

constexpr CountText missing_movies =
    "      %d video file(s) were not found next to the session, so\n"
    "      their items arrive offline, under the bare file name. Copy\n"
    "      the files into \"Video Files\" beside the session and convert\n"
    "      again:\n";

constexpr CountRow<ColourTallies> colour_rows[] = {
    {&ColourTallies::video_clips_coded,
     "      %d video clip(s) with no color of their own take the color\n"
     "      that Pro Tools draws for them under this session's coding.\n"},
    {&ColourTallies::video_clips_own, "      %d video clip(s) carried a clip color.\n"},
};

constexpr CountRow<VideoTallies> left_out_rows[] = {
    {&VideoTallies::clips_without_region,
     "      WARNING: %d video clip(s) are NOT in the project: what they\n"
     "      play could not be found in the session's list of video clips.\n"},
    {&VideoTallies::clips_without_movie,
     "      WARNING: %d video clip(s) are NOT in the project: which of the\n"
     "      session's movies they play could not be told from their names.\n"},
};

void print_place(TextBuffer& out, const VideoTallies& tallies) {
    if (tallies.at_top) {
        out.print(
            "  %d video track(s), %d video item(s) written. REAPER carries\n"
            "      picture on ordinary tracks; these stand at the top, as in\n"
            "      Pro Tools.\n",
            tallies.tracks, tallies.items);
    } else {
        out.print(
            "  %d video track(s), %d video item(s) written. REAPER carries\n"
            "      picture on ordinary tracks; these stand behind the others.\n",
            tallies.tracks, tallies.items);
    }
}

void print_unit(TextBuffer& out, const VideoTallies& tallies) {
    if (tallies.frame_rate) {
        out.print(
            "      Lengths and source offsets are the session's own, in\n"
            "      frames (%g a second), so a split picture arrives as the\n"
            "      same pieces.\n",
            *tallies.frame_rate);
    } else {
        out.print(
            "      Lengths and source offsets are the session's own, in\n"
            "      samples, so a split picture arrives as the same pieces.\n");
    }
}

void print_quality(TextBuffer& out, const VideoTallies& tallies) {
    if (!tallies.reduced_quality) return;
    out.print(
        "      The video track was set to %s, not Full Quality. REAPER's\n"
        "      video decode quality is a global preference with no place\n"
        "      in a project file, so set it in REAPER if picture plays\n"
        "      rough. Nothing else about the picture depends on it.\n",
        "a reduced quality");
}

}  // namespace

void print_video(TextBuffer& out, const VideoTallies& tallies, const ColourTallies& colours) {
    if (tallies.tracks <= 0) return;
    print_place(out, tallies);
    if (tallies.items > 0) print_unit(out, tallies);
    out.print(
        "      The video track is not sent to the master: Pro Tools plays\n"
        "      no sound from a video track.\n");
    print_quality(out, tallies);
    if (print_count(out, count_of(tallies.missing_movies), missing_movies)) {
        out.print("%s", one_name_a_line(tallies.missing_movies, max_missing_movies).c_str());
    }
    if (!colours.clip_colours_off) print_rows(out, colours, colour_rows);
    print_rows(out, tallies, left_out_rows);
}

}  // namespace tanrove
