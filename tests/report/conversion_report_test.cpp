// The report's own lines, where no whole conversion shows them.
#include "report/conversion_report.hpp"

#include <gtest/gtest.h>

namespace tanrove {
namespace {

TEST(ConversionReport, CutsNamesBetweenCharactersAndTakesNoVersionThatIsNone) {
    const std::string umlaut = "\xC3\xA4";
    std::string name = "\n";  // a control character is a blank
    for (int i = 0; i < 40; ++i) name += umlaut;
    RunTallies tallies;
    tallies.track_facts = {{name, 1, 2}, {"Bad \xC3", 0, 0}};
    ReportFacts facts;
    facts.application_version = "1.0\n";
    const std::string text = conversion_report(facts, tallies).text;
    std::string shown = " ";
    for (int i = 0; i < 33; ++i) shown += umlaut;
    EXPECT_NE(text.find("\n  1   " + shown + "     1     2   0\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\n  2   Bad \xEF\xBF\xBD" + std::string(29, ' ') +
                        "     0     0   0   (empty)\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("made with   vorlane (unreleased)\n"), std::string::npos);
    facts.application_version = "2.5 beta";
    EXPECT_NE(conversion_report(facts, {}).text.find("made with   vorlane 2.5 beta\n"),
              std::string::npos);
}

TEST(ConversionReport, CountsEveryClipThatWouldCarryAColour) {
    RunTallies tallies;
    auto& colours = tallies.mix.colours;
    colours.clip_colours_off = true;
    colours.clips_own = 1;
    colours.lane_clips = 20;
    colours.clips_by_scheme = 300;
    colours.midi_clips_as_listed = 4000;
    EXPECT_NE(conversion_report({}, tallies).text.find("is on: 4321 clip(s) that would carry"),
              std::string::npos);
}

}  // namespace
}  // namespace tanrove
