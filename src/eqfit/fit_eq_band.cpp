// Round 0 moves the band's own sections. Each of up to three further rounds tries three sections
// more, a high shelf in the first and bells behind it, all near the top of the range: there
// REAPER's EQ bends what EQ3 does not.
#include "eqfit/fit_eq_band.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "base/formatted_text.hpp"
#include "eqfit/eq_curve.hpp"
#include "eqfit/fit_bounds.hpp"
#include "eqfit/section_response.hpp"
#include "eqfit/simplex_search.hpp"

namespace tanrove {

namespace {

constexpr double close_enough_db = 0.05;
constexpr double least_gain_of_round = 1e-9;
constexpr double no_limit = std::numeric_limits<double>::infinity();

constexpr int added_rounds = 3;
constexpr std::array<std::array<double, 3>, added_rounds> added_shares_of_rate = {{
    {0.45, 0.4, 0.33},
    {0.42, 0.38, 0.3},
    {0.36, 0.3, 0.25},
}};
constexpr std::array<double, 3> added_gains = {0, 3, -1.5};
constexpr double added_shelf_q = 0.7;
constexpr double added_bell_q = 1;

/// A run of the search: what it measures by, its first step, and its length.
struct SearchPass {
    FitMeasure measure;
    double step;
    int iterations;
    int iterations_a_section;
};

constexpr std::array<SearchPass, 2> search_passes = {
    {{FitMeasure::eighth_norm, 1, 400, 150}, {FitMeasure::greatest, 0.1, 200, 50}}};

struct FitResult {
    std::vector<EqSection> sections;
    double error = no_limit;
};

/// One band's search.
class BandFit {
public:
    BandFit(const EqBand& band, double rate_hz)
        : rate_hz_(rate_hz),
          grid_(eq_grid(rate_hz)),
          response_(grid_, eq_target(band, grid_), one_pole_of(band), rate_hz),
          bounds_(band.fitStart, rate_hz) {}

    double error(const std::vector<EqSection>& sections) const {
        return response_.error(sections, FitMeasure::greatest, no_limit);
    }

    /// The two passes of the search from these sections.
    FitResult search(std::vector<EqSection> sections) const {
        FitResult result;
        for (const SearchPass& pass : search_passes) {
            const auto error_of = [&](const std::vector<double>& point, double limit) {
                bounds_.apply(point, sections);
                return response_.error(sections, pass.measure, limit);
            };
            const int n = static_cast<int>(sections.size());
            const SimplexResult best =
                search_simplex(error_of, FitBounds::coordinates(sections),
                               FitBounds::displacements(sections, pass.step),
                               pass.iterations + pass.iterations_a_section * n);
            bounds_.apply(best.point, sections);
            result.error = best.error;
        }
        result.sections = std::move(sections);
        return result;
    }

    /// The best of the three sets with one section more.
    FitResult search_with_one_more(const std::vector<EqSection>& sections,
                                   std::size_t round) const {
        FitResult best;
        for (std::size_t k = 0; k < added_gains.size(); ++k) {
            EqSection added;
            added.type = round == 0 ? SectionType::high_shelf : SectionType::bell;
            added.frequency = added_shares_of_rate[round][k] * rate_hz_;
            added.gain = added_gains[k];
            added.q = round == 0 ? added_shelf_q : added_bell_q;
            std::vector<EqSection> more = sections;
            more.push_back(added);
            FitResult candidate = search(std::move(more));
            if (candidate.error < best.error) best = std::move(candidate);
        }
        return best;
    }

private:
    std::vector<double> one_pole_of(const EqBand& band) const {
        if (band.firstOrderFrequency <= 0) return {};
        return one_pole_response(band.firstOrderFrequency, band.high, grid_, rate_hz_);
    }

    double rate_hz_;
    EqGrid grid_;
    SectionResponse response_;
    FitBounds bounds_;
};

bool can_move(const std::vector<EqSection>& sections) {
    return std::ranges::any_of(sections, [](const EqSection& section) { return !section.locked; });
}

void run_rounds(const BandFit& fit, EqBand& band) {
    FitResult best{band.sections, fit.error(band.sections)};
    const auto take = [&](FitResult candidate) {
        if (candidate.error <= best.error - least_gain_of_round) best = std::move(candidate);
    };
    if (can_move(best.sections)) take(fit.search(best.sections));
    for (std::size_t round = 0; round < added_rounds && best.error > close_enough_db; ++round) {
        take(fit.search_with_one_more(best.sections, round));
    }
    band.sections = std::move(best.sections);
    band.worstDb = best.error;
    band.extraSections = static_cast<int>(band.sections.size() - band.fitStart.size());
}

void fit_band(EqBand& band, double rate_hz) {
    const BandFit fit(band, rate_hz);
    band.worstDb = fit.error(band.sections);
    if (band.worstDb <= close_enough_db) return;
    band.fitted = true;
    run_rounds(fit, band);
}

/// What two bands have in common that are fitted alike.
std::string cache_key(const EqBand& band, double rate_hz) {
    return formatted("%d %.9g %.9g %.9g %d %d %.9g %.9g %u %d%d", static_cast<int>(band.kind),
                     band.frequency, band.gain, band.q, band.high ? 1 : 0, band.slope,
                     band.firstOrderFrequency, rate_hz, static_cast<unsigned>(band.sections.size()),
                     0, 0);
}

}  // namespace

void EqFitTallies::add(const EqBand& band) {
    if (band.fitted) ++fitted_bands;
    extra_sections += band.extraSections;
    worst_db = std::max(worst_db, band.worstDb);
}

void EqFitTallies::add(const EqFitTallies& others) {
    fitted_bands += others.fitted_bands;
    extra_sections += others.extra_sections;
    worst_db = std::max(worst_db, others.worst_db);
}

void EqFitter::fit(EqBand& band, double rate_hz) {
    const std::string key = cache_key(band, rate_hz);
    auto known = cache_.find(key);
    if (known == cache_.end()) {
        fit_band(band, rate_hz);
        if (band.fitted) ++searches_;
        known = cache_.emplace(key, band).first;
    }
    band = known->second;
}

}  // namespace tanrove
