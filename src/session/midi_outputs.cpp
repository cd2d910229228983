// The list 0x2004: u32 count at 9, then a 0x2005 an output. In that:
//
//   0x2006  u32 count of 0 to 255 at 11, text of the output's name, behind it u8 number less 1
//   0x2097  on a plug-in: i32 that tells which one, at 22; sessions before 12.8 have none
//   0x2401  on a port: u8 code at 9
//
// A 0x2097 stands in a 0x208c in a 0x2086, and that stands beside the 0x2006 or, in real sessions,
// in it behind the number.
#include "session/midi_outputs.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_count_at = 11;
constexpr std::size_t count_width = 4;
constexpr std::uint32_t least_node_size = 15;
constexpr std::uint32_t least_node_with_value = 29;
constexpr std::size_t node_value_at = 22;
constexpr std::uint32_t least_port_size = 4;

/// Blocks that do nothing but hold the others.
bool is_stepped_into(std::uint16_t type) {
    return type == block_type::midi_output_name || type == block_type::midi_output_group ||
           type == block_type::midi_output_port;
}

void read_name(ByteView image, const Block& block, MidiOutput& output) {
    const auto name = readCountedText(image, block.at + name_count_at, max_name_bytes, block.end());
    if (!name) return;
    const std::size_t number_at = block.at + name_count_at + count_width + name->size();
    output.name = *name;
    output.number = image.u8(number_at) + 1;
}

/// The output whose block this is. Its blocks are walked in order; one that is stepped into is
/// walked as if its children stood in its place.
MidiOutput read_output(const BlockIndex& index, const Block& block) {
    const ByteView image = index.image();
    MidiOutput output;
    bool has_name = false;
    std::size_t walked = block.payload();
    for (const Block& part : index.blocks().between(block.payload(), block.end())) {
        if (part.at < walked || part.end() > block.end()) continue;
        walked = is_stepped_into(part.content_type) ? part.payload() : part.end();
        if (part.content_type == block_type::midi_output_name && !has_name) {
            has_name = true;
            read_name(image, part, output);
        }
        if (part.content_type == block_type::midi_output_node && part.size >= least_node_size) {
            output.is_plugin_node = true;
            if (part.size >= least_node_with_value) {
                output.node_value = image.i32(part.at + node_value_at);
            }
        }
        if (part.content_type == block_type::midi_port && part.size >= least_port_size) {
            output.port_code = image.u8(part.payload());
        }
    }
    return output;
}

}  // namespace

std::vector<MidiOutput> readMidiOutputs(const BlockIndex& index) {
    std::vector<MidiOutput> outputs;
    const auto lists = index.of_type(block_type::midi_output_list).all();
    if (lists.empty()) return outputs;
    const Block& list = lists.front();
    std::size_t walked = list.payload();
    for (const Block& block : index.of_type(block_type::midi_output).between(walked, list.end())) {
        if (block.at < walked || block.end() > list.end()) continue;
        walked = block.end();
        outputs.push_back(read_output(index, block));
    }
    return outputs;
}

}  // namespace tanrove
