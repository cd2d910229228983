// How far the fit may move a section, and the coordinates in which it moves them.
#pragma once

#include <cstddef>
#include <vector>

#include "eqfit/eq_band.hpp"

namespace tanrove {

class FitBounds {
public:
    /// The first `start.size()` sections of any set that is asked for are these, moved.
    FitBounds(const std::vector<EqSection>& start, double rate_hz);

    /// The coordinates of a set: of each section that moves the logarithm of its frequency, its
    /// gain if it has one, and the logarithm of its Q.
    static std::vector<double> coordinates(const std::vector<EqSection>& sections);

    /// By how much the search's first points differ in each coordinate.
    static std::vector<double> displacements(const std::vector<EqSection>& sections, double step);

    /// Moves the sections to the coordinates, as far as the bounds let them.
    void apply(const std::vector<double>& coordinates, std::vector<EqSection>& sections) const;

private:
    void hold_to_start(std::size_t index, EqSection& section) const;
    void hold_added(EqSection& section) const;
    double least_q(const EqSection& section, std::size_t index) const;

    std::vector<EqSection> start_;
    std::vector<double> least_start_q_;  ///< of sections that start wider than others may become
    double rate_hz_;
};

}  // namespace tanrove
