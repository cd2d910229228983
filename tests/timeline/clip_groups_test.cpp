// What a clip group plays, sample by sample, and what it takes to open one.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <tuple>

#include "timeline/clip_group_pieces.hpp"
#include "timeline/stretch_markers.hpp"
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
    std::vector<RegionStart> sync_points;
    std::vector<FadeRecord> fades;
    WarpMaps warp_maps;
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

    /// The newest region plays its first half half as fast, and its second half as fast.
    Material& bend() {
        const Region& bent = regions.back();
        const auto length = static_cast<double>(bent.length);
        const auto bend = static_cast<double>(bent.length / 2);
        warp_maps.in_samples[bent.name] = {{0, 0}, {2 * bend, bend}, {length + bend, length}};
        warp_maps.anchors[bent.name].position = static_cast<double>(bent.source_offset);
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
        const WarpSlicer slicer(warp_maps, clock, 120, rate_hz);
        StretchTallies stretch;
        const WarpOneClip warp = clip_warper(slicer, {}, stretch);
        const GroupMaterial material{
            .input = input, .groups = groups, .sync_points = sync_points, .slicer = slicer};
        const PlacedGroup placed{
            .group = group, .window = window_of(groups.clips[group]), .start = 7};
        return pieces_of_group(placed, material, &warp, budget, tallies, fade_tallies);
    }
};

using Sound = std::tuple<std::uint32_t, std::int64_t, bool>;  // region, its file's sample, muted

/// The sample that a bent region plays this far behind its head; past its length for none.
std::int64_t bent_place(const Region& region, std::int64_t from_head) {
    const std::int64_t bend = region.length / 2;
    return from_head < 2 * bend ? from_head / 2 : from_head - bend;
}

/// What sounds at one sample of a group, asked from the outside in.
void hear(const Material& material, std::uint32_t group, std::int64_t at, bool muted,
          std::multiset<Sound>& heard) {
    for (const auto& member : material.groups.lists[group].members) {
        auto from_head = at - static_cast<std::int64_t>(member.position - origin);
        const bool is_muted = muted || member.muted;
        if (member.nested) {
            const ClipGroupClip& nested = material.groups.clips[member.id];
            if (from_head < 0 || from_head >= nested.length) continue;
            hear(material, member.id, from_head + nested.start, is_muted, heard);
        } else {
            const Region& region = material.regions[member.id];
            from_head += static_cast<std::int64_t>(material.sync_points[member.id].sync_samples);
            if (from_head < 0) continue;
            const bool is_bent = material.warp_maps.in_samples.contains(region.name);
            const auto place = is_bent ? bent_place(region, from_head) : from_head;
            if (place >= region.length) continue;
            heard.insert({member.id, place + region.source_offset, is_muted});
        }
    }
}

TEST(ClipGroups, PlayInEachSampleWhatTheirWindowsShow) {
    std::mt19937 numbers(65);
    const auto below = [&](int end) {
        return static_cast<int>(numbers() % static_cast<unsigned>(end));
    };
    for (int round = 0; round < 200; ++round) {
        Material material;
        for (int i = 0; i < 3; ++i) {
            material.region(4 + below(20), below(50));
            if (below(2) == 0) material.bend();
            material.sync_points.push_back({"", static_cast<std::uint64_t>(below(4))});
        }
        for (int i = 0; i < 5; ++i) {
            std::vector<ClipGroupMember> members;
            for (int m = 0; m < 3; ++m) {
                const int at = below(30);
                const bool nests = i > 0 && below(2) == 0;
                members.push_back(nests ? group_member(below(i), at) : clip_member(below(3), at));
                members.back().muted = below(4) == 0;
            }
            material.group(20 + below(20), members, below(10));
        }
        const auto pieces = material.pieces(4);
        const ClipGroupClip& outer = material.groups.clips[4];
        for (std::int64_t at = 0; at < outer.length; ++at) {
            std::multiset<Sound> expected;
            hear(material, 4, at + outer.start, false, expected);
            std::multiset<Sound> played;
            const double now = 7 + (static_cast<double>(at) + 0.5) / rate_hz;
            for (const auto& piece : pieces) {
                if (now < piece.start || now >= piece.start + piece.length) continue;
                const double in_piece = now - piece.start;
                const double source = has_stretch_map(piece)
                                          ? source_position_at(piece.stretch_markers, in_piece)
                                          : piece.source_offset + piece.playrate * in_piece;
                const auto sample = static_cast<std::int64_t>(source * rate_hz);
                played.insert({piece.region, sample, piece.muted});
            }
            ASSERT_EQ(played, expected) << round << " at " << at;
        }
    }
}

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
            EXPECT_NEAR(pieces[0].fade_out.length, c.out, 1e-9);
            EXPECT_NEAR(pieces[1].fade_in.length, c.in, 1e-9);
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

constexpr std::int64_t cell = 1000;  // samples; fades find edges over a quarter of it

/// Rows of clips and groups, in a row order that is not always that of time. Of neighbours in both
/// orders some are crossfaded where they meet.
struct Rows {
    Scene scene{3};
    ClipGroups groups;
    std::vector<Row> rows;
    std::vector<std::int64_t> lengths;  // of each row's clip or window; 0 on fade rows
};

