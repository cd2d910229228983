// A looped placement's 0x104f holds a 0x242b. Offsets from the payload of one whose size is 59:
//   0       u8 mode
//   3       u32 length in samples
//   27      u32 number of passes
//   39      u32 more that we keep and do not use
// Of the 0x104f itself: u32 region at 11, position at 16; the block around it begins 9 bytes
// earlier.
#include "session/loop_records.hpp"

#include "session/block_types.hpp"
#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t largest_without_loop = 15;
constexpr std::size_t region_at = 11;
constexpr std::size_t position_at = 16;
constexpr std::size_t parent_before = 9;

constexpr std::uint32_t known_size = 59;
constexpr std::size_t mode_at = 0;
constexpr std::size_t length_at = 3;
constexpr std::size_t count_at = 27;
constexpr std::size_t extra_at = 39;

std::uint16_t parent_type(const BlockIndex& index, const Block& placement) {
    if (placement.at < parent_before) return 0;
    const Block* parent = index.at(placement.at - parent_before);
    return parent == nullptr ? std::uint16_t{0} : parent->content_type;
}

}  // namespace

std::vector<LoopRecord> readLoopRecords(const BlockIndex& index) {
    const ByteView image = index.image();
    std::vector<LoopRecord> records;
    if (index.of_type(block_type::loop).all().empty()) return records;
    for (const Block& placement : index.of_type(block_type::placement_record).all()) {
        if (placement.size <= largest_without_loop) continue;
        const Block* loop = index.first_child(placement, block_type::loop);
        if (loop == nullptr) continue;
        LoopRecord record;
        record.key =
            loop_key(image.u32(placement.at + position_at), image.u32(placement.at + region_at));
        record.placed_at = placement.at;
        record.parent_type = parent_type(index, placement);
        record.in_group = holds_clip_group(image, placement.at);
        record.known_shape = loop->size == known_size;
        if (record.known_shape) {
            record.mode = image.u8(loop->payload() + mode_at);
            record.length = image.u32(loop->payload() + length_at);
            record.count = image.u32(loop->payload() + count_at);
            record.loop_extra = image.u32(loop->payload() + extra_at);
        }
        records.push_back(record);
    }
    return records;
}

}  // namespace tanrove
