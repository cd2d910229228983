// MIDI regions, told from the 'Z' of the blocks.
//
// Region list 0x2634 (0x2002 in older sessions): u32 count at 9, then a 0x2633 (0x2001) a region,
// whose first child 0x2628 (0x1007) begins at its offset 9:
//   9       u32 count n, text of the name
//   13 + n  three-point header: where the region begins in its stream's time, counted from the tick
//           origin, and its length
//   behind  the block: u32 place of the stream it plays
//
// The group list 0x262c holds the compound clips: a 0x262b each, in that a 0x2628, and 4 bytes
// behind that block the u32 place of a stream. One whose 0x2628 holds a 0x2523 is none, and has no
// number either.
#include "session/midi_regions.hpp"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_count_at = 2;  // from a node, 7 behind the 'Z'
constexpr std::size_t count_width = 4;
constexpr std::size_t widest_position = 8;
constexpr std::size_t widest_length = 5;
constexpr std::size_t stream_width = 4;
constexpr std::size_t compound_stream_behind = 4;

/// Compound clips copy a name: all copies together take no more bytes than the image has.
constexpr std::size_t max_copied_name_bytes_per_image_byte = 1;

/// The stream number at `at`, if there is such a stream.
std::optional<std::size_t> stream_at(ByteView image, std::size_t at,
                                     std::span<const MidiStream> streams) {
    if (!image.holds(at, stream_width)) return std::nullopt;
    const std::size_t stream = image.u32(at);
    if (stream >= streams.size()) return std::nullopt;
    return stream;
}

std::optional<Region> read_region(ByteView image, const BlockNode& node,
                                  std::span<const MidiStream> streams) {
    const std::size_t end = end_of(node);
    const std::size_t count_at = node.offset + name_count_at;
    const auto name = readCountedText(image, count_at, node.size, end);
    if (!name) return std::nullopt;
    const auto point = readThreePoint(image, count_at + count_width + name->size(), end);
    if (!point) return std::nullopt;
    const auto stream = stream_at(image, end, streams);
    if (!stream) return std::nullopt;

    const bool has_head = point->first_width <= widest_position;
    const bool has_length = point->second_width <= widest_length;
    const std::uint64_t head = has_head ? point->source_offset : 0;
    Region region;
    region.name = name->substr(0, max_region_name);
    region.start = static_cast<std::int64_t>(tick_origin);
    region.source_offset =
        static_cast<std::int64_t>(streams[*stream].origin) - static_cast<std::int64_t>(head);
    region.length = has_length ? static_cast<std::int64_t>(point->length) : 0;
    region.midi_stream = static_cast<std::int32_t>(*stream);
    return region;
}

/// Numbers regions as placements do. Only as many can be placed as have a number below `no_region`.
class RegionCollector {
public:
    void add(std::optional<Region> region) {
        if (next_ < no_region && region) {
            region->index = static_cast<std::uint16_t>(next_);
            regions_.push_back(std::move(*region));
        }
        ++next_;
    }

    std::string_view last_name() const {
        return regions_.empty() ? std::string_view() : std::string_view(regions_.back().name);
    }

    std::vector<Region> take() { return std::move(regions_); }

private:
    std::uint64_t next_ = 0;
    std::vector<Region> regions_;
};

/// The types of a list, of the groups in it, and of the records in those.
struct Nesting {
    std::uint16_t list = 0;
    std::uint16_t group = 0;
    std::uint16_t record = 0;
};

/// Calls `use` with each record that is nested so: in blocks of the newer types or, in older
/// sessions, of the older ones.
template <typename Use>
void for_each_record(std::span<const BlockNode> tree, const Nesting& newer, const Nesting& older,
                     Use use) {
    const auto is = [](const BlockNode& node, std::uint16_t a, std::uint16_t b) {
        return node.contentType == a || node.contentType == b;
    };
    for (const BlockNode& list : tree) {
        if (!is(list, newer.list, older.list)) continue;
        for (const BlockNode& group : list.children) {
            if (!is(group, newer.group, older.group)) continue;
            for (const BlockNode& record : group.children) {
                if (is(record, newer.record, older.record)) use(record);
            }
        }
    }
}

bool is_compound(const BlockNode& record) {
    return std::none_of(record.children.begin(), record.children.end(), [](const BlockNode& child) {
        return child.contentType == block_type::plain_midi_mark;
    });
}

}  // namespace

std::vector<Region> read_midi_regions(ByteView image, std::span<const BlockNode> tree,
                                      std::span<const MidiStream> streams) {
    RegionCollector regions;
    const Nesting newer{block_type::midi_region_list, block_type::midi_region, block_type::clip};
    const Nesting older{block_type::older_midi_region_list, block_type::older_midi_region,
                        block_type::older_midi_region_name};
    for_each_record(tree, newer, older, [&](const BlockNode& record) {
        regions.add(read_region(image, record, streams));
    });

    const std::string name(regions.last_name());
    std::size_t name_budget = image.size() * max_copied_name_bytes_per_image_byte;
    const Nesting compound{block_type::clip_group_table, block_type::clip_group, block_type::clip};
    for_each_record(tree, compound, compound, [&](const BlockNode& record) {
        if (!is_compound(record)) return;
        const auto stream = stream_at(image, end_of(record) + compound_stream_behind, streams);
        if (!stream || name.size() > name_budget) return regions.add(std::nullopt);
        name_budget -= name.size();
        Region region;
        region.name = name;
        region.start = static_cast<std::int64_t>(tick_origin);
        region.length = streams[*stream].end;
        region.midi_stream = static_cast<std::int32_t>(*stream);
        regions.add(std::move(region));
    });
    return regions.take();
}

}  // namespace tanrove
