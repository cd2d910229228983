// Reflection 1, expansion 2, contraction and shrinking one half. A point that is not better than
// what it is compared with is dropped, so its error is asked for no further than that.
#include "eqfit/simplex_search.hpp"

#include <cmath>
#include <limits>
#include <utility>

namespace tanrove {

namespace {

constexpr double expansion = 2;
constexpr double half = 0.5;
constexpr double all_but_nothing = 1e-9;  // of a coordinate
constexpr double no_limit = std::numeric_limits<double>::infinity();

class Simplex {
public:
    Simplex(const SearchedError& error_of, const std::vector<double>& start,
            const std::vector<double>& displacements)
        : error_of_(error_of), size_(start.size()) {
        add(start);
        for (std::size_t i = 0; i < size_; ++i) {
            std::vector<double> point = start;
            point[i] += displacements[i];
            add(std::move(point));
        }
        centroid_.resize(size_);
        reflected_.point.resize(size_);
        tried_.point.resize(size_);
    }

    /// False where further steps would change nothing to speak of.
    bool step() {
        set_centroid();
        const double best = vertices_.front().error;
        const double second_worst = vertices_[vertices_.size() - 2].error;
        // The centroid, and as far again on the side away from the worst.
        move(reflected_, 1, second_worst);
        if (reflected_.error < best) {
            move(tried_, expansion, reflected_.error);
            replace_worst(tried_.error < reflected_.error ? tried_ : reflected_);
        } else if (reflected_.error < second_worst) {
            replace_worst(reflected_);
        } else {
            const double worst = vertices_.back().error;
            move(tried_, -half, worst);
            if (tried_.error < worst) {
                replace_worst(tried_);
            } else {
                return shrink();
            }
        }
        return true;
    }

    SimplexResult best() const { return vertices_.front(); }

private:
    /// Puts a vertex behind those that are not worse.
    void insert(SimplexResult vertex) {
        auto at = vertices_.end();
        while (at != vertices_.begin() && vertex.error < (at - 1)->error) --at;
        vertices_.insert(at, std::move(vertex));
    }

    void add(std::vector<double> point) {
        const double error = error_of_(point, no_limit);
        insert({std::move(point), error});
    }

    void set_centroid() {
        for (std::size_t i = 0; i < size_; ++i) {
            double sum = 0;
            for (std::size_t k = 0; k < size_; ++k) sum += vertices_[k].point[i];
            centroid_[i] = sum / static_cast<double>(size_);
        }
    }

    /// The point so far from the centroid, in the direction away from the worst.
    void move(SimplexResult& moved, double distance, double limit) const {
        const std::vector<double>& worst = vertices_.back().point;
        for (std::size_t i = 0; i < size_; ++i) {
            moved.point[i] = centroid_[i] + distance * (centroid_[i] - worst[i]);
        }
        moved.error = error_of_(moved.point, limit);
    }

    void replace_worst(const SimplexResult& vertex) {
        SimplexResult freed = std::move(vertices_.back());
        vertices_.pop_back();
        freed = vertex;
        insert(std::move(freed));
    }

    /// False where all points stand on the best already, and none is better than another.
    bool shrink() {
        bool moves = false;
        std::vector<SimplexResult> old;
        old.swap(vertices_);
        const std::vector<double> best = old.front().point;
        vertices_.push_back(std::move(old.front()));
        for (std::size_t k = 1; k < old.size(); ++k) {
            for (std::size_t i = 0; i < size_; ++i) {
                const double moved = best[i] + half * (old[k].point[i] - best[i]);
                moves = moves || std::fabs(moved - best[i]) > all_but_nothing;
                old[k].point[i] = moved;
            }
            add(std::move(old[k].point));
        }
        return moves || vertices_.front().error < vertices_.back().error;
    }

    const SearchedError& error_of_;
    std::size_t size_;
    std::vector<SimplexResult> vertices_;  ///< best first
    std::vector<double> centroid_;
    SimplexResult reflected_;
    SimplexResult tried_;
};

}  // namespace

SimplexResult search_simplex(const SearchedError& error_of, const std::vector<double>& start,
                             const std::vector<double>& displacements, int iterations) {
    if (start.empty()) return {start, error_of(start, no_limit)};
    Simplex simplex(error_of, start, displacements);
    for (int i = 0; i < iterations && simplex.step(); ++i) {
    }
    return simplex.best();
}

}  // namespace tanrove
