// The parameter of a control: the plug-in's own number where it gives one, its name where a table
// has it, else a known distance between Pro Tools' count and REAPER's.
#include "chains/parameter_envelopes.hpp"

#include <algorithm>
#include <map>
#include <optional>

#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t lane_seed_factor = 0x9e3779b1;
constexpr std::size_t max_id_digits = 6;

struct KnownOffset {
    std::string_view code_begins;
    std::uint32_t offset;
};

// How far Pro Tools' count of the controls runs ahead of REAPER's, measured plug-in by plug-in.
constexpr KnownOffset known_offsets[] = {
    {"FabF", 2}, {"oDinvee3", 2}, {"VstPXfTT", 1}, {"sftbTTCC", 1}, {"JptrATLv", 1},
    {"iZtp", 1}, {"ikm_Atx3", 2}, {"NiInNi$D", 2}, {"UHfXDiVa", 2},
};
constexpr std::uint32_t usual_offset = 1;

std::optional<std::uint32_t> known_offset(std::string_view code) {
    for (const KnownOffset& known : known_offsets) {
        if (code.starts_with(known.code_begins)) return known.offset;
    }
    return std::nullopt;
}

/// The plug-in's id of the control as a number, if it is one.
std::optional<std::uint32_t> number_of(std::string_view id) {
    if (id.empty() || id.size() > max_id_digits) return std::nullopt;
    if (id.front() == '0' && id.size() > 1) return std::nullopt;
    std::uint32_t number = 0;
    for (const char c : id) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return number;
}

/// The numbers that a control with this index can have: one or two below it.
std::vector<std::uint32_t> near_numbers(std::uint32_t index) {
    std::vector<std::uint32_t> numbers;
    for (std::uint32_t below = 1; below <= 2; ++below) {
        if (index >= below) numbers.push_back(index - below);
    }
    return numbers;
}

std::optional<std::uint32_t> parameter_by_id(const PluginLane& lane) {
    const auto number = number_of(lane.id);
    if (!number || std::ranges::count(near_numbers(lane.index), *number) == 0) return std::nullopt;
    return number;
}

/// The first near parameter whose name is the one wanted.
template <typename IsWanted>
std::optional<std::uint32_t> near_parameter(const ParameterTable& table, std::uint32_t index,
                                            const IsWanted& is_wanted) {
    for (const std::uint32_t number : near_numbers(index)) {
        const auto entry = table.names.find(static_cast<int>(number));
        if (entry != table.names.end() && is_wanted(entry->second)) return number;
    }
    return std::nullopt;
}

std::optional<std::uint32_t> parameter_by_name(const ParameterTable& table,
                                               const PluginLane& lane) {
    if (table.is_unique(lane.name)) {
        const auto exact = near_parameter(
            table, lane.index, [&](const std::string& name) { return name == lane.name; });
        if (exact) return exact;
    }
    const std::string plain = lower_alnum(lane.name);
    if (plain.empty() || !table.is_unique_plain(plain)) return std::nullopt;
    return near_parameter(table, lane.index,
                          [&](const std::string& name) { return lower_alnum(name) == plain; });
}

/// A lane's parameter, and whether it is known to be the right one.
struct LanePlace {
    std::uint32_t parameter = 0;
    bool is_known = true;
};

struct KnownParameter {
    std::uint32_t number = 0;
    int PluginLaneTallies::*counter = nullptr;  ///< null: not told apart in the account
};

std::optional<KnownParameter> known_parameter(const PluginLane& lane, const PluginInsert& insert,
                                              const PluginTableRow& row,
                                              const ParameterNames& names, ChainTallies& tallies) {
    if (const auto number = parameter_by_id(lane)) {
        return KnownParameter{*number, &PluginLaneTallies::placed_by_id};
    }
    if (const ParameterTable* table = names.table_for(row.fxName, row.file, row.ident)) {
        if (const auto number = parameter_by_name(*table, lane)) {
            return KnownParameter{*number, &PluginLaneTallies::placed_by_name};
        }
    }
    tallies.wanted_parameters.insert(row.fxName);
    const auto offset = known_offset(insert.code);
    if (offset && lane.index >= *offset) return KnownParameter{lane.index - *offset};
    return std::nullopt;
}

/// The parameters of an insert that have an envelope: REAPER's has one for each.
class TakenParameters {
public:
    bool take(std::uint32_t parameter) { return behind_.emplace(parameter, parameter + 1).second; }

