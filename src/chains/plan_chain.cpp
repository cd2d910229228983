// One insert at a time: its settings for REAPER's build, what becomes of it with or without them,
// and what stands in its slot. Then, for the whole track, the mark of the last slot that is heard.
#include "chains/plan_chain.hpp"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "chains/plugin_slot.hpp"
#include "plugins/elck_chunks.hpp"

namespace tanrove {

namespace {

constexpr int stereo_width = 2;

bool has_build(const PluginTableRow* row) {
    return row != nullptr && !row->ident.empty();
}

/// True for the settings of an unlinked multi-mono plug-in that hold those of all channels.
bool holds_further_channels(const PluginInsert& insert, ByteView image) {
    const auto chain = elck_chain(image, static_cast<std::size_t>(insert.blockStart),
                                  static_cast<std::size_t>(insert.chunkLimit));
    if (chain.empty()) return false;
    return std::any_of(chain.begin() + 1, chain.end(),
                       [](const ElckChunk& chunk) { return chunk.is_map; });
}

/// The channels of unlinked multi-mono plug-ins on one strip: each stands in the plug-in's slot
/// with settings of its own.
class UnlinkedChannels {
public:
    /// How often a plug-in of one channel stands in the slot of this one, with itself, so far.
    int meet(const PluginInsert& insert, int track_width) {
        if (track_width < stereo_width || insert.channels != 1) return 1;
        return ++met_[{insert_key(insert), insert.slotWord, insert.slotEnd}];
    }

private:
    std::map<std::tuple<std::string, std::uint32_t, std::uint64_t>, int> met_;
};

/// The chain of one track in the making.
class ChainMaker {
public:
    ChainMaker(const ChainTrack& track, const ChainSources& sources, const ChainOptions& options,
               ChainTallies& tallies)
        : track_(track), sources_(sources), options_(options), tallies_(tallies) {}

    ChainPlan make() {
        for (const ChainInsert& place : track_.inserts) take(place);
        if (track_.is_master) {
            tallies_.master_slots += static_cast<int>(chain_.slots.size());
        } else {
            mark_last_heard();
        }
        return std::move(chain_);
    }

private:
    void take(const ChainInsert& place);
    TranslatedSettings translate(const PluginInsert& insert, const PluginTableRow& row) const;
    InsertFate fate_of(const PluginInsert& insert, const PluginTableRow* row,
                       bool settings_translate) const;
    void note_outcome(const ChainInsert& place, const PluginTableRow* row, const InsertFate& fate,
                      int automation_points);
    int add_plugin(const ChainInsert& place, const PluginTableRow& row, const InsertFate& fate,
                   TranslatedSettings settings);
    void mark_last_heard();
    std::string shown(const InsertFate& fate) const {
        return track_.name + " / " + fate.display_name;
    }

