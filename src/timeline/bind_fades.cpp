// Two passes over the rows: the first finds the clips that each fade joins, the second shapes them
// in the order of the rows. A crossfade moves edges, so the edges are sought as they stood before.
#include "timeline/bind_fades.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "timeline/clip_edges.hpp"
#include "timeline/track_timebase.hpp"

namespace tanrove {
namespace {

/// A fade row that names a usable record.
struct FadeRow {
    double seconds = 0;
    const FadeRecord* record = nullptr;
    ClipItem* outgoing = nullptr;  ///< null: no clip or group ends there
    ClipItem* incoming = nullptr;  ///< null: no clip or group begins there
};

double end_of(const ClipItem& clip) {
    const double warped_length = clip.stretch->warped_length;
    return clip.start + (warped_length > 0 ? warped_length : clip.length);
}

/// Seconds of the clip's file that `extension` seconds beyond that edge take.
double source_extension(const ClipItem& clip, FadeSide edge, double extension,
                        const FadeBinding& binding) {
    if (binding.no_stretch || clip.grouping->clip_group) return extension;
    return edge == FadeSide::fade_in ? binding.warps.source_seconds_before(clip, extension)
                                     : binding.warps.source_seconds_behind(clip, extension);
}

/// Clips and groups: a fade lies on either, and its row tells which.
std::vector<ClipItem*> fadable(TimelineTrack& track) {
    std::vector<ClipItem*> clips;
    clips.reserve(track.clips.size() + track.groups.size());
    for (ClipItem& clip : track.clips) clips.push_back(&clip);
    for (ClipItem& group : track.groups) clips.push_back(&group);
    return clips;
}

/// Number and stored position of a fade, by which its row and its rendered file know each other.
using FadeKey = std::pair<std::uint32_t, std::uint64_t>;

FadeKey key_of(std::uint32_t fade, std::uint64_t position) {
    return {fade, position & 0xffffffff};
}

/// The fades whose rendered files stayed on the track, in order: the files play them.
std::vector<FadeKey> rendered_fades(const TimelineTrack& track) {
    std::vector<FadeKey> fades;
    for (const ClipItem& clip : track.clips) {
        if (clip.is_fade_reference) fades.push_back(key_of(clip.region, clip.stored_position));
    }
    std::ranges::sort(fades);
    return fades;
}

std::vector<FadeRow> rows_with_clips(TimelineTrack& track, const PlaylistDetail& edit_list,
                                     const FadeBinding& binding, FadeTallies& tallies) {
    std::vector<FadeRow> rows;
    std::vector<FadePlace> places;
    const auto rendered = rendered_fades(track);
    for (std::size_t number = 0; number < edit_list.rows.size(); ++number) {
        const PlacementRow& row = edit_list.rows[number];
        if (!row.is_fade) continue;
        const std::size_t fade = row.region_id;
        const FadeKey key = key_of(row.region_id, row.position);
        if (std::ranges::binary_search(rendered, key)) continue;
        if (fade >= binding.fades.size() || binding.fades[fade].kind == FadeKind::unusable) {
            ++tallies.not_understood;
            continue;
        }
        const double seconds =
            stored_seconds(row.position, track.tick_based, binding.rate_hz, binding.clock);
        rows.push_back({seconds, &binding.fades[fade]});
        places.push_back({seconds, static_cast<std::int32_t>(number)});
    }
    if (rows.empty()) return rows;

    const auto clips = fadable(track);
    std::vector<ClipEdge> starts;
    std::vector<ClipEdge> ends;
    for (const ClipItem* clip : clips) {
        starts.push_back({clip->start, clip->edit_row});
        ends.push_back({end_of(*clip), clip->edit_row});
    }
    const auto outgoing = edges_of_fades(ends, places, RowSide::before_fade);
    const auto incoming = edges_of_fades(starts, places, RowSide::behind_fade);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (outgoing[i]) rows[i].outgoing = clips[*outgoing[i]];
        if (incoming[i]) rows[i].incoming = clips[*incoming[i]];
    }
    return rows;
}

/// What opening a crossfade adds to the outgoing clip's tail and to the incoming clip's head.
struct Extension {
    double seconds = 0;         ///< on the timeline
    double source_seconds = 0;  ///< of the clip's file
};

Extension extension_of(const ClipItem& clip, FadeSide edge, double seconds,
                       const FadeBinding& binding) {
    return {seconds, source_extension(clip, edge, seconds, binding)};
}

/// True if clip and file go on that far in front of the clip's head. In front of a group's window
/// its list goes on, if only in silence.
bool has_handle(const ClipItem& incoming, const Extension& head) {
    const bool has_source =
        incoming.grouping->clip_group || incoming.source_offset >= head.source_seconds;
    return incoming.start >= head.seconds && has_source;
}

/// The tail reaches to the fade's end, also from an edge that lies beside the fade's centre.
Extension tail_extension(const FadeRow& row, double post, const FadeBinding& binding) {
    const double gap = row.seconds - end_of(*row.outgoing);
    const bool is_off = std::abs(gap) * binding.rate_hz >= 0.5 && gap + post > 0;
    return extension_of(*row.outgoing, FadeSide::fade_out, is_off ? gap + post : post, binding);
}

/// The head reaches to the fade's start, if it has room for that from where its edge lies.
Extension head_extension(const FadeRow& row, double pre, const FadeBinding& binding) {
    const double gap = row.incoming->start - row.seconds;
    if (std::abs(gap) * binding.rate_hz >= 0.5 && gap + pre >= 0) {
        const auto head = extension_of(*row.incoming, FadeSide::fade_in, gap + pre, binding);
        if (has_handle(*row.incoming, head)) return head;
    }
    return extension_of(*row.incoming, FadeSide::fade_in, pre, binding);
}

// An empty item has nothing that it could draw out.
void extend_tail(ClipItem& clip, const Extension& extension) {
    if (clip.is_placeholder) return;
    clip.length += extension.source_seconds;
    if (clip.stretch->warped_length > 0) clip.stretch.edit().warped_length += extension.seconds;
}

void extend_head(ClipItem& clip, const Extension& extension) {
    if (clip.is_placeholder) return;
    extend_tail(clip, extension);
    clip.start -= extension.seconds;
    clip.source_offset -= extension.source_seconds;
}

void bind_crossfade(const FadeRow& row, const FadeBinding& binding, FadeTallies& tallies) {
    ClipItem& outgoing = *row.outgoing;
    ClipItem& incoming = *row.incoming;
    const double length = row.record->length / binding.rate_hz;
    const double pre = row.record->pre / binding.rate_hz;
    const double post = length - pre;
    const Extension tail = tail_extension(row, post, binding);
    const Extension head = head_extension(row, pre, binding);

    double tail_fade = length;
    double head_fade = length;
    FadeForm form = binding.form;
    const bool has_room = has_handle(incoming, head);
    if (has_room) {
        extend_tail(outgoing, tail);
        extend_head(incoming, head);
    } else {
        // No room to overlap: each clip fades by itself inside its own bounds.
        tail_fade = pre == 0 ? length : pre;
        head_fade = post > 0 ? post : length;
        form = FadeForm::plain;
    }
    outgoing.fades.edit().fade_out =
        clip_fade(*row.record, FadeSide::fade_out, tail_fade, form, tallies);
    incoming.fades.edit().fade_in =
        clip_fade(*row.record, FadeSide::fade_in, head_fade, form, tallies);
    // Unstretched clips end where their files do: not where the fades were drawn.
    if (binding.no_stretch && !outgoing.is_placeholder) {
        const double shared = has_room ? length : 0;
        outgoing.length =
            std::clamp(incoming.start + shared - outgoing.start, 0.0, outgoing.length);
    }
    outgoing.crossfaded = true;
    incoming.crossfaded_head = true;
    ++tallies.crossfades;
}

void bind_fade(const FadeRow& row, const FadeBinding& binding, FadeTallies& tallies) {
    const FadeKind kind = row.record->kind;
    const bool has_clips = (kind == FadeKind::fade_in || row.outgoing != nullptr) &&
                           (kind == FadeKind::fade_out || row.incoming != nullptr);
    if (!has_clips) {
        ++tallies.without_edge;
        return;
    }
    const bool is_heard = (kind != FadeKind::fade_in && !row.outgoing->is_placeholder) ||
                          (kind != FadeKind::fade_out && !row.incoming->is_placeholder);
    if (!is_heard) return;
    if (kind == FadeKind::crossfade) {
        bind_crossfade(row, binding, tallies);
        return;
    }
    const bool is_in = kind == FadeKind::fade_in;
    ClipFade& fade =
        is_in ? row.incoming->fades.edit().fade_in : row.outgoing->fades.edit().fade_out;
    fade = clip_fade(*row.record, is_in ? FadeSide::fade_in : FadeSide::fade_out,
                     row.record->length / binding.rate_hz, binding.form, tallies);
    ++(is_in ? tallies.fade_ins : tallies.fade_outs);
}

}  // namespace

void bind_fades(TimelineTrack& track, const PlaylistDetail& edit_list, const FadeBinding& binding,
                FadeTallies& tallies) {
    for (const FadeRow& row : rows_with_clips(track, edit_list, binding, tallies)) {
        bind_fade(row, binding, tallies);
    }
}

}  // namespace tanrove
