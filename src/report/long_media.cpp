// One walk over all that is written, lanes included, for its longest clip and file.
#include "report/long_media.hpp"

#include <algorithm>
#include <string_view>

namespace tanrove {

namespace {

void measure(const std::vector<ClipItem>& clips, const FileSeconds& source_seconds,
             LongMedia& found) {
    std::string_view latest_file;  // clips of one file come in runs
    for (const ClipItem& clip : clips) {
        if (clip.is_placeholder) continue;
        if (clip.length > long_media_seconds) ++found.clips;
        found.longest_clip_seconds = std::max(found.longest_clip_seconds, clip.length);
        if (clip.file == latest_file) continue;
        latest_file = clip.file;
        const auto source = source_seconds.find(clip.file);
        if (source == source_seconds.end()) continue;
        found.longest_source_seconds = std::max(found.longest_source_seconds, source->second);
    }
}

}  // namespace

LongMedia find_long_media(const std::vector<TrackPlan>& plans, const FileSeconds& source_seconds) {
    LongMedia found;
    for (const TrackPlan& plan : plans) {
        measure(plan.clips, source_seconds, found);
        for (const LanePlan& lane : plan.lanes) measure(lane.clips, source_seconds, found);
    }
    return found;
}

}  // namespace tanrove
