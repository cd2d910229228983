// The fades inside a clip group, put on the edges of its pieces.
#include "timeline/clip_group_fades.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

namespace tanrove {

namespace {

constexpr std::size_t no_piece = std::numeric_limits<std::size_t>::max();

/// One kind of edges of all pieces, by their place.
class EdgePlaces {
public:
    void add(std::int64_t at, std::size_t number) { places_.emplace(at, number); }

    void move(std::size_t number, std::int64_t from, std::int64_t to) {
        places_.erase({from, number});
        places_.emplace(to, number);
    }

    /// The lowest number of those that lie near; `no_piece` for none.
    std::size_t first_near(std::int64_t at) const {
        std::size_t first = no_piece;
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

class Fading {
public:
    Fading(GroupContents& contents, const SampleWindow& window, const GroupFadeSettings& settings,
           FadeTallies& tallies)
        : contents_(contents), window_(window), settings_(settings), tallies_(tallies) {
        for (std::size_t i = 0; i < contents.edges.size(); ++i) {
            starts_.add(contents.edges[i].span.start, i);
            ends_.add(contents.edges[i].span.end, i);
        }
    }

    /// False if the fade finds no edge, or a crossfade no sound to borrow.
    bool place(const GroupFade& fade) {
        const bool needs_in = fade.record->kind != FadeKind::fade_out;
        const bool needs_out = fade.record->kind != FadeKind::fade_in;
        const std::size_t in = needs_in ? starts_.first_near(fade.at) : no_piece;
        const std::size_t out = needs_out ? ends_.first_near(fade.at) : no_piece;
        if ((needs_in && in == no_piece) || (needs_out && out == no_piece)) return false;
        if (needs_in && needs_out) return in != out && cross(*fade.record, out, in);

        GroupPiece& piece = piece_of(needs_in ? in : out);
        const double length = std::min(piece.length, fade.record->length / settings_.rate_hz);
        set_fade(piece, *fade.record, needs_in ? FadeSide::fade_in : FadeSide::fade_out, length);
        return true;
    }

private:
    GroupPiece& piece_of(std::size_t number) {
        return contents_.pieces[contents_.edges[number].piece];
    }

    void set_fade(GroupPiece& piece, const FadeRecord& record, FadeSide side, double length) {
        ClipFade& fade = side == FadeSide::fade_in ? piece.fade_in : piece.fade_out;
        fade = clip_fade(record, side, length, settings_.form, tallies_);
    }

    bool cross(const FadeRecord& record, std::size_t out, std::size_t in) {
        PieceEdges& outgoing = contents_.edges[out];
        PieceEdges& incoming = contents_.edges[in];
        const std::int64_t stored_pre = std::llround(record.pre);
        const std::int64_t stored_post = std::llround(record.length) - stored_pre;
        const auto post = std::min(stored_post, window_.end - outgoing.span.end);
        const auto pre =
            std::min({stored_pre, incoming.span.start - window_.start, incoming.source});
        if (post < 1 || pre < 1) return false;

        ends_.move(out, outgoing.span.end, outgoing.span.end + post);
        starts_.move(in, incoming.span.start, incoming.span.start - pre);
        outgoing.span.end += post;
        incoming.span.start -= pre;
        incoming.source -= pre;

        const double post_seconds = static_cast<double>(post) / settings_.rate_hz;
        const double pre_seconds = static_cast<double>(pre) / settings_.rate_hz;
        GroupPiece& tail = piece_of(out);
        tail.length += post_seconds;
        tail.crossfaded = true;
        GroupPiece& head = piece_of(in);
        head.start -= pre_seconds;
        head.length += pre_seconds;
        head.source_offset -= pre_seconds;
        if (head.sync_offset > 0) head.sync_offset += pre_seconds;
        set_fade(tail, record, FadeSide::fade_out, pre_seconds + post_seconds);
        set_fade(head, record, FadeSide::fade_in, pre_seconds + post_seconds);
        return true;
    }

    GroupContents& contents_;
    const SampleWindow& window_;
    const GroupFadeSettings& settings_;
    FadeTallies& tallies_;
    EdgePlaces starts_;
    EdgePlaces ends_;
};

}  // namespace

int fade_pieces(GroupContents& contents, const SampleWindow& window,
                const GroupFadeSettings& settings, FadeTallies& tallies) {
    Fading fading(contents, window, settings, tallies);
    int left_off = 0;
    for (const GroupFade& fade : contents.fades) left_off += fading.place(fade) ? 0 : 1;
    return left_off;
}

}  // namespace tanrove
