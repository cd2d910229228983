// Clip group definitions: 0x262c holds a u32 count at 9 and a 0x262b each. Offsets from its 'Z':
//   9       a 0x2628 block
//   18      u32 count, text of the name
//   T       three-point header behind the name. The first number is where the group's window
//   begins,
//           from 10^12; it can begin in front of the group's head.
//   E       u8 0 and a u32, E being the 0x2628's end: the place of its record in the 0x2424. Older
//           sessions: u8 compound mark at E + 16, u8 kind at E + 21
// Member lists: 0x2428 holds playlists, counted from 0, those that cannot be read included.
// Which list a definition plays: 0x2424 holds a u32 count at 9 and a 0x2423 a definition, with the
// u32 number of its list at 9 and its name, counted, at 13. Definitions cut from one group share a
// list.
#include "session/clip_groups.hpp"

#include <algorithm>
#include <string_view>

#include "session/block_types.hpp"
#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

constexpr std::size_t first_definition_at = 13;
constexpr std::size_t name_count_at = 18;
constexpr std::size_t count_width = 4;
constexpr std::size_t max_name = 255;
constexpr std::size_t widest_number = 5;
constexpr std::size_t widest_position = 8;
constexpr std::size_t compound_behind_child = 16;
constexpr std::size_t kind_behind_child = 21;
constexpr std::size_t number_place_behind_child = 1;

constexpr std::size_t first_number_at = 13;
constexpr std::size_t list_number_at = 9;
constexpr std::size_t list_name_count_at = 13;

std::int64_t number(std::uint64_t value, std::size_t width, std::size_t widest) {
    return width <= widest ? static_cast<std::int64_t>(value) : 0;
}

ClipGroupClip read_definition(const BlockIndex& index, const Block& record) {
    const ByteView image = index.image();
    ClipGroupClip clip;
    const Block* child = index.at(record.payload());
    if (child == nullptr || child->content_type != block_type::clip) return clip;
    if (child->end() > record.end()) return clip;
    const std::size_t count_at = record.at + name_count_at;
    const auto name = readCountedText(image, count_at, max_name, record.end());
    if (!name) return clip;
    const auto point = readThreePoint(image, count_at + count_width + name->size(), record.end());
    if (!point) return clip;
    clip.valid = true;
    clip.name = *name;
    clip.flag = point->flag != 0;
    clip.source_offset = number(point->source_offset, point->first_width, widest_number);
    clip.length = number(point->length, point->second_width, widest_number);
    clip.recorded_at = number(point->start, point->third_width, widest_position);
    // Places near the origin count from it, on either side.
    clip.has_start = clip.source_offset >= static_cast<std::int64_t>(tick_origin / 2);
    if (clip.has_start) clip.start = clip.source_offset - static_cast<std::int64_t>(tick_origin);
    const bool has_place = record.end() >= child->end() + number_place_behind_child + count_width;
    if (has_place && image.u8(child->end()) == 0) {
        clip.number_place = image.u32(child->end() + number_place_behind_child);
    }
    if (child->end() + kind_behind_child < record.end()) {
        clip.is_compound = image.u8(child->end() + compound_behind_child);
        clip.kind = image.u8(child->end() + kind_behind_child);
    }
    return clip;
}

std::vector<ClipGroupClip> read_definitions(const BlockIndex& index) {
    std::vector<ClipGroupClip> clips;
    const auto tables = index.of_type(block_type::clip_group_table).all();
    if (tables.empty()) return clips;
    const Block& table = tables.front();
    std::size_t at = table.at + first_definition_at;
    while (const Block* record =
               index.of_type(block_type::clip_group).first_inside(at, table.end())) {
        clips.push_back(read_definition(index, *record));
        at = record->end();
    }
    return clips;
}

ClipGroupList read_list(ByteView image, const PlaylistWalk& playlist) {
    ClipGroupList list;
    list.kind = playlist.kind;
    for (const std::size_t at : playlist.row_at) {
        const auto row = read_placement_row(image, at);
        if (!row) continue;
        list.members.push_back({.id = row->region_id,
                                .nested = row->in_group,
                                .is_fade = row->is_fade,
                                .live = row->live(),
                                .muted = row->muted,
                                .position = row->position,
                                .placed_at = row->placed_at});
    }
    return list;
}

std::vector<ClipGroupList> read_lists(const BlockIndex& index) {
    std::vector<ClipGroupList> lists;
    const auto tables = index.of_type(block_type::group_list_table).all();
    if (tables.empty()) return lists;
    const Block& table = tables.front();
    PlaylistWalker walker(index);
    for (const Block& block :
         index.of_type(block_type::audio_playlist).between(table.payload(), table.end())) {
        if (block.end() > table.end()) continue;
        // A list that cannot be read keeps its number, and its kind of 0 says so.
        const auto playlist = walker.walk(block);
        lists.push_back(playlist ? read_list(index.image(), *playlist) : ClipGroupList{});
    }
    return lists;
}

/// What the session says of the list of one definition.
struct ListNumber {
    std::uint32_t list = 0;
    std::string_view name;
};

std::vector<ListNumber> read_list_numbers(const BlockIndex& index) {
    std::vector<ListNumber> numbers;
    const auto tables = index.of_type(block_type::group_list_numbers).all();
    if (tables.empty()) return numbers;
    const Block& table = tables.front();
    std::size_t at = table.at + first_number_at;
    while (const Block* record =
               index.of_type(block_type::group_list_number).first_inside(at, table.end())) {
        const ByteView image = index.image();
        const auto name =
            readCountedText(image, record->at + list_name_count_at, max_name, record->end());
        numbers.push_back({image.u32(record->at + list_number_at), name.value_or("")});
        at = record->end();
    }
    return numbers;
}

/// A record that bears the definition's name is its own; without such a one the records count as
/// the definitions do, if there is one for each and all of them name lists.
void take_list_numbers(ClipGroups& groups, const std::vector<ListNumber>& numbers) {
    const auto is_list = [&](const ListNumber& number) {
        return number.list < groups.lists.size();
    };
    const bool counts_fit =
        numbers.size() == groups.clips.size() && std::ranges::all_of(numbers, is_list);
    for (std::size_t i = 0; i < groups.clips.size(); ++i) {
        ClipGroupClip& clip = groups.clips[i];
        const bool is_named = clip.number_place < numbers.size() &&
                              numbers[clip.number_place].name == clip.name &&
                              is_list(numbers[clip.number_place]);
        if (!is_named && !counts_fit) continue;
        clip.table_index =
            static_cast<std::int32_t>(numbers[is_named ? clip.number_place : i].list);
        groups.lists_are_told = true;
    }
}

}  // namespace

ClipGroups readClipGroups(const BlockIndex& index) {
    ClipGroups groups;
    groups.clips = read_definitions(index);
    groups.lists = read_lists(index);
    take_list_numbers(groups, read_list_numbers(index));
    return groups;
}

}  // namespace tanrove
