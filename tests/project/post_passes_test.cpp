// The two passes over the finished project: what they move, what they renumber, and that a pass
// that meets the unexpected or a failing disk leaves the file as it was.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "base/guid.hpp"
#include "base/whole_file.hpp"
#include "project/master_pass.hpp"
#include "project/video_pass.hpp"
#include "support/child_process.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

using namespace builder;

const std::string head = "<REAPER_PROJECT 0.1 \"7.0\" 0\n  MASTER_VOLUME 0.500000000 0.000000 -1\n";
const std::string envelope =
    "  MASTERAUTOMODE 1\n  <MASTERVOLENV2\n    ACT 1 -1\n    ARM 0\n    PT 0 0.5 0\n  >\n";

std::string track(unsigned seed, const std::string& name, const std::string& lines) {
    return "  <TRACK " + guid(seed) + "\n    NAME \"" + name + "\"\n" + lines + "  >\n";
}

std::string receive(int source) {
    return "    AUXRECV " + std::to_string(source) + " 0 1 0\n";
}

const std::string to_master = "    ISBUS 0 0\n    MAINSEND 1 0\n";

TEST(VideoPass, PutsVideoTracksInFrontAndKeepsEverySendOnItsTrack) {
    const std::string bass = track(1, "bass", to_master);
    const std::string aux = track(2, "aux", receive(0) + receive(4));
    const std::string video = track(70000, "v1", "") + track(70001, "v2", "");
    const std::string strip = track(60001, "bare", "");
    EXPECT_EQ(with_video_tracks_first(head + bass + aux + video + strip + ">\n", 2),
              head + video + bass + track(2, "aux", receive(2) + receive(4)) + strip + ">\n");
}

