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

class Fading {
public:
    Fading(std::vector<ListEntry>& entries, const SampleWindow& window,
           const GroupFadeSettings& settings, FadeTallies& tallies)
        : entries_(entries), window_(window), settings_(settings), tallies_(tallies) {
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const bool nested = entries[i].member->nested;
            (nested ? starts_.groups : starts_.clips).add(entries[i].span.start, i);
            (nested ? ends_.groups : ends_.clips).add(entries[i].fade_end, i);
        }
    }

    /// False if the fade finds no edge, or a crossfade no sound to borrow.
    bool place(const GroupFade& fade) {
        const bool needs_in = fade.record->kind != FadeKind::fade_out;
        const bool needs_out = fade.record->kind != FadeKind::fade_in;
        const std::size_t in = needs_in ? starts_.first_near(fade.at) : no_entry;
        const std::size_t out = needs_out ? ends_.first_near(fade.at) : no_entry;
        if ((needs_in && in == no_entry) || (needs_out && out == no_entry)) return false;
        if (needs_in && needs_out) return in != out && cross(*fade.record, out, in);

        ListEntry& entry = entries_[needs_in ? in : out];
        const double shown = static_cast<double>(entry.span.end - entry.span.start);
        const double length = std::min(shown, fade.record->length) / settings_.rate_hz;
        set_fade(entry, *fade.record, needs_in ? FadeSide::fade_in : FadeSide::fade_out, length);
        return true;
    }

private:
    void set_fade(ListEntry& entry, const FadeRecord& record, FadeSide side, double length) {
        ClipFade& fade = side == FadeSide::fade_in ? entry.fade_in : entry.fade_out;
        fade = clip_fade(record, side, length, settings_.form, tallies_);
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
        starts_.move(in, incoming.span.start, incoming.span.start - pre);
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
};

/// Gives a piece what its group's fade lasts on it.
void take_fade(ClipFade& fade, const ClipFade& of_group, double length, double piece_length) {
    length = std::min(length, piece_length);
    if (length <= fade.length) return;
    fade = of_group;
    fade.length = length;
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

void fade_group_edges(std::span<ClipItem> pieces, const GroupEdges& edges, double rate_hz) {
    const double tolerance = (static_cast<double>(edge_tolerance_samples) + 0.5) / rate_hz;
    const auto is_near = [tolerance](double a, double b) { return std::abs(a - b) <= tolerance; };
    const double head_missing = std::max(edges.stored_start - edges.start, 0.0);
    const double tail_missing = std::max(edges.end - edges.stored_end, 0.0);
    for (ClipItem& piece : pieces) {
        const double end = piece.start + piece.length;
        if (is_near(piece.start, edges.start)) {
            take_fade(piece.fade_in, edges.fade_in, edges.fade_in.length, piece.length);
        } else if (is_near(piece.start, edges.start + head_missing)) {
            const double length = edges.fade_in.length - head_missing;
            take_fade(piece.fade_in, edges.fade_in, length, piece.length);
        }
        if (is_near(end, edges.end)) {
            take_fade(piece.fade_out, edges.fade_out, edges.fade_out.length, piece.length);
        } else if (is_near(end, edges.end - tail_missing)) {
            const double length = edges.fade_out.length - tail_missing;
            take_fade(piece.fade_out, edges.fade_out, length, piece.length);
        }
    }
}

}  // namespace tanrove
