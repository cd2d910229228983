// The list of video clips 0x262e: u32 count at 9, then a 0x262d each. In that, from its 'Z':
//
//   9    the 0x2628 that names the clip: u32 count and text of the name at its 9, behind that the
//        three-point header, whose low nibble at 1 tells what the numbers count
//   C    u32 place in the list of movies, right behind the 0x2628
#include "session/video_regions.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_count_at = 9;
constexpr std::size_t name_at = 13;
constexpr std::size_t movie_width = 4;

constexpr std::uint8_t ticks_mark = 1;
constexpr std::uint8_t frames_mark = 2;

VideoUnit unit_of(std::uint8_t mark) {
    if (mark == frames_mark) return VideoUnit::frames;
    return mark == ticks_mark ? VideoUnit::ticks : VideoUnit::samples;
}

VideoRegion read_region(const BlockIndex& index, const Block& record) {
    const ByteView image = index.image();
    const Block* clip = index.first_child(record, block_type::clip);
    if (clip == nullptr || clip->end() + movie_width > record.end()) return {};
    const auto name = read_name(image, clip->at + name_count_at, clip->end());
    if (!name) return {};
    const auto point = readThreePoint(image, clip->at + name_at + name->size(), clip->end());
    if (!point) return {};
    return {.name = std::string(*name),
            .unit = unit_of(point->unit_mark),
            .source_offset = point->source_offset,
            .length = point->length,
            .movie = image.u32(clip->end())};
}

}  // namespace

std::vector<VideoRegion> read_video_regions(const BlockIndex& index) {
    std::vector<VideoRegion> regions;
    const auto lists = index.of_type(block_type::video_region_list).all();
    if (lists.empty()) return regions;
    const Block& list = lists.front();
    std::size_t end_of_last = list.payload();
    for (const Block& record :
         index.of_type(block_type::video_region).between(list.payload(), list.end())) {
        if (record.at < end_of_last || record.end() > list.end()) continue;
        end_of_last = record.end();
        regions.push_back(read_region(index, record));
    }
    return regions;
}

}  // namespace tanrove
