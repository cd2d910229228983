// What it takes to open a clip group, and where its fades go.
#include "timeline/clip_group_pieces.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "timeline_scene.hpp"

namespace tanrove {
namespace {

using namespace testing_records;

constexpr double rate_hz = 1000;
constexpr std::uint64_t origin = 1'000'000'000'000;

ClipGroupMember clip_member(int region, std::int64_t at) {
    return {.id = static_cast<std::uint32_t>(region),
            .live = true,
            .position = origin + static_cast<std::uint64_t>(at)};
}

ClipGroupMember group_member(int group, std::int64_t at) {
    auto member = clip_member(group, at);
    member.nested = true;
    return member;
}

ClipGroupMember fade_member(std::uint32_t fade, std::int64_t at) {
    return {.id = fade, .is_fade = true, .position = origin + static_cast<std::uint64_t>(at)};
}

/// Groups of samples, each with the list of its own number.
struct Material {
    ClipGroups groups;
    std::vector<Region> regions;
    std::vector<FadeRecord> fades;
    ClipGroupTallies tallies;
    FadeTallies fade_tallies;
    GroupBudget budget;

    Material& group(std::int64_t length, std::vector<ClipGroupMember> members,
                    std::int64_t start = 0) {
        ClipGroupClip& clip = groups.clips.emplace_back();
        clip.valid = true;
        clip.name = "group";
        clip.length = length;
        clip.start = start;
        clip.table_index = static_cast<std::int32_t>(groups.lists.size());
        groups.lists.push_back({std::move(members), 1});
        return *this;
    }

    Material& region(std::int64_t length, std::int64_t source_offset) {
        Region& made = regions.emplace_back();
        made.name = "clip " + std::to_string(regions.size());
        made.length = length;
        made.source_offset = source_offset;
        made.file = 0;
        return *this;
    }

