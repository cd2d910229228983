// One insert at a time: its settings for REAPER's build, what becomes of it with or without them,
// and what stands in its slot. Then, for the whole track, the mark of the last slot that is heard.
#include "chains/plan_chain.hpp"

#include <algorithm>
#include <utility>

#include "chains/plugin_slot.hpp"
#include "chains/track_trims.hpp"
#include "plugins/elck_chunks.hpp"
#include "standins/trim.hpp"

namespace tanrove {

namespace {

/// A CLAP's pins are not written: its key input listens to channels 3 and 4.
bool hears_first_key_instead(const ChainInsert& place, const PluginTableRow& row) {
    constexpr int usual_key_channel = 2;
    return row.fxName.starts_with("CLAP") && !place.insert->bypassed && !place.insert->inactive &&
           place.key_channel.value_or(usual_key_channel) != usual_key_channel;
}

/// The chain of one track in the making.
class ChainMaker {
public:
    ChainMaker(const ChainTrack& track, const ChainSources& sources, const ChainOptions& options,
               ChainTallies& tallies)
        : track_(track), sources_(sources), options_(options), tallies_(tallies) {}

    ChainPlan make() {
        const std::vector<TrackPlugin> plugins = track_plugins(track_);
        for (const TrackPlugin& plugin : plugins) take(plugin);
        if (track_.is_master) {
            tallies_.master_slots +=
                static_cast<int>(std::ranges::count(chain_.slots, false, &FxSlot::is_placeholder));
        } else {
            mark_last_heard();
        }
        add_trim_polarity(chain_, track_, plugins, sources_.image, options_.fate.stand_ins,
                          tallies_);
        set_leg_apart();
        return std::move(chain_);
    }

private:
    void take(const TrackPlugin& plugin);
    StandInTrack stand_in_track(const TrackPlugin& plugin) const;
    TranslatedSettings translate(const PluginInsert& insert, const PluginTableRow& row) const;
    InsertFate fate_of(const PluginInsert& insert, const PluginTableRow* row,
                       bool settings_translate, const StandInProduct* stand_in) const;
    void note_outcome(const TrackPlugin& plugin, const PluginTableRow* row, const InsertFate& fate,
                      int automation_points);
    int add_plugin(const ChainInsert& place, const PluginTableRow& row, const InsertFate& fate,
                   TranslatedSettings settings);
    void add_stand_in(const TrackPlugin& plugin, const StandInProduct& product, InsertFate& fate);
    void count_switches(const PluginInsert& insert, bool is_offline);
    void mark_last_heard();
    void set_leg_apart();
    std::string shown(const InsertFate& fate) const {
        return track_.name + " / " + fate.display_name;
    }

