// A group plays a window of its list: entries stand at places in the group, and what lies outside
// the window does not sound. Positions are samples.
#include "timeline/clip_group_pieces.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "base/session_numbers.hpp"
#include "timeline/collect_clips.hpp"
#include "timeline/cut_clip.hpp"

namespace tanrove {

namespace {

constexpr std::uint8_t sample_list = 1;
constexpr std::uint8_t tick_list = 2;
constexpr std::int64_t group_origin = static_cast<std::int64_t>(tick_origin);

// Places near the origin count from it; a plain number does not. The other end is longer than any
// timeline, and far from where sums would overflow.
constexpr std::uint64_t min_member_position = tick_origin / 2;
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

bool has_place(const ClipGroupMember& member) {
    return member.position >= min_member_position && member.position <= max_member_position;
}

std::int64_t place_of(const ClipGroupMember& member) {
    return static_cast<std::int64_t>(member.position) - group_origin;
}

/// One time that a member plays.
struct Pass {
    std::int64_t shift = 0;  ///< behind its place
    std::int64_t longest = std::numeric_limits<std::int64_t>::max();
};

/// What a group's list holds, looked up with every doubt settled.
class GroupLists {
public:
    explicit GroupLists(const GroupMaterial& material) : material_(material) {}

    const ClipGroupClip* definition_of(std::uint32_t group) const {
        if (group >= material_.groups.clips.size()) return nullptr;
        const ClipGroupClip& clip = material_.groups.clips[group];
        return clip.valid ? &clip : nullptr;
    }

    /// The list of the group that is viewed; nullptr where there is none that can be read. An empty
    /// one in ticks says as much as one in samples.
    const ClipGroupList* list_of(const GroupView& view) const {
        const ClipGroupClip* clip = definition_of(view.group);
        if (view.depth > max_group_depth || clip == nullptr || clip->table_index < 0)
            return nullptr;
        const auto number = static_cast<std::size_t>(clip->table_index);
        if (number >= material_.groups.lists.size()) return nullptr;
        const ClipGroupList& list = material_.groups.lists[number];
        const bool is_empty = list.kind == tick_list && list.members.empty();
        return list.kind == sample_list || is_empty ? &list : nullptr;
    }

    /// The region that a clip of a list plays; nullptr if there is no sound of it.
    const Region* region_of(const ClipGroupMember& member) const {
        const auto& regions = material_.input.regions;
        if (member.id >= regions.size() || !has_file(regions[member.id], material_.input)) {
            return nullptr;
        }
        return &regions[member.id];
    }

    std::int64_t sync_samples(const ClipGroupMember& member) const {
        if (member.id >= material_.sync_points.size()) return 0;
        return static_cast<std::int64_t>(material_.sync_points[member.id].sync_samples);
    }

    double seconds(std::int64_t samples) const {
        return static_cast<double>(samples) / material_.input.rate_hz;
    }

    /// A nested group as the window shows it; nullopt if it does not.
    std::optional<ListEntry> group_entry(const ClipGroupMember& member, const ClipGroupClip& nested,
                                         const GroupView& view, const Pass& pass) const {
        const std::int64_t at = place_of(member) + pass.shift;
        const std::int64_t length = std::min(nested.length, pass.longest);
        const auto part = shown(view.window, at, length);
        if (!part) return std::nullopt;
        return ListEntry{.member = &member,
                         .head = at,
                         .stored = *part,
                         .span = *part,
                         .fade_end = part->end,
                         .tail = at + length};
    }

    /// A clip as the window shows it. One with a sync point is stored where that point lies.
    std::optional<ListEntry> clip_entry(const ClipGroupMember& member, const Region& region,
                                        const GroupView& view, const Pass& pass) const {
        const std::int64_t head = place_of(member) - sync_samples(member) + pass.shift;
        const double start = view.start + seconds(head - view.window.start);
        const auto length = std::min(sounding_length(material_, member.id, start), pass.longest);
        const bool no_stretch = material_.input.no_stretch;
        const auto played = no_stretch ? std::min(region.length, pass.longest) : length;
        const auto part = shown(view.window, head, played);
        if (!part) return std::nullopt;
        // Fades lie where stretched clips end, also while these are left unstretched.
        const auto faded = no_stretch ? shown(view.window, head, length) : part;
        return ListEntry{.member = &member,
                         .head = head,
                         .stored = *part,
                         .span = *part,
                         .fade_end = faded ? faded->end : part->end,
                         .tail = head + length};
    }

