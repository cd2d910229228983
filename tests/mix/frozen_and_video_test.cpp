// Frozen tracks and why some arrive unfrozen; video clips, their movies and their units.
#include <gtest/gtest.h>

#include "mix/frozen_plan.hpp"
#include "mix/video_plan.hpp"

namespace tanrove {
namespace {

const TempoClock clock_at_60({}, 60);

Region region(const std::string& name, std::int32_t file, std::int64_t length = 48000,
              std::int64_t source_offset = 0) {
    Region made;
    made.name = name;
    made.file = file;
    made.length = length;
    made.source_offset = source_offset;
    return made;
}

TEST(PlanFrozen, TheFirstReasonThatAppliesKeepsATrackUnfrozen) {
    const std::vector<AudioFileEntry> files = {
        {"Disk/Gtr-FZ.wav", 0}, {"Gtr.wav", 1}, {"Gtr-FZ.L.wav", 2}, {"Gtr-FZ.R.wav", 3}};
    using enum FreezeRefusal;
    const struct {
        const char* what;
        std::vector<Region> regions;
        std::optional<FreezeRefusal> reason;
        RenderFile file = {"/x", true, true};
        std::size_t lanes = 0;
        bool panner = false;
        double length = 48000;
    } cases[] = {
        {"one render", {region("Gtr", 0), region("Gtr-01", 1)}, {}},
        {"two names", {region("Gtr", 0), region("Gtr-01", 2)}, several_renders, {"", false}},
        {"placed twice", {region("Gtr", 0), region("Gtr", 0)}, several_renders},
        {"two sides", {region("Gtr", 3), region("Gtr", 2)}, two_mono_files, {"", false}},
        {"two files", {region("Gtr", 0), region("Gtr", 2)}, unidentified},
        {"no length", {region("Gtr", 0)}, unidentified, {"", false}, 0, false, 0},
        {"not there", {region("Gtr", 0)}, not_on_disk, {"/x", false}, 1},
        {"lanes", {region("Gtr", 0)}, has_lanes, {"/x", true, false}, 1, true},
        {"panner", {region("Gtr", 0)}, feeds_surround_panner, {"/x", true, false}, 0, true},
        {"no audio file", {region("Gtr", 0)}, unreadable, {"/x", true, false}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<TrackPlan> tracks(2);
        tracks[0].session_name = "Gtr";
        tracks[0].lanes.resize(c.lanes);
        tracks[0].has_surround_panner = c.panner;
        tracks[1].session_name = "Bass";
        FrozenInput input;
        input.renders = {{"Gtr", {{"Gtr", 480, c.length, 1000000960000.0}, {"Gtr-01", 0, 1, 0}}}};
        input.regions = c.regions;
        input.files = files;
        input.find_render = [&](const std::string& file) {
            EXPECT_EQ(file, "Gtr-FZ.wav");
            return c.file;
        };
        FrozenTallies tallies;
        plan_frozen(tracks, input, clock_at_60, tallies);
        EXPECT_TRUE(tallies.frozen_tracks == 1 && tallies.refused.empty() && !tracks[0].frozen);
        input.keep_frozen = true;
        plan_frozen(tracks, input, clock_at_60, tallies);
        ASSERT_EQ(tracks[0].frozen.has_value(), !c.reason);
        ASSERT_EQ(tallies.refused.size(), c.reason ? 1U : 0U);
        if (c.reason) {
            EXPECT_EQ(tallies.refused[0].reason, *c.reason);
            continue;
        }
        EXPECT_EQ(tracks[0].frozen->start, 1);
        EXPECT_EQ(tracks[0].frozen->length, 1);
        EXPECT_EQ(tracks[0].frozen->source_offset, 0.01);
    }
}

VideoInput picture(const std::vector<Region>& regions, std::vector<VideoClip> clips) {
    VideoInput input;
    input.video.track_names = {"Film"};
    input.video.clips = std::move(clips);
    input.regions = regions;
    input.info.names = {"Reel.mov", "Reel 2.mov"};
    return input;
}

TEST(PlanVideo, MeasuresInFramesOnlyWhereThePictureFitsThem) {
    const struct {
        std::optional<double> frame_rate;
        std::int64_t length;
        double seconds;
    } cases[] = {{25, 50, 2},         {25, 51, 2.04}, {{}, 48000, 1},
                 {25, 52, 52 / 48e3}, {25, 96000, 2}, {1, 24 * 3600 + 1, 86401 / 48e3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.length);
        const std::vector<Region> regions = {region("Reel", -1, c.length, c.length)};
        const bool alone = c.frame_rate == 1;
        auto input = picture(regions, {{.position = 1000001920000.0}, {.position = 0}});
        if (alone) input.video.clips.pop_back();
        input.info.frame_rate = c.frame_rate;
        VideoTallies tallies;
        const auto items = plan_video(input, clock_at_60, tallies).tracks.at(0).items;
        EXPECT_EQ(items.back().start, 2);
        EXPECT_DOUBLE_EQ(items.front().length, c.seconds);
        EXPECT_DOUBLE_EQ(items.front().source_offset, c.seconds);
    }
}

TEST(PlanVideo, StandsFirstWhereOnlyTheMasterIsAboveIt) {
    using enum StripRowType;
    const struct {
        std::vector<StripRowType> rows;
        bool first;
    } cases[] = {{{master, video, video, audio_or_aux}, true},
                 {{video, midi, video}, false},
                 {{vca, video}, false}};
    for (const auto& c : cases) {
        std::vector<StripRow> rows;
        for (const auto type : c.rows) rows.emplace_back().type = type;
        VideoInput input;
        input.rows = rows;
        VideoTallies tallies;
        EXPECT_EQ(plan_video(input, clock_at_60, tallies).stands_first, c.first);
    }
}

}  // namespace
}  // namespace tanrove
