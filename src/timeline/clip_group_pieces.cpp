// A group plays a window of its list: entries stand at places in the group, and what lies outside
// the window does not sound. Positions are samples.
#include "timeline/clip_group_pieces.hpp"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "session/block_scan.hpp"
#include "timeline/clip_group_fades.hpp"

namespace tanrove {

namespace {

constexpr std::uint8_t sample_list = 1;
constexpr std::int64_t group_origin = static_cast<std::int64_t>(tick_origin);

// Longer than any timeline, and far from where sums would overflow.
constexpr std::uint64_t max_member_position = std::uint64_t{1} << 56;

/// One group being played: what sounds of it, and where its window stands on the timeline.
struct GroupView {
    std::uint32_t group = 0;
    SampleWindow window;
    double start = 0;  ///< seconds
    bool muted = false;
    int depth = 1;
};

/// What a window shows of something of this length at `at`; nullopt for nothing.
std::optional<SampleWindow> shown(const SampleWindow& window, std::int64_t at,
                                  std::int64_t length) {
    if (length <= 0) return std::nullopt;
    const SampleWindow part{.start = std::max(window.start, at),
                            .end = length < window.end - at ? at + length : window.end};
    if (part.end <= part.start) return std::nullopt;
    return part;
}

/// False for a place so far outside that no fade there finds an edge of what sounds.
bool is_beside(const SampleWindow& window, std::int64_t at) {
    return at >= window.start - edge_tolerance_samples && at <= window.end + edge_tolerance_samples;
}

class Expansion {
public:
    Expansion(const GroupMaterial& material, GroupBudget& budget, ClipGroupTallies& tallies)
        : material_(material), budget_(budget), tallies_(tallies) {}

    void play(const GroupView& view) {
        const ClipGroupList* list = view.depth <= max_group_depth ? list_of(view.group) : nullptr;
        if (list == nullptr || list->kind != sample_list) {
            tallies_.add_unreadable(1);
            return;
        }
        for (std::size_t i = 0; i < list->members.size(); ++i) {
            if (budget_.visits == 0) {
                tallies_.add_unreadable(list->members.size() - i);
                return;
            }
            --budget_.visits;
            play_member(list->members[i], view);
        }
    }

    GroupContents take() { return std::move(contents_); }

private:
    const ClipGroupClip* definition_of(std::uint32_t group) const {
        if (group >= material_.groups.clips.size()) return nullptr;
        const ClipGroupClip& clip = material_.groups.clips[group];
        return clip.valid ? &clip : nullptr;
    }

    const ClipGroupList* list_of(std::uint32_t group) const {
        const ClipGroupClip* clip = definition_of(group);
        if (clip == nullptr || clip->table_index < 0) return nullptr;
        const auto list = static_cast<std::size_t>(clip->table_index);
        return list < material_.groups.lists.size() ? &material_.groups.lists[list] : nullptr;
    }

    double seconds(std::int64_t samples) const {
        return static_cast<double>(samples) / material_.rate_hz;
    }

    void play_member(const ClipGroupMember& member, const GroupView& view) {
        const bool has_place =
            member.position >= tick_origin && member.position <= max_member_position;
        const auto at = has_place ? static_cast<std::int64_t>(member.position) - group_origin : 0;
        if (member.is_fade) {
            note_fade(member, has_place && view.depth == 1 && is_beside(view.window, at), at);
        } else if (!member.live) {
            return;
        } else if (!has_place) {
            tallies_.add_unreadable(1);
        } else if (member.nested) {
            play_group(member, at, view);
        } else {
            play_clip(member, at, view);
        }
    }

    void note_fade(const ClipGroupMember& member, bool can_be_placed, std::int64_t at) {
        if (material_.no_fades) return;
        ++tallies_.fades;
        if (can_be_placed && member.id < material_.fades.size() &&
            material_.fades[member.id].kind != FadeKind::unusable) {
            contents_.fades.push_back({at, &material_.fades[member.id]});
        } else {
            ++tallies_.fades_left_off;
        }
    }

    void play_group(const ClipGroupMember& member, std::int64_t at, const GroupView& view) {
        const ClipGroupClip* nested = definition_of(member.id);
        if (nested == nullptr) {
            tallies_.add_unreadable(1);
            return;
        }
        const auto part = shown(view.window, at, nested->length);
        if (!part) return;
        const std::int64_t first = part->start - at + nested->start;
        play({.group = member.id,
              .window = {first, first + part->end - part->start},
              .start = view.start + seconds(part->start - view.window.start),
              .muted = view.muted || member.muted,
              .depth = view.depth + 1});
    }

    void play_clip(const ClipGroupMember& member, std::int64_t at, const GroupView& view) {
        if (member.id >= material_.regions.size()) {
            tallies_.add_unreadable(1);
            return;
        }
        const Region& region = material_.regions[member.id];
        // A clip with a sync point is stored where that point lies.
        const std::int64_t head =
            member.id < material_.sync_points.size()
                ? at - static_cast<std::int64_t>(material_.sync_points[member.id].sync_samples)
                : at;
        const auto part = shown(view.window, head, region.length);
        if (!part) return;
        if (budget_.pieces == 0) {
            tallies_.add_unreadable(1);
            return;
        }

        --budget_.pieces;
        GroupPiece piece;
        piece.region = member.id;
        piece.start = view.start + seconds(part->start - view.window.start);
        piece.length = seconds(part->end - part->start);
        const std::int64_t source = part->start - head + region.source_offset;
        piece.source_offset = seconds(source);
        piece.muted = view.muted || member.muted;
        piece.sync_offset = std::max(seconds(at - part->start), 0.0);
        if (view.depth == 1) contents_.edges.push_back({contents_.pieces.size(), *part, source});
        contents_.pieces.push_back(piece);
    }

    const GroupMaterial& material_;
    GroupBudget& budget_;
    ClipGroupTallies& tallies_;
    GroupContents contents_;
};

}  // namespace

void ClipGroupTallies::add_unreadable(std::size_t count) {
    const auto room = static_cast<std::size_t>(std::numeric_limits<int>::max() - unreadable);
    unreadable += static_cast<int>(std::min(count, room));
}

std::vector<GroupPiece> pieces_of_group(const PlacedGroup& placed, const GroupMaterial& material,
                                        GroupBudget& budget, ClipGroupTallies& tallies,
                                        FadeTallies& fade_tallies) {
    const ClipGroupClip& group = material.groups.clips[placed.group];
    const SampleWindow window{group.start, group.start + group.length};
    Expansion expansion(material, budget, tallies);
    expansion.play(
        {.group = placed.group, .window = window, .start = placed.start, .muted = placed.muted});
    GroupContents contents = expansion.take();
    tallies.fades_left_off += fade_pieces(
        contents, window, {.form = material.fade_form, .rate_hz = material.rate_hz}, fade_tallies);
    return std::move(contents.pieces);
}

}  // namespace tanrove
