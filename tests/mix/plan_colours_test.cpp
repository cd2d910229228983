// Where the colours of tracks and clips come from, by planned tracks of every kind. The colours of
// each coding stand in the golden projects.
#include "mix/plan_colours.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace tanrove {
namespace {

constexpr std::uint32_t none = 0;

template <class Item>
Item item(double start, std::int32_t place = -2) {
    Item made;
    made.start = start;
    made.colour_place = place;
    return made;
}

/// Tracks of each type, the second one coloured; each with a clip of no colour at 10 seconds. The
/// first is in a group, has lanes, and own colours on clips further on.
struct Scene {
    Scene() {
        using Type = StripRowType;
        add("Vox", Type::audio_or_aux, 3);
        add("Red", Type::audio_or_aux, 4);
        add("Aux", Type::audio_or_aux, 30);
        rows.back().is_aux = true;
        add("Keys", Type::midi, 5, 1);
        add("Synth", Type::instrument, 6, 2);
        add("Mute", Type::midi, 7, 3);
        add("Film", Type::video, 0);
        add("Sum", Type::master, 9);
        tracks.pop_back();
        master.name = "Sum";
        input.track_colours = {{"Red", 30}};
        input.midi_outputs = {{"Port", 1, false, 0, 4}, {"Node", 2, true, 0, 0}};
        input.markers = {{10.0000001, 0x1123456}, {0, 0x1abcdef}, {20, none}};
        groups.slot_of_member = {{"Vox", 17}};
        groups.without_slot = 1;
        tracks[0].clips.push_back(item<ClipItem>(20, 60));
        tracks[0].clips.back().file = "a.wav";
        tracks[0].clips.push_back(item<ClipItem>(30, 2));
        tracks[0].clips.back().index_on_track = 2;
        tracks[0].lanes.push_back({"Vox.01", {item<ClipItem>(0), item<ClipItem>(9)}});
        tracks[0].lanes[0].clips[0].file = "a.wav";
        tracks[0].lanes[0].clips[1].file = "b.wav";
        tracks[3].midi_items = {item<MidiItem>(10), item<MidiItem>(11, 72)};
    }

    void add(const char* name, StripRowType type, std::int32_t row, std::int32_t output = 0) {
        rows.emplace_back().type = type;
        rows.back().current_name = name;
        displays.emplace_back().display_row = row;
        settings.push_back({.output = output});
        TrackPlan& plan = tracks.emplace_back();
        plan.name = plan.session_name = name;
        if (!plays_midi(type)) plan.clips.push_back(item<ClipItem>(10));
    }

    ColourTallies plan(std::int32_t scheme) {
        input.schemes = {scheme, scheme};
        ColourTallies tallies;
        const ColourCoding coding(rows, displays, settings, input.midi_outputs, groups);
        plan_colours({tracks, strips, master, video}, input, coding, groups, tallies);
        return tallies;
    }

    std::uint32_t track(std::size_t i) const {
        return tracks[i].colour == default_track_colour ? none : tracks[i].colour;
    }
    std::uint32_t clip(std::size_t i) const { return tracks[i].clips[0].colour.value_or(none); }

    std::vector<StripRow> rows;
    std::vector<TrackDisplay> displays;
    std::vector<MidiTrackSettings> settings;
    std::vector<TrackPlan> tracks, strips;
    MasterPlan master;
    VideoPlan video;
    ColourInput input;
    TrackGroups groups;
};

TEST(PlanColours, CountWhereEachColourComesFrom) {
    Scene scene;
    scene.input.coloured_placements = 5;
    ColourTallies tallies = scene.plan(by_midi_device);
    const ColourTallies& t = tallies;
    const int counts[] = {t.tracks_own,
                          t.tracks_by_scheme,
                          t.tracks_without,
                          t.instrument_feeds,
                          t.tracks_without_output,
                          t.tracks_without_row,
                          t.tracks_past_rows,
                          t.clips_own,
                          t.clips_hand_picked,
                          t.clips_off_palette,
                          t.lane_clips,
                          t.clips_by_scheme,
                          t.coloured_rows_left,
                          t.clips_left,
                          t.groups_without_slot};
    const int expected[] = {1, 4, 2, 1, 1, 1, 1, 2, 1, 1, 1, 5, 2, 1, 0};
    EXPECT_TRUE(std::ranges::equal(counts, expected)) << testing::PrintToString(counts);
    EXPECT_EQ(tallies.own_places, (std::set<std::int32_t>{60, 72}));
    EXPECT_EQ(tallies.unmeasured_places, std::set<std::int32_t>{2});
    const auto& lane = scene.tracks[0].lanes[0].clips;
    EXPECT_EQ(lane[0].colour, scene.tracks[0].clips[1].colour) << "the same recording";
    EXPECT_FALSE(scene.tracks[0].clips[2].colour) << "unknown in Classic";
    Scene marked;
    marked.plan(by_marker);
    EXPECT_EQ(marked.clip(0), 0x1123456U) << "a marker at its start counts";
    EXPECT_EQ(marked.tracks[0].lanes[0].clips[1].colour, 0x1abcdefU);

    Scene off;
    off.input.no_track_colours = off.input.no_clip_colours = true;
    tallies = off.plan(by_group);
    EXPECT_EQ(tallies.tracks_by_scheme + tallies.groups_without_slot + tallies.clips_own, 4);
    EXPECT_EQ(off.track(0) + off.track(1) + off.clip(0), none);
    EXPECT_FALSE(off.tracks[0].lanes[0].clips[0].colour || off.tracks[3].midi_items[1].colour);
}

}  // namespace
}  // namespace tanrove