    GroupView view_of(const ListEntry& entry, const ClipGroupClip& nested,
                      const GroupView& outer) const {
        const std::int64_t first = entry.span.start - entry.head + nested.start;
        return {.group = entry.member->id,
                .window = {first, first + entry.span.end - entry.span.start},
                .start = outer.start + seconds(entry.span.start - outer.window.start),
                .muted = outer.muted || entry.member->muted,
                .depth = outer.depth + 1};
    }

private:
    const GroupMaterial& material_;
};

class Expansion {
public:
    Expansion(const GroupMaterial& material, const std::string& track, const WarpOneClip* warp,
              GroupBudget& budget, ClipGroupTallies& tallies, FadeTallies& fade_tallies)
        : material_(material),
          track_(track),
          lists_(material),
          warp_(warp),
          budget_(budget),
          tallies_(tallies),
          fade_tallies_(fade_tallies) {
        settings_.form = material.input.plain_fades ? FadeForm::plain : FadeForm::exact;
        settings_.rate_hz = material.input.rate_hz;
        settings_.no_stretch = material.input.no_stretch;
        settings_.head_room = [this](const ListEntry& entry, std::int64_t wanted) {
            return head_room(entry, wanted);
        };
    }

    void play(const GroupView& view) {
        const ClipGroupList* list = lists_.list_of(view);
        if (list == nullptr) {
            tallies_.add_unreadable(1);
            return;
        }
        std::vector<ListEntry> entries;
        std::vector<GroupFade> fades;
        for (std::size_t i = 0; i < list->members.size(); ++i) {
            if (budget_.visits == 0) {
                tallies_.add_unreadable(list->members.size() - i);
                break;
            }
            --budget_.visits;
            collect(list->members[i], view, entries, fades);
        }
        tallies_.fades_left_off +=
            fade_entries(entries, fades, view.window, settings_, fade_tallies_);
        for (const ListEntry& entry : entries) {
            if (entry.member->nested) {
                play_group(entry, view);
            } else {
                pieces_.push_back(piece_of(entry, view));
                fade_beyond({&pieces_.back(), 1}, entry, view);
            }
        }
    }

    std::vector<ClipItem> take() { return std::move(pieces_); }

private:
    void collect(const ClipGroupMember& member, const GroupView& view,
                 std::vector<ListEntry>& entries, std::vector<GroupFade>& fades) {
        if (member.is_fade) return note_fade(member, view, fades);
        if (!member.live) return;
        const ClipGroupClip* nested = member.nested ? lists_.definition_of(member.id) : nullptr;
        const Region* region = member.nested ? nullptr : lists_.region_of(member);
        if (!has_place(member) || (nested == nullptr && region == nullptr)) {
            tallies_.add_unreadable(1);
            return;
        }
        const MemberLoop loop = loop_of(member, nested, view);
        const double rate_hz = material_.input.rate_hz;
        const std::int64_t step = std::llround(loop.pass_seconds * rate_hz);
        for (std::uint32_t i = 0; i < loop.passes; ++i) {
            const Pass pass = step > 0 ? Pass{i * step, step} : Pass{};
            const auto entry = nested != nullptr ? lists_.group_entry(member, *nested, view, pass)
                                                 : lists_.clip_entry(member, *region, view, pass);
            if (entry) add_entry(*entry, entries);
        }
    }

    void add_entry(const ListEntry& entry, std::vector<ListEntry>& entries) {
        const bool is_piece = !entry.member->nested;
        if (is_piece && budget_.pieces == 0) {
            tallies_.add_unreadable(1);
            return;
        }
        if (is_piece) --budget_.pieces;
        entries.push_back(entry);
    }

    MemberLoop loop_of(const ClipGroupMember& member, const ClipGroupClip* nested,
                       const GroupView& view) {
        if (material_.looper == nullptr || material_.looper->empty()) return {};
        ClipItem clip;
        clip.start = view.start + lists_.seconds(place_of(member) - view.window.start);
        if (nested != nullptr) {
            clip.name = nested->name;
            clip.length = lists_.seconds(nested->length);
        } else {
            const Region& region = material_.input.regions[member.id];
            clip.name = region.name;
            clip.length = lists_.seconds(region.length);
            if (warp_ != nullptr) {
                const auto sounding = sounding_length(material_, member.id, clip.start);
                clip.playrate = static_cast<double>(region.length) / static_cast<double>(sounding);
                clip.length = lists_.seconds(sounding);
            }
        }
        return material_.looper->loop_member(member, clip, track_, *material_.loops);
    }

