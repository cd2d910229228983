// The fit of a band: moves the sections, and adds some where these do not do, until REAPER's EQ
// follows the band's curve.
#pragma once

#include <map>
#include <string>

#include "eqfit/eq_band.hpp"

namespace tanrove {

/// What the fits of a run came to.
struct EqFitTallies {
    int fitted_bands = 0;
    int extra_sections = 0;
    double worst_db = 0;
};

/// Fits bands, each setting once a run: sessions repeat an EQ on many tracks.
class EqFitter {
public:
    explicit EqFitter(double rate_hz) : rate_hz_(rate_hz) {}

    /// Fits a band that is worth it, from the sections that it has.
    void fit(EqBand& band);

    const EqFitTallies& tallies() const { return tallies_; }

    /// How many settings were searched for: one that is known costs nothing.
    int searches() const { return searches_; }

private:
    double rate_hz_;
    std::map<std::string, EqBand> cache_;
    int searches_ = 0;
    EqFitTallies tallies_;
};

}  // namespace tanrove
