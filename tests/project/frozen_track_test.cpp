// A frozen track's way over its temporary file, and what stays when the disk fails.
#include "project/frozen_track.hpp"

#include <gtest/gtest.h>

#include "project/track_block.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

class FrozenTrack : public testing::Test {
protected:
    /// The track as it is written, frozen where the disk lets it.
    std::string write(const DiskSteps& disk, bool is_kept = true) {
        std::string text;
        TextSink out(text);
        MediaSearch media("/song", "/", {}, [](const std::string&) { return true; });
        TakeTallies take_tallies;
        TakePlanner takes(48000, take_tallies);
        tallies_ = {};
        written_ = {};
        FreezeWriter freezer(path_, is_kept, disk, tallies_);
        TrackPlan plan;
        plan.session_name = plan.name = "Gtr";
        plan.clips.resize(3);
        plan.frozen = {.start = 1, .length = 2, .source_offset = 0, .path = "/song/Gtr-FZ.wav"};
        write_tracks(out, {plan}, {}, media, takes, written_, {}, &freezer);
        return text;
    }

    builder::TempFolder folder_;
    const std::string path_ = folder_ / "song.rpp";
    FrozenTallies tallies_;
    WrittenTallies written_;
};

TEST_F(FrozenTrack, ConvertsUnfrozenWhereverTheDiskFails) {
    const std::string frozen = write(real_disk());
    EXPECT_NE(frozen.find("    <FREEZE 0\n    <ITEM\n      POSITION 0.0"), std::string::npos);
    EXPECT_NE(frozen.find("    >\n    >\n    <ITEM\n      POSITION 1.0"), std::string::npos);
    EXPECT_TRUE(tallies_.delivered == 1 && folder_.file_count() == 0 && written_.clips == 3);

    DiskSteps no_file = real_disk();
    no_file.open = [](const char*, const char*) { return static_cast<std::FILE*>(nullptr); };
    DiskSteps full = real_disk();
    full.open = [](const char*, const char* mode) { return std::fopen("/dev/full", mode); };
    full.remove = [](const char*) { return 0; };
    DiskSteps unclosed = real_disk();
    unclosed.close = [](std::FILE* stream) { return std::fclose(stream), EOF; };
    for (const DiskSteps* disk : {&no_file, &full, &unclosed}) {
        const std::string text = write(*disk);
        EXPECT_EQ(text.find("FREEZE"), std::string::npos);
        EXPECT_NE(text.find("<ITEM"), std::string::npos);
        ASSERT_EQ(tallies_.refused.size(), 1U);
        EXPECT_EQ(tallies_.refused[0].reason, FreezeRefusal::no_temporary_file);
        EXPECT_TRUE(tallies_.delivered == 0 && written_.clips == 3);
        EXPECT_EQ(folder_.file_count(), 0U);
    }
}

TEST_F(FrozenTrack, TouchesNoDiskWhereTheProjectIsNotKept) {
    EXPECT_NE(write({}, false).find("<FREEZE 0\n    >\n"), std::string::npos);
    EXPECT_TRUE(tallies_.delivered == 1 && written_.clips == 3);
}

}  // namespace
}  // namespace tanrove
