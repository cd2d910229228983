#include "golden/told_counts.hpp"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace tanrove::golden {

namespace {

struct Counts {
    int tracks = 0;
    int clips = 0;
    int notes = 0;
    int plugins = 0;
    bool has_frozen = false;  ///< a frozen track holds its clips coded
};

/// Tracks that the converter adds are no tracks of the session.
bool is_added(const std::string& name) {
    return name.find("NAME \"Pro Tools solo (") != std::string::npos ||
           name.find(" (Pro Tools master fader)\"") != std::string::npos;
}

/// What the lines of a project say; the plug-ins are not counted.
Counts count_project(const std::string& project) {
    Counts counts;
    std::istringstream lines(project);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string first, second, third, pitch, velocity;
        words >> first >> second >> third >> pitch >> velocity;
        if (line.rfind("  <TRACK", 0) == 0) ++counts.tracks;
        if (line.rfind("    NAME ", 0) == 0 && is_added(line)) --counts.tracks;
        if (first == "<FREEZE") counts.has_frozen = true;
        if (first == "<SOURCE" && second == "WAVE") ++counts.clips;
        const bool event = first == "E" || first == "Em" || first == "e" || first == "em";
        if (event && third[0] == '9' && velocity != "00") ++counts.notes;
    }
    return counts;
}

/// The number that the pattern's group holds, 0 where the text has none.
int number_in(const std::string& text, const char* pattern) {
    std::smatch found;
    return std::regex_search(text, found, std::regex(pattern)) ? std::stoi(found[1]) : 0;
}

/// The sums of the columns of the report's track list.
Counts add_columns(const std::string& report) {
    Counts sums;
    const std::size_t list = report.find("\nTRACK LIST");
    std::istringstream lines(report.substr(report.find("  #", list)));
    std::string line;
    std::getline(lines, line);
    const std::regex row(R"(^  (\d+|M) .* (\d+) +(\d+) +(\d+)(   \(empty\))?$)");
    for (std::smatch cells; std::getline(lines, line) && std::regex_match(line, cells, row);) {
        if (cells[1] != "M") ++sums.tracks;
        sums.clips += std::stoi(cells[2]);
        sums.notes += std::stoi(cells[3]);
        sums.plugins += std::stoi(cells[4]);
    }
    return sums;
}

}  // namespace

void expect_told_counts(const std::string& project, const std::string& account,
                        const std::string& report, const std::string& usage) {
    const Counts counted = count_project(project);
    const Counts sums = add_columns(report);
    const int tracks = counted.tracks - number_in(account, R"((\d+) video track\(s\), )");
    EXPECT_EQ(number_in(account, R"(\n  (\d+) tracks, \d+ clips)"), tracks);
    EXPECT_EQ(number_in(usage, R"("tracks":(\d+))"), tracks);
    EXPECT_EQ(sums.tracks, tracks);
    EXPECT_EQ(number_in(report, R"(\n(\d+) tracks \()") +
                  number_in(report, R"(\nplus (\d+) send-return)"),
              tracks);
    const int clips = number_in(account, R"(tracks, (\d+) clips)");
    const int notes = number_in(account, R"(clips, (\d+) MIDI notes)");
    if (!counted.has_frozen) {
        EXPECT_EQ(clips, counted.clips);
        EXPECT_EQ(notes, counted.notes);
    }
    EXPECT_EQ(sums.clips, clips);
    EXPECT_EQ(sums.notes, notes);
    EXPECT_EQ(number_in(usage, R"("clips":(\d+))"), clips);
    EXPECT_EQ(number_in(usage, R"("midi_notes":(\d+))"), notes);
    const int plugins = number_in(report, R"((\d+) instance\(s\) found)");
    EXPECT_EQ(sums.plugins, plugins);
    EXPECT_EQ(number_in(usage, R"("plugin_instances":(\d+))"), plugins);
    EXPECT_EQ(number_in(account, R"((\d+) plug-in instances found)"), plugins);
}

}  // namespace tanrove::golden
