// Fades find their clips, and crossfades open.
#include "timeline/bind_fades.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "timeline/clip_edges.hpp"

namespace tanrove {
namespace {

/// The rule in one plain walk over the edges.
std::optional<std::size_t> edge_by_walking(const std::vector<ClipEdge>& edges,
                                           const FadePlace& fade, RowSide side) {
    std::optional<std::size_t> by_row;
    std::optional<std::size_t> nearest;
    const auto way = [&](std::size_t i) { return std::abs(edges[i].seconds - fade.seconds); };
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (way(i) > 0.005) continue;
        if (!nearest || way(i) < way(*nearest)) nearest = i;
        const int row = edges[i].edit_row;
        const bool is_before = side == RowSide::before_fade;
        if (row < 0 || !(is_before ? row < fade.row : row > fade.row)) continue;
        if (!by_row || (is_before ? row > edges[*by_row].edit_row : row < edges[*by_row].edit_row))
            by_row = i;
    }
    return by_row ? by_row : nearest;
}

TEST(EdgesOfFades, FindsWhatAWalkOverAllEdgesFinds) {
    std::mt19937 random(1);
    const auto below = [&](unsigned bound) { return static_cast<int>(random() % bound); };
    int bound = 0;
    for (int round = 0; round < 300; ++round) {
        // Parts of a power of two: equal distances come out equal.
        const auto seconds = [&] { return 10 + below(round % 2 == 0 ? 40 : 400) / 4096.0; };
        std::vector<ClipEdge> edges;
        std::vector<FadePlace> fades;
        for (int row = 0; row < 60; ++row) {
            const int kind = below(4);
            if (kind == 0) fades.push_back({seconds(), row});
            if (kind == 1) edges.push_back({seconds(), row});
            if (kind == 2) edges.push_back({seconds(), -1});
        }
        std::shuffle(edges.begin(), edges.end(), random);
        for (const RowSide side : {RowSide::before_fade, RowSide::behind_fade}) {
            const auto found = edges_of_fades(edges, fades, side);
            for (std::size_t i = 0; i < fades.size(); ++i) {
                ASSERT_EQ(found[i], edge_by_walking(edges, fades[i], side)) << round << ' ' << i;
                if (found[i]) ++bound;
            }
        }
    }
    EXPECT_GT(bound, 1000);
}

constexpr double rate = 48000;

/// A track of clips that follow each other, and one fade row behind the first.
struct Scene {
    TimelineTrack track;
    PlaylistDetail rows;
    FadeRecord fade;
    FadeTallies tallies;
    WarpMaps maps;

    Scene(FadeKind kind, double pre, double length, std::uint64_t position) {
        fade = {.kind = kind, .pre = pre, .length = length, .slope = 2, .has_shapes = true};
        rows.rows = {
            {}, {.position = position, .is_fade = true}, {.region_id = 1, .position = 48000}};
        for (int i = 0; i < 2; ++i) {
            ClipItem& clip = track.clips.emplace_back();
            clip.start = i;
            clip.length = 1;
            clip.source_offset = 0.5;
            clip.edit_row = 2 * i;
        }
    }

    void bind(FadeForm form = FadeForm::exact, bool no_stretch = false) {
        const TempoClock clock({}, 120);
        const FadeRecord fades[] = {fade};
        const WarpSlicer slicer(maps, clock, 120, rate);
        for (ClipItem& clip : track.clips) {
            const auto slice = slicer.slice(clip);
            if (slice) clip.stretch.edit().warped_length = slice->length;
        }
        bind_fades(track, rows, {fades, rate, clock, form, slicer, no_stretch}, tallies);
    }
};

TEST(BindFades, TakesAnEdgeWithinFiveMilliseconds) {
    struct {
        FadeKind kind;
        std::uint64_t position;
        double out;
        double in;
    } const cases[] = {
        {FadeKind::fade_out, 48000 + 192, 0.1, 0}, {FadeKind::fade_in, 48000 - 192, 0, 0.1},
        {FadeKind::fade_out, 48000 - 288, 0, 0},   {FadeKind::fade_in, 48000 + 288, 0, 0},
        {FadeKind::crossfade, 96000, 0, 0},  // nothing begins there
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.position);
        Scene scene(c.kind, 0, 4800, c.position);
        scene.bind();
        EXPECT_EQ(scene.track.clips[0].fades->fade_out.length, c.out);
        EXPECT_EQ(scene.track.clips[1].fades->fade_in.length, c.in);
        EXPECT_EQ(scene.tallies.without_edge, c.out + c.in > 0 ? 0 : 1);
        EXPECT_EQ(scene.tallies.fade_outs, c.out > 0 ? 1 : 0);
        EXPECT_EQ(scene.tallies.fade_ins, c.in > 0 ? 1 : 0);
    }
    Scene nothing(FadeKind::unusable, 0, 4800, 48000);
    nothing.bind();
    EXPECT_EQ(nothing.tallies.not_understood, 1);
}