Rows random_rows(std::mt19937& random) {
    const auto below = [&](int end) {
        return static_cast<int>(random() % static_cast<unsigned>(end));
    };
    Rows made;
    Material material;
    for (int i = 0; i < 3; ++i) {
        Region& region = made.scene.regions[static_cast<std::size_t>(i)];
        region.length = (6 + 3 * i) * cell;
        region.source_offset = 100 * cell;
        made.scene.fade(FadeKind::unusable);
        material.group((8 + 2 * i) * cell,
                       {clip_member(i, cell), clip_member(below(3), (9 + below(4)) * cell)},
                       below(4) * cell);
    }
    made.scene.fade(FadeKind::crossfade).fades[3].length = 4 * cell;
    made.scene.fades[3].pre = 2 * cell;
    made.groups = material.groups;
    std::int64_t meeting = -1;
    for (int i = 0; i < 7; ++i) {
        Row row{.id = static_cast<std::uint32_t>(below(3)), .in_group = below(2) == 0};
        row.overlap = below(4) == 0 ? 1 : 3;
        row.position = static_cast<std::uint64_t>(meeting >= 0 ? meeting : (10 + below(40)) * cell);
        made.rows.push_back(row);
        made.lengths.push_back(row.in_group ? material.groups.clips[row.id].length
                                            : made.scene.regions[row.id].length);
        meeting = -1;
        if (i == 6 || below(4) > 0) continue;
        meeting = static_cast<std::int64_t>(row.position) + made.lengths.back();
        made.rows.push_back(
            {.id = 3, .position = static_cast<std::uint64_t>(meeting), .is_fade = true});
        made.lengths.push_back(0);
    }
    return made;
}

/// The row that is drawn on top in each cell; -1 for none. A row that keeps its tail lies over
/// those behind it; one that is met behind its head does not come back. Crossfades draw both rows
/// out.
std::vector<int> rows_on_top(const Rows& made) {
    std::vector<int> top(100, -1);
    std::vector<bool> kept(100, false);
    const auto is_fade = [&](std::size_t row) {
        return row < made.rows.size() && made.rows[row].is_fade;
    };
    for (std::size_t i = 0; i < made.rows.size(); ++i) {
        if (is_fade(i)) continue;
        const auto stored = static_cast<std::size_t>(made.rows[i].position / cell);
        const auto shared = stored + static_cast<std::size_t>(made.lengths[i] / cell) - 2;
        const auto end = shared + (is_fade(i + 1) ? 4 : 2);
        auto at = i > 0 && is_fade(i - 1) ? stored - 2 : stored;
        while (at < end && kept[at]) ++at;
        const int in_front = top[at - 1];
        for (; at < end && !kept[at]; ++at) {
            const int under = top[at];
            for (auto t = at; t < top.size() && under >= 0 && under == in_front; ++t) {
                if (top[t] == under) top[t] = -1;
            }
            top[at] = is_fade(i + 1) && at >= shared ? -1 : static_cast<int>(i);
            kept[at] = made.rows[i].overlap == 1 && !is_fade(i + 1);
        }
    }
    return top;
}

TEST(ClipGroups, CoverAndAreCoveredLikeClips) {
    std::mt19937 random(64);
    for (int round = 0; round < 1000; ++round) {
        Rows made = random_rows(random);
        made.scene.track_with_rows("Vox", false, made.rows);
        const auto tracks = made.scene.laid_out(made.groups);
        const auto top = rows_on_top(made);
        for (std::int64_t at = 0; at < 100; ++at) {
            const bool crossfades = std::ranges::any_of(made.rows, [&](const Row& row) {
                const auto distance = at - static_cast<std::int64_t>(row.position) / cell;
                return row.is_fade && distance >= -2 && distance < 2;
            });
            if (crossfades) continue;
            std::set<int> heard;
            const double now = (static_cast<double>(at) + 0.5) * cell / 48000;
            for (const ClipItem& clip : tracks.at(0).clips) {
                if (clip.muted || now < clip.start || now >= clip.start + clip.length) continue;
                heard.insert(clip.group_name.empty() ? clip.edit_row
                                                     : static_cast<int>(clip.index_on_track));
            }
            const int row = top[static_cast<std::size_t>(at)];
            bool has_sound = row >= 0;
            if (has_sound && made.rows[static_cast<std::size_t>(row)].in_group) {
                const auto& drawn = made.rows[static_cast<std::size_t>(row)];
                Material model;
                model.groups = made.groups;
                model.regions = made.scene.regions;
                model.sync_points.resize(3);
                std::multiset<Sound> expected;
                const auto in_group =
                    at * cell + cell / 2 - static_cast<std::int64_t>(drawn.position);
                hear(model, drawn.id, in_group + made.groups.clips[drawn.id].start, false,
                     expected);
                has_sound = !expected.empty();
            }
            ASSERT_EQ(heard, has_sound ? std::set<int>{row} : std::set<int>{})
                << round << ": at " << at;
        }
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
