// The comments that the user gave to tracks in Pro Tools: whose they are, and where they go.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "mix/track_plan.hpp"
#include "mix/track_strips.hpp"

namespace tanrove {

enum class CommentPlace : std::uint8_t { items, project_notes, nowhere };

struct TrackComment {
    std::string track_name;
    std::string text;
};

struct CommentTallies {
    std::vector<std::string> tracks;  ///< that have a comment
    CommentPlace place = CommentPlace::project_notes;
    int without_item = 0;  ///< of master faders and video tracks: in the notes, if anywhere
};

/// The text without what a line of notes cannot hold: control characters other than tabs.
std::string printable_line(std::string_view text);

/// A comment in lines that cannot end the block that they stand in; none for a comment without
/// text.
std::vector<std::string> comment_lines(std::string_view comment);

/// The comments for the project's notes, in track order; or the lines of each in its plan; or
/// neither. The legs of a track share its comment, and the first takes it. Those of master faders
/// and video tracks, which have no plan, go to the notes in either case.
std::vector<TrackComment> place_comments(std::vector<TrackPlan>& plans, const TrackStrips& strips,
                                         CommentPlace place, CommentTallies& tallies);

}  // namespace tanrove
