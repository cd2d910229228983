// Channels as tracks: what is folded, what becomes a lane, and in which order all stand.
#include "mix/assemble_tracks.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace tanrove {
namespace {

/// A mixer with channels, stated by what a test is about.
class Mixer {
public:
    Mixer() { input.strips.bound = true; }

    /// A channel with clips of one second that start at these seconds.
    Mixer& channel(const std::string& name, const std::vector<double>& starts = {}) {
        TimelineTrack& track = input.channels.emplace_back();
        track.name = name;
        track.record = input.channels.size() - 1;
        for (const double start : starts) {
            ClipItem& clip = track.clips.emplace_back();
            clip.name = "clip";
            clip.start = start;
            clip.length = 1;
        }
        return *this;
    }

    /// A track of the session: its channels, its rows in the track list, its strip.
    Mixer& track(const std::string& name, int legs = 1, const std::vector<double>& starts = {}) {
        for (int i = 0; i < legs; ++i) {
            channel(name, starts);
            input.track_rows.emplace_back().name = name;
        }
        return strip(name);
    }

    Mixer& strip(const std::string& name, StripRowType type = StripRowType::audio_or_aux) {
        StripRow& row = input.strips.rows.emplace_back();
        row.type = type;
        row.original_name = name;
        row.current_name = name;
        return *this;
    }

    Mixer& table(const std::string& name, std::uint16_t type = 0, std::uint8_t width = 1) {
        StripTableEntry& entry = input.strip_table.emplace_back();
        entry.name = name;
        entry.type = type;
        entry.width = width;
        entry.flag = type == strip_table_folder_type;
        return *this;
    }

    std::vector<TrackPlan> plans() {
        tallies = {};
        auto plans = assemble_tracks(input, tallies);
        count_tracks(plans, input.strips.rows, {"Vox [dry]"}, tallies);
        return plans;
    }

    AssemblyInput input;
    TrackTallies tallies;
};

/// Names of plans, and of their lanes in brackets.
std::string names_of(const std::vector<TrackPlan>& plans) {
    std::string names;
    for (const auto& plan : plans) {
        names += plan.name;
        for (const auto& lane : plan.lanes) names += " (" + lane.name + ")";
        names += "; ";
    }
    return names;
}

TEST(AssembleTracks, FoldsThreeToEightLegsThatPlayTheSame) {
    enum class Change { none, one_clip_less, other_name, later, barely_later };
    struct {
        int legs;
        Change change;
        std::size_t plans;
        int channels;
    } const cases[] = {
        {1, Change::none, 1, 1},          {2, Change::one_clip_less, 1, 2},
        {3, Change::none, 1, 3},          {8, Change::none, 1, 8},
        {9, Change::none, 9, 9},          {12, Change::none, 12, 12},
        {6, Change::one_clip_less, 6, 6}, {6, Change::other_name, 6, 6},
        {6, Change::later, 6, 6},         {6, Change::barely_later, 1, 6},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.legs << ' ' << static_cast<int>(c.change));
        Mixer mixer;
        mixer.track("Surr", c.legs, {0, 5});
        auto& last_clips = mixer.input.channels.back().clips;
        for (auto& channel : mixer.input.channels) {
            for (auto& clip : channel.clips) clip.file_channel = 0;
        }
        if (c.change == Change::one_clip_less) last_clips.pop_back();
        if (c.change == Change::other_name) last_clips[0].name = "other";
        if (c.change == Change::later) last_clips[1].start += 2e-9;
        if (c.change == Change::barely_later) last_clips[1].start += 0.5e-9;

        const auto plans = mixer.plans();
        const bool is_folded = c.plans == 1 && c.legs > 2;
        ASSERT_EQ(plans.size(), c.plans);
        EXPECT_EQ(mixer.tallies.surround_folds, is_folded ? 1 : 0);
        for (const auto& plan : plans) {
            EXPECT_EQ(plan.name, "Surr");
            EXPECT_EQ(plan.channels, c.channels);
            EXPECT_EQ(plan.folded_width, is_folded ? c.legs : 0);
            ASSERT_GE(plan.clips.size(), 1u);
            EXPECT_EQ(plan.clips[0].file_channel.has_value(),
                      c.plans == static_cast<std::size_t>(c.legs))
                << "a leg that stands alone plays its own channel";
        }
        EXPECT_EQ(mixer.tallies.tracks_without_strip_row, 0) << "legs follow the first of them";
    }
}

TEST(AssembleTracks, ALegPlaysItsFilesOwnSideOrTheChannelThatItNames) {
    Mixer mixer;
    mixer.track("Pair", 2, {0});
    mixer.input.channels[0].clips[0].file_channel = 0;
    mixer.input.channels[1].clips[0].file_channel = 3;
    const auto clips = mixer.plans().at(0).clips;
    EXPECT_FALSE(clips.at(0).file_channel) << "panned hard, the whole file sounds the same";
    EXPECT_EQ(clips.at(1).file_channel, 3);
}

