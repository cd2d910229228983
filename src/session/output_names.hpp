// Output names: what a send channel plays into.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

constexpr std::uint16_t output_name_type = 0x260e;

/// The text of a block of type 0x260e; nullopt if it names nothing.
std::optional<std::string> readOutputName(ByteView image, const Block& block);

/// The name of each output by its id; of two records with one id the first counts.
std::map<std::uint16_t, std::string> readOutputNames(const BlockIndex& index);

}  // namespace tanrove