    const ChainTrack& track_;
    const ChainSources& sources_;
    const ChainOptions& options_;
    ChainTallies& tallies_;
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

StandInTrack ChainMaker::stand_in_track(const TrackPlugin& plugin) const {
    return {.width = track_.width,
            .key_channel = plugin.place.key_channel,
            .first_channel = track_.leg.value_or(0),
            .rate_hz = sources_.times.rate_hz};
}

InsertFate ChainMaker::fate_of(const PluginInsert& insert, const PluginTableRow* row,
                               bool settings_translate, const StandInProduct* stand_in) const {
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
                     .trim_is_carried = stand_in != nullptr && !stand_in->can_be_declined,
                     .has_stand_in = stand_in != nullptr && stand_in->can_be_declined},
                    options, sources_.identities.built_in());
    if (is_at_defaults && fate.kind == OutcomeKind::without_settings) {
        fate.reason = "left at its defaults, as asked (--no-kontakt-state)";
    }
    return fate;
}

void ChainMaker::take(const TrackPlugin& plugin) {
    const PluginInsert& insert = *plugin.place.insert;
    const PluginTableRow* row = sources_.identities.row_for(insert_key(insert));
    TranslatedSettings settings;
    if (has_build(row)) settings = translate(insert, *row);
    const StandInProduct* stand_in = sources_.stand_ins.product_of(insert, stand_in_track(plugin));
    InsertFate fate = fate_of(insert, row, !settings.state.empty(), stand_in);
    const bool is_unlinked =
        plugin.channels.size() > 1 ||
        repeats_first_chunk(sources_.image, static_cast<std::size_t>(insert.blockStart),
                            static_cast<std::size_t>(insert.chunkLimit));
    if (is_unlinked && !is_trim(insert)) tallies_.multi_mono.push_back(shown(fate));
    int points = 0;
    if (fate.is_stand_in) {
        add_stand_in(plugin, *stand_in, fate);
    } else if (fate.kind == OutcomeKind::aax_only && fate.takes_slot) {
        chain_.slots.push_back(aax_only_slot(insert, fate.display_name, track_.width));
    } else if (fate.takes_slot) {
        points = add_plugin(plugin.place, *row, fate, std::move(settings));
    }
    tallies_.stand_ins.declined += fate.stand_in_declined ? 1 : 0;
    if (is_trim(insert) && fate.takes_slot && !has_build(row)) {
        count_trim_gain(plugin, track_, sources_.image, tallies_.trims);
    }
    // REAPER's master takes no sends, so that nothing can play to a key input there.
    const bool listens = insert.keyInput >= 0 && !insert.bypassed && !insert.inactive;
    if (track_.is_master && options_.carries_keys && listens && fate.kind == OutcomeKind::carried) {
        ++tallies_.master_keys;
    }
    if (fate.kind != OutcomeKind::carried) tallies_.lanes.on_defaults += lanes_with_points(insert);
    note_outcome(plugin, row, fate, points);
}

void ChainMaker::add_stand_in(const TrackPlugin& plugin, const StandInProduct& product,
                              InsertFate& fate) {
    const PluginInsert& insert = *plugin.place.insert;
    StandIn made = product.make(sources_.stand_ins, insert, stand_in_track(plugin));
    if (made.is_keyed) fate.reason = keyed_stand_in_reason;
    if (product.can_be_declined) ++tallies_.stand_ins.written;
    for (const std::string& note : made.notes) {
        ++tallies_.stand_ins.notes[std::string(product.name) + ": " + note];
    }
    tallies_.stand_ins.eq_fits.add(made.eq_fits);
    tallies_.stand_ins.one_pole_filters += made.one_pole_filters;
    tallies_.lanes.on_stand_ins += lanes_with_points(insert);
    const bool is_off = insert.bypassed || insert.inactive;
    const bool is_offline =
        made.can_go_offline && (insert.inactive || (insert.bypassed && options_.offline_bypassed));
    count_switches(insert, is_offline);
    for (FxSlot& slot : made.slots) {
        slot.bypassed = slot.bypassed || is_off;
        slot.offline = slot.bypassed && is_offline;
        chain_.slots.push_back(std::move(slot));
    }
}

/// Returns the points of its automation.
int ChainMaker::add_plugin(const ChainInsert& place, const PluginTableRow& row,
                           const InsertFate& fate, TranslatedSettings settings) {
    const PluginInsert& insert = *place.insert;
    const bool has_state = !settings.state.empty();
    if (has_state && sources_.hear_settings) sources_.hear_settings(insert, row, settings.state);
    if (settings.midi_switched_off) tallies_.midi_switched_off.push_back(shown(fate));
    if (has_state && hears_first_key_instead(place, row))
        tallies_.misled_claps.push_back(shown(fate));
    FxSlot slot = plugin_slot(insert, row, std::move(settings.state),
                              {.track_width = track_.width, .key_channel = place.key_channel});
    slot.bypassed = !has_state || insert.inactive || insert.bypassed;
    slot.offline = !has_state || insert.inactive || (insert.bypassed && options_.offline_bypassed);
    int points = 0;
    if (has_state) {
        count_switches(insert, slot.offline);
        slot.envelopes = parameter_envelopes(insert, row, fate.display_name, sources_.names,
                                             sources_.times, tallies_);
        points = written_points(slot.envelopes);
        tallies_.lanes.points += points;
    }
    chain_.slots.push_back(std::move(slot));
    return points;
}

/// Of a plug-in that is there with its settings.
void ChainMaker::count_switches(const PluginInsert& insert, bool is_offline) {
    const bool is_inactive = insert.inactive && is_offline;
    const bool is_off = insert.bypassed || insert.inactive;
    tallies_.inactive_offline += is_inactive ? 1 : 0;
    tallies_.carried_bypassed += is_off && !is_inactive ? 1 : 0;
    tallies_.written_offline += is_offline && !is_inactive ? 1 : 0;
}

void ChainMaker::note_outcome(const TrackPlugin& plugin, const PluginTableRow* row,
                              const InsertFate& fate, int automation_points) {
    const PluginInsert& insert = *plugin.place.insert;
    PluginOutcome outcome;
    outcome.track = track_.name;
    outcome.key = insert_key(insert);
    outcome.slot = plugin.slot;
    outcome.display_name = fate.display_name;
    outcome.kind = fate.kind;
    outcome.reason = fate.reason;
    outcome.not_installed = has_build(row) && !sources_.identities.is_installed(row->ident);
    outcome.without_settings = fate.kind == OutcomeKind::without_settings;
    outcome.automation_points = automation_points;
    outcome.format = fate.format;
    outcome.maker = fate.maker;
    outcome.named_by_user = row != nullptr && row->named_by_user;
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

/// The legs of a strip have the same plug-ins, each with identifiers of its own.
void ChainMaker::set_leg_apart() {
    constexpr int leg_bits_at = 24;
    const auto mark = static_cast<std::uint32_t>(track_.leg.value_or(0) << leg_bits_at);
    for (FxSlot& slot : chain_.slots) {
        slot.guid_seed ^= mark;
        for (FxEnvelope& envelope : slot.envelopes) envelope.guid_seed ^= mark;
    }
}

}  // namespace

ChainPlan plan_chain(const ChainTrack& track, const ChainSources& sources,
                     const ChainOptions& options, ChainTallies& tallies) {
    return ChainMaker(track, sources, options, tallies).make();
}

}  // namespace tanrove