TEST(VideoPass, LeavesWhatItDoesNotExpect) {
    const std::string a = track(1, "a", "");
    const std::string v1 = track(70000, "v1", "");
    const std::string v2 = track(70001, "v2", "");
    const struct {
        const char* what;
        std::string text;
    } cases[] = {
        {"no track", head + ">\n"},
        {"a video track is missing", head + a + v1 + ">\n"},
        {"a video track is there twice", head + a + v1 + v2 + v1 + ">\n"},
        {"not one run", head + a + v1 + a + v2 + ">\n"},
        {"already first", head + v1 + v2 + a + ">\n"},
        {"a source of seven digits", head + track(1, "a", receive(1000000)) + v1 + v2 + ">\n"},
        {"a source without digits", head + track(1, "a", "    AUXRECV x\n") + v1 + v2 + ">\n"},
        {"a block without an end", head + a + v1 + "  <TRACK " + guid(70001) + "\n"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        EXPECT_FALSE(with_video_tracks_first(one.text, 2));
    }
}

TEST(MasterPass, RoutesTopLevelTracksThroughTheFader) {
    const std::string folder = track(1, "bus", "    ISBUS 1 1\n    MAINSEND 1 0\n");
    const std::string member = track(2, "in", "    ISBUS 2 -1\n    MAINSEND 1 0\n");
    const std::string routed = track(3, "routed", "    ISBUS 0 0\n    MAINSEND 0 0\n" + receive(0));
    const std::string last = track(4, "last", to_master + receive(2) + receive(3));
    const MasterTrackPlan plan = {
        .name = "M \"1\"", .fader_db = -6, .colour = 16576, .in_front_of = std::string("routed")};
    const auto changed = with_master_track(head + folder + member + routed + last + ">\n", plan);
    ASSERT_TRUE(changed);
    EXPECT_EQ(changed->rerouted, 2U);
    const std::string master =
        "  <TRACK " + guid(72000) +
        "\n    NAME 'M \"1\"'\n    PEAKCOL 16576\n    BEAT -1\n    AUTOMODE 0\n"
        "    VOLPAN 0.501187234 0 -1 -1.000000 1.000000\n    MUTESOLO 0 0 0\n    IPHASE 0\n"
        "    ISBUS 0 0\n    PANMODE 6\n    NCHAN 2\n    FX 1\n    TRACKID " +
        guid(72001) +
        "\n    PERF 0\n    MIDIOUT -1 -1\n    MAINSEND 1 0\n"
        "    AUXRECV 0 0 1.0000000000 0 0 0 0 0 0 31:U 4177951 -1 ''\n"
        "    AUXRECV 4 0 1.0000000000 0 0 0 0 0 0 31:U 4177951 -1 ''\n  >\n";
    EXPECT_EQ(changed->text,
              "<REAPER_PROJECT 0.1 \"7.0\" 0\n  MASTER_VOLUME 1.000000000 0.000000 -1\n" +
                  track(1, "bus", "    ISBUS 1 1\n    MAINSEND 0 0\n") + member + master + routed +
                  track(4, "last", "    ISBUS 0 0\n    MAINSEND 0 0\n" + receive(3) + receive(4)) +
                  ">\n");
}

TEST(MasterPass, TakesTheEnvelopeAlong) {
    const std::string project = head + envelope + track(1, "a", to_master) + ">\n";
    const auto changed = with_master_track(project, {.name = "M", .fader_db = -6});
    ASSERT_TRUE(changed);
    EXPECT_EQ(changed->text.find("MASTERVOLENV2"), std::string::npos);
    const std::string moved =
        "    <VOLENV2\n      ACT 1 -1\n      ARM 1\n      PT 0 0.5 0\n    >\n  >\n>\n";
    EXPECT_TRUE(changed->text.ends_with(moved)) << changed->text;
    EXPECT_NE(changed->text.find("    AUTOMODE 1\n    VOLPAN 1.000000000 0"), std::string::npos);
    const auto off =
        with_master_track(project, {.name = "M", .fader_db = -6, .automation_off = true});
    EXPECT_NE(off->text.find("VOLPAN 0.501187234 0"), std::string::npos) << "it carries no level";
}

TEST(MasterPass, LeavesWhatItDoesNotExpect) {
    const std::string a = track(1, "a", to_master);
    const struct {
        const char* what;
        std::string text;
    } cases[] = {
        {"too short", "<R\n>\n"},
        {"cut off", head + a},
        {"nothing plays to the master", head + track(1, "a", "    MAINSEND 0 0\n") + ">\n"},
        {"a folder is left open", head + a + track(2, "f", "    ISBUS 1 1\n") + ">\n"},
        {"more folders close than open", head + a + track(2, "f", "    ISBUS 2 -1\n") + ">\n"},
        {"no master volume", "<REAPER_PROJECT 0.1\n" + a + ">\n"},
        {"a volume alone", "<REAPER_PROJECT 0.1\n  MASTER_VOLUME 1\n" + a + ">\n"},
        {"an envelope without an end", head + "  <MASTERVOLENV2\n" + a + ">\n"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        EXPECT_FALSE(with_master_track(one.text, {.name = "M"}));
    }
}

class PostPasses : public testing::Test {
protected:
    const std::string text_ = head + track(1, "a", to_master) + track(70000, "v", "") + ">\n";
    TempFolder folder_;
    const std::string path_ = folder_ / "song.rpp";
};

TEST_F(PostPasses, KeepTheProjectWhereverTheDiskFails) {
    std::vector<std::pair<const char*, DiskSteps>> faults(4, {"", real_disk()});
    const auto none_opened = [](std::string_view refused) {
        return [refused](const char* at, const char* mode) {
            return refused == mode ? nullptr : std::fopen(at, mode);
        };
    };
    faults[0].first = "the project cannot be read";
    faults[0].second.open = none_opened("rb");
    faults[1].first = "no new file can be made";
    faults[1].second.open = none_opened("w+bx");
    // Closing fails for readers too, which must not matter: what was read is whole.
    faults[2].first = "the device is full";
    faults[2].second.close = [](std::FILE* stream) { return std::fclose(stream), EOF; };
    faults[3].first = "the new file cannot take its place";
    faults[3].second.rename = [](const char*, const char*) { return -1; };
    for (const auto& [what, disk] : faults) {
        SCOPED_TRACE(what);
        ASSERT_TRUE(write_file_text(path_, text_));
        EXPECT_FALSE(move_video_tracks_first(path_, 1, disk));
        EXPECT_EQ(give_master_its_track(path_, {.name = "M"}, disk), 0U);
        EXPECT_EQ(file_text(path_), text_);
        EXPECT_EQ(folder_.file_count(), 1U);
    }
    EXPECT_TRUE(move_video_tracks_first(path_, 1, real_disk()));
    EXPECT_EQ(give_master_its_track(path_, {.name = "M"}, real_disk()), 1U);
    EXPECT_NE(file_text(path_).find(guid(72000)), std::string::npos);
}

/// A disk that a signal hits before its step of this number.
DiskSteps disk_hit_at(int& steps_left) {
    const auto step = [&steps_left] {
        if (steps_left-- != 0) return;
        remove_temporary_files();
        std::_Exit(1);
    };
    DiskSteps disk = real_disk();
    disk.open = [=, real = disk.open](auto... a) { return step(), real(a...); };
    disk.close = [=, real = disk.close](auto... a) { return step(), real(a...); };
    disk.rename = [=, real = disk.rename](auto... a) { return step(), real(a...); };
    disk.remove = [=, real = disk.remove](auto... a) { return step(), real(a...); };
    return disk;
}

TEST_F(PostPasses, ASignalAtAnyStepLeavesTheFormerProjectOrTheWholeNewOne) {
    const auto convert = [&](const DiskSteps& disk) {
        WholeFile file(path_, disk);
        std::fputs(text_.c_str(), file.stream());
        if (!file.close()) return false;
        const std::string* temporary = file.temporary_path();
        return move_video_tracks_first(*temporary, 1, disk) &&
               give_master_its_track(*temporary, {.name = "M"}, disk) == 1 && file.put_in_place();
    };
    ASSERT_TRUE(convert(real_disk()));
    const std::string whole = file_text(path_);
    int kept = 0;
    for (int step = 0, ended = 1; ended != 0; ++step) {
        SCOPED_TRACE(step);
        ASSERT_TRUE(write_file_text(path_, "former"));
        ended = in_child([&] {
            int steps_left = step;
            return convert(disk_hit_at(steps_left)) ? 0 : 2;
        });
        const std::string text = file_text(path_);
        EXPECT_EQ(folder_.file_count(), 1U);
        EXPECT_TRUE(text == (ended == 0 ? whole : "former")) << text;
        kept += text == "former" ? 1 : 0;
    }
    EXPECT_EQ(kept, 19) << "each step of the disk was hit once";
}

}  // namespace
}  // namespace tanrove
