// An insert belongs to the strip whose row holds it; a strip's inserts go to its track, and to each
// leg of one that could not be merged, where Pro Tools runs them on both.
#include "run/plan_chains.hpp"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "chains/plan_chain.hpp"
#include "mix/strip_widths.hpp"
#include "project/surround_panner.hpp"
#include "run/settings_corpus.hpp"

namespace tanrove {

namespace {

using InsertsByRow = std::vector<std::vector<const PluginInsert*>>;

/// The inserts of each strip row in their order. Those of no known strip are counted.
InsertsByRow inserts_by_row(const StripRecords& strips, ChainTallies& tallies) {
    InsertsByRow inserts(strips.strips.rows.size());
    for (std::size_t i = 0; i < strips.inserts.size(); ++i) {
        if (const auto row = strips.insert_rows[i]) {
            inserts[*row].push_back(&strips.inserts[i]);
        } else {
            ++tallies.without_strip;
        }
    }
    return inserts;
}

ChainOptions chain_options(const RunOptions& options) {
    ChainOptions chain;
    chain.fate.leave_out_unheard =
        options.skip_bypassed_fx || options.bypass_mode == bypass_left_out;
    chain.fate.leave_out_missing = options.skip_missing_fx;
    chain.fate.placeholders = options.placeholders;
    chain.fate.stand_ins = !options.no_stand_ins;
    chain.fate.aax_slots = options.aax_slots;
    chain.offline_bypassed = options.bypass_mode == bypass_offline;
    chain.keep_plugin_midi = options.keep_plugin_midi;
    chain.kontakt_state = options.kontakt_state;
    chain.carries_keys = !options.no_sidechain;
    return chain;
}

constexpr int unknown_width = 2;

int chain_width(const TrackPlan& plan) {
    if (plan.folded_width > 0) return plan.folded_width;
    return plan.width_unknown ? unknown_width : plan.channels;
}

/// The inserts, and those with a key with the channel that it plays on.
std::vector<ChainInsert> placed(const std::vector<const PluginInsert*>& inserts,
                                const TrackPlan* plan) {
    std::vector<ChainInsert> chain;
    std::size_t key = 0;
    for (const PluginInsert* insert : inserts) {
        ChainInsert place{.insert = insert};
        if (insert->keyInput >= 0 && plan != nullptr) {
            if (key < plan->key_channels.size()) place.key_channel = plan->key_channels[key];
            ++key;
        }
        chain.push_back(place);
    }
    return chain;
}

/// `leg`: of a strip that could not be written as one track, the channel that this one plays.
ChainTrack chain_track(const TrackPlan& plan, const std::vector<const PluginInsert*>& inserts,
                       std::optional<std::size_t> leg) {
    return {.name = plan.session_name.empty() ? plan.name : plan.session_name,
            .inserts = placed(inserts, &plan),
            .width = leg ? 1 : chain_width(plan),
            .leg = leg,
            .has_midi = !plan.midi_items.empty(),
            .is_frozen = plan.frozen.has_value()};
}

/// The chains of the run, one list of tracks after the other.
class ChainPlanning {
public:
    ChainPlanning(const RunOptions& options, const ChainRecords& records, double rate_hz,
                  ChainTallies& tallies)
        : records_(records),
          stand_ins_(records.image),
          options_(chain_options(options)),
          corpus_(options.corpus_dir, options.session_path),
          inserts_(inserts_by_row(records.strips, tallies)),
          clock_(records.time.tempo_map, records.time.tempo_bpm),
          rate_hz_(rate_hz),
          tallies_(tallies) {}

