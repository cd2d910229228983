// A fade of a list finds its clip by the edge that it lies on; there may be thousands of either, so
// edges are looked up by their places.
#include "timeline/clip_group_fades.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <set>
#include <utility>

namespace tanrove {

namespace {

constexpr std::size_t no_entry = std::numeric_limits<std::size_t>::max();

/// One kind of edges of all clips, or of all groups, by their place.
class EdgePlaces {
public:
    void add(std::int64_t at, std::size_t number) { places_.emplace(at, number); }

    void move(std::size_t number, std::int64_t from, std::int64_t to) {
        if (places_.erase({from, number}) > 0) places_.emplace(to, number);
    }

    /// The lowest number of those that lie near; `no_entry` for none.
    std::size_t first_near(std::int64_t at) const {
        std::size_t first = no_entry;
        for (auto place = at - edge_tolerance_samples; place <= at + edge_tolerance_samples;
             ++place) {
            const auto found = places_.lower_bound({place, 0});
            if (found != places_.end() && found->first == place) {
                first = std::min(first, found->second);
            }
        }
        return first;
    }

private:
    std::set<std::pair<std::int64_t, std::size_t>> places_;
};

/// Clips come before groups.
struct Edges {
    EdgePlaces clips;
    EdgePlaces groups;

    std::size_t first_near(std::int64_t at) const {
        const std::size_t clip = clips.first_near(at);
        return clip != no_entry ? clip : groups.first_near(at);
    }

    void move(std::size_t number, std::int64_t from, std::int64_t to) {
        clips.move(number, from, to);
        groups.move(number, from, to);
    }
};

/// Where a fade begins, samples of the group.
std::int64_t start_of(const GroupFade& fade) {
    const std::int64_t length = std::llround(fade.record->length);
    switch (fade.record->kind) {
        case FadeKind::crossfade:
            return fade.at - std::llround(fade.record->pre);
        case FadeKind::fade_out:
            return fade.at - length;
        default:
            return fade.at;
    }
}

ClipFade& fade_of(ClipFades& fades, FadeSide side) {
    return side == FadeSide::fade_in ? fades.fade_in : fades.fade_out;
}

class Fading {
public:
    Fading(std::vector<ListEntry>& entries, const SampleWindow& window,
           const GroupFadeSettings& settings, FadeTallies& tallies)
        : entries_(entries), window_(window), settings_(settings), tallies_(tallies) {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const bool nested = entries[i].member->nested;
            (nested ? starts_.groups : starts_.clips).add(entries[i].span.start, i);
            (nested ? ends_.groups : ends_.clips).add(entries[i].fade_end, i);
            (nested ? heads_.groups : heads_.clips).add(entries[i].head, i);
            (nested ? tails_.groups : tails_.clips).add(entries[i].tail, i);
        }
    }

    /// False if the fade finds no edge, or a crossfade no sound to borrow.
    bool place(const GroupFade& fade) {
        const bool is_beside = fade.at >= window_.start - edge_tolerance_samples &&
                               fade.at <= window_.end + edge_tolerance_samples;
        if (!is_beside) return place_beyond(fade);
        const bool needs_in = fade.record->kind != FadeKind::fade_out;
        const bool needs_out = fade.record->kind != FadeKind::fade_in;
        const std::size_t in = needs_in ? edge_near(fade.at, heads_, starts_) : no_entry;
        const std::size_t out = needs_out ? edge_near(fade.at, tails_, ends_) : no_entry;
        const bool has_edges = (!needs_in || in != no_entry) && (!needs_out || out != no_entry);
        if (!has_edges) return place_beyond(fade);
        if (needs_in && needs_out) return in != out && cross(*fade.record, out, in);

        ListEntry& entry = entries_[needs_in ? in : out];
        const double shown = static_cast<double>(entry.span.end - entry.span.start);
        const double length = std::min(shown, fade.record->length) / settings_.rate_hz;
        set_fade(entry, *fade.record, needs_in ? FadeSide::fade_in : FadeSide::fade_out, length);
        return true;
    }

private:
    /// An edge of the clip's own goes before one that only the window cuts there.
    static std::size_t edge_near(std::int64_t at, const Edges& own, const Edges& seen) {
        const std::size_t entry = own.first_near(at);
        return entry != no_entry ? entry : seen.first_near(at);
    }

