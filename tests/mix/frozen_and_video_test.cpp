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
        if (c.panner) tracks[0].panner.emplace();
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

TEST(PlanVideo, MeasuresEachNumberInTheUnitThatItTells) {
    using enum VideoUnit;
    const struct {
        VideoUnit of_position, of_region;
        double position;
        std::optional<double> frame_rate;
        double start, length;  // seconds; 0 for no item
    } cases[] = {
        {frames, frames, 50, 25, 2, 4},
        {samples, frames, 96000, 25, 2, 4},
        {ticks, frames, 1000001920000.0, 25, 2, 4},
        {samples, samples, 96000, {}, 2, 100 / 48e3},
        {frames, samples, 50, 25, 2, 100 / 48e3},
        {samples, ticks, 96000, {}, 2, 100 / 960e3},
        {samples, frames, 96000, {}, 0, 0},
        {frames, samples, 50, {}, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const std::vector<VideoRegion> regions = {{"Reel 2", c.of_region, 100, 100, 1}};
        VideoInput input;
        input.video.track_names = {"Film"};
        input.video.clips = {{.position = c.position, .unit = c.of_position}};
        input.regions = regions;
        input.info.names = {"Reel.mov", "Reel 2.mov"};
        input.info.movies = {"Reel.mov", "Reel 2.mov"};
        input.info.frame_rate = c.frame_rate;
        VideoTallies tallies;
        const auto items = plan_video(input, clock_at_60, tallies).tracks.at(0).items;
        ASSERT_EQ(items.size(), c.length > 0 ? 1U : 0U);
        EXPECT_EQ(tallies.clips_without_region, c.length > 0 ? 0 : 1);
        if (items.empty()) continue;
        EXPECT_EQ(items[0].start, c.start);
        EXPECT_NEAR(items[0].length, c.length, 1e-12);
        EXPECT_NEAR(items[0].source_offset, c.length, 1e-12);
        EXPECT_EQ(items[0].movie, "Reel 2.mov");
        EXPECT_EQ(tallies.frame_rate.has_value(), c.of_region == frames);
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
