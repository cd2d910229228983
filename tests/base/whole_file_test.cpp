// Files that are there whole or not at all: what each fault of the disk leaves, and what a target
// keeps of itself when it is replaced.
#include "base/whole_file.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

namespace fs = std::filesystem;
using namespace builder;

class WholeFiles : public testing::Test {
protected:
    WholeFiles() { folder_.enter(); }
    TempFolder folder_;
};

TEST_F(WholeFiles, AFaultLeavesTheTargetAsItWas) {
    const auto with = [](auto DiskSteps::*step, auto fault) {
        DiskSteps disk = real_disk();
        disk.*step = fault;
        return disk;
    };
    const auto no_file = [](const char*, const char*) { return static_cast<std::FILE*>(nullptr); };
    const auto full = [](const char* path, const char* mode) {
        return std::freopen("/dev/full", "wb", std::fopen(path, mode));
    };
    const auto unclosed = [](std::FILE* stream) { return std::fclose(stream), EOF; };
    const struct {
        const char* what;
        DiskSteps disk;
    } faults[] = {
        {"no file can be made", with(&DiskSteps::open, no_file)},
        {"the disk is full", with(&DiskSteps::open, full)},
        {"the last bytes do not arrive", with(&DiskSteps::close, unclosed)},
        {"no name", with(&DiskSteps::rename, [](const char*, const char*) { return -1; })},
    };
    const std::string long_text(100000, 'x');
    for (const auto& fault : faults) {
        for (const char* former : {"former", ""}) {
            for (const std::string& text : {std::string("new"), long_text}) {
                SCOPED_TRACE(testing::Message() << fault.what << ", " << former << text.size());
                fs::remove("t");
                if (*former != 0) {
                    ASSERT_TRUE(write_file_text("t", former));
                }
                EXPECT_FALSE(write_whole_file("t", text, fault.disk));
                EXPECT_EQ(file_text("t"), former);
                EXPECT_EQ(folder_.file_count(), *former != 0 ? 1U : 0U);
            }
        }
    }
    EXPECT_TRUE(write_whole_file("t", long_text));
    EXPECT_EQ(file_text("t"), long_text);
}

TEST_F(WholeFiles, NoFileOfAnybodyElseIsTakenForATemporaryOne) {
    ASSERT_TRUE(write_file_text("t.tmp", "mine"));
    ASSERT_TRUE(write_file_text("t.tmp2", "mine too"));
    {
        WholeFile file("t");
        ASSERT_NE(file.temporary_path(), nullptr);
        EXPECT_EQ(*file.temporary_path(), "t.tmp3");
    }
    EXPECT_TRUE(write_whole_file("t", "text"));
    EXPECT_EQ(file_text("t.tmp") + file_text("t.tmp2") + file_text("t"), "minemine tootext");
    EXPECT_EQ(folder_.file_count(), 3U);
}

TEST_F(WholeFiles, ATargetKeepsItsLinksItsRightsAndALongName) {
    fs::create_directory("elsewhere");
    const std::string long_name = "elsewhere/" + std::string(124, 'a') + std::string(131, '\xb5');
    fs::create_symlink("elsewhere/no file yet", "new link");
    fs::create_symlink("../second link", "elsewhere/link");
    fs::create_symlink(long_name, "second link");
    ASSERT_TRUE(write_file_text(long_name, "former"));
    fs::permissions(long_name, fs::perms::owner_read | fs::perms::owner_write);
    for (const std::string target : {"new link", "elsewhere/link"}) {
        EXPECT_TRUE(write_whole_file(target, target));
        EXPECT_TRUE(fs::is_symlink(target));
        EXPECT_EQ(file_text(target), target);
    }
    EXPECT_EQ(file_text(long_name), "elsewhere/link");
    EXPECT_EQ(fs::status(long_name).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("circle", "circle");
    EXPECT_FALSE(write_whole_file("circle", "x"));
}

TEST_F(WholeFiles, OnlyRegularFilesAreReplaced) {
    EXPECT_TRUE(write_whole_file("/dev/null", "x"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    if (fs::exists("/dev/full")) {
        EXPECT_FALSE(write_whole_file("/dev/full", "x"));
    }
    EXPECT_FALSE(write_whole_file(".", "x"));
    EXPECT_FALSE(write_whole_file("no/such/folder", "x"));
    EXPECT_EQ(folder_.file_count(), 0U);
}

}  // namespace
}  // namespace tanrove
