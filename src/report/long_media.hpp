// Clips and files so long that REAPER seems to hang when it first opens them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "mix/track_plan.hpp"

namespace tanrove {

/// Above this a clip, or the file that it plays, is worth a note.
constexpr double long_media_seconds = 600;

/// The length of each file by its bare name, as far as it is known.
using FileSeconds = std::map<std::string, double, std::less<>>;

struct LongMedia {
    int clips = 0;  ///< written clips that are longer than the limit
    double longest_clip_seconds = 0;
    double longest_source_seconds = 0;  ///< of the files that written clips play
};

LongMedia find_long_media(const std::vector<TrackPlan>& plans, const FileSeconds& source_seconds);

}  // namespace tanrove
