// Track comments as the project's notes: each behind the name of its track.
#include "project/project_notes.hpp"

namespace tanrove {

std::vector<std::string> notes_lines(std::span<const TrackComment> comments) {
    std::vector<std::string> notes;
    for (const TrackComment& comment : comments) {
        std::string lead = printable_line(comment.track_name) + ": ";
        for (const std::string& line : comment_lines(comment.text)) {
            notes.push_back(lead + line);
            lead = "    ";
        }
    }
    return notes;
}

}  // namespace tanrove
