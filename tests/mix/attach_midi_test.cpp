// Which plan gets the items of a MIDI track, and its mute.
#include "mix/attach_midi.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

TEST(AttachMidi, FindsPlansByNameThenByPlaceAndLosesNoItem) {
    std::vector<StripRow> rows(3);
    rows[0].current_name = "Vox";
    rows[1].type = StripRowType::midi;
    rows[1].original_name = "MIDI 1";
    rows[1].current_name = "Keys";
    rows[2].type = StripRowType::instrument;
    rows[2].current_name = "Pad";
    const std::vector<MidiTrackSettings> settings(3, {.volume = 90, .patch = 4});
    const std::vector<RealTimeProperties> real_time(3);
    const auto attach = [&](std::vector<MidiTrack> tracks, MidiTallies& tallies) {
        std::vector<TrackPlan> plans(3);
        plans[0].session_name = "Vox";
        plans[1].session_name = "Pad";
        plans[2].name = plans[2].session_name = "Keys";
        TrackTallies track_tallies;
        attach_midi(plans, {std::move(tracks), settings, real_time}, rows, track_tallies, tallies);
        count_midi_tracks(plans, TrackStrips(plans, {}), tallies);
        std::string found;
        for (const auto& plan : plans) found += plan.midi_items.empty() ? '-' : '*';
        return found + std::to_string(track_tallies.tracks_without_strip_row);
    };
    MidiTallies tallies;
    const std::vector<MidiItem> one(1);
    EXPECT_EQ(attach({{"Pad", true, {}}, {"Keys", false, one}}, tallies), "--*0");
    EXPECT_EQ(tallies.fader_tracks, 1);
    EXPECT_EQ(tallies.patch_tracks, std::vector<std::string>{"Keys"});
    EXPECT_EQ(attach({{"MIDI 1", true, one}, {"Pad", true, {}}}, tallies), "--*0");
    EXPECT_EQ(attach({{"Gone", true, one}}, tallies), "---*1");
}

TEST(AttachMidi, TracksOfOneNameKeepTheirItemsApart) {
    std::vector<StripRow> rows(3);
    for (auto& row : rows) row.type = StripRowType::midi, row.current_name = "Keys";
    std::vector<RealTimeProperties> real_time(3);
    real_time[2].delay_on = true;
    struct {
        std::vector<std::string> names;  // of the tracks; each plays as many items as its place
        std::string items_of_plans;
        int unmatched;
    } const cases[] = {
        {{"Keys", "Keys", "Keys"}, "012", 0},
        {{"", "Keys", ""}, "012", 0},  // names that do not read
        {{"Keys", "Keys"}, "010", 1},  // the third row has no list
        {{"Keys", "Keys", "Keys", "Keys", "Gone"}, "01234", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.items_of_plans);
        MidiMixInput midi{{}, std::vector<MidiTrackSettings>(3), real_time};
        for (const auto& name : c.names) {
            midi.tracks.push_back({name, true, std::vector<MidiItem>(midi.tracks.size())});
        }
        std::vector<TrackPlan> plans(3);
        for (std::size_t i = 0; i < 3; ++i) plans[i].session_name = "Keys", plans[i].strip_row = i;
        TrackTallies track_tallies;
        MidiTallies tallies;
        attach_midi(plans, std::move(midi), rows, track_tallies, tallies);
        std::string items;
        for (const auto& plan : plans) items += std::to_string(plan.midi_items.size());
        EXPECT_EQ(items, c.items_of_plans);
        EXPECT_EQ(tallies.unmatched_real_time_rows, c.unmatched);
    }
}

}  // namespace
}  // namespace tanrove
