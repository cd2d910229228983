// How long the fit of a seven-band EQ takes, and the same search written down plainly. The counter
// "ratio" is the second time in terms of the first; "apart" is how far the two answers are from
// each other at most, in hertz and decibels relative to their size: above 1e-6 it is an error.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <limits>

#include "eqfit/eq_start_sections.hpp"
#include "eqfit/fit_eq_band.hpp"
#include "plain_eq_fit.hpp"

namespace tanrove::bench {

namespace {

constexpr double rate_hz = 48000;

EqBand band_of(BandKind kind, double frequency, double gain, double q, bool high) {
    EqBand band;
    band.kind = kind;
    band.frequency = frequency;
    band.gain = gain;
    band.q = q;
    band.high = high;
    band.slope = 4;
    add_start_sections(band, rate_hz);
    return band;
}

/// A mastering EQ: everything in use, the upper bands where a digital EQ bends.
std::array<EqBand, 7> seven_bands() {
    return {band_of(BandKind::pass, 35, 0, 1, true),
            band_of(BandKind::shelf, 120, 4, 0.6, false),
            band_of(BandKind::bell, 400, -3.5, 1.2, false),
            band_of(BandKind::bell, 6500, 5, 0.9, false),
            band_of(BandKind::bell, 11000, -6, 1.4, false),
            band_of(BandKind::shelf, 9000, 6.5, 0.7, true),
            band_of(BandKind::pass, 16000, 0, 1, false)};
}

double apart(double one, double other) {
    return std::fabs(one - other) / std::max(1.0, std::fabs(one));
}

double apart(const std::vector<EqSection>& one, const std::vector<EqSection>& other) {
    if (one.size() != other.size()) return 1;
    double greatest = 0;
    for (std::size_t i = 0; i < one.size(); ++i) {
        greatest = std::max({greatest, apart(one[i].frequency, other[i].frequency),
                             apart(one[i].gain, other[i].gain), apart(one[i].q, other[i].q)});
    }
    return greatest;
}

template <typename Work>
double fastest_seconds(int runs, Work work) {
    double fastest = std::numeric_limits<double>::max();
    for (int run = 0; run < runs; ++run) {
        const std::clock_t start = std::clock();
        work();
        fastest = std::min(fastest, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return fastest;
}

void fit_of_seven_bands(benchmark::State& state) {
    constexpr int runs = 25;
    const auto bands = seven_bands();
    auto fitted = bands;
    const double ours = fastest_seconds(runs, [&] {
        EqFitter fitter;
        fitted = bands;
        for (EqBand& band : fitted) fitter.fit(band, rate_hz);
    });
    std::array<PlainFit, 7> plain;
    for (auto _ : state) {
        const double theirs = fastest_seconds(1, [&] {
            for (std::size_t i = 0; i < bands.size(); ++i)
                plain[i] = fit_plainly(bands[i], rate_hz);
        });
        state.counters["ratio"] = theirs / ours;
        state.counters["ms"] = ours * 1e3;
    }
    double greatest = 0;
    for (std::size_t i = 0; i < bands.size(); ++i) {
        greatest = std::max(greatest, apart(fitted[i].sections, plain[i].sections));
    }
    state.counters["apart"] = greatest;
    if (greatest > 1e-6) state.SkipWithError("the plain search ends elsewhere");
}
BENCHMARK(fit_of_seven_bands)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
