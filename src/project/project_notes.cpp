// Comments as the project's notes: each behind the name of its track or marker.
#include "project/project_notes.hpp"

#include <string_view>
#include <utility>

#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

/// False for a comment without text.
bool add_comment(std::vector<std::string>& notes, std::string lead, std::string_view comment) {
    const auto lines = comment_lines(comment);
    for (const std::string& line : lines) {
        notes.push_back(lead + line);
        lead = "    ";
    }
    return !lines.empty();
}

}  // namespace

std::vector<std::string> notes_lines(std::span<const TrackComment> comments) {
    std::vector<std::string> notes;
    for (const TrackComment& comment : comments) {
        add_comment(notes, printable_line(comment.track_name) + ": ", comment.text);
    }
    return notes;
}

std::vector<std::string> marker_notes_lines(std::span<const MemoryLocation> locations,
                                            MarkerTallies& tallies) {
    std::vector<std::string> notes;
    for (const MemoryLocation& location : locations) {
        const std::string lead =
            formatted("Marker %u {", location.number) + printable_line(location.name) + "}: ";
        tallies.comments += add_comment(notes, lead, location.comment) ? 1 : 0;
    }
    return notes;
}

}  // namespace tanrove
