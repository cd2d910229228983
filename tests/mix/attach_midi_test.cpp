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
        count_midi_tracks(plans, MixerLookup({}, {}, {}), tallies);
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

}  // namespace
}  // namespace tanrove