TEST(BindFades, OpensACrossfadeWhereTheIncomingClipHasAHandle) {
    struct {
        const char* what;
        double pre, length;      // samples
        std::uint64_t position;  // samples
        double start, offset;    // of the incoming clip, samples
        double tail, head;       // samples by which the clips grow
        double out, in;          // samples of their fades
        bool slow_handles = false, no_stretch = false;
    } const cases[] = {
        {"centred on the cut", 2400, 4800, 48000, 48000, 24000, 2400, 2400, 4800, 4800},
        {"in front of the cut", 4800, 4800, 48000, 48000, 24000, 0, 4800, 4800, 4800},
        {"behind the cut", 0, 4800, 48000, 48000, 24000, 4800, 0, 4800, 4800},
        {"a handle of its exact length", 2400, 4800, 48000, 48000, 2400, 2400, 2400, 4800, 4800},
        {"a handle too short", 2400, 4800, 48000, 48000, 2399, 0, 0, 2400, 2400},
        {"no handle, nothing behind", 4800, 4800, 48000, 48000, 0, 0, 0, 4800, 4800},
        {"off the edges", 2400, 4800, 48100, 48096, 24000, 2500, 2396, 4800, 4800},
        {"half a sample is no gap", 2400, 4800, 48000, 48000.4, 24000, 2400, 2400, 4800, 4800},
        {"room for the fade alone", 2400, 4800, 48000, 48096, 2400, 2400, 2400, 4800, 4800},
        {"half speed", 2400, 4800, 48000, 48000, 24000, 1200, 1200, 4800, 4800, true},
        {"unstretched", 2400, 4800, 48000, 48000, 24000, 2400, 2400, 4800, 4800, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Scene scene(FadeKind::crossfade, c.pre, c.length, c.position);
        ClipItem& outgoing = scene.track.clips[0];
        ClipItem& incoming = scene.track.clips[1];
        incoming.start = c.start / rate;
        incoming.source_offset = c.offset / rate;
        // What plays at half speed lies around the clips' own second of the file.
        if (c.slow_handles)
            scene.maps.in_samples[""] = {{0, 0}, {48000, 24000}, {96000, 72000}, {144000, 96000}};
        scene.bind(FadeForm::exact, c.no_stretch);
        EXPECT_NEAR(outgoing.length * rate, 48000 + c.tail, 1e-6);
        EXPECT_NEAR(incoming.start * rate, c.start - (c.slow_handles ? 2400 : c.head), 1e-6);
        EXPECT_NEAR(incoming.length * rate, 48000 + c.head, 1e-6);
        EXPECT_NEAR(incoming.source_offset * rate, c.offset - c.head, 1e-6);
        EXPECT_NEAR(outgoing.fades->fade_out.length * rate, c.out, 1e-6);
        EXPECT_NEAR(incoming.fades->fade_in.length * rate, c.in, 1e-6);
        EXPECT_NEAR(outgoing.stretch->warped_length * rate, c.slow_handles ? 50400 : 0, 1e-6);
        EXPECT_TRUE(outgoing.crossfaded && incoming.crossfaded_head);
        EXPECT_EQ(scene.tallies.crossfades, 1);
    }
}

TEST(BindFades, EndsAnUnstretchedClipWithItsCrossfade) {
    for (const double handle : {24000.0, 0.0}) {
        Scene scene(FadeKind::crossfade, 2400, 4800, 48000);
        ClipItem& outgoing = scene.track.clips[0];
        outgoing.length = 2;  // of the file, at double speed
        scene.track.clips[1].source_offset = handle / rate;
        scene.track.clips[1].name = "plain";
        scene.maps.in_samples[""] = {{0, 0}, {96000, 192000}};
        scene.bind(FadeForm::exact, true);
        EXPECT_NEAR(outgoing.length * rate, handle > 0 ? 50400 : 48000, 1e-6);
    }
}

TEST(BindFades, LeavesAFadeToItsRenderedFileWhereThatIsKept) {
    for (const bool is_kept : {false, true}) {
        Scene scene(FadeKind::fade_in, 0, 4800, 48000);
        ClipItem& file = scene.track.clips.emplace_back();
        file.start = 7;
        file.stored_position = 48000;
        file.is_fade_reference = is_kept;
        scene.bind();
        EXPECT_EQ(scene.track.clips[1].fades->fade_in.length, is_kept ? 0 : 0.1);
        EXPECT_EQ(scene.tallies.fade_ins, is_kept ? 0 : 1);
        EXPECT_EQ(scene.tallies.without_edge, 0);
    }
}

TEST(BindFades, GivesAnEnvelopeOnlyWhereItMayAndReaperHasNoSuchShape) {
    struct {
        const char* what;
        std::int32_t type, setting;
        double offset;
        FadeForm form;
        int envelopes, approximated, steps;
        double worst_db;
    } const cases[] = {
        {"a straight line", 0, 0, 1, FadeForm::exact, 0, 0, 0, 0},
        {"bent", 0, 500, 1, FadeForm::exact, 1, 0, 0, 0},
        {"bent, kept plain", 0, 500, 1, FadeForm::plain, 0, 1, 0, 1.4},
        {"bent, without a handle", 0, 500, 0, FadeForm::exact, 0, 1, 0, 1.4},
        {"steps, kept plain", 2, 3, 1, FadeForm::plain, 0, 2, 2, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Scene scene(FadeKind::crossfade, 2400, 4800, 48000);
        scene.fade.in_type = scene.fade.out_type = c.type;
        scene.fade.in_setting = scene.fade.out_setting = c.setting;
        scene.track.clips[1].source_offset = c.offset;
        scene.bind(c.form);
        const ClipFade& fade = scene.track.clips[1].fades->fade_in;
        EXPECT_EQ(fade.as_envelope, c.envelopes == 1);
        EXPECT_EQ(fade.spec.setting, c.setting);
        EXPECT_EQ(fade.spec_length, c.envelopes == 1 ? fade.length : 0);
        EXPECT_EQ(scene.tallies.approximated, c.approximated);
        EXPECT_EQ(scene.tallies.approximated_steps, c.steps);
        EXPECT_EQ(scene.tallies.worst_db, c.worst_db);
    }
}

}  // namespace
}  // namespace tanrove
