// The MIDI settings 0x2036 in a track's row, from their 'Z':
//
//   21  i32 output, the number of a MIDI output, counted from 1; 0 none
//   43  u8 1: the track plays an instrument track
//   64  the marker '*', 0, 0, 0
//   68  8 bytes identity: of the instrument, on its own track and on each MIDI track that plays it
#include "session/instrument_links.hpp"

#include <map>
#include <optional>

#include "session/midi_outputs.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t settings_type = 0x2036;
constexpr std::size_t output_at = 21;
constexpr std::size_t plays_instrument_at = 43;
constexpr std::size_t marker_at = 64;
constexpr std::size_t identity_at = 68;
constexpr std::uint8_t marker_byte = '*';

constexpr std::uint32_t least_size_with_output = 18;
constexpr std::uint32_t least_size_with_identity = 69;

/// The identity in these settings, where there is room and a marker for one.
std::optional<std::uint64_t> identity_in(ByteView image, const Block& settings) {
    if (settings.size < least_size_with_identity) return std::nullopt;
    if (image.u8(settings.at + marker_at) != marker_byte) return std::nullopt;
    return image.u64(settings.at + identity_at);
}

const Block* first_in(const BlockList& blocks, const StripRow& row) {
    return blocks.first_inside(row.start + block_payload_at, row.end);
}

/// The names of the instrument tracks by identity; the first of two alike counts.
std::map<std::uint64_t, std::string> instruments(const BlockIndex& index,
                                                 std::span<const StripRow> rows) {
    std::map<std::uint64_t, std::string> names;
    for (const StripRow& row : rows) {
        if (row.type != StripRowType::instrument) continue;
        const Block* settings = first_in(index.of_type(settings_type), row);
        if (settings == nullptr) continue;
        const auto identity = identity_in(index.image(), *settings);
        if (identity) names.try_emplace(*identity, row.current_name);
    }
    return names;
}

/// Settings blocks that have room for an output.
BlockList settings_with_output(const BlockIndex& index) {
    std::vector<Block> blocks;
    for (const Block& block : index.of_type(settings_type).all()) {
        if (block.size >= least_size_with_output) blocks.push_back(block);
    }
    return BlockList(std::move(blocks));
}

}  // namespace

std::vector<InstrumentLink> readInstrumentLinks(const BlockIndex& index,
                                                std::span<const StripRow> rows) {
    const ByteView image = index.image();
    const auto outputs = readMidiOutputs(index);
    const auto instrument_of = instruments(index, rows);
    const BlockList all_settings = settings_with_output(index);
    std::vector<InstrumentLink> links;
    for (const StripRow& row : rows) {
        if (row.type != StripRowType::midi) continue;
        const Block* settings = first_in(all_settings, row);
        if (settings == nullptr) continue;
        const std::int32_t output = image.i32(settings->at + output_at);
        if (output > 0 && static_cast<std::size_t>(output) <= outputs.size()) {
            const MidiOutput& target = outputs[static_cast<std::size_t>(output) - 1];
            const auto& name = target.name.empty() ? std::string(unknown_instrument) : target.name;
            if (target.is_plugin_node) links.push_back({row.current_name, name});
        }
        if (output != 0 || image.u8(settings->at + plays_instrument_at) != 1) continue;
        const auto identity = identity_in(image, *settings);
        if (!identity || *identity == 0) continue;
        const auto found = instrument_of.find(*identity);
        links.push_back(
            {row.current_name, found != instrument_of.end() ? found->second : unknown_instrument});
    }
    return links;
}

}  // namespace tanrove