TEST(AssembleTracks, PutsAlternatesOnTheLanesOfTheirTrack) {
    // The playlist, what becomes of it, and how often: matched, into an empty parent, unmatched.
    const char* const cases[][3] = {
        {"Vox.01", "Vox (Vox.01); Aux; ", "100"},
        {"Audio 1.02", "Vox (Audio 1.02); Aux; ", "100"},  // by the name from the strip's creation
        {"Aux.01", "Vox; Aux (Aux.01); ", "010"},
        {"Solo.01", "Vox; Solo.01 [alt playlist]; Aux; ", "001"},
        {"Vox.1", "Vox; Vox.1 [alt playlist]; Aux; ", "001"},
        {"Out.01", "Vox; Aux; Out.01 [lane: Out]; ", "001"},  // a strip that makes no track
    };
    for (const auto& [playlist, names, counts] : cases) {
        SCOPED_TRACE(playlist);
        Mixer mixer;
        mixer.track("Vox", 1, {0}).channel(playlist, {7}).strip("Aux");
        mixer.strip("Out", StripRowType::master);
        mixer.input.strips.rows[0].original_name = "Audio 1";
        const auto plans = mixer.plans();
        EXPECT_EQ(names_of(plans), names);
        const TrackTallies& t = mixer.tallies;
        EXPECT_EQ(std::to_string(t.alternates_matched) +
                      std::to_string(t.alternates_folded_into_empty_parent) +
                      std::to_string(t.alternates_unmatched),
                  counts);
        EXPECT_EQ(t.alternates_kept_as_lanes, 1 - t.alternates_unmatched);
        EXPECT_EQ(t.tracks_without_strip_row, 0);
        for (const auto& plan : plans) {
            EXPECT_EQ(plan.muted, plan.unmatched_alternate);
            EXPECT_EQ(plan.session_name.empty(), plan.unmatched_alternate);
        }
    }
}

TEST(AssembleTracks, WritesBothLegsOfAnAlternatePairApart) {
    Mixer mixer;
    mixer.track("Vox", 1).channel("Pad.01", {1}).channel("Pad.01", {1});
    const auto plans = mixer.plans();
    EXPECT_EQ(names_of(plans), "Vox; Pad.01 [alt playlist] [L]; Pad.01 [alt playlist] [R]; ");
    EXPECT_EQ(plans.at(1).leg_pan, -1);
    EXPECT_EQ(plans.at(2).leg_pan, 1);
    EXPECT_EQ(plans.at(2).mixer.pan, 1) << "the written pan plays a lone leg from its side";
    EXPECT_EQ(plans.at(2).original_name, "Pad.01");
    EXPECT_EQ(mixer.tallies.stereo_merges, 0);
}

TEST(AssembleTracks, AMonoTrackStaysMonoWithItsAlternates) {
    Mixer mixer;
    mixer.track("Vox", 1, {0}).channel("Vox.01").strip("Empty").track("Tone", 2, {0});
    // Alternates stand in the track list under the name of their track, behind all tracks.
    for (const char* name : {"Empty", "Tone", "Vox", "Vox", "Empty"}) {
        mixer.input.track_rows.emplace_back().name = name;
    }
    const auto plans = mixer.plans();
    ASSERT_EQ(names_of(plans), "Vox (Vox.01); Empty; Tone; ");
    EXPECT_TRUE(plans[0].strip_is_mono);
    EXPECT_TRUE(plans[1].strip_is_mono);
    EXPECT_EQ(plans[1].channels, 1);
    EXPECT_FALSE(plans[2].strip_is_mono);
}

TEST(AssembleTracks, UnnamedRowsAreTheirTracksAndGoWithTheAlternatesThatAreSetAside) {
    Mixer mixer;
    mixer.track("Vox").channel("Vox.01").channel("?").channel("Stray.01");
    const auto plans = mixer.plans();
    EXPECT_EQ(names_of(plans), "Vox (Vox.01); ? [alt playlist]; Stray.01 [alt playlist]; ");
    EXPECT_TRUE(plans[1].is_lane_child && plans[1].lane_child_parent == "Vox.01");
    mixer.input.keep_alt_takes = false;
    EXPECT_EQ(names_of(mixer.plans()), "Vox; ");
    EXPECT_EQ(mixer.tallies.alternates_set_aside, 2);
    EXPECT_EQ(mixer.tallies.alternates_kept_as_lanes, 0);
}

TEST(AssembleTracks, FollowsTheStripRows) {
    Mixer mixer;
    mixer.track("A").track("B", 2, {0}).track("C", 1, {0});
    auto& rows = mixer.input.strips.rows;
    std::swap(rows[0], rows[2]);
    mixer.strip("Verb").strip("Keys", StripRowType::midi).strip("VCA 1", StripRowType::vca);
    mixer.strip("VCA 2", StripRowType::vca).track("Vox [dry]").track("Vox");
    mixer.table("Verb", 0, 2).table("Keys").table("VCA 2");
    mixer.input.vca_fader_db = {{"VCA 2", -20}};
    const auto plans = mixer.plans();
    EXPECT_EQ(names_of(plans), "C; B; A; Verb; Keys; VCA 2; Vox [dry]; Vox; ");
    EXPECT_EQ(mixer.tallies.tracks_written_empty, 3)
        << "A, Verb and Vox: on folders, MIDI tracks and VCAs there is nothing to miss";
    EXPECT_TRUE(plans.at(0).strip_is_mono);
    EXPECT_EQ(plans.at(3).channels, 2);
    EXPECT_EQ(plans.at(3).timebase, TrackTimebase::unknown);
    EXPECT_FALSE(plans.at(5).strip_is_mono) << "a VCA has no pan";
    EXPECT_FALSE(plans.at(4).strip_is_mono) << "the width of a MIDI track is none of its sound's";
}

