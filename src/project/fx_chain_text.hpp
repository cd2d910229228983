// The text of an FX chain: of a track, of the master, or of a take.
#pragma once

#include <cstdint>

#include "base/text_sink.hpp"
#include "plugins/fx_slot.hpp"

namespace tanrove {

/// The chain of a track, inside its block.
constexpr const char* track_chain_tag = "FXCHAIN";
constexpr int chain_level = 2;

/// Writes the whole chain as the block `tag` ("FXCHAIN", "MASTERFXLIST") one level above
/// its slots; nothing for a chain without slots.
void write_fx_chain(TextSink& out, int level, const char* tag, const ChainPlan& chain);

/// The chain of a take, inside its item. `number` tells it from the takes that share it.
void write_take_fx(TextSink& out, const ChainPlan& chain, std::uint32_t number);

}  // namespace tanrove
