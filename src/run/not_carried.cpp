// Counts the gaps of this build in a session and in the options of a run.
#include "run/not_carried.hpp"

#include <algorithm>
#include <set>
#include <string>

#include "mix/strip_plans.hpp"
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

/// The strip rows that are in the project, by where they start: those of its tracks, and the first
/// master fader's.
std::set<std::uint64_t> written_rows(const StripRecords& strips,
                                     const std::vector<TrackPlan>& tracks) {
    const std::vector<StripRow>& rows = strips.strips.rows;
    const StripPlans plans(tracks, rows);
    std::set<std::uint64_t> written;
    if (strips.masters.count > 0) written.insert(rows[strips.masters.row].start);
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        const auto row = tracks[i].strip_row ? tracks[i].strip_row : plans.strip_of(i);
        if (row) written.insert(rows[*row].start);
    }
    return written;
}

/// An insert of no known strip counts: nobody knows that its track is left out.
int plugins_of(const StripRecords& strips, const std::vector<TrackPlan>& tracks) {
    const auto written = written_rows(strips, tracks);
    std::set<std::uint64_t> rows;
    for (const StripRow& row : strips.strips.rows) rows.insert(row.start);
    return static_cast<int>(std::ranges::count_if(strips.inserts, [&](const PluginInsert& insert) {
        const bool has_row = insert.hostEnd != 0 && rows.contains(insert.hostStart);
        return !has_row || written.contains(insert.hostStart);
    }));
}

}  // namespace

NotCarriedTallies count_not_carried(const BlockIndex& index, const ClipRecords& clips,
                                    const StripRecords& strips,
                                    const std::vector<TrackPlan>& tracks) {
    NotCarriedTallies tallies;
    tallies.unnumbered_clips = static_cast<int>(clips.lists.unnumbered_clips);
    tallies.shaped_clips = static_cast<int>(shaped_clips(index).size());
    tallies.surround_panners =
        static_cast<int>(std::ranges::count_if(tracks, &TrackPlan::has_surround_panner));
    tallies.plugins = plugins_of(strips, tracks);
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