TEST(AssembleTracks, FindsATrackByItsOriginalNameUnlessAnotherBearsItNow) {
    for (const bool is_taken : {false, true}) {
        const std::string second = is_taken ? "Audio 1" : "Bass";
        Mixer mixer;
        mixer.channel("Audio 1", {3}).strip("Lead").strip(second);
        mixer.input.strips.rows[0].original_name = "Audio 1";
        mixer.input.strips.rows[0].active = false;
        const auto plans = mixer.plans();
        EXPECT_EQ(names_of(plans), "Lead; " + second + "; ");
        EXPECT_EQ(plans.at(0).clips.empty(), is_taken);
        EXPECT_TRUE(plans.at(0).inactive && plans.at(0).session_name == "Lead");
        EXPECT_EQ(mixer.tallies.tracks_written_empty, 1);
    }
}

TEST(AssembleTracks, AppendsWhatMatchesNoStrip) {
    Mixer mixer;
    mixer.channel("Lost", {0}).channel("", {0}).track("Vox");
    mixer.input.track_rows.emplace_back().name = "Lost";
    EXPECT_EQ(names_of(mixer.plans()), "Vox; Lost; ; ");
    EXPECT_EQ(mixer.tallies.tracks_without_strip_row, 2);
    EXPECT_EQ(mixer.tallies.names_not_bound, 0);
    mixer.input.strips.bound = false;
    mixer.plans();
    EXPECT_EQ(mixer.tallies.names_not_bound, 1);
}

TEST(AssembleTracks, GivesFoldersWithoutAPlanOneInFrontOfWhatFollowsThem) {
    constexpr auto folder = strip_table_folder_type;
    Mixer mixer;
    mixer.track("A").track("B").strip("Routed");
    mixer.table("Outer", folder).table("Inner", folder).table("A").table("Outer", folder);
    mixer.table("Routed", folder).table("Mid", folder).table("Ghost").table("B");
    mixer.table("Last", folder);
    const auto plans = mixer.plans();
    EXPECT_EQ(names_of(plans), "Outer; Inner; A; Mid; B; Routed; Last; ");
    EXPECT_EQ(plans.at(0).channels, 2);
    EXPECT_EQ(plans.at(0).session_name, "Outer");
}

TEST(AssembleTracks, MutesInactiveTracksAndThoseWithVoiceOff) {
    Mixer mixer;
    mixer.track("A").track("B").track("C").track("D");
    mixer.input.strips.rows[0].active = false;
    mixer.input.inactive_names = {"B"};
    mixer.input.voice_off_names = {"B", "C"};
    const auto plans = mixer.plans();
    std::string states;
    for (const auto& plan : plans) {
        states += plan.inactive ? 'i' : '-';
        states += plan.voice_off ? 'v' : '-';
        states += plan.muted ? "m " : "- ";
    }
    EXPECT_EQ(states, "i-m ivm -vm --- ");
    EXPECT_EQ(mixer.tallies.inactive_tracks, 2);
    EXPECT_EQ(mixer.tallies.voice_off_tracks, 2);
}

TEST(AssembleTracks, LosesNoClip) {
    // Names that collide, nest and repeat in every table: whatever the shape, each clip arrives.
    const std::vector<std::string> names = {"A", "A.01", "?", "", "B", "A [L]", "B.01"};
    std::uint32_t seed = 1;
    const auto draw = [&seed](std::size_t below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % below;
    };
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        Mixer mixer;
        const auto name = [&] { return names[draw(names.size())]; };
        std::size_t clip_count = draw(12);
        for (std::size_t i = 0; i < clip_count; ++i) mixer.channel(name(), {double(draw(3))});
        for (auto i = draw(5); i-- > 0;) mixer.input.track_rows.emplace_back().name = name();
        for (auto i = draw(5); i-- > 0;) mixer.strip(name()).table(name(), i % 2 ? 11 : 0);
        std::size_t arrived = 0;
        for (const auto& plan : mixer.plans()) {
            arrived += plan.clips.size() * static_cast<std::size_t>(std::max(plan.folded_width, 1));
            for (const auto& lane : plan.lanes) arrived += lane.clips.size();
            EXPECT_TRUE(std::ranges::is_sorted(plan.clips, {}, &ClipItem::start));
        }
        EXPECT_EQ(arrived, clip_count);
    }
}

}  // namespace
}  // namespace tanrove
