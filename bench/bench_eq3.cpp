// How long the fit of a seven-band EQ takes, and the same search written down plainly. The counter
// "ratio" is the second time in terms of the first; "apart" is how far the two answers are from
// each other at most, in hertz and decibels relative to their size: above 1e-6 it is an error. And
// how long sessions take to convert that have 300 EQs with every band in use, all different and all
// alike.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <string>

#include "eqfit/eq_start_sections.hpp"
#include "eqfit/fit_eq_band.hpp"
#include "plain_eq_fit.hpp"
#include "run/convert_session.hpp"
#include "support/records/plugin_records.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

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

/// A session with 300 EQs of seven bands, all in use.
builder::SessionBuilder session_with_eqs(bool all_alike) {
    constexpr int tracks = 60;
    constexpr int eqs_a_track = 5;
    std::mt19937 random(1);
    const auto between = [&](double low, double high) {
        return low * std::pow(high / low, static_cast<double>(random()) / 4294967296.0);
    };
    builder::SessionBuilder session;
    for (int i = 0; i < tracks; ++i) {
        builder::TrackSpec track;
        track.name = "Track " + std::to_string(i);
        for (int k = 0; k < eqs_a_track; ++k) {
            if (all_alike) random.seed(1);
            std::array<double, 38> values = {};
            values[5] = values[6] = values[32] = values[33] = 1;
            values[8] = values[35] = 3;
            values[9] = between(20, 300);
            values[36] = between(5000, 20000);
            const double ranges[][2] = {
                {20, 500}, {40, 1000}, {125, 8000}, {1000, 18000}, {1800, 20000}};
            const std::size_t at[] = {10, 15, 19, 23, 27};
            for (std::size_t band = 0; band < 5; ++band) {
                values[at[band]] = 1;
                values[at[band] + 1] = between(1, 12) - 6;
                values[at[band] + 2] = between(ranges[band][0], ranges[band][1]);
                values[at[band] + 3] = between(0.3, 5);
            }
            builder::ByteWriter records;
            records.zeros(4);
            for (const double value : values) {
                records.raw(builder::real_control("Ctrl", value, 8));
            }
            track.inserts.push_back(
                {.code = "Digi47e3",
                 .state = builder::plugin_chunk("Digi47e3", "elck", "", records.bytes())});
        }
        session.track(track);
    }
    return session;
}

void convert_three_hundred(benchmark::State& state) {
    const builder::TempFolder folder;
    NullSink silent;
    console_state().console_sink = &silent;
    RunOptions options;
    options.session_path = folder / "Eqs.ptx";
    options.output_path = folder / "Eqs.rpp";
    options.overwrite = true;
    if (!session_with_eqs(state.range(0) != 0).write(options.session_path)) std::abort();
    for (auto _ : state) {
        if (convert_session(options, nullptr, nullptr) != 0) std::abort();
    }
    console_state().console_sink = nullptr;
}
BENCHMARK(convert_three_hundred)
    ->ArgName("alike")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