    const ChainTrack& track_;
    const ChainSources& sources_;
    const ChainOptions& options_;
    ChainTallies& tallies_;
    UnlinkedChannels channels_;
    ChainPlan chain_;
};

TranslatedSettings ChainMaker::translate(const PluginInsert& insert,
                                         const PluginTableRow& row) const {
    const auto& moved = sources_.identities.findings().moved_to_vst2;
    return translate_settings(insert, row, sources_.image,
                              {.track_has_midi = track_.has_midi,
                               .keep_plugin_midi = options_.keep_plugin_midi,
                               .kontakt_state = options_.kontakt_state,
                               .is_preferred_vst2 = moved.contains(insert_key(insert)),
                               .stepped = sources_.identities.built_in().stepped});
}

InsertFate ChainMaker::fate_of(const PluginInsert& insert, const PluginTableRow* row,
                               bool settings_translate) const {
    // Kontakt at its defaults is what was asked for, and no gap in the chain.
    const bool is_at_defaults =
        insert.containerKind == ContainerKind::hsin && !options_.kontakt_state;
    FateOptions options = options_.fate;
    if (is_at_defaults) options.placeholders = true;
    InsertFate fate =
        decide_fate({.insert = insert,
                     .row = row,
                     .installed = !has_build(row) || sources_.identities.is_installed(row->ident),
                     .settings_translate = settings_translate,
                     .keyed = insert.keyInput >= 0},
                    options, sources_.identities.built_in());
    if (is_at_defaults && fate.kind == OutcomeKind::without_settings) {
        fate.reason = "left at its defaults, as asked (--no-kontakt-state)";
    }
    return fate;
}

void ChainMaker::take(const ChainInsert& place) {
    constexpr int second = 2;
    const PluginInsert& insert = *place.insert;
    const int channels_met = channels_.meet(insert, track_.width);
    const PluginTableRow* row = sources_.identities.row_for(insert_key(insert));
    TranslatedSettings settings;
    if (has_build(row)) settings = translate(insert, *row);
    const InsertFate fate = fate_of(insert, row, !settings.state.empty());
    if (channels_met == second || holds_further_channels(insert, sources_.image)) {
        tallies_.multi_mono.push_back(shown(fate));
    }
    if (channels_met >= second) return;
    const bool has_settings = fate.kind == OutcomeKind::carried;
    if (!has_settings) tallies_.lanes.on_defaults += lanes_with_points(insert);
    int points = 0;
    if (fate.kind == OutcomeKind::aax_only && fate.takes_slot) {
        chain_.slots.push_back(aax_only_slot(insert, fate.display_name, track_.width));
    } else if (fate.takes_slot) {
        points = add_plugin(place, *row, fate, std::move(settings));
    }
    note_outcome(place, row, fate, points);
}

/// Returns the points of its automation.
int ChainMaker::add_plugin(const ChainInsert& place, const PluginTableRow& row,
                           const InsertFate& fate, TranslatedSettings settings) {
    const PluginInsert& insert = *place.insert;
    const bool has_state = !settings.state.empty();
    if (has_state && sources_.hear_settings) sources_.hear_settings(insert, row, settings.state);
    if (settings.midi_switched_off) tallies_.midi_switched_off.push_back(shown(fate));
    FxSlot slot = plugin_slot(insert, row, std::move(settings.state),
                              {.track_width = track_.width, .key_channel = place.key_channel});
    const bool is_bypassed_only = insert.bypassed && !insert.inactive;
    slot.bypassed = !has_state || insert.inactive || insert.bypassed;
    slot.offline = !has_state || insert.inactive || (insert.bypassed && options_.offline_bypassed);
    int points = 0;
    if (has_state) {
        tallies_.inactive_offline += insert.inactive ? 1 : 0;
        tallies_.carried_bypassed += is_bypassed_only ? 1 : 0;
        tallies_.written_offline += is_bypassed_only && slot.offline ? 1 : 0;
        slot.envelopes = parameter_envelopes(insert, row, fate.display_name, sources_.names,
                                             sources_.times, tallies_);
        points = written_points(slot.envelopes);
        tallies_.lanes.points += points;
    }
    chain_.slots.push_back(std::move(slot));
    return points;
}

void ChainMaker::note_outcome(const ChainInsert& place, const PluginTableRow* row,
                              const InsertFate& fate, int automation_points) {
    const PluginInsert& insert = *place.insert;
    PluginOutcome outcome;
    outcome.track = track_.name;
    outcome.key = insert_key(insert);
    outcome.slot = place.place;
    outcome.display_name = fate.display_name;
    outcome.kind = fate.kind;
    outcome.reason = fate.reason;
    outcome.not_installed = has_build(row) && !sources_.identities.is_installed(row->ident);
    outcome.without_settings = fate.kind == OutcomeKind::without_settings;
    outcome.automation_points = automation_points;
    outcome.format = fate.format;
    outcome.maker = fate.maker;
    outcome.bypassed = insert.bypassed;
    outcome.inactive = insert.inactive;
    outcome.passes_no_sound = passes_no_sound(outcome.key, sources_.identities.built_in());
    tallies_.outcomes.push_back(std::move(outcome));
}

void ChainMaker::mark_last_heard() {
    const auto heard = std::ranges::find(chain_.slots.rbegin(), chain_.slots.rend(), false,
                                         &FxSlot::is_placeholder);
    if (heard != chain_.slots.rend()) heard->marks_last_pins = true;
}

}  // namespace

ChainPlan plan_chain(const ChainTrack& track, const ChainSources& sources,
                     const ChainOptions& options, ChainTallies& tallies) {
    return ChainMaker(track, sources, options, tallies).make();
}

}  // namespace tanrove
