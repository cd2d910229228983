// How far a set of EQ sections lies from a target curve. Built once for a band and asked hundreds
// of thousands of times, so it works on blocks of plain numbers and gives up as soon as the answer
// cannot matter.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "eqfit/eq_band.hpp"
#include "eqfit/eq_curve.hpp"

namespace tanrove {

/// The magnitude squared of a section as the ratio of two forms in p = sin^2(w / 2) and 1 - p:
/// gain ((a (1 - p) - b p)^2 + c p (1 - p)) / ((d (1 - p) - e p)^2 + f p (1 - p)).
struct SectionForm {
    double gain = 1;
    double a = 0, b = 0, c = 0;
    double d = 0, e = 0, f = 0;
};

/// The form of a section as REAPER's EQ plays it.
SectionForm section_form(const EqSection& section, double rate_hz);

/// What the error of a set of sections is measured by.
enum class FitMeasure {
    greatest,    ///< the greatest error of all points
    eighth_norm  ///< the 8-norm over every second point
};

/// Some points of the grid that are reckoned with at once, what is asked of them at hand.
struct PointBlock {
    static constexpr std::size_t size = 16;
    using Values = std::array<double, size>;
    Values p = {};       ///< sin^2(w / 2)
    Values other = {};   ///< 1 - p
    Values beside = {};  ///< magnitude squared of what plays beside the sections; of a level point
                         ///< over that of the target
    Values target = {};  ///< of a low-level point, linear
    std::size_t count = 0;  ///< points; behind them the last one stands again
};

/// Points by the way in which their error is reckoned.
struct PointSet {
    std::vector<PointBlock> level;      ///< in dB
    std::vector<PointBlock> low_level;  ///< by size: in dB, silence would count for too much
    std::vector<PointBlock> above;      ///< above the range that has to fit
    std::size_t count = 0;
};

/// More sections than a band can have, those that the fit adds included.
constexpr std::size_t max_fit_sections = 8;

class SectionResponse {
public:
    /// `one_pole` is the magnitude squared of what plays beside the sections, empty for nothing.
    SectionResponse(const EqGrid& grid, const std::vector<double>& target,
                    const std::vector<double>& one_pole, double rate_hz);

    /// The error in dB of up to `max_fit_sections` sections, in steps of 2^-24 dB. Where it is not
    /// below `limit`, anything that is not may come back.
    double error(const std::vector<EqSection>& sections, FitMeasure measure, double limit) const;

private:
    double rate_hz_;
    PointSet all_;
    PointSet halved_;
};

}  // namespace tanrove
