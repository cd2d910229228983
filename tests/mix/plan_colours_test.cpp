// Where the colours of tracks and clips come from, by planned tracks of every kind under every
// coding.
#include "mix/plan_colours.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

constexpr std::uint32_t none = 0;

/// The colour of a place as the Classic theme shows it.
std::uint32_t at(std::int32_t place) {
    ColourQuality quality = ColourQuality::measured;
    return trackColour(place, quality);
}

template <class Item>
Item item(double start, std::int32_t place = -2) {
    Item made;
    made.start = start;
    made.color_index = place;
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

TEST(PlanColours, EachCodingColoursWhatItNamesAndAChosenColourWins) {
    const struct {
        std::int32_t scheme;
        std::vector<std::uint32_t> tracks;
        std::vector<std::uint32_t> clips;  ///< of Vox, Red, Aux; lane, MIDI
    } cases[] = {
        {-1, {none, at(30), none, none, none, none, none}, {none, none, none, none, none}},
        {0, {none, at(30), none, none, none, none, none}, {none, none, none, none, none}},
        {1,
         {at(75), at(30), at(69), at(93), at(87), none, at(73)},
         {at(75), at(57), at(69), at(75), none}},
        {2,
         {at(75), at(30), at(69), at(90), none, none, at(73)},
         {at(75), at(57), at(69), at(75), none}},
        {3, {at(93), at(30), none, none, none, none, none}, {at(93), none, none, at(93), none}},
        {4,
         {at(94), at(30), at(86), at(75), at(59), at(75), at(91)},
         {at(94), at(94), at(86), at(94), at(75)}},
        {5, {none, at(30), none, none, none, none, none}, {none, at(30), none, none, none}},
        {6,
         {none, at(30), none, none, none, none, none},
         {0x1123456, 0x1123456, 0x1123456, 0x1abcdef, 0x1123456}},
        {7, {none, at(30), none, none, none, none, none}, {none, none, none, none, 0x1d7c090}},
    };
    for (const auto& c : cases) {
        for (const bool dark : {false, true}) {
            SCOPED_TRACE(testing::Message() << c.scheme << (dark ? " dark" : ""));
            Scene scene;
            scene.input.theme.dark = dark;
            scene.master.wants_own_track = true;
            scene.plan(c.scheme);
            if (c.scheme == by_track_type) {
                EXPECT_EQ(scene.master.colour, at(80));
            }
            const auto expected = [dark](std::uint32_t colour) {
                return dark && colour != none ? darkClipColour(colour).colour : colour;
            };
            for (std::size_t i = 0; i < 7; ++i) EXPECT_EQ(scene.track(i), c.tracks[i]) << i;
            for (std::size_t i = 0; i < 3; ++i) {
                EXPECT_EQ(scene.clip(i), expected(c.clips[i])) << i;
            }
            const auto& lane = scene.tracks[0].lanes[0].clips;
            EXPECT_EQ(lane[0].colour, expected(at(60))) << "the same recording";
            EXPECT_EQ(lane[1].colour.value_or(none), expected(c.clips[3]));
            const auto& midi = scene.tracks[3].midi_items;
            EXPECT_EQ(midi[0].colour.value_or(none), expected(c.clips[4]));
            EXPECT_EQ(midi[1].colour, expected(at(72)));
            EXPECT_EQ(scene.tracks[0].clips[1].colour, expected(at(60)));
            EXPECT_EQ(scene.tracks[0].clips[2].colour.has_value(), dark) << "unknown in Classic";
        }
    }
}

TEST(PlanColours, CountWhereEachColourComesFrom) {
    Scene scene;
    scene.input.coloured_placements = 5;
    ColourTallies tallies = scene.plan(by_midi_device);
    EXPECT_EQ(tallies.tracks_own, 1);
    EXPECT_EQ(tallies.tracks_by_scheme, 4);
    EXPECT_EQ(tallies.tracks_without, 2);
    EXPECT_EQ(tallies.instrument_feeds, 1);
    EXPECT_EQ(tallies.tracks_without_output, 1);
    EXPECT_EQ(tallies.tracks_without_row, 1);
    EXPECT_EQ(tallies.tracks_past_rows, 1);
    EXPECT_EQ(tallies.clips_own, 2);
    EXPECT_EQ(tallies.own_places, (std::set<std::int32_t>{60, 72}));
    EXPECT_EQ(tallies.clips_hand_picked, 1);
    EXPECT_EQ(tallies.clips_off_palette, 1);
    EXPECT_EQ(tallies.unmeasured_places, std::set<std::int32_t>{2});
    EXPECT_EQ(tallies.coloured_rows_left, 2);
    EXPECT_EQ(tallies.lane_clips, 1);
    EXPECT_EQ(tallies.clips_by_scheme, 5);
    EXPECT_EQ(tallies.clips_left, 1);
    EXPECT_EQ(tallies.groups_without_slot, 0);

    Scene off;
    off.input.no_track_colours = off.input.no_clip_colours = true;
    tallies = off.plan(by_group);
    EXPECT_EQ(tallies.tracks_by_scheme + tallies.groups_without_slot + tallies.clips_own, 4);
    EXPECT_EQ(off.track(0) + off.track(1) + off.clip(0), none);
    EXPECT_FALSE(off.tracks[0].lanes[0].clips[0].colour || off.tracks[3].midi_items[1].colour);
}

}  // namespace
}  // namespace tanrove