    /// `rows` are the tracks' strip rows. Sets the tracks' polarity as well. Each leg of a strip
    /// has the strip's plug-ins: Pro Tools runs them on all of its channels.
    std::vector<ChainPlan> chains_of(std::vector<TrackPlan>& plans,
                                     std::span<const std::optional<std::size_t>> rows) {
        std::map<std::size_t, std::size_t> plan_count;
        for (const auto& row : rows) {
            if (row) ++plan_count[*row];
        }
        std::map<std::size_t, std::size_t> next_leg;
        std::vector<ChainPlan> chains(plans.size());
        for (std::size_t i = 0; i < plans.size(); ++i) {
            tallies_.outcomes_a_track.push_back(0);
            const std::size_t outcomes_before = tallies_.outcomes.size();
            if (!rows[i]) continue;
            const std::size_t number = next_leg[*rows[i]]++;
            std::optional<std::size_t> leg;
            if (plan_count[*rows[i]] > 1) leg = number;
            if (plans[i].leg_pan != 0) leg = plans[i].leg_pan < 0 ? 0 : 1;
            const ChainTrack track = chain_track(plans[i], inserts_[*rows[i]], leg);
            chains[i] = number == 0 ? chain(track) : further_leg_chain(track);
            plans[i].mixer.polarity_inverted = chains[i].inverts_track;
            tallies_.outcomes_a_track.back() =
                static_cast<int>(tallies_.outcomes.size() - outcomes_before);
        }
        return chains;
    }

    ChainPlan master_chain(const MasterStrips& masters, const MasterPlan& master) {
        if (masters.count == 0) return {};
        // Its own width: REAPER's master is as wide as the widest track.
        const int width = StripWidths({}, records_.strips.table).channels_of(master.name);
        return chain({.name = master.name,
                      .inserts = placed(inserts_[masters.row], nullptr),
                      .width = width > 0 ? width : unknown_width,
                      .is_master = true});
    }

private:
    ChainSources sources() {
        return {.image = records_.image,
                .identities = records_.identities,
                .names = records_.parameter_names,
                .times = {.clock = clock_, .rate_hz = rate_hz_},
                .stand_ins = stand_ins_};
    }

    ChainPlan chain(const ChainTrack& track) {
        ChainSources heard = sources();
        heard.hear_settings = [this](const auto& insert, const auto& row, const auto& state) {
            corpus_.add(insert, row, records_.image, state);
        };
        return plan_chain(track, heard, options_, tallies_);
    }

    /// It has the plug-ins of the first leg once more: they count as one.
    ChainPlan further_leg_chain(const ChainTrack& track) {
        ChainTallies uncounted;
        ChainPlan leg = plan_chain(track, sources(), options_, uncounted);
        tallies_.trims.inverted_tracks += uncounted.trims.inverted_tracks;
        return leg;
    }

    const ChainRecords& records_;
    StandInMaker stand_ins_;
    ChainOptions options_;
    SettingsCorpus corpus_;
    InsertsByRow inserts_;
    TempoClock clock_;
    double rate_hz_;
    ChainTallies& tallies_;
};

/// Pro Tools pans behind all plug-ins.
void add_panners(const std::vector<TrackPlan>& tracks, std::vector<ChainPlan>& chains) {
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        if (!tracks[i].has_surround_panner()) continue;
        chains[i].slots.push_back(panner_slot(tracks[i], static_cast<std::uint32_t>(i)));
    }
}

}  // namespace

void plan_chains(ProjectPlan& project, const RunOptions& options, const ChainRecords& records,
                 ChainTallies& tallies) {
    ChainPlanning planning(options, records, static_cast<double>(project.head.sample_rate),
                           tallies);
    tallies.stand_ins.none_wanted = options.no_stand_ins;
    // The master's stand in the head, in front of all others.
    project.head.master_chain = planning.master_chain(records.strips.masters, project.mix.master);
    tallies.outcomes_on_master = static_cast<int>(tallies.outcomes.size());
    project.chains = planning.chains_of(project.mix.tracks, project.mix.strip_rows);
    add_panners(project.mix.tracks, project.chains);
    // Strips that have a fader and no row have no plug-ins that are known.
    const std::vector<std::optional<std::size_t>> no_rows(project.mix.strip_tracks.size());
    project.strip_chains = planning.chains_of(project.mix.strip_tracks, no_rows);
}

}  // namespace tanrove