    void note_fade(const ClipGroupMember& member, const GroupView& view,
                   std::vector<GroupFade>& fades) {
        if (material_.input.no_fades) return;
        const auto& records = material_.input.fades;
        if (!has_place(member) || member.id >= records.size() ||
            records[member.id].kind == FadeKind::unusable) {
            ++tallies_.fades;
            ++tallies_.fades_left_off;
            return;
        }
        const GroupFade fade{place_of(member), &records[member.id]};
        // A group that was cut in two keeps the fades of both halves in its list.
        if (!is_shown(fade, view.window)) return;
        ++tallies_.fades;
        fades.push_back(fade);
    }

    /// What is seen of fades whose edges are not.
    void fade_beyond(std::span<ClipItem> pieces, const ListEntry& entry, const GroupView& view) {
        for (const FadeBeyond& fade : entry.beyond) {
            const double start = view.start + lists_.seconds(fade.start - view.window.start);
            const double length = fade.record->length / material_.input.rate_hz;
            const FadeSpec spec = clip_fade_spec(*fade.record, fade.side);
            fade_across(pieces, {fade.side, spec, start, length}, material_.input.rate_hz,
                        budget_.curves);
        }
    }

    void play_group(const ListEntry& entry, const GroupView& view) {
        const ClipGroupClip& nested = *lists_.definition_of(entry.member->id);
        const std::size_t first = pieces_.size();
        play(lists_.view_of(entry, nested, view));
        const auto on_timeline = [&](std::int64_t at) {
            return view.start + lists_.seconds(at - view.window.start);
        };
        const GroupEdges edges{.start = on_timeline(entry.span.start),
                               .end = on_timeline(entry.span.end),
                               .stored_start = on_timeline(entry.stored.start),
                               .stored_end = on_timeline(entry.stored.end),
                               .fade_in = entry.fades->fade_in,
                               .fade_out = entry.fades->fade_out};
        const auto pieces = std::span(pieces_).subspan(first);
        tallies_.spread_fades += fade_group_edges(pieces, edges, settings_.form,
                                                  material_.input.rate_hz, budget_.curves);
        fade_beyond(pieces, entry, view);
        for (ClipItem& piece : pieces) {
            piece.grouping.edit().inner_groups.push_back(entry.member->id);
        }
    }

    /// A group's list goes on in front of its window, if only in silence.
    std::int64_t head_room(const ListEntry& entry, std::int64_t wanted) const {
        if (entry.member->nested) return wanted;
        const Region& region = material_.input.regions[entry.member->id];
        const double needed =
            source_before(whole_clip(entry, 0), lists_.seconds(wanted)) * material_.input.rate_hz;
        const auto room = static_cast<double>(region.source_offset);
        if (needed <= room) return wanted;
        return static_cast<std::int64_t>(static_cast<double>(wanted) * (room / needed));
    }

    double source_before(const ClipItem& clip, double seconds) const {
        return warp_ != nullptr ? material_.slicer.source_seconds_before(clip, seconds) : seconds;
    }

    ClipItem whole_clip(const ListEntry& entry, double start) const {
        ClipItem clip;
        const std::uint32_t number = entry.member->id;
        take_region(clip, number, material_.input.regions[number], material_.input);
        clip.stored_position = no_stored_position;
        clip.start = start;
        return clip;
    }

    ClipItem piece_of(const ListEntry& entry, const GroupView& view) {
        const double head = view.start + lists_.seconds(entry.head - view.window.start);
        ClipItem clip = whole_clip(entry, head);
        if (warp_ == nullptr || material_.slicer.warp_of(clip.name) == nullptr) {
            cut_plain(clip, entry);
        } else {
            cut_warped(clip, entry);
        }
        clip.start = view.start + lists_.seconds(entry.span.start - view.window.start);
        clip.source_offset_samples =
            offset_in_samples(std::llround(clip.source_offset * material_.input.rate_hz));
        clip.head_of_file = begins_with_its_file(clip);
        clip.muted = view.muted || entry.member->muted;
        clip.fades = entry.fades;
        clip.crossfaded = entry.crossfaded;
        const std::int64_t sync = lists_.sync_samples(*entry.member);
        const std::int64_t to_sync = entry.head + sync - entry.span.start;
        if (sync > 0 && to_sync > 0) clip.sync_offset = lists_.seconds(to_sync);
        return clip;
    }

    void cut_plain(ClipItem& clip, const ListEntry& entry) const {
        const Region& region = material_.input.regions[entry.member->id];
        clip.length = lists_.seconds(entry.span.end - entry.span.start);
        clip.source_offset = lists_.seconds(region.source_offset + entry.span.start - entry.head);
    }

