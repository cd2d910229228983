// Clip group definitions: 0x262c holds a u32 count at 9 and a 0x262b each. Offsets from its 'Z':
//   9       a 0x2628 block
//   18      u32 count, text of the name
//   T       three-point header behind the name. A source offset of 10^12 or more is a place in the
//           group, from 10^12.
//   E + 16  u8 compound mark, E being the 0x2628's end
//   E + 21  u8 kind
// Member lists: 0x2428 holds playlists, one a plain definition.
#include "session/clip_groups.hpp"

#include <algorithm>
#include <map>

#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t definition_table_type = 0x262c;
constexpr std::uint16_t definition_type = 0x262b;
constexpr std::uint16_t name_block_type = 0x2628;
constexpr std::uint16_t member_table_type = 0x2428;
constexpr std::uint16_t list_type = 0x1052;

constexpr std::size_t first_definition_at = 13;
constexpr std::size_t name_count_at = 18;
constexpr std::size_t count_width = 4;
constexpr std::size_t max_name = 255;
constexpr std::size_t widest_number = 5;
constexpr std::size_t widest_position = 8;
constexpr std::size_t compound_behind_child = 16;
constexpr std::size_t kind_behind_child = 21;

/// Plain definitions of one name that a piece is held against.
constexpr std::size_t max_namesakes = 1024;

std::int64_t number(std::uint64_t value, std::size_t width, std::size_t widest) {
    return width <= widest ? static_cast<std::int64_t>(value) : 0;
}

ClipGroupClip read_definition(const BlockIndex& index, const Block& record) {
    const ByteView image = index.image();
    ClipGroupClip clip;
    const Block* child = index.at(record.payload());
    if (child == nullptr || child->content_type != name_block_type) return clip;
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
    clip.has_start = clip.source_offset >= static_cast<std::int64_t>(tick_origin);
    if (clip.has_start) clip.start = clip.source_offset - static_cast<std::int64_t>(tick_origin);
    if (child->end() + kind_behind_child < record.end()) {
        clip.is_compound = image.u8(child->end() + compound_behind_child);
        clip.kind = image.u8(child->end() + kind_behind_child);
    }
    return clip;
}

std::vector<ClipGroupClip> read_definitions(const BlockIndex& index) {
    std::vector<ClipGroupClip> clips;
    const auto tables = index.of_type(definition_table_type).all();
    if (tables.empty()) return clips;
    const Block& table = tables.front();
    std::size_t at = table.at + first_definition_at;
    while (const Block* record = index.of_type(definition_type).first_inside(at, table.end())) {
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
        list.members.push_back({.id = row->id,
                                .nested = row->in_group,
                                .is_fade = row->is_fade,
                                .live = !row->is_fade,
                                .muted = row->muted,
                                .position = row->position});
    }
    return list;
}

std::vector<ClipGroupList> read_lists(const BlockIndex& index) {
    std::vector<ClipGroupList> lists;
    const auto tables = index.of_type(member_table_type).all();
    if (tables.empty()) return lists;
    const Block& table = tables.front();
    PlaylistWalker walker(index);
    for (const Block& block : index.of_type(list_type).between(table.payload(), table.end())) {
        if (block.end() > table.end()) continue;
        if (const auto playlist = walker.walk(block)) {
            lists.push_back(read_list(index.image(), *playlist));
        }
    }
    return lists;
}

std::int64_t member_length(const ClipGroupMember& member, const std::vector<Region>& regions,
                           const std::vector<ClipGroupClip>& clips) {
    if (member.nested) return member.id < clips.size() ? clips[member.id].length : 0;
    return member.id < regions.size() ? regions[member.id].length : 0;
}

/// Where the last member of a list ends, in samples from the group's head.
std::int64_t extent(const ClipGroupList& list, const std::vector<Region>& regions,
                    const std::vector<ClipGroupClip>& clips) {
    const ClipGroupMember* last = nullptr;
    for (const ClipGroupMember& member : list.members) {
        if (member.is_fade) continue;
        if (last == nullptr || member.position > last->position) last = &member;
    }
    if (last == nullptr) return 0;
    auto position = static_cast<std::int64_t>(last->position);
    if (last->position >= tick_origin / 2) position -= static_cast<std::int64_t>(tick_origin);
    return position + member_length(*last, regions, clips);
}

bool is_plain(const ClipGroupClip& clip) {
    return clip.valid && !clip.flag && clip.is_compound == 0;
}

/// Lists belong to the plain definitions in order; where lengths tell better, they decide.
void number_plain_definitions(ClipGroups& groups, const std::vector<Region>& regions) {
    struct ByExtent {
        std::size_t count = 0;
        std::size_t list = 0;
    };
    std::map<std::int64_t, ByExtent> by_extent;
    for (std::size_t i = 0; i < groups.lists.size(); ++i) {
        ByExtent& entry = by_extent[extent(groups.lists[i], regions, groups.clips)];
        ++entry.count;
        entry.list = i;
    }
    std::vector<bool> taken(groups.lists.size(), false);
    std::int32_t running = 0;
    for (ClipGroupClip& clip : groups.clips) {
        if (!is_plain(clip)) continue;
        clip.table_index = running++;
        const auto match = by_extent.find(clip.length);
        if (match == by_extent.end() || match->second.count != 1) continue;
        if (taken[match->second.list]) continue;
        taken[match->second.list] = true;
        clip.table_index = static_cast<std::int32_t>(match->second.list);
    }
}

bool lies_inside(const ClipGroupClip& piece, const ClipGroupClip& whole) {
    return piece.start >= whole.start && piece.start + piece.length <= whole.start + whole.length;
}

/// A piece cut from a group plays the list of the one group of its name that it fits into.
void number_pieces(std::vector<ClipGroupClip>& clips) {
    std::map<std::string, std::vector<std::size_t>> plain_by_name;
    for (std::size_t i = 0; i < clips.size(); ++i) {
        if (!is_plain(clips[i])) continue;
        auto& namesakes = plain_by_name[clips[i].name];
        if (namesakes.size() < max_namesakes) namesakes.push_back(i);
    }
    for (ClipGroupClip& piece : clips) {
        if (!piece.flag || !piece.has_start) continue;
        const auto namesakes = plain_by_name.find(piece.name);
        if (namesakes == plain_by_name.end()) continue;
        const ClipGroupClip* whole = nullptr;
        std::size_t fits = 0;
        for (const std::size_t i : namesakes->second) {
            if (!lies_inside(piece, clips[i])) continue;
            whole = &clips[i];
            if (++fits > 1) break;
        }
        if (fits == 1) piece.table_index = whole->table_index;
    }
}

}  // namespace

ClipGroups readClipGroups(const BlockIndex& index, const std::vector<Region>& regions) {
    ClipGroups groups;
    groups.clips = read_definitions(index);
    groups.lists = read_lists(index);
    const auto plain = std::count_if(groups.clips.begin(), groups.clips.end(), is_plain);
    if (static_cast<std::size_t>(plain) == groups.lists.size()) {
        number_plain_definitions(groups, regions);
    }
    number_pieces(groups.clips);
    return groups;
}

}  // namespace tanrove
