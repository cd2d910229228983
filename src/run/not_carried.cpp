// Counts the gaps of this build in a session and in the options of a run.
#include "run/not_carried.hpp"

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include "run/console.hpp"
#include "session/clip_effects.hpp"
#include "session/long_texts.hpp"

namespace tanrove {

namespace {

/// Places on the tracks whose clips sound other than their file does.
int shaped_clips(const ClipEffects& effects, const std::vector<TrackPlan>& tracks) {
    const auto count_in = [&](const std::vector<ClipItem>& clips) {
        return std::ranges::count_if(clips, [&](const ClipItem& clip) {
            const ClipEffectsRecord* record = effects.record(clip.name);
            return record != nullptr && is_switched_on(*record);
        });
    };
    std::ptrdiff_t count = 0;
    for (const TrackPlan& track : tracks) {
        if (track.frozen) continue;
        count += count_in(track.clips);
        for (const LanePlan& lane : track.lanes) count += count_in(lane.clips);
    }
    return static_cast<int>(count);
}

}  // namespace

NotCarriedTallies count_not_carried(const BlockIndex& index, const ClipRecords& clips,
                                    const MixPlan& mix) {
    NotCarriedTallies tallies;
    tallies.unnumbered_clips = static_cast<int>(clips.lists.unnumbered_clips);
    tallies.shaped_clips = shaped_clips(readClipEffects(index), mix.tracks);
    tallies.surround_panners =
        static_cast<int>(std::ranges::count_if(mix.tracks, &TrackPlan::has_surround_panner));
    tallies.long_texts = read_long_texts(index);
    return tallies;
}

bool has_melodyne_edits(const std::string& session_folder) {
    std::error_code error;
    return std::filesystem::is_directory(session_folder + "/ARA Data", error);
}

}  // namespace tanrove
