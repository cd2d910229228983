// Counts the gaps of this build in a session and in the options of a run.
#include "run/not_carried.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>

#include "mix/strip_plans.hpp"
#include "run/console.hpp"
#include "session/clip_effects.hpp"

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

/// Which strip rows are in the project: those of its tracks, and the first master fader's.
std::vector<bool> written_rows(const StripRecords& strips, const MixPlan& mix) {
    const std::vector<StripRow>& rows = strips.strips.rows;
    std::vector<bool> written(rows.size(), false);
    if (strips.masters.count > 0) written[strips.masters.row] = true;
    for (const auto* tracks : {&mix.tracks, &mix.strip_tracks}) {
        const StripPlans plans(*tracks, rows);
        for (std::size_t i = 0; i < tracks->size(); ++i) {
            const TrackPlan& track = (*tracks)[i];
            const auto row = track.strip_row ? track.strip_row : plans.strip_of(i);
            if (row) written[*row] = true;
        }
    }
    return written;
}

/// Counts the plug-ins of the project's tracks, and those that it leaves out without a choice of
/// the run. An insert of no known strip is one: nobody knows that its track is left out.
void count_plugins(const StripRecords& strips, const MixPlan& mix, NotCarriedTallies& tallies) {
    const std::vector<StripRow>& rows = strips.strips.rows;
    const std::vector<bool> written = written_rows(strips, mix);
    std::map<std::uint64_t, std::size_t> row_at;
    for (std::size_t i = 0; i < rows.size(); ++i) row_at.emplace(rows[i].start, i);
    for (const PluginInsert& insert : strips.inserts) {
        const auto behind = row_at.upper_bound(insert.hostStart);
        const bool has_row =
            behind != row_at.begin() && holds(rows[std::prev(behind)->second], insert);
        if (has_row && !written[std::prev(behind)->second]) continue;
        ++tallies.plugins;
        if (has_row) ++tallies.plugins_on_tracks;
    }
}

}  // namespace

NotCarriedTallies count_not_carried(const BlockIndex& index, const ClipRecords& clips,
                                    const StripRecords& strips, const MixPlan& mix) {
    NotCarriedTallies tallies;
    tallies.unnumbered_clips = static_cast<int>(clips.lists.unnumbered_clips);
    tallies.shaped_clips = shaped_clips(readClipEffects(index), mix.tracks);
    tallies.surround_panners =
        static_cast<int>(std::ranges::count_if(mix.tracks, &TrackPlan::has_surround_panner));
    count_plugins(strips, mix, tallies);
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
        {!options.corpus_dir.empty(),
         "\n  --dump-corpus is not part of this build yet; no samples were written.\n"},
    };
    for (const auto& file : files) {
        if (file.wanted) console_print("%s", file.sentence);
    }
}

}  // namespace tanrove