    /// What is seen of a fade whose clip, or one of a crossfade's two, has no edge in the window.
    /// Where that one of the two is not seen at all, its sound is missing.
    bool place_beyond(const GroupFade& fade) {
        if (settings_.form == FadeForm::plain) return false;
        const FadeKind kind = fade.record->kind;
        const std::int64_t start = start_of(fade);
        const auto take = [&](const Edges& edges, FadeSide side) {
            const std::size_t entry = edges.first_near(fade.at);
            if (entry == no_entry) return false;
            auto& beyond = entries_[entry].beyond;
            if (std::ranges::count(beyond, side, &FadeBeyond::side) > 0) return false;
            beyond.push_back({side, fade.record, start});
            return true;
        };
        const bool has_in = kind != FadeKind::fade_out && take(heads_, FadeSide::fade_in);
        const bool has_out = kind != FadeKind::fade_in && take(tails_, FadeSide::fade_out);
        return kind != FadeKind::crossfade && (has_in || has_out);
    }

    void set_fade(ListEntry& entry, const FadeRecord& record, FadeSide side, double length) {
        fade_of(entry.fades.edit(), side) =
            clip_fade(record, side, length, settings_.form, tallies_);
    }

    bool cross(const FadeRecord& record, std::size_t out, std::size_t in) {
        ListEntry& outgoing = entries_[out];
        ListEntry& incoming = entries_[in];
        const std::int64_t stored_pre = std::llround(record.pre);
        const std::int64_t stored_post = std::llround(record.length) - stored_pre;
        const auto post = std::min(stored_post, window_.end - outgoing.fade_end);
        const auto in_window = std::min(stored_pre, incoming.span.start - window_.start);
        if (post < 1 || in_window < 1) return false;
        const auto pre = std::min(in_window, settings_.head_room(incoming, in_window));
        if (pre < 1) return false;

        ends_.move(out, outgoing.fade_end, outgoing.fade_end + post);
        tails_.move(out, outgoing.fade_end, outgoing.fade_end + post);
        starts_.move(in, incoming.span.start, incoming.span.start - pre);
        heads_.move(in, incoming.span.start, incoming.span.start - pre);
        incoming.span.start -= pre;
        outgoing.fade_end += post;
        outgoing.span.end += post;
        if (settings_.no_stretch) {
            // The clip plays at its file's speed and may last beyond its place in Pro Tools.
            outgoing.span.end = std::min(outgoing.span.end, incoming.span.start + pre + post);
        }
        outgoing.crossfaded = true;
        const double length = static_cast<double>(pre + post) / settings_.rate_hz;
        set_fade(outgoing, record, FadeSide::fade_out, length);
        set_fade(incoming, record, FadeSide::fade_in, length);
        return true;
    }

    std::vector<ListEntry>& entries_;
    const SampleWindow& window_;
    const GroupFadeSettings& settings_;
    FadeTallies& tallies_;
    Edges starts_;
    Edges ends_;
    Edges heads_;  // seen or not
    Edges tails_;
};

/// One fade of a group on the timeline. What the group plays may not reach as far as a crossfade
/// draws its edge out: then the fade lasts from there.
struct EdgeFade {
    FadeSide side = FadeSide::fade_in;
    const ClipFade& of_group;
    double edge = 0;     ///< where it begins, or a fade-out ends
    double missing = 0;  ///< from there to where the group was stored

