// A MIDI track's settings say what it plays: a MIDI output, which may be a plug-in, or else the
// instrument of an identity that stands in the settings of the instrument's own track as well.
#include "session/instrument_links.hpp"

#include <map>

#include "session/block_types.hpp"
#include "session/midi_outputs.hpp"
#include "session/midi_track_settings.hpp"

namespace tanrove {

namespace {

const Block* first_in(const BlockList& blocks, const StripRow& row) {
    return blocks.first_inside(row.start + block_payload_at, row.end);
}

/// The names of the instrument tracks by identity; the first of two alike counts.
std::map<std::uint64_t, std::string> instruments(const BlockIndex& index,
                                                 std::span<const StripRow> rows) {
    std::map<std::uint64_t, std::string> names;
    for (const StripRow& row : rows) {
        if (row.type != StripRowType::instrument) continue;
        const Block* block = first_in(index.of_type(block_type::midi_track_settings), row);
        if (block == nullptr) continue;
        const auto identity = read_midi_settings(index.image(), *block).instrument;
        if (identity) names.try_emplace(*identity, row.current_name);
    }
    return names;
}

/// Settings blocks that have room for an output.
BlockList settings_with_output(const BlockIndex& index) {
    std::vector<Block> blocks;
    for (const Block& block : index.of_type(block_type::midi_track_settings).all()) {
        if (block.size >= least_midi_settings_with_output) blocks.push_back(block);
    }
    return BlockList(std::move(blocks));
}

}  // namespace

std::vector<InstrumentLink> readInstrumentLinks(const BlockIndex& index,
                                                std::span<const StripRow> rows) {
    const auto outputs = readMidiOutputs(index);
    const auto instrument_of = instruments(index, rows);
    const BlockList all_settings = settings_with_output(index);
    std::vector<InstrumentLink> links;
    for (const StripRow& row : rows) {
        if (row.type != StripRowType::midi) continue;
        const Block* block = first_in(all_settings, row);
        if (block == nullptr) continue;
        const MidiTrackSettings settings = read_midi_settings(index.image(), *block);
        const std::int32_t output = settings.output;
        if (output > 0 && static_cast<std::size_t>(output) <= outputs.size()) {
            const MidiOutput& target = outputs[static_cast<std::size_t>(output) - 1];
            const auto& name = target.name.empty() ? std::string(unknown_instrument) : target.name;
            if (target.is_plugin_node) links.push_back({row.current_name, name});
        }
        if (output != 0 || !settings.plays_instrument) continue;
        if (!settings.instrument || *settings.instrument == 0) continue;
        const auto found = instrument_of.find(*settings.instrument);
        links.push_back(
            {row.current_name, found != instrument_of.end() ? found->second : unknown_instrument});
    }
    return links;
}

}  // namespace tanrove
