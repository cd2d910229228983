// An I/O path 0x1021, E being the position behind its name and c its channels, 1 to 16:
//
//   9            u8 type: 0 input, 1 and 6 hardware output, 2 bus, 3 insert
//   E + 11 + 2c  the identity marker, u64 identity
//
// A second form has four more bytes in front of the count of channels, which may be 0, and the
// marker anywhere behind the channels.
//
// Sessions with a path table of their own repeat here the paths of it that no hardware plays.
#include "session/io_paths.hpp"

#include <algorithm>
#include <set>
#include <tuple>

#include "session/block_types.hpp"
#include "session/path_record.hpp"
#include "session/path_table.hpp"

namespace tanrove {

namespace {

using namespace path_record;

constexpr std::size_t marker_behind_channels = 7;
constexpr std::size_t later_count_behind_name = 4;
constexpr std::size_t marked_bytes = 13;  // a marker, its identity and the byte that must follow

/// The form with the count right behind the name; false where its marker is not in its place.
bool read_near_count(ByteView image, std::size_t behind_name, std::size_t end, IoPath& path) {
    const std::size_t count = image.u32(behind_name);
    if (count < 1 || count > max_channels) return false;
    const std::size_t behind_channels = behind_name + count_width + count * channel_width;
    const std::size_t marker = behind_channels + marker_behind_channels;
    if (marker + marked_bytes > end || !image.has(marker, identity_marker)) return false;
    read_channels(image, behind_name + count_width, count, path);
    read_identity(image, marker, path);
    path.parent = read_parent(image, behind_channels);
    return true;
}

/// The form with the count four bytes behind the name. Without a marker the path has no identity.
bool read_later_count(ByteView image, const std::vector<std::size_t>& markers,
                      std::size_t behind_name, std::size_t end, IoPath& path) {
    const std::size_t count_at = behind_name + later_count_behind_name;
    if (count_at + count_width > end) return false;
    const std::size_t count = image.u32(count_at);
    const std::size_t channels_at = count_at + count_width;
    if (count > max_channels || channels_at + count * channel_width > end) return false;
    read_channels(image, channels_at, count, path);
    const auto marker =
        std::lower_bound(markers.begin(), markers.end(), channels_at + count * channel_width);
    if (marker != markers.end() && *marker + marked_bytes <= end) {
        read_identity(image, *marker, path);
    }
    return true;
}

std::optional<IoPath> read_path(ByteView image, const std::vector<std::size_t>& markers,
                                const Block& block) {
    const auto name = read_name(image, block.at + name_length_at, block.end());
    if (!name || name->empty()) return std::nullopt;
    IoPath path;
    path.type = image.u8(block.at + type_at);
    path.width_code = image.u8(block.at + width_at);
    path.name = *name;
    path.position = block.at;
    const std::size_t behind_name = block.at + name_at + name->size();
    if (!read_near_count(image, behind_name, block.end(), path) &&
        !read_later_count(image, markers, behind_name, block.end(), path)) {
        return std::nullopt;
    }
    return path;
}

}  // namespace

std::vector<IoPath> readIoPaths(const BlockIndex& index) {
    const BlockList& blocks = index.of_type(block_type::io_path);
    // Found once: records that overlap must not each search their own span.
    const auto markers = find_in(index.image(), blocks.reach(), identity_marker);
    std::vector<IoPath> paths;
    std::set<std::uint64_t> own;
    if (auto table = read_path_table(index)) {
        paths = std::move(*table);
        for (const IoPath& path : paths) own.insert(path.identity());
        own.erase(0);
    }
    std::set<std::tuple<std::uint64_t, std::uint32_t, std::string, std::vector<std::uint16_t>>>
        known;
    for (const Block& block : blocks.all()) {
        auto path = read_path(index.image(), markers, block);
        if (!path || own.contains(path->identity())) continue;
        const bool is_new =
            known.emplace(path->identity(), path->type, path->name, path->channels).second;
        if (is_new) paths.push_back(std::move(*path));
    }
    return paths;
}

}  // namespace tanrove
