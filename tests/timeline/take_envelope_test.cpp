// What a take's envelope sounds like, heard at every sample as REAPER plays it: in straight lines
// of gain, and compared with Pro Tools' own curves.
#include "timeline/take_envelope.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "base/fader_law.hpp"
#include "timeline/clip_gain_plan.hpp"
#include "timeline/fade_curve.hpp"
#include "timeline/stretch_markers.hpp"

namespace tanrove {
namespace {

constexpr double rate = 48000;

double db_of(double gain) {
    return 20 * std::log10(std::max(gain, 1e-9));
}

/// The envelope's gain at a moment of its own time.
double played(const std::vector<EnvelopePoint>& points, double seconds) {
    const auto behind = std::ranges::upper_bound(points, seconds, {}, &EnvelopePoint::seconds);
    if (behind == points.begin()) return points.front().value;
    if (behind == points.end()) return points.back().value;
    const EnvelopePoint& from = *(behind - 1);
    const double along = (seconds - from.seconds) / (behind->seconds - from.seconds);
    return std::lerp(from.value, behind->value, along);
}

/// The drawn line at a place in the file: straight along the clip fader, level beyond its ends.
double line_db(const std::vector<ClipGainLinePoint>& line, double position) {
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (position >= line[i].position && i + 1 < line.size()) continue;
        const double width = line[i].position - line[i - 1].position;
        const double along = std::clamp((position - line[i - 1].position) / width, 0.0, 1.0);
        return fader_db(FaderThrow::clip,
                        std::lerp(fader_position(FaderThrow::clip, line[i - 1].gain_db),
                                  fader_position(FaderThrow::clip, line[i].gain_db), along));
    }
    return 0;
}

double file_second(const ClipItem& clip, double at) {
    return has_stretch_map(clip) ? source_position_at(clip.stretch->stretch_markers, at)
                                 : clip.source_offset + at * clip.playrate;
}

TEST(TakeEnvelope, StaysWithinATenthOfADecibelOfProToolsCurvesAtEverySample) {
    ClipItem plain;
    plain.length = 0.5;
    plain.source_offset = 0.25;
    std::vector<ClipItem> clips(5, plain);
    for (std::size_t i = 1; i < clips.size(); ++i) {
        clips[i].gain =
            ClipGain{-30, -30, {{100, -30}, {14400, 11}, {22000, 11}, {22000, -50}, {40000, 3}}};
        clips[i].has_clip_gain = true;
    }
    clips[2].playrate = 0.8;
    clips[3].stretch.edit().stretch_markers = {{0, 0.25}, {0.25, 20000 / rate}, {0.5, 0.75}};
    clips[4].gain = ClipGain{-6, -6, {{0, -6}, {96000, -6}}};
    std::vector<FadeSpec> specs;
    for (const std::uint32_t family : {0U, 1U}) {
        for (const int type : {0, 1}) {
            for (const int setting : {-32767, -3000, 2000, 32767})
                specs.push_back({family, type, setting});
        }
        specs.push_back({family, 2, -2});
        specs.push_back({family, 2, 3});
        specs.push_back({family, 2, -3});
    }
    for (std::size_t i = 0; i < specs.size() * clips.size(); ++i) {
        const FadeSpec spec = specs[i / clips.size()];
        ClipItem clip = clips[i % clips.size()];
        clip.fades.edit().fade_in = {
            .length = 0.2, .as_envelope = true, .spec = spec, .spec_length = 0.2};
        clip.fades.edit().fade_out = {
            .length = 0.25, .as_envelope = true, .spec = spec, .spec_length = 0.25};
        SCOPED_TRACE(testing::Message() << spec.family << ' ' << spec.type << ' ' << spec.setting
                                        << " at rate " << clip.playrate);
        TakeTallies tallies;
        TakePlanner planner(rate, tallies);
        const TakePlan& plan = planner.plan(clip);
        const auto& points = plan.envelope;
        ASSERT_LT(points.size(), 1000U);
        for (int sample = 0; sample <= 24000; ++sample) {
            const double at = sample / rate;
            double gain = 1;
            if (sample <= 9600) gain *= fade_gain(spec, FadeSide::fade_in, sample / 9600.0);
            if (sample >= 12000)
                gain *= fade_gain(spec, FadeSide::fade_out, (sample - 12000) / 12000.0);
            if (!clip.gain->gain_envelope.empty()) {
                const double position = file_second(clip, at) * rate;
                gain *= std::pow(10, line_db(clip.gain->gain_envelope, position) / 20);
            }
            if (gain <= 0.001) continue;
            ASSERT_NEAR(db_of(plan.gain * played(points, at * clip.playrate)), db_of(gain), 0.1)
                << sample;
        }
    }
}

TEST(TakePlan, PlaysTheLineWithItsVolumeAndEnvelopeTogether) {
    using Line = std::vector<ClipGainLinePoint>;
    const struct {
        const char* what;
        Line line;
        double db;
        bool has_envelope;
    } cases[] = {
        {"level", {{0, -6}, {96000, -6}}, -6, true},
        {"all before the clip", {{0, 3}, {12000, -6}}, -6, false},
        {"all behind it", {{72000, -6}, {96000, 9}}, -6, false},
        {"one point", {{0, 3}}, 3, false},
    };
    const std::vector<StretchMarker> maps[] = {{}, {{0, 0.5}, {0.5, 0.6}, {1, 1}}};
    for (const auto& c : cases) {
        for (const double rate_of_clip : {1.0, 0.5, 0.0}) {
            SCOPED_TRACE(c.what);
            ClipItem clip;
            clip.source_offset = 0.5;
            clip.length = rate_of_clip == 0.5 ? 1 : 0.5;
            clip.playrate = rate_of_clip;
            clip.stretch.edit().stretch_markers = maps[rate_of_clip == 0 ? 1 : 0];
            clip.has_clip_gain = true;
            const double own_db = c.line.front().gain_db;
            clip.gain = ClipGain{own_db - 2, own_db, c.line};  // 2 dB are its group's
            TakeTallies tallies;
            TakePlanner planner(rate, tallies);
            const TakePlan& plan = planner.plan(clip);
            EXPECT_EQ(!plan.envelope.empty(), c.has_envelope);
            const double drawn = c.has_envelope ? played(plan.envelope, 0.1) : 1;
            EXPECT_NEAR(db_of(plan.gain * drawn), c.db - 2, 1e-6);
        }
    }
}

TEST(TakePlan, GivesBackTheNearestShapeToAFadeThatAnEditChanged) {
    struct {
        double length, spec_length;
        bool in_envelope;
    } const cases[] = {{0.5, 0.5, true}, {1, 1, true}, {0.4, 0.5, false}, {1.5, 1.5, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.length);
        ClipItem clip;
        clip.length = 1;
        clip.fades.edit().fade_out = {.length = c.length,
                                      .shape = 4,
                                      .as_envelope = true,
                                      .spec = {0, 2, -2},
                                      .spec_length = c.spec_length};
        TakeTallies tallies;
        TakePlanner planner(rate, tallies);
        const TakePlan& plan = planner.plan(clip);
        EXPECT_EQ(plan.fade_out.length, c.in_envelope ? 0 : c.length);
        EXPECT_EQ(plan.fade_out.shape, 4);
        EXPECT_EQ(plan.envelope.empty(), !c.in_envelope);
        EXPECT_EQ(tallies.fades_as_nearest_shape, c.in_envelope ? 0 : 1);
        EXPECT_EQ(tallies.fades_as_envelope, c.in_envelope ? 1 : 0);
    }
}

TEST(ClipGain, AddsTheGroupsGainToTheClipsOwn) {
    ClipGains gains;
    gains.entries = {{{0, -3}, {10, 0}}};
    gains.audio = {.fixed_db = {{"own", 1}}, .line_of_clip = {{"own", 0}, {"no fixed gain", 0}}};
    gains.groups = {.fixed_db = {{"own", 9}, {"group", -3}, {"flat group", 0}},
                    .line_of_clip = {{"group", 0}}};
    struct {
        const char *name, *group;
        bool has_gain;
        double db;
        bool has_line;
    } const cases[] = {
        {"own", "", true, 1, true},
        {"no fixed gain", "", false, 0, false},
        {"own", "group", true, -2, true},
        {"other", "group", true, -3, false},
        {"other", "flat group", false, 0, false},
    };
    std::vector<TimelineTrack> tracks(1);
    for (const auto& c : cases) {
        tracks[0].clips.emplace_back().name = c.name;
        tracks[0].clips.back().grouping.edit().group_name = c.group;
    }
    ClipGainTallies tallies;
    give_clip_gain(tracks, gains, nullptr, tallies);
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(tracks[0].clips[i].has_clip_gain, cases[i].has_gain);
        EXPECT_EQ(tracks[0].clips[i].gain->clip_gain_db, cases[i].db);
        EXPECT_EQ(!tracks[0].clips[i].gain->gain_envelope.empty(), cases[i].has_line);
    }
    EXPECT_EQ(tallies.clips, 3);
    EXPECT_EQ(tallies.in_groups_with_gain, 2);
    EXPECT_EQ(tallies.in_groups_with_line, 2);
    EXPECT_EQ(tallies.groups_with_line, std::vector<std::string>{"group"});
}

}  // namespace
}  // namespace tanrove
