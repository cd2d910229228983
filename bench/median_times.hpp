// Times a piece of work on one size after the other. Times are processor time, every size runs
// equally often, and the median of its runs stands for it: neither a busy machine nor a single run
// that was disturbed, or lucky, blurs the ratio of two sizes.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace tanrove::bench {

constexpr int runs_of_each = 7;

inline void run_equally_often(benchmark::internal::Benchmark* benchmark) {
    benchmark->Iterations(runs_of_each)->UseManualTime()->Unit(benchmark::kMillisecond);
}

/// The medians in seconds by their names, as far as they are measured.
inline std::map<std::string, double>& medians() {
    static std::map<std::string, double> by_name;
    return by_name;
}

/// Runs `work` as often as the benchmark says and keeps the median under `name`. The counter
/// "ratio" is that median in terms of the one that `base` has; `base` may be `name`.
template <typename Work>
void time_median(benchmark::State& state, const std::string& name, const std::string& base,
                 Work work) {
    std::vector<double> times;
    for (auto _ : state) {
        const std::clock_t start = std::clock();
        work();
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        state.SetIterationTime(seconds);
        times.push_back(seconds);
    }
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    medians()[name] = *middle;
    state.counters["median_ms"] = *middle * 1e3;
    if (medians().contains(base)) state.counters["ratio"] = *middle / medians().at(base);
}

}  // namespace tanrove::bench
