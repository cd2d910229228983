// Sync points of audio regions. They hide in the gap of the three-point header, which is as wide
// as its second byte's low nibble says.
//
// Region 0x2629 (0x1008 in older sessions), offsets from its 'Z': a block at 9; u32 count and text
// of the name at 18; the header T behind the name:
//   T + 1   high nibble: bytes of the source offset, at most 5
//   T + 2   low nibble: bytes of the gap, 1 to 5
//   T + 5   source offset, then the gap: samples from the clip's head to its sync point
#include "session/region_starts.hpp"

#include <algorithm>

#include "session/block_types.hpp"
#include "session/record_forms.hpp"
#include "session/session_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t inner_at = 9;
constexpr std::size_t name_count_at = 18;
constexpr std::size_t count_width = 4;
constexpr std::size_t widest_number = 5;

RegionStart read_region_start(ByteView image, std::size_t z, std::size_t end) {
    RegionStart start;
    if (image.u8(z + inner_at) != block_marker) return start;
    const auto name = readCountedText(image, z + name_count_at, end, end);
    if (!name) return start;
    start.name = name->substr(0, max_region_name);  // as the region itself is named
    if (name->size() > max_region_name) return start;
    const auto point = readThreePoint(image, z + name_count_at + count_width + name->size(), end);
    if (!point || point->first_width > widest_number) return start;
    if (point->gap_width <= widest_number) start.sync_samples = point->gap;
    return start;
}

}  // namespace

// The regions are taken from the tree, as the session lists take theirs: the two run in step.
std::vector<RegionStart> readRegionStarts(ByteView image, std::span<const BlockNode> tree) {
    std::vector<RegionStart> sync_points;
    for (const BlockNode& list : tree) {
        if (list.contentType != block_type::audio_region_list &&
            list.contentType != block_type::older_audio_region_list) {
            continue;
        }
        if (sync_points.empty()) {
            sync_points.reserve(std::min<std::size_t>(list.children.size(), no_region));
        }
        for (const BlockNode& node : list.children) {
            if (node.contentType != block_type::audio_region &&
                node.contentType != block_type::older_audio_region) {
                continue;
            }
            if (sync_points.size() == no_region) return sync_points;
            const std::size_t z = node.offset - block_content_at;
            sync_points.push_back(read_region_start(image, z, node.offset + node.size));
        }
    }
    return sync_points;
}

}  // namespace tanrove
