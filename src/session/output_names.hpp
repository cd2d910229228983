// Output names: what a send channel plays into.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// How a session names the path that something plays into or comes from.
struct OutputName {
    /// The path's, as it was when the name was stored; empty where it cannot be read.
    std::string name;
    std::uint64_t identity = 0;  ///< the path's; 0 if the record has none
};

/// What a block of type 0x260e names; nullopt if it names nothing.
std::optional<OutputName> read_output_name(ByteView image, const Block& block);

/// Each output by its id; of two records with one id the first counts.
std::map<std::uint16_t, OutputName> readOutputNames(const BlockIndex& index);

}  // namespace tanrove
