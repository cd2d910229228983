// Sessions without a table of list numbers keep the lists in the order of their definitions, pieces
// that were cut from a group left out. Where counting gives a list to a definition that it cannot
// belong to, lengths decide.
#include "session/group_lists.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace tanrove {

namespace {

/// Plain definitions of one name that a piece is held against.
constexpr std::size_t max_namesakes = 1024;

std::int64_t member_length(const ClipGroupMember& member,
                           std::span<const std::int64_t> region_lengths,
                           const std::vector<ClipGroupClip>& clips) {
    if (member.nested) return member.id < clips.size() ? clips[member.id].length : 0;
    return member.id < region_lengths.size() ? region_lengths[member.id] : 0;
}

/// Where the last member of a list ends, in samples from the group's head.
std::int64_t extent(const ClipGroupList& list, std::span<const std::int64_t> region_lengths,
                    const std::vector<ClipGroupClip>& clips) {
    const ClipGroupMember* last = nullptr;
    for (const ClipGroupMember& member : list.members) {
        if (member.is_fade) continue;
        if (last == nullptr || member.position > last->position) last = &member;
    }
    if (last == nullptr) return 0;
    auto position = static_cast<std::int64_t>(last->position);
    if (last->position >= tick_origin / 2) position -= static_cast<std::int64_t>(tick_origin);
    return position + member_length(*last, region_lengths, clips);
}

bool is_plain(const ClipGroupClip& clip) {
    return clip.valid && !clip.flag && clip.is_compound == 0;
}

/// True if the plain definitions, counted, do not play the lists of their numbers: a list reaches
/// beyond its definition and ends where another one does. One that is only longer than its
/// definition was trimmed.
bool numbers_misfit(const ClipGroups& groups, const std::vector<std::int64_t>& extents) {
    std::map<std::int64_t, std::size_t> definitions_of_length;
    for (const ClipGroupClip& clip : groups.clips) {
        if (is_plain(clip)) ++definitions_of_length[clip.length];
    }
    std::size_t running = 0;
    for (const ClipGroupClip& clip : groups.clips) {
        if (!is_plain(clip)) continue;
        const std::int64_t reach = extents[running++];
        if (reach <= clip.start + clip.length) continue;
        const auto others = definitions_of_length.find(reach);
        if (others == definitions_of_length.end()) continue;
        if (others->second > (reach == clip.length ? 1U : 0U)) return true;
    }
    return false;
}

/// The lists of one length: how many, and the last of them.
struct ListsOfExtent {
    std::size_t count = 0;
    std::size_t list = 0;
};

/// Lists belong to the plain definitions in order; where that cannot be and lengths tell better,
/// they decide.
void number_plain_definitions(ClipGroups& groups, std::span<const std::int64_t> region_lengths) {
    std::vector<std::int64_t> extents;
    for (const ClipGroupList& list : groups.lists) {
        extents.push_back(extent(list, region_lengths, groups.clips));
    }
    std::map<std::int64_t, ListsOfExtent> by_extent;
    if (numbers_misfit(groups, extents)) {
        for (std::size_t i = 0; i < extents.size(); ++i) {
            by_extent[extents[i]] = {by_extent[extents[i]].count + 1, i};
        }
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

void number_group_lists(ClipGroups& groups, std::span<const std::int64_t> region_lengths) {
    if (groups.lists_are_told) return;
    const auto plain = std::ranges::count_if(groups.clips, is_plain);
    if (static_cast<std::size_t>(plain) == groups.lists.size()) {
        number_plain_definitions(groups, region_lengths);
    }
    number_pieces(groups.clips);
}

}  // namespace tanrove