    /// The clip, drawn out as far as its crossfades want it, is warped whole; then its span is cut
    /// out of it.
    void cut_warped(ClipItem& clip, const ListEntry& entry) {
        const WarpSlicer& slicer = material_.slicer;
        const double rate_hz = material_.input.rate_hz;
        const auto slice = slicer.slice(clip);
        if (slice) clip.stretch.edit().warp_origin_samples = slice->origin_samples;
        const double length = slice ? slice->length : clip.length;
        const double before = lists_.seconds(entry.head - entry.span.start);
        const double behind = lists_.seconds(entry.span.end - entry.head) - length;
        const double source_behind = behind > 0 ? slicer.source_seconds_behind(clip, behind) : 0;
        if (before > 0) {
            const double source = slicer.source_seconds_before(clip, before);
            clip.start -= before;
            clip.length += source;
            clip.source_offset -= source;
        }
        clip.length += source_behind;
        (*warp_)(clip);

        if (before < 0) start_later(clip, -before, rate_hz);
        const double shown = lists_.seconds(entry.span.end - entry.span.start);
        if (shown < clip.length - 0.5 / rate_hz) cut_tail(clip, shown);
    }

    const GroupMaterial& material_;
    const std::string& track_;
    GroupLists lists_;
    const WarpOneClip* warp_;
    GroupBudget& budget_;
    ClipGroupTallies& tallies_;
    FadeTallies& fade_tallies_;
    GroupFadeSettings settings_;
    std::vector<ClipItem> pieces_;
};

/// Looks for the first sound of a group, or for something of it that cannot be read.
class SoundSearch {
public:
    SoundSearch(const GroupMaterial& material, GroupBudget& budget)
        : lists_(material), budget_(budget) {}

    bool finds_in(const GroupView& view) {
        const ClipGroupList* list = lists_.list_of(view);
        return list == nullptr || std::ranges::any_of(list->members, [&](const auto& member) {
                   return finds_in(member, view);
               });
    }

private:
    bool finds_in(const ClipGroupMember& member, const GroupView& view) {
        if (budget_.visits == 0) return true;
        --budget_.visits;
        if (!member.live) return false;
        if (!has_place(member)) return true;
        if (!member.nested) {
            const Region* region = lists_.region_of(member);
            return region == nullptr || lists_.clip_entry(member, *region, view, {}).has_value();
        }
        const ClipGroupClip* nested = lists_.definition_of(member.id);
        if (nested == nullptr) return true;
        const auto entry = lists_.group_entry(member, *nested, view, {});
        return entry && finds_in(lists_.view_of(*entry, *nested, view));
    }

    GroupLists lists_;
    GroupBudget& budget_;
};

}  // namespace

void ClipGroupTallies::add_unreadable(std::size_t count) {
    const auto room = static_cast<std::size_t>(std::numeric_limits<int>::max() - unreadable);
    unreadable += static_cast<int>(std::min(count, room));
}

SampleWindow window_of(const ClipGroupClip& group) {
    return {group.start, group.start + group.length};
}

std::int64_t sounding_length(const GroupMaterial& material, std::uint32_t region,
                             double start_seconds) {
    const Region& stored = material.input.regions[region];
    if (material.slicer.warp_of(stored.name) == nullptr) return stored.length;
    ClipItem clip;
    clip.name = stored.name;
    clip.start = start_seconds;
    clip.length = static_cast<double>(stored.length) / material.input.rate_hz;
    clip.source_offset = static_cast<double>(stored.source_offset) / material.input.rate_hz;
    const auto slice = material.slicer.slice(clip);
    return slice ? std::llround(slice->length * material.input.rate_hz) : stored.length;
}

bool holds_no_audio(const GroupMaterial& material, std::uint32_t group, GroupBudget& budget) {
    const SampleWindow window = window_of(material.groups.clips[group]);
    return !SoundSearch(material, budget).finds_in({.group = group, .window = window});
}

std::vector<ClipItem> pieces_of_group(const PlacedGroup& placed, const GroupMaterial& material,
                                      const WarpOneClip* warp, GroupBudget& budget,
                                      ClipGroupTallies& tallies, FadeTallies& fade_tallies) {
    Expansion expansion(material, placed.track, warp, budget, tallies, fade_tallies);
    expansion.play({.group = placed.group,
                    .window = placed.window,
                    .start = placed.start,
                    .muted = placed.muted});
    return expansion.take();
}

}  // namespace tanrove