    std::vector<ClipItem> pieces(std::uint32_t group) {
        const std::vector<AudioFileEntry> files = {{"a.wav", 0}};
        TimelineInput input;
        input.regions = regions;
        input.files = files;
        input.fades = fades;
        input.rate_hz = rate_hz;
        const TempoClock clock({}, 120);
        const WarpMaps no_maps;
        const WarpSlicer slicer(no_maps, clock, 120, rate_hz);
        const GroupMaterial material{
            .input = input, .groups = groups, .sync_points = {}, .slicer = slicer};
        const PlacedGroup placed{
            .group = group, .window = window_of(groups.clips[group]), .start = 7};
        return pieces_of_group(placed, material, nullptr, budget, tallies, fade_tallies);
    }
};

TEST(ClipGroups, CountWhatCannotBeRead) {
    const auto chain = [](int depth) {
        Material material;
        material.region(10, 0).group(10, {clip_member(0, 0)});
        for (int i = 1; i < depth; ++i) material.group(10, {group_member(i - 1, 0)});
        return material;
    };
    const auto lone = [](const ClipGroupMember& member) {
        return Material().region(10, 0).group(10, {member, clip_member(0, 0)});
    };
    auto in_ticks = chain(2);
    in_ticks.groups.lists[0].kind = 2;
    auto in_front_of_origin = lone(clip_member(0, 0));
    in_front_of_origin.groups.lists[0].members[0].position = origin / 2 - 1;
    struct {
        const char* what;
        Material material;
        std::uint32_t group;
        std::size_t pieces;
        int unreadable;
    } cases[] = {
        {"nine levels", chain(9), 8, 1, 0},
        {"ten levels", chain(10), 9, 0, 1},
        {"a list in ticks", in_ticks, 1, 0, 1},
        {"a place far from any group", in_front_of_origin, 0, 1, 1},
        {"a place in front of the group", lone(clip_member(0, -4)), 0, 2, 0},
        {"no such clip", lone(clip_member(1, 0)), 0, 1, 1},
        {"no such group", lone(group_member(1, 0)), 0, 1, 1},
        {"a group that holds itself", lone(group_member(0, 0)), 0, 9, 1},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(c.material.pieces(c.group).size(), c.pieces);
        EXPECT_EQ(c.material.tallies.unreadable, c.unreadable);
    }
}

TEST(ClipGroups, StopAtTheBudgetAndCountTheRest) {
    for (const GroupBudget budget : {GroupBudget{100, 1'000'000}, GroupBudget{1'000'000, 1000}}) {
        Material material;
        material.budget = budget;
        material.region(10, 0).group(10, std::vector(50, clip_member(0, 0)));
        for (int i = 0; i < 8; ++i) material.group(10, std::vector(50, group_member(i, 0)));
        const auto pieces = material.pieces(8).size();
        EXPECT_GE(pieces, 100u);
        EXPECT_LE(pieces, 1000u);
        EXPECT_GE(material.tallies.unreadable, 49 * 7) << "what each level has left";
        EXPECT_TRUE(material.pieces(8).empty()) << "the budget is one for the session";
    }
}

TEST(ClipGroups, TellHowManyPiecesTheBudgetLeavesOut) {
    Material material;
    material.budget.pieces = 20;
    material.region(10, 0).group(10, std::vector(50, clip_member(0, 0)));
    EXPECT_EQ(material.pieces(0).size(), 20u);
    EXPECT_EQ(material.tallies.unreadable, 30);
}

TEST(ClipGroups, SpreadAFadeOverPiecesWithinTheBudget) {
    Material material;
    material.budget.curves.left = 3;
    material.region(10, 0).fades.push_back({.kind = FadeKind::fade_out, .length = 40});
    std::vector<ClipGroupMember> clips;
    for (int i = 0; i < 10; ++i) clips.push_back(clip_member(0, 10 * i));
    material.group(100, clips).group(100, {group_member(0, 0), fade_member(0, 100)});
    const auto pieces = material.pieces(1);
    for (std::size_t i = 0; i < 10; ++i) {
        const bool is_under = i >= 6 && i < 9;  // the last of four finds nothing left
        ASSERT_EQ(pieces[i].fades->fade_curves.size(), is_under ? 1U : 0U) << i;
        if (!is_under) continue;
        EXPECT_NEAR(pieces[i].fades->fade_curves[0].start, 0.06 - 0.01 * static_cast<double>(i),
                    1e-9);
        EXPECT_EQ(pieces[i].fades->fade_curves[0].length, 0.04);
    }
    EXPECT_EQ(material.tallies.spread_fades, 1);
    EXPECT_EQ(material.budget.curves.refused, 1);
}

TEST(ClipGroups, CarryFadesOnTheEdgesOfTheirPieces) {
    struct {
        const char* what;
        FadeKind kind;
        std::int64_t at;
        std::int64_t pre;
        std::int64_t source_offset;  // of the second clip
        int left_off;
        double out, in, second_start;
        std::int64_t start = 0, length = 200;  // of the group's window
    } const cases[] = {
        {"a fade-in, two samples off", FadeKind::fade_in, 102, 0, 50, 0, 0, 0.04, 7.1},
        {"a fade-in, three samples off", FadeKind::fade_in, 103, 0, 50, 1, 0, 0, 7.1},
        {"a fade-out", FadeKind::fade_out, 98, 0, 50, 0, 0.04, 0, 7.1},
        {"a crossfade", FadeKind::crossfade, 100, 10, 50, 0, 0.04, 0.04, 7.09},
        {"as far as the file goes", FadeKind::crossfade, 100, 10, 4, 0, 0.034, 0.034, 7.096},
        {"without a handle", FadeKind::crossfade, 100, 10, 0, 1, 0, 0, 7.1},
        {"as the window begins", FadeKind::crossfade, 100, 10, 50, 0, 0.035, 0.035, 7, 95},
        {"as the window ends", FadeKind::crossfade, 100, 10, 50, 0, 0.015, 0.015, 7.09, 0, 105},
        {"as the piece allows", FadeKind::fade_out, 100, 0, 50, 0, 0.02, 0, 7.02, 80},
    };
    for (const bool nested : {false, true})
        for (const auto& c : cases) {
            SCOPED_TRACE(c.what);
            Material material;
            material.region(100, 0).region(100, c.source_offset);
            material.group(c.length, {fade_member(0, c.at), clip_member(0, 0), clip_member(1, 100)},
                           c.start);
            material.group(c.length, {group_member(0, 0)});
            FadeRecord& fade = material.fades.emplace_back();
            fade.kind = c.kind;
            fade.pre = static_cast<double>(c.pre);
            fade.length = 40;
            const auto pieces = material.pieces(nested ? 1 : 0);
            ASSERT_EQ(pieces.size(), 2u);
            EXPECT_EQ(material.tallies.fades, 1);
            EXPECT_EQ(material.tallies.fades_left_off, c.left_off);
            EXPECT_NEAR(pieces[0].fades->fade_out.length, c.out, 1e-9);
            EXPECT_NEAR(pieces[1].fades->fade_in.length, c.in, 1e-9);
            EXPECT_NEAR(pieces[1].start, c.second_start, 1e-9);
            const double cut = 7 + static_cast<double>(100 - c.start) / rate_hz;
            const double borrowed = cut - pieces[1].start;
            const auto shown = std::min<std::int64_t>(c.start + c.length - 100, 100);
            EXPECT_NEAR(pieces[1].length, static_cast<double>(shown) / rate_hz + borrowed, 1e-9);
            EXPECT_NEAR(pieces[1].source_offset,
                        static_cast<double>(c.source_offset) / rate_hz - borrowed, 1e-9);
            EXPECT_EQ(pieces[0].crossfaded, borrowed > 0.001);
        }
}

TEST(ClipGroups, TellOnlyOfFadesThatTheirWindowShows) {
    struct {
        const char* what;
        FadeKind kind;
        std::int64_t start, length;  // of the group's window
        int fades, left_off;
        std::size_t curves;  // of the first piece that is seen
    } const cases[] = {
        {"in the other half", FadeKind::fade_out, 0, 60, 0, 0, 0},
        {"its beginning", FadeKind::fade_out, 0, 80, 1, 0, 1},
        {"its end", FadeKind::fade_in, 110, 60, 1, 0, 1},
        {"a crossfade's second half", FadeKind::crossfade, 105, 60, 1, 1, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Material material;
        material.region(100, 0).region(100, 50);
        material.group(c.length, {fade_member(0, 100), clip_member(0, 0), clip_member(1, 100)},
                       c.start);
        material.fades.push_back({.kind = c.kind, .pre = 10, .length = 40});
        const auto pieces = material.pieces(0);
        EXPECT_EQ(material.tallies.fades, c.fades);
        EXPECT_EQ(material.tallies.fades_left_off, c.left_off);
        EXPECT_EQ(pieces.at(0).fades->fade_curves.size(), c.curves);
    }
}

TEST(ClipGroups, OnTracksWithoutAnEditListAreNamedAsMissing) {
    Scene scene;
    for (const char* name : {"Choir", "Solo"}) scene.track(name);
    scene.placements.assign(2, {.is_clip_group = true});
    scene.laid_out({});
    EXPECT_EQ(scene.tallies.clip_groups.unreadable, 2);
    EXPECT_EQ(scene.tallies.clip_groups.unreadable_on, std::vector<std::string>{"Choir"});
}

}  // namespace
}  // namespace tanrove
