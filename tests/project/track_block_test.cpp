// The text of tracks, whole: a plain one, one with all that a plan can hold, lanes, bare strips.
#include "project/track_block.hpp"

#include <gtest/gtest.h>

#include "project/extra_tracks.hpp"
#include "support/golden_text.hpp"

namespace tanrove {
namespace {

struct Written {
    std::string text;
    WrittenTallies tallies;
};

Written write(const std::vector<TrackPlan>& plans, const TrackProgress& progress = {}) {
    Written written;
    TextSink out(written.text);
    MediaSearch media("/song/Audio Files", "/song", {},
                      [](const std::string& path) { return path == "/song/Bounced Files/b.wav"; });
    TakeTallies take_tallies;
    TakePlanner takes(48000, take_tallies);
    write_tracks(out, plans, {}, media, takes, written.tallies, progress);
    return written;
}

ClipItem clip(const char* file) {
    ClipItem made;
    made.name = file;
    made.file = file;
    made.length = 1;
    return made;
}

TrackPlan plain_track() {
    TrackPlan plan;
    plan.name = "Vox";
    plan.pan_mode = 3;
    plan.timebase = TrackTimebase::beats_position;
    return plan;
}

/// A track with all that a plan can hold between its mixer and its automation.
TrackPlan full_track() {
    TrackPlan plan;
    plan.muted = plan.hidden = plan.unmatched_alternate = true;
    plan.parent_channels = 2;
    plan.height_pixels = 72;
    plan.mixer = {.gain = 0.25,
                  .pan = -0.5,
                  .dual_pan_left = -0.75,
                  .dual_pan_right = 0.25,
                  .automation_mode = 4,
                  .soloed = true,
                  .solo_safe = true,
                  .polarity_inverted = true,
                  .plays_to_parent = false};
    plan.folder = {2, -3};
    plan.group_flags = {5, 4294967295U};
    plan.written_channels = 6;
    plan.key_receives = {
        {.source = 4, .mode = 1, .envelopes = {}, .destination_channel = 2},
        {.source = 7, .mode = 3, .gain = 0.5, .envelopes = {}, .destination_channel = 4}};
    plan.channel_receives = {{2, 3072}};
    const EnvelopePlan mute{"AUXMUTEENV", EnvelopeKind::mute, true, false, {{0, 1, 1}}};
    plan.receives = {{9, 3, 0.5, -1, true, {}}, {1, 0, 1, 0, false, {mute}, 3072}};
    plan.envelopes = {{"VOLENV2", EnvelopeKind::volume, false, true, {{0, 1, 0}, {1.5, 0.25, 0}}},
                      {"PANENV2", EnvelopeKind::pan, true, true, {}}};
    return plan;
}

/// A track whose playlists lie below each other in lanes.
TrackPlan track_with_lanes() {
    TrackPlan plan;
    plan.name = "Gtr";
    plan.session_name = "Gtr \"main\"";
    plan.clips = {clip("a.wav"), clip("b.wav")};
    plan.clips[1].locked = true;
    plan.lanes = {{.name = "Gtr.01", .clips = {clip("b.wav")}}, {.name = "Gtr.02", .clips = {}}};
    return plan;
}

TEST(WriteTracks, PrintsPlansToTheLetterAndCountsWhatItWrites) {
    std::vector<std::size_t> told;
    Written written = write({plain_track(), full_track(), track_with_lanes()},
                            [&](std::size_t index, std::size_t count) {
                                told.insert(told.end(), {index, count});
                            });
    EXPECT_EQ(told, (std::vector<std::size_t>{0, 3, 1, 3, 2, 3}));
    const WrittenTallies& tallies = written.tallies;
    EXPECT_EQ(std::vector({tallies.tracks, tallies.beats_tracks, tallies.time_tracks}),
              std::vector({3, 1, 0}));
    EXPECT_EQ(std::vector({tallies.automation_points, tallies.send_points}), std::vector({2, 1}));
    EXPECT_EQ(std::vector({tallies.clips, tallies.locked_clips, tallies.clips_in_siblings}),
              std::vector({3, 1, 2}));

    TrackPlan stereo_strip;
    stereo_strip.mixer.gain = 0.5;
    TrackPlan dual_pan_strip;
    dual_pan_strip.pan_mode = 6;
    {
        TextSink out(written.text);
        write_strip_tracks(out, {stereo_strip, dual_pan_strip}, {}, written.tallies);
    }
    builder::expect_golden(TANROVE_TEXTS_FOLDER "/written_tracks.txt", written.text);
}

}  // namespace
}  // namespace tanrove
