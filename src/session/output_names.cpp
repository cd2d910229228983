// An output name 0x260e:
//
//   9    u16 id of the output
//   17   the identity marker, u64 identity; once more at 33, zeros where the output is no sub-path
//   45   u32 count, text
//
// The text is searched for from offset 11 on: the first count of 1 to 255 with text behind it.
// Where there is none, a count at 45 that is not 0 still tells of an output.
#include "session/output_names.hpp"

#include <algorithm>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t id_at = 9;
constexpr std::size_t marker_at = 17;
constexpr std::size_t search_from = 11;
constexpr std::size_t search_to = 256;  // a name farther in is chance
constexpr std::size_t identity_width = 8;
constexpr std::size_t count_at = 45;
constexpr std::size_t count_width = 4;

/// The output of a record whose name cannot be read; nullopt if it has none.
std::optional<OutputName> read_unnamed(ByteView image, const Block& block) {
    const std::size_t marker = block.at + marker_at;
    const bool has_name = block.at + count_at + count_width <= block.end() &&
                          image.has(marker, identity_marker) && image.u32(block.at + count_at) != 0;
    if (!has_name) return std::nullopt;
    return OutputName{.name = {}, .identity = image.u64(marker + identity_marker.size())};
}

}  // namespace

std::optional<OutputName> read_output_name(ByteView image, const Block& block) {
    const std::size_t last = std::min(block.at + search_to, block.end());
    for (std::size_t at = block.at + search_from; at < last; ++at) {
        const auto name = read_name(image, at, block.end());
        if (!name || name->empty()) continue;
        OutputName output{.name = std::string(*name)};
        const std::size_t marker = block.at + marker_at;
        const std::size_t identity = marker + identity_marker.size();
        if (image.has(marker, identity_marker) && identity + identity_width <= at) {
            output.identity = image.u64(identity);
        }
        return output;
    }
    return read_unnamed(image, block);
}

std::map<std::uint16_t, OutputName> readOutputNames(const BlockIndex& index) {
    std::map<std::uint16_t, OutputName> names;
    for (const Block& block : index.of_type(block_type::path_reference).all()) {
        auto name = read_output_name(index.image(), block);
        if (name) names.try_emplace(index.image().u16(block.at + id_at), std::move(*name));
    }
    return names;
}

}  // namespace tanrove
