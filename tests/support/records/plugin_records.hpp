// The records of plug-ins: settings blocks and the chunks in them, slots with what stands around a
// settings block, control lanes, names.
#pragma once

#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/plugin_spec.hpp"

namespace tanrove::builder {

/// A chunk of a state: its header and payload.
Bytes plugin_chunk(const std::string& code, const std::string& tag, const std::string& name,
                   const Bytes& payload);

/// A record of a control list: "d_" or "l_" with the name, its value `spacing` bytes on.
Bytes real_control(const std::string& name, double value, std::size_t spacing);
Bytes whole_control(const std::string& name, std::int32_t value, std::size_t spacing);

/// A state that is this payload behind bytes that are no text, where a chunk's payload would stand.
Bytes bare_state(const Bytes& payload);

/// What Avid's Trim keeps of a channel.
struct TrimSpec {
    std::int32_t gain_word = 1093684240;  ///< 0 dB
    bool inverted = false;
};
/// Trim's state: a record for each channel; the older ones end in front of the polarity.
Bytes trim_state(const std::vector<TrimSpec>& channels, bool is_older = false);

/// An "XPst" chunk with this tree.
Bytes preset_chunk(const std::string& tree);

/// A container that a tag tells, and where in the payload its state lies.
struct ContainerSpec {
    std::uint32_t kind;  ///< as the corpus files count
    Bytes payload;
    std::size_t offset, size;
};
/// One of each kind that has a tag.
std::vector<ContainerSpec> tagged_containers();

/// An insert with a state of each kind: the tagged ones, a parameter map with a chunk behind it, a
/// chunk alone, and nothing of use.
std::vector<InsertSpec> inserts_of_all_kinds();

/// 0x1038.
Bytes plugin_settings_block(const InsertSpec& insert);

/// 0x260f with its 0x260b.
Bytes control_lane(const PluginLaneSpec& lane);

/// 0x2616: the settings, the key input where there is one, and the record 0x2614 with the lanes.
Bytes insert_slot(const InsertSpec& insert);

/// 0x1017: maker, product and build behind the name.
Bytes plugin_name_record(const PluginNameSpec& name);
/// The same with the name a byte later, and maker and product behind four zeros.
Bytes plugin_name_record_later_code(const PluginNameSpec& name);
/// 0x1018: all names.
Bytes plugin_names_block(const std::vector<PluginNameSpec>& names);

}  // namespace tanrove::builder