    double edge_of(const ClipItem& piece) const {
        return side == FadeSide::fade_in ? piece.start : piece.start + piece.length;
    }
    double stored_edge() const {
        return side == FadeSide::fade_in ? edge + missing : edge - missing;
    }
    FadeCurve from(double end, double length) const {
        return {side, of_group.spec, side == FadeSide::fade_in ? end : end - length, length};
    }
};

ClipFade lasting(ClipFade fade, double length) {
    fade.length = fade.spec_length = length;
    return fade;
}

/// True if the fade had to be spread over pieces.
bool fade_edge(std::span<ClipItem> pieces, const EdgeFade& fade, FadeForm form, double rate_hz,
               CurveBudget& budget) {
    if (fade.of_group.length <= 0) return false;
    const double tolerance = (static_cast<double>(edge_tolerance_samples) + 0.5) / rate_hz;
    const auto is_near = [&](const ClipItem& piece, double edge) {
        return std::abs(fade.edge_of(piece) - edge) <= tolerance;
    };
    const bool reaches_edge = std::ranges::any_of(
        pieces, [&](const ClipItem& piece) { return is_near(piece, fade.edge); });
    bool is_spread = false;
    for (ClipItem& piece : pieces) {
        const bool is_first = is_near(piece, fade.edge);
        const bool is_stored_first = !is_first && is_near(piece, fade.stored_edge());
        const bool is_whole = is_first || (!is_stored_first && reaches_edge);
        const double length = fade.of_group.length - (is_whole ? 0 : fade.missing);
        if (length <= 0) continue;
        ClipFade& own = fade_of(piece.fades.edit(), fade.side);
        const bool is_on_edge = is_first || is_stored_first;
        if (form == FadeForm::plain) {
            const double lasts = std::min(length, piece.length);
            if (is_on_edge && lasts > own.length) own = lasting(fade.of_group, lasts);
        } else if (is_on_edge && own.length <= 0 && length <= piece.length + 1 / rate_hz) {
            own = lasting(fade.of_group, std::min(length, piece.length));
        } else {
            const FadeCurve curve = fade.from(is_whole ? fade.edge : fade.stored_edge(), length);
            is_spread |= fade_across({&piece, 1}, curve, rate_hz, budget);
        }
    }
    return is_spread;
}

}  // namespace

int fade_entries(std::vector<ListEntry>& entries, std::span<const GroupFade> fades,
                 const SampleWindow& window, const GroupFadeSettings& settings,
                 FadeTallies& tallies) {
    if (fades.empty()) return 0;
    Fading fading(entries, window, settings, tallies);
    int left_off = 0;
    for (const GroupFade& fade : fades) left_off += fading.place(fade) ? 0 : 1;
    return left_off;
}

bool is_shown(const GroupFade& fade, const SampleWindow& window) {
    const std::int64_t start = start_of(fade);
    return start < window.end && start + std::llround(fade.record->length) > window.start;
}

int fade_group_edges(std::span<ClipItem> pieces, const GroupEdges& edges, FadeForm form,
                     double rate_hz, CurveBudget& budget) {
    const EdgeFade in{FadeSide::fade_in, edges.fade_in, edges.start,
                      std::max(edges.stored_start - edges.start, 0.0)};
    const EdgeFade out{FadeSide::fade_out, edges.fade_out, edges.end,
                       std::max(edges.end - edges.stored_end, 0.0)};
    return (fade_edge(pieces, in, form, rate_hz, budget) ? 1 : 0) +
           (fade_edge(pieces, out, form, rate_hz, budget) ? 1 : 0);
}

bool fade_across(std::span<ClipItem> pieces, const FadeCurve& curve, double rate_hz,
                 CurveBudget& budget) {
    bool any = false;
    for (ClipItem& piece : pieces) {
        const double start = curve.start - piece.start;
        const double least = 0.5 / rate_hz;
        if (start > piece.length - least || start + curve.length < least) continue;
        if (budget.left == 0) {
            ++budget.refused;
            continue;
        }
        --budget.left;
        piece.fades.edit().fade_curves.push_back({curve.side, curve.spec, start, curve.length});
        any = true;
    }
    return any;
}

}  // namespace tanrove
