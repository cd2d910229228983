// The edges are ordered by time, so those within reach of a fade are a range. Of that range the
// greatest row below the fade's is asked for: rows join a maximum tree as the fades pass them. For
// the smallest row above, the same is done from behind, with the rows counted downwards.
#include "timeline/clip_edges.hpp"

#include <algorithm>
#include <numeric>

namespace tanrove {
namespace {

constexpr double reach_seconds = 0.005;

/// The greatest of the values in any range of places; places without a value hold -1.
class MaximumTree {
public:
    explicit MaximumTree(std::size_t places) : places_(places), nodes_(2 * places, -1) {}

    void set(std::size_t place, std::int64_t value) {
        for (std::size_t node = place + places_; node > 0; node /= 2) {
            nodes_[node] = std::max(nodes_[node], value);
        }
    }

    std::int64_t greatest(std::size_t first, std::size_t end) const {
        std::int64_t found = -1;
        for (first += places_, end += places_; first < end; first /= 2, end /= 2) {
            if (first % 2 == 1) found = std::max(found, nodes_[first++]);
            if (end % 2 == 1) found = std::max(found, nodes_[--end]);
        }
        return found;
    }

private:
    std::size_t places_;
    std::vector<std::int64_t> nodes_;
};

/// Edges in the order of time, equal times in their own order.
class OrderedEdges {
public:
    explicit OrderedEdges(const std::vector<ClipEdge>& edges)
        : edges_(edges), order_(edges.size()) {
        std::iota(order_.begin(), order_.end(), std::size_t{0});
        std::ranges::stable_sort(order_, {}, [&](std::size_t edge) { return edges[edge].seconds; });
    }

    std::size_t edge_at(std::size_t place) const { return order_[place]; }
    double seconds_at(std::size_t place) const { return edges_[order_[place]].seconds; }

    /// The places within reach of the time: first, and one behind the last.
    std::pair<std::size_t, std::size_t> within_reach(double seconds) const {
        const auto first = std::ranges::partition_point(order_, [&](std::size_t edge) {
            return edges_[edge].seconds - seconds < -reach_seconds;
        });
        const auto end = std::ranges::partition_point(order_, [&](std::size_t edge) {
            return edges_[edge].seconds - seconds <= reach_seconds;
        });
        return {static_cast<std::size_t>(first - order_.begin()),
                static_cast<std::size_t>(end - order_.begin())};
    }

    /// The nearest edge of a range that is not empty; of equally near ones the first by number.
    std::size_t nearest(std::size_t first, std::size_t end, double seconds) const {
        const std::size_t behind = std::clamp(first_at(seconds), first, end);
        if (behind == first) return order_[first];
        const std::size_t in_front = first_at(seconds_at(behind - 1));
        if (behind == end) return order_[in_front];
        const double way_back = seconds - seconds_at(in_front);
        const double way_on = seconds_at(behind) - seconds;
        if (way_back == way_on) return std::min(order_[in_front], order_[behind]);
        return way_back < way_on ? order_[in_front] : order_[behind];
    }

private:
    /// The first place at this time or behind it.
    std::size_t first_at(double seconds) const {
        const auto found = std::ranges::lower_bound(
            order_, seconds, {}, [&](std::size_t edge) { return edges_[edge].seconds; });
        return static_cast<std::size_t>(found - order_.begin());
    }

    const std::vector<ClipEdge>& edges_;
    std::vector<std::size_t> order_;
};

/// An edge whose row counts in the search, by its place in time.
struct RankedEdge {
    std::int64_t rank = 0;  ///< ascending towards the fades that it can belong to
    std::size_t place = 0;
};

/// Edges with a row, in the order in which the fades pass them.
std::vector<RankedEdge> ranked_edges(const OrderedEdges& ordered,
                                     const std::vector<ClipEdge>& edges, std::int64_t sign) {
    std::vector<RankedEdge> ranked;
    for (std::size_t place = 0; place < edges.size(); ++place) {
        const std::int64_t row = edges[ordered.edge_at(place)].edit_row;
        if (row >= 0) ranked.push_back({sign * row, place});
    }
    std::ranges::sort(ranked, {}, &RankedEdge::rank);
    return ranked;
}

}  // namespace

std::vector<std::optional<std::size_t>> edges_of_fades(const std::vector<ClipEdge>& edges,
                                                       const std::vector<FadePlace>& fades,
                                                       RowSide side) {
    const std::int64_t sign = side == RowSide::before_fade ? 1 : -1;
    const OrderedEdges ordered(edges);
    const std::vector<RankedEdge> ranked = ranked_edges(ordered, edges, sign);
    MaximumTree passed(edges.size());
    std::size_t next = 0;

    std::vector<std::optional<std::size_t>> found(fades.size());
    for (std::size_t i = 0; i < fades.size(); ++i) {
        const std::size_t number = sign > 0 ? i : fades.size() - 1 - i;
        const FadePlace& fade = fades[number];
        for (; next < ranked.size() && ranked[next].rank < sign * fade.row; ++next) {
            passed.set(ranked[next].place, static_cast<std::int64_t>(next));
        }
        const auto [first, end] = ordered.within_reach(fade.seconds);
        if (first == end) continue;
        const std::int64_t by_row = passed.greatest(first, end);
        found[number] = by_row >= 0
                            ? ordered.edge_at(ranked[static_cast<std::size_t>(by_row)].place)
                            : ordered.nearest(first, end, fade.seconds);
    }
    return found;
}

}  // namespace tanrove
