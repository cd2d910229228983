// The text of a track, whole in its plain form, and the lines that a plan's fields change.
#include "project/track_block.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/guid.hpp"
#include "project/extra_tracks.hpp"

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
    write_tracks(out, plans, media, takes, written.tallies, progress);
    return written;
}

ClipItem clip(const std::string& file) {
    ClipItem made;
    made.name = file;
    made.file = file;
    made.length = 1;
    return made;
}

/// The lines of `text` that begin with one of `words`, without their indentation.
std::string lines_of(const std::string& text, const std::vector<std::string>& words) {
    std::string found;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        const std::string line =
            text.substr(text.find_first_not_of(' ', at), end - text.find_first_not_of(' ', at));
        const std::string word = line.substr(0, line.find(' '));
        if (std::find(words.begin(), words.end(), word) != words.end()) found += line + "\n";
        at = end + 1;
    }
    return found;
}

TEST(WriteTracks, WritesAnEmptyMonoTrackWithEveryLineInItsPlace) {
    TrackPlan plan;
    plan.name = "Vox";
    plan.pan_mode = 3;
    plan.timebase = TrackTimebase::beats_position;
    EXPECT_EQ(write({plan}).text, "  <TRACK " + guid(1) +
                                      "\n"
                                      "    NAME \"Vox\"\n"
                                      "    PEAKCOL 16576\n"
                                      "    BEAT 2\n"
                                      "    AUTOMODE 0\n"
                                      "    VOLPAN 1.000000 0 -1 -1.000000 1.000000\n"
                                      "    MUTESOLO 0 0 0\n"
                                      "    IPHASE 0\n"
                                      "    ISBUS 0 0\n"
                                      "    PANMODE 3\n"
                                      "    FREEMODE 0\n"
                                      "    TRACKHEIGHT 0 0 0 0 0 0 0\n"
                                      "    INQ 0 0 0 0.5 100 0 0 100\n"
                                      "    NCHAN 2\n"
                                      "    FX 1\n"
                                      "    TRACKID " +
                                      guid(9001) +
                                      "\n"
                                      "    MAINSEND 1 0\n"
                                      "  >\n");
}

TEST(WriteTracks, PrintsTheValuesOfThePlan) {
    TrackPlan plan;
    plan.muted = true;
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
    EXPECT_EQ(lines_of(write({plan}).text, {"BEAT", "AUTOMODE", "VOLPAN", "MUTESOLO", "IPHASE",
                                            "PANMODE", "TRACKHEIGHT", "MAINSEND"}),
              "BEAT -1\nAUTOMODE 4\nVOLPAN 0.250000 -0.5 -1 -0.750000 0.250000\nMUTESOLO 1 2 1\n"
              "IPHASE 1\nTRACKHEIGHT 72 0 0 0 0 0 0\nMAINSEND 0 0\n");
}

TEST(WriteTracks, LeadsEachTrackFromItsMixerToItsAutomation) {
    TrackPlan plan;
    plan.hidden = true;
    plan.folder = {2, -3};
    plan.group_flags = {5, 4294967295U};
    plan.written_channels = 6;
    plan.parent_gets_first_pair = true;
    plan.key_receives = {{4, 2}, {7, 4}};
    plan.channel_receives = {{2, 3072}};
    const EnvelopePlan mute{"AUXMUTEENV", EnvelopeKind::mute, true, false, {{0, 1, 1}}};
    plan.receives = {{9, 3, 0.5, -1, true, {}}, {1, 0, 1, 0, false, {mute}}};
    plan.envelopes = {{"VOLENV2", EnvelopeKind::volume, false, true, {{0, 1, 0}, {1.5, 0.25, 0}}},
                      {"PANENV2", EnvelopeKind::pan, true, true, {}}};
    const Written written = write({plan});
    const std::string text = written.text;
    EXPECT_EQ(text.substr(text.find("    ISBUS")),
              "    ISBUS 2 -3\n    SHOWINMIX 0 0.6667 0.5 0 0.5 0 0 0 0\n"
              "    GROUP_FLAGS 5 4294967295\n    FREEMODE 0\n    TRACKHEIGHT 0 0 0 0 0 0 0\n"
              "    INQ 0 0 0 0.5 100 0 0 100\n    NCHAN 6\n    FX 1\n    TRACKID " +
                  guid(9001) +
                  "\n    MAINSEND 1 0\n    MAINSEND_NCH 2\n"
                  "    AUXRECV 4 1 1 0 0 0 0 0 2 31:U 4177951 -1 ''\n"
                  "    AUXRECV 7 1 1 0 0 0 0 0 4 31:U 4177951 -1 ''\n"
                  "    AUXRECV 2 0 1 0 0 0 0 3072 0 31:U 4177951 -1 ''\n"
                  "    AUXRECV 9 3 0.5000000000 -1 1 0 0 0 0 31:U 4177951 -1 ''\n"
                  "    AUXRECV 1 0 1.0000000000 0 0 0 0 0 0 31:U 4177951 -1 ''\n"
                  "    <AUXMUTEENV 4\n      ACT 1 -1\n      VIS 1 1 1\n      LANEHEIGHT 0 0\n"
                  "      ARM 0\n      DEFSHAPE 1 -1 -1\n"
                  "      PT 0.0000000000 1.000000000 1\n    >\n"
                  "    <VOLENV2\n      ACT 0 -1\n      VIS 1 1 1\n      LANEHEIGHT 0 0\n"
                  "      ARM 1\n      DEFSHAPE 0 -1 -1\n"
                  "      PT 0.0000000000 1.000000000 0\n"
                  "      PT 1.5000000000 0.250000000 0\n    >\n  >\n");
    EXPECT_EQ(written.tallies.automation_points, 2);
    EXPECT_EQ(written.tallies.send_points, 1);
}

