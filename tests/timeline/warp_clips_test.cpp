// Elastic clips: what is heard at each moment, against a walk through tempo and map by hand.
#include "timeline/warp_clips.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "timeline/infer_stretch.hpp"
#include "timeline/stretch_markers.hpp"

namespace tanrove {
namespace {

constexpr double rate = 48000;

ClipItem clip_named(const char* name, double start, double offset, double length) {
    ClipItem clip;
    clip.name = name;
    clip.start = start;
    clip.source_offset = offset;
    clip.length = length;
    return clip;
}

std::vector<TimelineTrack> track_of(std::vector<ClipItem> clips) {
    std::vector<TimelineTrack> tracks(1);
    tracks[0].name = "Vox";
    tracks[0].clips = std::move(clips);
    return tracks;
}

struct Session {
    WarpMaps maps;
    TempoMap tempo_map;
    StretchTallies tallies;

    ClipItem warped(const ClipItem& clip) {
        const TempoClock clock(tempo_map, 120);
        const WarpSlicer slicer(maps, clock, 120, rate);
        auto tracks = track_of({clip});
        measure_warped_clips(tracks, slicer);
        warp_clips(tracks, clip_warper(slicer, tempo_map, tallies));
        return tracks[0].clips[0];
    }
};

double file_second_heard(const ClipItem& clip, double at) {
    return has_stretch_map(clip) ? source_position_at(clip.stretch->stretch_markers, at)
                                 : clip.source_offset + at * clip.playrate;
}

/// Quarter notes from the session's start, tempo by tempo.
double quarters_at(const TempoMap& map, double seconds) {
    double quarters = 0;
    for (std::size_t i = 0; i < map.size(); ++i) {
        const double width = i + 1 < map.size() ? (map[i + 1].tick - map[i].tick) / 960000 : 1e9;
        const double lasts = width * 60 / map[i].bpm;
        if (seconds <= lasts) return quarters + seconds * map[i].bpm / 60;
        quarters += width;
        seconds -= lasts;
    }
    return quarters;
}

/// The value beside `at` by a plain walk over a list of pairs.
double beside(const WarpMap& map, double at, double WarpPoint::*from, double WarpPoint::*to) {
    std::size_t i = 0;
    while (i + 2 < map.size() && map[i + 1].*from < at) ++i;
    const double part = (at - map[i].*from) / (map[i + 1].*from - map[i].*from);
    return map[i].*to + part * (map[i + 1].*to - map[i].*to);
}

TEST(WarpClips, PlayEachMomentOfTheFileWhereTheMapPutsIt) {
    std::mt19937 random(5);
    const auto between = [&random](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        const bool in_ticks = round % 2 == 1;
        const double units = in_ticks ? 2 * 960000 / rate : 1;  // a sample's, at 120
        Session session;
        session.tempo_map = {{0, 120}};
        while (session.tempo_map.size() < 12) {
            const auto& last = session.tempo_map.back();
            session.tempo_map.push_back({last.tick + between(5e5, 3e6), between(100, 140)});
        }
        WarpMap map = {{between(0, 1e5) * units, 0}};
        while (map.size() < 3 + static_cast<std::size_t>(round) % 9) {
            const double step = between(9000, 90000);
            map.push_back({map.back().position + step * between(0.6, 1.6) * units,
                           map.back().source_sample + step});
        }
        const double anchor = round % 3 == 0 ? 0 : 1000;
        (in_ticks ? session.maps.in_ticks : session.maps.in_samples)["take"] = map;
        session.maps.anchors["take"] = {anchor, false};
        const double lo = between(0, 4000);
        const double hi = map.back().source_sample - between(0, 4000);

        const ClipItem before =
            clip_named("take", between(0, 9), (anchor + lo) / rate, (hi - lo) / rate);
        const ClipItem clip = session.warped(before);
        const double first_time = beside(map, lo, &WarpPoint::source_sample, &WarpPoint::position);
        const double first_quarter = quarters_at(session.tempo_map, clip.start);
        EXPECT_NEAR(file_second_heard(clip, clip.length), (anchor + hi) / rate, 0.5 / rate);
        EXPECT_NEAR(clip.stretch->warped_length, clip.length, 1e-9);
        for (double at = 0; at < clip.length; at += 0.01) {
            const double span =
                in_ticks
                    ? 960000 * (quarters_at(session.tempo_map, clip.start + at) - first_quarter)
                    : at * rate;
            const double place =
                beside(map, first_time + span, &WarpPoint::position, &WarpPoint::source_sample);
            ASSERT_NEAR(file_second_heard(clip, at), (anchor + place) / rate, 0.5 / rate) << at;
        }
    }
}

TEST(WarpClips, ExtendInTheFileByWhatPlaysInTheGivenTime) {
    Session session;
    session.maps.in_samples["half speed"] = {{0, 0}, {4 * rate, 2 * rate}, {6 * rate, 4 * rate}};
    session.maps.anchors["half speed"] = {0, false};
    const TempoClock clock(session.tempo_map, 120);
    const WarpSlicer slicer(session.maps, clock, 120, rate);
    const ClipItem clip = clip_named("half speed", 10, 0.5, 1);
    EXPECT_NEAR(slicer.source_seconds_before(clip, 0.5), 0.25, 1e-9);
    EXPECT_NEAR(slicer.source_seconds_behind(clip, 2), 1.5, 1e-9);  // over the middle point
    EXPECT_EQ(slicer.source_seconds_behind(clip_named("plain", 0, 0, 1), 2), 2);
}

TEST(WarpClips, KeepTheirRateAndTheirPlacesWhenACrossfadeDrawsThemOut) {
    for (const double anchor : {0.0, 9e9}) {  // the second is no place of this file
        Session session;
        session.maps.in_samples["take"] = {{0, 0}, {2 * rate, rate}, {3 * rate, 2 * rate}};
        session.maps.anchors["take"] = {anchor, false};
        const TempoClock clock(session.tempo_map, 120);
        const WarpSlicer slicer(session.maps, clock, 120, rate);
        std::vector<TimelineTrack> tracks[] = {track_of({clip_named("take", 10, 0, 2)}), {}};
        measure_warped_clips(tracks[0], slicer);
        tracks[1] = tracks[0];
        ClipItem& drawn_out = tracks[1][0].clips[0];
        drawn_out.start -= 0.5;  // a quarter of a second of the file, at half speed
        drawn_out.source_offset -= 0.25;
        drawn_out.length += 0.25 + 1;  // at the tail one second of both
        for (auto& side : tracks) warp_clips(side, clip_warper(slicer, {}, session.tallies));
        const ClipItem& placed = tracks[0][0].clips[0];
        EXPECT_NEAR(drawn_out.length, 0.5 + 3 + 1, 1e-9);
        for (double at = -0.5; at < 4; at += 0.25) {
            EXPECT_NEAR(source_position_at(drawn_out.stretch->stretch_markers, at + 0.5),
                        source_position_at(placed.stretch->stretch_markers, at), 0.5 / rate)
                << at;
        }
    }
}

TEST(WarpClips, LeaveClipsAloneWhoseMapDoesNotFit) {
    struct {
        const char* what;
        WarpMap map;
        double offset_samples, length_samples;
        int unsliced;
        double length;  ///< in samples
    } const cases[] = {
        {"falls", {{0, 0}, {200, 900}, {100, 1000}}, 0, 1000, 1, 1000},
        {"takes no time", {{5, 0}, {5, 1000}}, 0, 1000, 1, 1000},
        {"over 20 times slower", {{0, 0}, {20001, 1000}}, 0, 1000, 1, 1000},
        {"nearly so", {{0, 0}, {19999, 1000}}, 0, 1000, 0, 19999},
        {"less than half a sample", {{0, 0}, {1000.4, 1000}}, 0, 1000, 0, 1000},
        {"window behind the map", {{0, 0}, {500, 250}, {2000, 1000}}, 5000, 500, 0, 1000},
        {"window past the map's end goes on", {{0, 0}, {2000, 1000}}, 0, 1500, 0, 3000},
        {"no number", {{0, 0}, {std::nan(""), 1000}}, 0, 1000, 1, 1000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Session session;
        session.maps.in_samples["take"] = c.map;
        session.maps.anchors["take"] = {0, false};
        const auto clip =
            session.warped(clip_named("take", 1, c.offset_samples / rate, c.length_samples / rate));
        EXPECT_EQ(session.tallies.unsliced, c.unsliced);
        EXPECT_NEAR(clip.length * rate, c.length, 1e-6);
        EXPECT_EQ(clip.stretched, c.length != c.length_samples);
        EXPECT_NEAR(file_second_heard(clip, 0) * rate, c.offset_samples, 1e-6);
    }
}

TEST(InferStretch, TakesTheRateThatATracksClipsAgreeOn) {
    struct {
        std::vector<double> lengths;  ///< of clips that start a second apart
        double rate;
    } const cases[] = {
        {{1.1, 1.1, 1.1, 1.1}, 1.1},
        {{1.1, 1.1, 1.1}, 1},  // two values only
        {{1.1, 1.1, 1.104, 1.1, 1.2, 0.9, 1.1}, 1.1},
        {{1.1, 1.1, 1.1, 1.2, 1.21, 0.9, 1.1}, 1},  // three of six
        {{1.001, 1.001, 1.001, 1.001}, 1},
        {{1.3, 1.3, 1.3, 1.3}, 1},
    };
    for (const auto& c : cases) {
        Session session;
        session.maps.in_samples["take"] = {{0, 5}, {1, 5}};
        const TempoClock clock(session.tempo_map, 120);
        const WarpSlicer slicer(session.maps, clock, 120, rate);
        std::vector<ClipItem> clips;
        for (const double length : c.lengths) {
            clips.push_back(clip_named("take", static_cast<double>(clips.size()), 0, length));
        }
        auto tracks = track_of(clips);
        infer_stretch(tracks[0], slicer, session.tallies);
        EXPECT_EQ(tracks[0].clips[0].playrate, c.rate);
        EXPECT_EQ(tracks[0].clips[0].length, c.lengths[0] / c.rate);
        EXPECT_EQ(session.tallies.inferred_tracks.size(), c.rate == 1 ? 0u : 1u);
    }
}

}  // namespace
}  // namespace tanrove