    /// Takes the parameter, or the next one that is free.
    std::uint32_t take_from(std::uint32_t parameter) {
        std::vector<std::uint32_t*> met;
        for (auto at = behind_.find(parameter); at != behind_.end(); at = behind_.find(parameter)) {
            met.push_back(&at->second);
            parameter = at->second;
        }
        for (std::uint32_t* behind : met) *behind = parameter + 1;
        behind_[parameter] = parameter + 1;
        return parameter;
    }

private:
    std::map<std::uint32_t, std::uint32_t> behind_;  ///< of each taken one, where to look next
};

/// The parameters of the lanes that are written, in step with them. Those that are known come
/// first: a guess must not stand in their place.
std::vector<LanePlace> place_lanes(const std::vector<const PluginLane*>& lanes,
                                   const PluginInsert& insert, const PluginTableRow& row,
                                   const ParameterNames& names, ChainTallies& tallies) {
    TakenParameters taken;
    std::vector<LanePlace> places;
    for (const PluginLane* lane : lanes) {
        const auto known = known_parameter(*lane, insert, row, names, tallies);
        const bool has_guess = !known_offset(insert.code) && lane->index >= usual_offset;
        LanePlace place{has_guess ? lane->index - usual_offset : 0, false};
        if (known) place = {known->number, taken.take(known->number)};
        if (known && place.is_known && known->counter != nullptr) ++(tallies.lanes.*known->counter);
        places.push_back(place);
    }
    for (LanePlace& place : places) {
        if (place.is_known) continue;
        ++tallies.lanes.unassigned;
        place.parameter = taken.take_from(place.parameter);
    }
    return places;
}

bool is_bypass(const PluginLane& lane) {
    return lane.is_bypass || lane.name == "Global Bypass" || lane.name == "Master Bypass";
}

FxEnvelope envelope_of(const PluginLane& lane, const LanePlace& place, const PluginInsert& insert,
                       std::string_view display_name, const LaneTimes& times) {
    FxEnvelope envelope;
    envelope.parameter = place.parameter;
    envelope.active = place.is_known;
    envelope.name = std::string(place.is_known ? "" : "ASSIGN: ") + lane.name + " / " +
                    std::string(display_name);
    envelope.guid_seed =
        (static_cast<std::uint32_t>(insert.blockStart) << 4) ^ (lane.index * lane_seed_factor);
    envelope.steps = lane.steps != 0;
    envelope.default_value = std::clamp(lane.default_value, 0.0, 1.0);
    envelope.points.reserve(lane.points.size());
    for (const PluginLanePoint& point : lane.points) {
        const double seconds =
            lane.in_ticks ? times.clock.seconds(point.position) : point.position / times.rate_hz;
        envelope.points.push_back({std::max(seconds, 0.0), std::clamp(point.value, 0.0, 1.0)});
    }
    return envelope;
}

}  // namespace

std::vector<FxEnvelope> parameter_envelopes(const PluginInsert& insert, const PluginTableRow& row,
                                            std::string_view display_name,
                                            const ParameterNames& names, const LaneTimes& times,
                                            ChainTallies& tallies) {
    std::vector<const PluginLane*> lanes;
    for (const PluginLane& lane : insert.lanes) {
        if (lane.points.empty()) continue;
        if (is_bypass(lane)) {
            ++tallies.lanes.of_bypass;
        } else {
            lanes.push_back(&lane);
        }
    }
    const auto places = place_lanes(lanes, insert, row, names, tallies);
    std::vector<FxEnvelope> envelopes;
    envelopes.reserve(lanes.size());
    for (std::size_t i = 0; i < lanes.size(); ++i) {
        envelopes.push_back(envelope_of(*lanes[i], places[i], insert, display_name, times));
    }
    return envelopes;
}

int lanes_with_points(const PluginInsert& insert) {
    return static_cast<int>(std::ranges::count_if(
        insert.lanes, [](const PluginLane& lane) { return !lane.points.empty(); }));
}

int written_points(const std::vector<FxEnvelope>& envelopes) {
    std::size_t points = 0;
    for (const FxEnvelope& envelope : envelopes) {
        const bool starts_later = !envelope.points.empty() && envelope.points.front().seconds > 0;
        points += envelope.points.size() + (starts_later ? 1 : 0);
    }
    return static_cast<int>(points);
}

}  // namespace tanrove
