// The two throws as measured on the faders of Pro Tools, and the straight lines between their
// corners.
#include "base/fader_law.hpp"

#include <cmath>
#include <cstddef>

namespace tanrove {
namespace {

constexpr FaderCorner track_corners[] = {
    {12, -0.5721}, {0, 0.5721}, {-20, 2.3063}, {-40, 3.4102}, {-72, 3.8517}, {-144.5, 4.0},
};

constexpr FaderCorner clip_corners[] = {
    {36, 0}, {12, 1.9506}, {0, 3.088}, {-20, 4.8099}, {-40, 5.9152}, {-72, 6.355}, {-144, 6.5},
};

// Automation may stand above the top of a track's fader, where the throw keeps its slope.
constexpr double db_per_position_above_track_top = 10.488;

}  // namespace

std::span<const FaderCorner> fader_corners(FaderThrow fader) {
    if (fader == FaderThrow::clip) return clip_corners;
    return track_corners;
}

double gain_of_db(double db) {
    return std::pow(10, db / 20);
}

double fader_position(FaderThrow fader, double db) {
    const auto corners = fader_corners(fader);
    const FaderCorner top = corners.front();
    if (db >= top.db) {
        if (fader == FaderThrow::clip) return top.position;
        return top.position - (db - top.db) / db_per_position_above_track_top;
    }
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const FaderCorner upper = corners[i - 1];
        const FaderCorner lower = corners[i];
        if (db < lower.db) continue;
        const double slope = (upper.position - lower.position) / (upper.db - lower.db);
        return lower.position + (db - lower.db) * slope;
    }
    return corners.back().position;
}

double fader_db(FaderThrow fader, double position) {
    const auto corners = fader_corners(fader);
    const FaderCorner top = corners.front();
    if (position <= top.position) {
        if (fader == FaderThrow::clip) return top.db;
        return top.db + (top.position - position) * db_per_position_above_track_top;
    }
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const FaderCorner upper = corners[i - 1];
        const FaderCorner lower = corners[i];
        if (position > lower.position) continue;
        const double slope = (upper.db - lower.db) / (upper.position - lower.position);
        return lower.db + (position - lower.position) * slope;
    }
    return corners.back().db;
}

}  // namespace tanrove
