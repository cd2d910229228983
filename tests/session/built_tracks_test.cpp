// Whole built sessions: tracks and clips as described come back from all lists in step.
#include <gtest/gtest.h>

#include <map>

#include "session/fades.hpp"
#include "session/playlists.hpp"
#include "session/region_starts.hpp"
#include "session/session_lists.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ClipSpec;
using builder::SessionBuilder;
using builder::TrackKind;
using builder::TrackSpec;
using Texts = std::vector<std::string>;

const std::vector<AudioFileEntry> files = {{"vox.wav", 0}, {"pad.L.wav", 1}, {"pad.R.wav", 2}};

ClipSpec clip(const std::string& region, std::int64_t position, std::int64_t length) {
    ClipSpec spec;
    spec.region = region;
    spec.position = position;
    spec.length = length;
    return spec;
}

TrackSpec vox() {
    ClipSpec sync = clip("Vox-01", 96000, 24000);
    sync.source_offset = 4000;
    sync.sync_samples = 500;
    sync.gain = {{0, -3.0F}, {9600, 1.5F}};
    sync.pitch.semitones = -2;
    sync.loop = builder::LoopSpec{.count = 3};
    ClipSpec fade;
    fade.is_fade = true;
    fade.position = 120000;
    fade.fade = {.kind = 2, .pre = 480, .length = 480};
    ClipSpec deleted = clip("Vox-02", 500000, 1000);
    deleted.deleted = true;
    ClipSpec group;
    group.clip_group = 0;
    group.position = 700000;
    return {.name = "Vox",
            .clips = {sync, fade, deleted, group},
            .alternates = {{"Vox.01", {clip("Vox-03", 10, 2000)}}}};
}

TrackSpec pad() {
    ClipSpec wide = clip("Pad", 7752720000, 48000);
    wide.file_index = 1;
    wide.file_per_channel = true;
    wide.warp = builder::WarpSpec{.points = {{0, 0}, {960000, 24000}}, .in_ticks = true};
    return {.name = "Pad", .channels = 2, .tick_based = true, .clips = {wide, wide}};
}

TEST(BuiltTracks, ComeBackInStepFromEveryList) {
    const Bytes image = SessionBuilder()
                            .track(vox())
                            .track({.name = "Echo", .kind = TrackKind::aux})
                            .track({.name = "Empty"})
                            .track(pad())
                            .image();
    const BlockIndex index{ByteView(image)};
    SessionLists lists;
    std::vector<TrackTableRow> tracks;
    ASSERT_TRUE(readSessionLists(index, files, lists, tracks));

    std::map<std::size_t, std::string> track_names;
    for (const auto& track : tracks) track_names.emplace(track.id, track.name);
    Texts rows;
    for (const auto& row : lists.tracks) {
        const Region region = row.is_clip_group ? Region() : lists.regions.at(row.region_index);
        const std::string file =
            region.file < 0 ? "" : files.at(static_cast<std::size_t>(region.file)).name;
        rows.push_back(std::to_string(row.index) + ' ' + track_names.at(row.index) + ' ' +
                       region.name + ' ' + file + " @" + std::to_string(row.start));
    }
    const std::string far = " @1007752720000";
    EXPECT_EQ(rows, (Texts{"0 Vox Vox-01 vox.wav @96000", "0 Vox Vox-01 vox.wav @120000",
                           "0 Vox Vox-02 vox.wav @500000", "0 Vox   @700000",
                           "1 Pad Pad.L pad.L.wav" + far, "1 Pad Pad.L pad.L.wav" + far,
                           "2 Pad Pad.R pad.R.wav" + far, "2 Pad Pad.R pad.R.wav" + far,
                           "3 Vox Vox-03 vox.wav @10"}))
        << "the fade's row joins the region of its number until the edit list tells it apart";
    EXPECT_EQ(lists.regions.at(0).source_offset, 4000);

    Texts names;
    for (const auto& track : tracks) names.push_back(std::to_string(track.id) + ' ' + track.name);
    EXPECT_EQ(names, (Texts{"0 Vox", "4 Empty", "1 Pad", "2 Pad", "3 Vox"}));

    Texts playlists;
    for (const auto& detail : readPlaylistDetails(index)) {
        playlists.push_back(detail.name + ' ' + std::to_string(detail.region_ids.size()));
    }
    EXPECT_EQ(playlists, (Texts{"Vox 3", "Empty 0", "Pad 2", "Pad 2", "Vox.01 1"}))
        << "a deleted placement has no row";
    EXPECT_EQ(readPlaylists(index).clip_counts, (std::vector<std::uint32_t>{4, 0, 2, 2, 1}));

    const auto starts = readRegionStarts(index);
    ASSERT_EQ(starts.size(), lists.regions.size());
    for (std::size_t i = 0; i < starts.size(); ++i) {
        EXPECT_EQ(starts[i].name, lists.regions[i].name);
        EXPECT_EQ(starts[i].sync_samples, i == 0 ? 500U : 0U);
    }
    ASSERT_EQ(readFades(index).size(), 1U);
    EXPECT_EQ(readFades(index)[0].length, 480);
}

}  // namespace
}  // namespace tanrove
