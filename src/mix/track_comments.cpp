// Finds the comment of each track and sends it where the run wants it.
#include "mix/track_comments.hpp"

#include <set>
#include <utility>

namespace tanrove {

namespace {

bool makes_track(StripRowType type) {
    return type != StripRowType::master && type != StripRowType::video;
}

}  // namespace

std::string printable_line(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= ' ' || c == '\t') line += c;
    }
    return line;
}

std::vector<std::string> comment_lines(std::string_view comment) {
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

std::vector<TrackComment> place_comments(std::vector<TrackPlan>& plans, const TrackStrips& strips,
                                         CommentPlace place, CommentTallies& tallies) {
    tallies.place = place;
    std::vector<TrackComment> notes;
    std::set<const TrackDisplay*> placed;
    for (std::size_t i = 0; i < plans.size(); ++i) {
        TrackPlan& plan = plans[i];
        const TrackDisplay* display = strips.of(i).display;
        if (display == nullptr || !placed.insert(display).second) continue;
        std::vector<std::string> lines = comment_lines(display->comment);
        if (lines.empty()) continue;
        tallies.tracks.push_back(plan.name);
        if (place == CommentPlace::items) plan.comment_lines = std::move(lines);
        if (place == CommentPlace::project_notes) notes.push_back({plan.name, display->comment});
    }
    const MixerRecords& mixer = strips.mixer();
    for (std::size_t row = 0; row < mixer.displays.size(); ++row) {
        const std::string& comment = mixer.displays[row].comment;
        if (makes_track(mixer.rows[row].type) || comment_lines(comment).empty()) continue;
        tallies.tracks.push_back(shown_name(mixer.rows[row]));
        ++tallies.without_item;
        if (place != CommentPlace::nowhere) {
            notes.push_back({shown_name(mixer.rows[row]), comment});
        }
    }
    return notes;
}

}  // namespace tanrove
