// Picture, and tracks wider than stereo: what of them arrives, and what has to be set by hand.
#include "report/count_rows.hpp"
#include "report/name_lists.hpp"
#include "report/report_sections.hpp"

namespace tanrove {

namespace {

/// A sentence that counts the files below it.
void print_files(TextBuffer& out, const std::vector<std::string>& files, CountText text) {
    if (!print_count(out, count_of(files), text)) return;
    out.append(one_name_a_line(files, no_cap));
}

void print_picture(TextBuffer& out, const VideoTallies& video) {
    if (video.tracks <= 0) return;
    out.print(
        "  %d video track(s), %d video item(s) written. Position, length,\n"
        "  source offset, name and clip color are the session's own, in\n"
        "  %s, so a split picture arrives as the same two pieces on\n"
        "  the same track.\n",
        video.tracks, video.items, video.frame_rate ? "frames" : "samples");
    if (video.reduced_quality) {
        out.append(
            "    The video track was set to a reduced quality, not Full Quality. REAPER's\n"
            "    video decode quality is a global preference with no place\n"
            "    in a project file, so set it in REAPER if picture plays\n"
            "    rough. Nothing else about the picture depends on it.\n");
    }
    print_count(out, video.clips_without_region,
                "    %d video clip(s) are NOT in the project: what they play could not\n"
                "    be found in the session's list of video clips.\n");
    print_count(out, video.clips_without_movie,
                "    %d video clip(s) are NOT in the project: which of the session's\n"
                "    movies they play could not be told from their names.\n");
    print_files(out, video.movies_elsewhere,
                "    %d video file(s) were found outside \"Video Files\"; their items\n"
                "    point there:\n");
    print_files(out, video.missing_movies,
                "    %d video file(s) were not found next to the session, so their\n"
                "    items arrive offline, under the bare file name:\n");
    out.append(
        "    Pro Tools' Video Sync Offset (Setup > Video Sync Offset) is a\n"
        "    preference, not part of the session file: if you work with one,\n"
        "    set it in REAPER as well.\n");
}

constexpr CountRow<PannerTallies> panner_rows[] = {
    {&PannerTallies::mono,
     "  %d mono track(s) panned into a surround bus arrive with REAPER's\n"
     "  surround panner (ReaSurroundPan) set from Pro Tools' panner:\n"
     "  position, divergence, center %% and the LFE level, which sessions\n"
     "  from before Pro Tools 2026 do not tell.\n"},
    {&PannerTallies::stereo,
     "  %d stereo track(s) panned into a surround bus arrive with\n"
     "  ReaSurroundPan set from Pro Tools' left and right panners\n"},
    {&PannerTallies::unknown_layouts,
     "  %d track(s) feed a surround bus whose speaker layout this build\n"
     "  cannot place, so they arrive without a surround panner\n"},
    {&PannerTallies::without_settings,
     "  %d track(s) feed a surround bus and hold no panner settings this\n"
     "  build can read, so they arrive without a surround panner\n"},
    {&PannerTallies::lanes_left_out,
     "  %d surround panner automation lane(s) are NOT written: those of\n"
     "  stereo tracks, and of sessions from before Pro Tools 2026\n"},
};

void print_surround(TextBuffer& out, const MixTallies& mix) {
    print_count(out, mix.routing.wide_auxes,
                "  %d aux(es) taking a surround bus arrive as wide as that bus, and\n"
                "  every track feeding it sends all of its channels.\n");
    print_rows(out, mix.panners, panner_rows);
    const auto& on_hardware = mix.panners.straight_to_hardware;
    if (on_hardware.empty()) return;
    print_count(out, count_of(on_hardware),
                "  %d track(s) are panned straight into a surround output, with no\n"
                "  aux in between. They play to the master in stereo:\n");
    out.append(one_name_a_line(on_hardware, no_cap));
}

void print_wide(TextBuffer& out, const LevelTallies& levels) {
    print_count(out, count_of(levels.wide_strips),
                "  %d mixer strip(s) are wider than stereo. Level, mute and their\n"
                "  automation are right. The panner of a WIDE strip itself is not\n"
                "  converted (only a mono or stereo source panned into a surround\n"
                "  bus is, above), so if one was positioned, set it by hand in\n"
                "  REAPER. They are listed under NEEDS A LOOK above.\n");
    if (levels.panners_left_still > 0) {
        out.print(
            "    %d of them %s PAN automation that is NOT written: which\n"
            "    panner control each lane moves is not named in the session\n"
            "    yet. Volume, trim and mute automation ARE.\n",
            levels.panners_left_still, levels.panners_left_still == 1 ? "carries" : "carry");
    }
}

bool has_surround_sources(const PannerTallies& panners) {
    const int tracks =
        panners.mono + panners.stereo + panners.unknown_layouts + panners.without_settings;
    return tracks + panners.lanes_left_out > 0 || !panners.straight_to_hardware.empty();
}

bool has_wide_tracks(const MixTallies& mix) {
    return !mix.levels.wide_strips.empty() || mix.levels.panners_left_still > 0 ||
           mix.tracks.surround_folds > 0 || mix.routing.wide_auxes > 0 ||
           has_surround_sources(mix.panners);
}

}  // namespace

void print_picture_and_wide_tracks(TextBuffer& out, const RunTallies& tallies) {
    const bool wide = has_wide_tracks(tallies.mix);
    if (tallies.mix.video.tracks <= 0 && !wide) return;
    out.append("\nPICTURE AND WIDE TRACKS\n");
    print_picture(out, tallies.mix.video);
    if (!wide) return;
    print_surround(out, tallies.mix);
    print_wide(out, tallies.mix.levels);
    out.append(
        "    A surround session is the one thing this converter has had\n"
        "    least of to test on. If yours matters, send this report to\n"
        "    vorlane's support, and say what is wrong with it.\n");
}

}  // namespace tanrove
