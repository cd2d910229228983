// The fit of a band: moves the sections, and adds some where these do not do, until REAPER's EQ
// follows the band's curve.
#pragma once

#include <map>
#include <string>

#include "eqfit/eq_band.hpp"

namespace tanrove {

/// What fits came to.
struct EqFitTallies {
    int fitted_bands = 0;
    int extra_sections = 0;
    double worst_db = 0;

    void add(const EqBand& band);
    void add(const EqFitTallies& others);
};

/// Fits bands, each setting once a run: sessions repeat an EQ on many tracks.
class EqFitter {
public:
    /// Fits a band that is worth it, from the sections that it has. `rate_hz` is above 0.
    void fit(EqBand& band, double rate_hz);

    /// How many settings were searched for: one that is known costs nothing.
    int searches() const { return searches_; }

private:
    std::map<std::string, EqBand> cache_;
    int searches_ = 0;
};

}  // namespace tanrove
