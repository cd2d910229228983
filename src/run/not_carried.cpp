// Counts the gaps of this build in a session and in the options of a run.
#include "run/not_carried.hpp"

#include <algorithm>
#include <cstddef>

#include "base/paths.hpp"
#include "run/console.hpp"
#include "session/long_texts.hpp"

namespace tanrove {

NotCarriedTallies count_not_carried(const BlockIndex& index, const ClipRecords& clips,
                                    const MixPlan& mix) {
    NotCarriedTallies tallies;
    tallies.unnumbered_clips = static_cast<int>(clips.lists.unnumbered_clips);
    tallies.surround_panners =
        static_cast<int>(std::ranges::count_if(mix.tracks, &TrackPlan::has_surround_panner));
    tallies.long_texts = read_long_texts(index);
    return tallies;
}

bool has_melodyne_edits(const std::string& session_folder) {
    return is_folder(session_folder + "/ARA Data");
}

}  // namespace tanrove
