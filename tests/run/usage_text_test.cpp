// The help text: its fixed pieces to the letter, its blocks in their order, its layout.
#include "run/usage_text.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace tanrove {
namespace {

constexpr std::size_t description_column = 25;  // counted from 0

std::vector<std::string> lines_of(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

/// The lines from the first option's block to the last one's.
std::vector<std::string> block_lines() {
    const std::string text = usage_text();
    const auto begin = text.find("  --check  ");
    const auto end = text.find("\nOr drag");
    return lines_of(text.substr(begin, end - begin));
}

const std::vector<std::string> block_names{"--check",
                                           "--skip-bypassed-fx",
                                           "--prefer-vst2",
                                           "--offline-bypassed-fx",
                                           "--pt-theme classic",
                                           "--no-placeholders",
                                           "--no-aax-slots",
                                           "--skip-missing-fx",
                                           "--no-click",
                                           "--skip-hidden-tracks",
                                           "--skip-inactive-tracks",
                                           "--comments MODE",
                                           "--keep-frozen",
                                           "--keep-inaudible-midi",
                                           "--truncate-midi-to-clip",
                                           "--no-stand-ins",
                                           "--progress",
                                           "--no-track-colors",
                                           "--plain-master",
                                           "--plain-fades",
                                           "--no-clip-colors",
                                           "--tempo-ramps [ramps|steps]",
                                           "--prefer-clap",
                                           "--usage-json FILE",
                                           "--usage-shared",
                                           "--predict",
                                           "--no-kontakt-state",
                                           "--keep-plugin-midi",
                                           "--no-sidechain",
                                           "--no-stretch",
                                           "--list",
                                           "--dump-cc",
                                           "--pause / --no-pause",
                                           "--report",
                                           "--learn"};

TEST(UsageText, HoldsItsFixedPiecesToTheLetter) {
    const std::string text = usage_text();
    EXPECT_EQ(text.rfind("tanrove: convert a Pro Tools session to a REAPER project\n\n"
                         "  tanrove \"My Song.ptx\" [-o out.rpp] [--tempo N]\n"
                         "          [--audio-dir \"Audio Files\"] [--drop-alt-takes]\n"
                         "          [--no-fades] [--keep-fade-clips]\n"
                         "          [--no-click] [--report]\n"
                         "          [--vstini reaper-vstplugins64.ini] [--dump-cache]\n"
                         "          [--params tanrove-params.tsv ...] [--want-params FILE]\n"
                         "          [--prefer-vst2]\n"
                         "          [--skip-bypassed-fx] [--offline-bypassed-fx]\n"
                         "          [--pt-theme auto|classic|dark]\n"
                         "          [--no-placeholders] [--no-aax-slots]\n"
                         "          [--comments project|item|none]\n"
                         "  tanrove --learn chain.RfxChain AAXSIGN\n\n"
                         "  BEFORE YOU START: Pro Tools does NOT need to be installed, and\n",
                         0),
              0U);
    const char* const pieces[] = {
        "An empty slot in REAPER\n"
        "  is almost always that, not a failed conversion -- the settings are\n"
        "  in the project either way and appear once the plug-in is there.\n",
        "  --check                answer \"will this session convert?\" and write\n"
        "                         NOTHING. Same reading, same report, no files.\n"
        "                         Use it before converting, or to see exactly\n"
        "                         which plug-ins you are missing.\n",
        "  --predict              accepted and ignored: since v194 every plug-in\n"
        "                         the converter can name is tried, including ones\n"
        "                         no rule was written for, and the report names\n"
        "                         every one whose settings were predicted.\n",
        "  --usage-json FILE      also write an anonymous summary of this run to\n"
        "                         FILE (counts, plug-in names and how each one\n"
        "                         converted; no names of yours, no paths). This\n"
        "                         program sends nothing; the app sends the file\n"
        "                         only for people who switched usage summaries on.\n",
        "  --progress             for the app: on stderr, one line per stage\n"
        "                         (\"progress 2/6 tracks\") while converting, then\n"
        "                         \"progress 6/6 done\" and one summary line\n"
        "                         (\"summary tracks=.. clips=.. notes=.. fx=..\n"
        "                         written=.. needs_look=..\"). Stdout is unchanged.\n"
        "                         When something went wrong on this tool's side,\n"
        "                         \"problem kind=<kind> <detail>\" comes just before\n"
        "                         the summary, which then ends \"problem=1\".\n",
    };
    for (const char* piece : pieces) EXPECT_NE(text.find(piece), std::string::npos) << piece;
    const std::string last = "\nOr drag a .ptx file onto this program.\n";
    EXPECT_EQ(text.substr(text.size() - last.size()), last);
}

TEST(UsageText, TheParagraphBeforeTheOptionsHasSevenLines) {
    const std::string text = usage_text();
    const auto begin = text.find("  BEFORE YOU START");
    EXPECT_EQ(lines_of(text.substr(begin, text.find("\n\n", begin) - begin)).size(), 7U);
}

TEST(UsageText, BlocksStandInOrderWithNamesAndDescriptionsInTheirColumns) {
    std::vector<std::string> names;
    for (const std::string& line : block_lines()) {
        SCOPED_TRACE(line);
        EXPECT_LE(line.size(), 73U);
        EXPECT_NE(line.back(), ' ');
        const auto first = line.find_first_not_of(' ');
        if (first == description_column) continue;
        ASSERT_EQ(first, 2U);
        const bool alone = line.size() <= description_column || line[description_column - 1] != ' ';
        if (!alone) {
            EXPECT_NE(line[description_column], ' ');
        }
        std::string name = alone ? line : line.substr(0, description_column);
        name.erase(name.find_last_not_of(' ') + 1);
        names.push_back(name.substr(2));
    }
    EXPECT_EQ(names, block_names);
}

TEST(UsageText, OptionsForTestersStandInNoBlock) {
    std::string blocks;
    for (const std::string& line : block_lines()) blocks += line + "\n";
    for (const char* option :
         {"--recover-deleted", "--ghost-clips", "--keep-alt-takes", "--no-alt-takes",
          "--skip-muted-fx", "--prefer-vst3", "--no-ara", "--dump-corpus", "--overwrite",
          "--convert-twice", " -h", "--version"}) {
        EXPECT_EQ(blocks.find(option), std::string::npos) << option;
    }
}

}  // namespace
}  // namespace tanrove
