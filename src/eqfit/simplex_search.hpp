// The downhill simplex: a search for the lowest point of a function that knows no slopes. Its
// steps, ties and order are fixed, so that it takes the same road every time.
#pragma once

#include <functional>
#include <vector>

namespace tanrove {

/// The error at a point. Where it is not below `limit`, anything that is not may stand for it.
using SearchedError = std::function<double(const std::vector<double>& point, double limit)>;

struct SimplexResult {
    std::vector<double> point;
    double error = 0;
};

/// Searches from `start` for so many steps; `steps` has the first displacement of each coordinate.
/// With no coordinates the start itself comes back.
SimplexResult search_simplex(const SearchedError& error_of, const std::vector<double>& start,
                             const std::vector<double>& displacements, int iterations);

}  // namespace tanrove
