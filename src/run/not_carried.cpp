// Counts the gaps of this build in a session and in the options of a run.
#include "run/not_carried.hpp"

#include <set>
#include <string>

#include "run/console.hpp"
#include "session/clip_effects.hpp"

namespace tanrove {

namespace {

template <class Map>
void add_names(std::set<std::string>& names, const Map& by_name) {
    for (const auto& entry : by_name) names.insert(entry.first);
}

/// Names of the clips that sound other than their file does.
std::set<std::string> shaped_clips(const BlockIndex& index) {
    std::set<std::string> names;
    add_names(names, readClipEffects(index).record_of_clip);
    return names;
}

}  // namespace

NotCarriedTallies count_not_carried(const BlockIndex& index, const ClipRecords& clips,
                                    const StripRecords& strips) {
    NotCarriedTallies tallies;
    tallies.unnumbered_clips = static_cast<int>(clips.lists.unnumbered_clips);
    tallies.shaped_clips = static_cast<int>(shaped_clips(index).size());
    tallies.plugins = static_cast<int>(strips.inserts.size());
    return tallies;
}

void tell_files_not_made(const RunOptions& options) {
    const struct {
        bool wanted;
        const char* sentence;
    } files[] = {
        {options.write_report,
         "\n  --report is not part of this build yet; no report was written.\n"},
        {!options.usage_json_path.empty() && !options.check_only,
         "\n  --usage-json is not part of this build yet; no summary was written.\n"},
        {!options.want_params_path.empty(),
         "\n  --want-params is not part of this build yet; no list was written.\n"},
        {options.dump_cache,
         "\n  --dump-cache is not part of this build yet; nothing was dumped.\n"},
        {!options.corpus_dir.empty(),
         "\n  --dump-corpus is not part of this build yet; no samples were written.\n"},
    };
    for (const auto& file : files) {
        if (file.wanted) console_print("%s", file.sentence);
    }
}

}  // namespace tanrove
