// Where the search finds a file, in which order it looks, and what it counts.
#include "project/media_search.hpp"

#include <gtest/gtest.h>

#include <set>

namespace tanrove {
namespace {

/// A disk of a few files that remembers what it was asked.
struct Disk {
    std::set<std::string> files;
    std::vector<std::string> asked;

    MediaSearch search(const AudioFileFolders& folders, const std::string& parent = "/song") {
        return MediaSearch("/song/Audio Files", parent, folders, [this](const std::string& path) {
            asked.push_back(path);
            return files.contains(path);
        });
    }
};

TEST(MediaSearch, LooksInTheMediaFolderThenInTheListedFolderThenInTheUsualOnes) {
    Disk disk;
    MediaSearch search = disk.search({{"a.wav", "Takes"}});
    const MediaPath& answer = search.find("a.wav");
    EXPECT_EQ(disk.asked,
              (std::vector<std::string>{"/song/Audio Files/a.wav", "/song/Takes/a.wav",
                                        "/song/Rendered Files/a.wav", "/song/Bounced Files/a.wav",
                                        "/song/Audio Files/a.wav"}));
    EXPECT_EQ(answer.path, "/song/Audio Files/a.wav") << "a missing file keeps this path";
    EXPECT_FALSE(answer.found);
    EXPECT_TRUE(answer.in_media_folder);
}

TEST(MediaSearch, TakesTheFirstPlaceThatHoldsTheFile) {
    struct {
        std::set<std::string> files;
        std::string parent;
        std::string path;
        std::string folder;
    } const cases[] = {
        {{"/song/Audio Files/a.wav", "/song/Takes/a.wav"}, "/song", "/song/Audio Files/a.wav", ""},
        {{"/song/Rendered Files/a.wav", "/song/Takes/a.wav"},
         "/song",
         "/song/Takes/a.wav",
         "Takes"},
        {{"/song/Bounced Files/a.wav"}, "/song", "/song/Bounced Files/a.wav", "Bounced Files"},
        {{"/Takes/a.wav"}, "", "/song/Audio Files/a.wav", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path + " below " + c.parent);
        Disk disk{.files = c.files, .asked = {}};
        MediaSearch search = disk.search({{"a.wav", "Takes"}}, c.parent);
        const MediaPath& answer = search.find("a.wav");
        EXPECT_EQ(answer.path, c.path);
        EXPECT_EQ(answer.sibling_folder, c.folder);
        EXPECT_EQ(answer.in_media_folder, c.folder.empty());
    }
}

TEST(MediaSearch, AsksTheDiskOnceForEachName) {
    Disk disk;
    MediaSearch search = disk.search({});
    const MediaPath& first = search.find("a.wav");
    const std::size_t asked = disk.asked.size();
    for (int i = 0; i < 100; ++i) search.find("b" + std::to_string(i) + ".wav");
    EXPECT_EQ(&search.find("a.wav"), &first) << "an answer stays where it is";
    EXPECT_EQ(disk.asked.size(), 101 * asked);
}

TEST(CountListedFiles, CountsEachNameOnceAndKeepsTheOrderOfTheSession) {
    Disk disk{.files = {"/song/Audio Files/here.wav", "/song/Takes/t.wav",
                        "/song/Rendered Files/r1.wav", "/song/Rendered Files/r2.wav"},
              .asked = {}};
    MediaSearch search = disk.search({{"t.wav", "Takes"}});
    for (const char* file : {"gone1.wav", "z gone.wav", "t.wav"}) search.use(file);
    const MediaTallies tallies = count_listed_files(search, {{.name = "z gone.wav", .index = 0},
                                                             {.name = "here.wav", .index = 1},
                                                             {.name = "t.wav", .index = 2},
                                                             {.name = "r1.wav", .index = 3},
                                                             {.name = "r2.wav", .index = 4},
                                                             {.name = "r2.wav", .index = 5},
                                                             {.name = "gone1.wav", .index = 6},
                                                             {.name = "unused.wav", .index = 8},
                                                             {.name = "z gone.wav", .index = 7}});
    EXPECT_EQ(tallies.files_in_siblings, 3);
    EXPECT_EQ(tallies.files_by_folder,
              (std::map<std::string, int>{{"Rendered Files", 2}, {"Takes", 1}}));
    EXPECT_EQ(tallies.missing_files, (std::vector<std::string>{"z gone.wav", "gone1.wav"}));
    EXPECT_EQ(tallies.missing_unused, 1);
}

}  // namespace
}  // namespace tanrove
