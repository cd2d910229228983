// The session's own paths stand in a table 0x2603: u32 count at 9, and from 13 on a 0x2602 each,
// one behind the other. A path, E being the position behind its name and c its channels, 1 to 16:
//
//   9            u8 type, always 2
//   E + 6 + 2c   u8 1; u8 1 if it is mapped to the hardware; four zeros
//   E + 12 + 2c  the identity marker, u64 identity, four zeros
//   E + 28 + 2c  of a part: the identity marker, u64 identity of the whole; else zeros
//   E + 40 + 2c  0x2601, the hardware that it is mapped to, or was on other machines: u32 count at
//                9, and from 13 on a 0x2600 each, with the identity marker of a path of the
//                hardware's at 21 and its u64 identity behind it
#include "session/path_table.hpp"

#include <algorithm>
#include <map>

#include "session/block_types.hpp"
#include "session/path_record.hpp"

namespace tanrove {

namespace {

using namespace path_record;

constexpr std::size_t count_at = 9;
constexpr std::size_t first_path_at = 13;

// Counted from the position behind the channels.
constexpr std::size_t mapped_behind = 3;
constexpr std::size_t identity_behind = 8;
constexpr std::size_t parent_identity_behind = 24;
constexpr std::size_t hardware_behind = 36;
constexpr std::size_t identity_bytes = 12;  // the marker and the identity

constexpr std::size_t first_hardware_at = 13;
constexpr std::size_t hardware_marker_at = 21;
constexpr std::size_t max_hardware = 256;  // machines that one session has been to

/// The identities of the list 0x2601 that begins at `at`, as far as it can be read.
std::vector<std::uint64_t> read_hardware(const BlockIndex& index, std::size_t at, std::size_t end) {
    const Block* list = index.at(at);
    if (list == nullptr || list->content_type != block_type::played_hardware_list) return {};
    if (list->end() > end) return {};
    const ByteView image = index.image();
    const std::size_t count = std::min<std::size_t>(image.u32(at + count_at), max_hardware);
    std::vector<std::uint64_t> identities;
    at += first_hardware_at;
    while (identities.size() < count) {
        const Block* entry = index.at(at);
        if (entry == nullptr || entry->content_type != block_type::played_hardware) break;
        const std::size_t marker = at + hardware_marker_at;
        if (entry->end() > list->end() || marker + identity_bytes > entry->end()) break;
        if (!image.has(marker, identity_marker)) break;
        identities.push_back(image.u64(marker + identity_marker.size()));
        at = entry->end();
    }
    return identities;
}

std::optional<IoPath> read_own_path(const BlockIndex& index, const Block& block) {
    const ByteView image = index.image();
    const std::size_t name_bytes = image.u32(block.at + name_length_at);
    const std::size_t behind_name = block.at + name_at + name_bytes;
    if (name_bytes == 0 || behind_name > block.end()) return std::nullopt;
    const std::size_t count = image.u32(behind_name);
    if (count < 1 || count > max_channels) return std::nullopt;
    const std::size_t behind = behind_name + count_width + count * channel_width;
    if (behind + parent_identity_behind + identity_bytes > block.end()) return std::nullopt;
    if (!image.has(behind + identity_behind, identity_marker)) return std::nullopt;

    IoPath path;
    path.own = true;
    path.type = image.u8(block.at + type_at);
    path.width_code = image.u8(block.at + width_at);
    path.name = read_name(image, block.at + name_length_at, block.end()).value_or("");
    path.position = block.at;
    read_channels(image, behind_name + count_width, count, path);
    path.parent = read_parent(image, behind);
    path.mapped = image.u8(behind + mapped_behind) == 1;
    read_identity(image, behind + identity_behind, path);
    const std::size_t whole = behind + parent_identity_behind;
    if (image.has(whole, identity_marker)) {
        path.parent_identity = image.u64(whole + identity_marker.size());
    }
    path.hardware = read_hardware(index, behind + hardware_behind, block.end());
    return path;
}

/// What is a part of a mapped path plays to the hardware with it.
void map_parts(std::vector<IoPath>& paths) {
    std::map<std::uint64_t, bool> is_mapped;
    for (const IoPath& path : paths) is_mapped.try_emplace(path.identity(), path.mapped);
    for (IoPath& path : paths) {
        const auto whole = is_mapped.find(path.parent_identity);
        if (path.parent_identity != 0 && whole != is_mapped.end() && whole->second) {
            path.mapped = true;
        }
    }
}

}  // namespace

std::optional<std::vector<IoPath>> read_path_table(const BlockIndex& index) {
    const auto tables = index.of_type(block_type::own_path_table).all();
    if (tables.empty()) return std::nullopt;
    const Block& table = tables.front();
    const ByteView image = index.image();
    std::vector<IoPath> paths;
    std::size_t at = table.at + first_path_at;
    for (std::size_t left = image.u32(table.at + count_at); left > 0; --left) {
        const Block* block = index.at(at);
        if (block == nullptr || block->content_type != block_type::own_path) return std::nullopt;
        if (block->end() > table.end()) return std::nullopt;
        auto path = read_own_path(index, *block);
        if (!path) return std::nullopt;
        paths.push_back(std::move(*path));
        at = block->end();
    }
    if (paths.empty()) return std::nullopt;
    map_parts(paths);
    return paths;
}

}  // namespace tanrove
