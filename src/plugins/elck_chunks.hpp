// The chain of sub-chunks in a settings block: a map of the controls' values, tagged "elck", and
// behind it what the plug-in itself keeps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_view.hpp"

namespace tanrove {

constexpr std::string_view elck_how = "AAX chunk after elck";

/// One sub-chunk: its payload in the image.
struct ElckChunk {
    std::size_t offset = 0;
    std::uint32_t size = 0;
    bool is_map = false;   ///< tagged "elck"
    std::string_view tag;  ///< four characters, in the image
};

/// All chunks of the block at `block_start`, the parameter map first; empty where the chain does
/// not run from there to at most 8 bytes before `limit`.
std::vector<ElckChunk> elck_chain(ByteView image, std::size_t block_start, std::size_t limit);

/// True if a later chunk has the first one's tag, whatever that is: the settings of further
/// channels.
bool repeats_first_chunk(ByteView image, std::size_t block_start, std::size_t limit);

/// The first chunk behind the map that can be a state, and how many there are: no map, 32 bytes or
/// more, and not just a text.
struct ElckState {
    std::size_t offset = 0;
    std::uint32_t size = 0;
    std::uint32_t chunk_count = 0;
};

std::optional<ElckState> find_elck_state(ByteView image, std::size_t block_start,
                                         std::size_t limit);

/// A control of the parameter map.
struct ElckControl {
    std::string name;
    double value = 0;
};

/// The controls of the parameter map in their order, and where the first record stands. The map
/// ends at the first record that is none; there is none in a block without such a map.
struct ElckControls {
    std::size_t at = 0;
    std::vector<ElckControl> controls;
};

ElckControls read_elck_controls(ByteView image, std::size_t block_start, std::size_t limit);

/// The values of the parameter map by the names of the controls; of two values of one name the
/// first.
std::map<std::string, double> read_elck_map(ByteView image, std::size_t block_start,
                                            std::size_t limit);

}  // namespace tanrove
