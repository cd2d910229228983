// Counts the gaps of this build in a session and in the options of a run.
#include "run/not_carried.hpp"

#include "base/paths.hpp"
#include "session/long_texts.hpp"

namespace tanrove {

NotCarriedTallies count_not_carried(const BlockIndex& index, const ClipRecords& clips) {
    NotCarriedTallies tallies;
    tallies.unnumbered_clips = static_cast<int>(clips.lists.unnumbered_clips);
    tallies.long_texts = read_long_texts(index);
    return tallies;
}

bool has_melodyne_edits(const std::string& session_folder) {
    return is_folder(session_folder + "/ARA Data");
}

}  // namespace tanrove
