// Comments cut into lines that cannot end the block that they stand in.
#include "project/project_notes.hpp"

#include <string_view>

namespace tanrove {

namespace {

/// The text without what a line of notes cannot hold: control characters other than tabs.
std::string printable_line(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= ' ' || c == '\t') line += c;
    }
    return line;
}

std::vector<std::string> lines_of(std::string_view comment) {
    std::vector<std::string> lines;
    while (!comment.empty()) {
        const std::size_t end = comment.find('\n');
        std::string line = printable_line(comment.substr(0, end));
        lines.push_back(line == ">" ? " >" : std::move(line));
        comment.remove_prefix(end == comment.npos ? comment.size() : end + 1);
    }
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

}  // namespace

std::vector<std::string> notes_lines(std::span<const TrackComment> comments) {
    std::vector<std::string> notes;
    for (const TrackComment& comment : comments) {
        std::string lead = printable_line(comment.track_name) + ": ";
        for (const std::string& line : lines_of(comment.text)) {
            notes.push_back(lead + line);
            lead = "    ";
        }
    }
    return notes;
}

}  // namespace tanrove
