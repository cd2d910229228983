// How long a full mix takes to convert: 1,000 tracks, each with 8 sends and 2,000 volume points,
// and the same with ten times the points. The counter "ratio" is the second time in terms of the
// first, and stays below 11 where every step is linear. Times are processor time, and the project
// goes to the null device, so that neither a busy machine nor its disk blurs the ratio.
#include <benchmark/benchmark.h>

#include <ctime>

#include "run/convert_session.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove::bench {

namespace {

constexpr int tracks = 1000;
constexpr int sends_per_track = 8;
constexpr std::int64_t points_per_track = 2000;
constexpr int buses = 2 * sends_per_track;

std::string bus_name(int bus) {
    return "Mix Bus " + std::to_string(bus + 1);
}

/// Small moves, and every 50 points a ramp of 12 dB.
builder::LaneSpec volume_lane(std::int64_t points, int track) {
    builder::LaneSpec lane;
    lane.initial = 0;
    lane.points.reserve(static_cast<std::size_t>(points));
    for (std::int64_t i = 0; i < points; ++i) {
        const int swell = i % 100 < 50 ? 0 : -120;
        lane.points.push_back({i * 2400, swell - static_cast<int>((i + track) % 7)});
    }
    return lane;
}

builder::SessionBuilder full_mix(std::int64_t points) {
    builder::SessionBuilder session;
    for (int i = 0; i < buses; ++i) {
        session.bus(bus_name(i), static_cast<std::uint16_t>(2 * i));
        builder::TrackSpec aux;
        aux.name = "Return " + std::to_string(i + 1);
        aux.kind = builder::TrackKind::aux;
        aux.channels = 2;
        aux.input = bus_name(i);
        aux.input_is_bus = true;
        session.track(aux);
    }
    for (int t = 0; t < tracks; ++t) {
        builder::TrackSpec track;
        track.name = "Track " + std::to_string(t + 1);
        track.volume_lane = volume_lane(points, t);
        for (int i = 0; i < sends_per_track; ++i) {
            track.sends.push_back({.target = bus_name((t + i) % buses), .level_db = -6.0 - i});
        }
        session.track(track);
    }
    return session;
}

double processor_seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void convert_mix(benchmark::State& state) {
    static double plain_seconds = 0;
    const builder::TempFolder folder;
    const std::string path = folder / "Mix.ptx";
    if (!full_mix(state.range(0)).write(path)) std::abort();
    NullSink silent;
    console_state().console_sink = &silent;
    RunOptions options;
    options.session_path = path;
    options.check_only = true;
    double total = 0;
    for (auto _ : state) {
        const double start = processor_seconds();
        if (convert_session(options, nullptr, nullptr) != 0) std::abort();
        const double seconds = processor_seconds() - start;
        state.SetIterationTime(seconds);
        total += seconds;
    }
    console_state().console_sink = nullptr;
    const double mean = total / static_cast<double>(state.iterations());
    if (state.range(0) == points_per_track) plain_seconds = mean;
    state.counters["ratio"] = mean / plain_seconds;
    state.SetItemsProcessed(state.iterations() * state.range(0) * tracks);
}

BENCHMARK(convert_mix)
    ->Arg(points_per_track)
    ->Arg(10 * points_per_track)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