TEST(WriteStripTracks, GivesAStripWithoutATrackItsMixer) {
    TrackPlan stereo;
    stereo.mixer.gain = 0.5;
    TrackPlan dual_pan;
    dual_pan.pan_mode = 6;
    std::string text;
    WrittenTallies tallies;
    {
        TextSink out(text);
        write_strip_tracks(out, {stereo, dual_pan}, tallies);
    }
    EXPECT_EQ(lines_of(text, {"<TRACK", "VOLPAN", "PANMODE", "TRACKID", ">"}),
              "<TRACK " + guid(60001) + "\nVOLPAN 0.500000 0 -1 -1 1\nTRACKID " + guid(61001) +
                  "\n>\n<TRACK " + guid(60002) +
                  "\nVOLPAN 1.000000 0 -1 -1.000000 1.000000\nPANMODE 6\nTRACKID " + guid(61002) +
                  "\n>\n");
}

TEST(WriteTracks, LaysLanesOutBelowTheTracksOwnPlaylist) {
    TrackPlan plan;
    plan.name = "Gtr";
    plan.session_name = "Gtr \"main\"";
    plan.clips = {clip("a.wav"), clip("b.wav")};
    plan.clips[1].locked = true;
    plan.lanes = {{.name = "Gtr.01", .clips = {clip("b.wav")}}, {.name = "Gtr.02", .clips = {}}};
    const Written written = write({plan});
    EXPECT_EQ(lines_of(written.text, {"FREEMODE", "FIXEDLANES", "LANESOLO", "ITEMLANES", "LANENAME",
                                      "YPOS", "FILE"}),
              "FREEMODE 2\nFIXEDLANES 9 0 0 0 0\nLANESOLO 1 0 0 0 0 0 0 0\nITEMLANES 3\n"
              "LANENAME 'Gtr \"main\"' \"Gtr.01\" \"Gtr.02\"\n"
              "YPOS 0.000000 0.333333 2\nFILE \"/song/Audio Files/a.wav\"\n"
              "YPOS 0.000000 0.333333 2\nFILE \"/song/Bounced Files/b.wav\"\n"
              "YPOS 0.333333 0.333333 2\nFILE \"/song/Bounced Files/b.wav\"\n");
    EXPECT_EQ(written.tallies.clips, 3);
    EXPECT_EQ(written.tallies.locked_clips, 1);
    EXPECT_EQ(written.tallies.clips_in_siblings, 2);
}

TEST(WriteTracks, SilencesAnAlternatePlaylistByASecondLine) {
    TrackPlan plan;
    plan.unmatched_alternate = true;
    EXPECT_EQ(lines_of(write({plan}).text, {"MUTESOLO", "MAINSEND"}),
              "MUTESOLO 0 0 0\nMAINSEND 1 0\nMUTESOLO 1 0 0\n");
}

TEST(WriteTracks, NumbersTracksFromTheFirstAndTellsItsProgress) {
    std::vector<std::size_t> told;
    TrackPlan beats;
    beats.timebase = TrackTimebase::beats_position;
    const Written written = write({TrackPlan{}, beats}, [&](std::size_t index, std::size_t count) {
        told.insert(told.end(), {index, count});
    });
    EXPECT_EQ(told, (std::vector<std::size_t>{0, 2, 1, 2}));
    EXPECT_EQ(lines_of(written.text, {"<TRACK", "TRACKID"}),
              "<TRACK " + guid(1) + "\nTRACKID " + guid(9001) + "\n<TRACK " + guid(2) +
                  "\nTRACKID " + guid(9002) + "\n");
    EXPECT_EQ(written.tallies.tracks, 2);
    EXPECT_EQ(written.tallies.beats_tracks, 1);
    EXPECT_EQ(written.tallies.time_tracks, 0);
}

}  // namespace
}  // namespace tanrove
