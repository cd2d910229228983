// How long all readers take over a session of 500 tracks, 50,000 clips and 500,000 automation
// points, and over one ten times as long: in clips and points, or in tracks. The counter "ratio" is
// the second time in terms of the first, and stays below 11 where every reader is linear. All times
// are processor time, and the ratio is that of the fastest runs: a busy machine does not blur it.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <map>
#include <string>

#include "support/all_readers.hpp"
#include "support/rich_session.hpp"

namespace tanrove::bench {

namespace {

enum Shape : std::int64_t { plain, ten_times_the_clips, ten_times_the_tracks };

constexpr const char* shape_names[] = {"plain", "10x clips", "10x tracks"};
constexpr builder::RichSize shape_sizes[] = {
    {500, 100, 1000, 6}, {500, 1000, 10000, 60}, {5000, 100, 1000, 6}};

const builder::Bytes& image_of(std::int64_t shape) {
    static std::map<std::int64_t, builder::Bytes> images;
    auto& image = images[shape];
    if (image.empty()) image = builder::rich_session(shape_sizes[shape]).image();
    return image;
}

double processor_seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// Times `read` on the image of the benchmark's shape, against its own time on the plain shape.
template <typename Read>
void time_readers(benchmark::State& state, const std::string& what, Read read) {
    static std::map<std::string, double> plain_seconds;
    const builder::Bytes& image = image_of(state.range(0));
    double best = std::numeric_limits<double>::max();
    for (auto _ : state) {
        const double start = processor_seconds();
        read(ByteView(image));
        const double seconds = processor_seconds() - start;
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
    }
    if (state.range(0) == plain) plain_seconds[what] = best;
    state.SetLabel(shape_names[state.range(0)]);
    state.counters["image_MB"] = static_cast<double>(image.size()) / 1e6;
    state.counters["ratio"] = best / plain_seconds[what];
    state.counters["image_ratio"] =
        static_cast<double>(image.size()) / static_cast<double>(image_of(plain).size());
}

void all_readers(benchmark::State& state) {
    time_readers(state, "all", [](ByteView image) {
        benchmark::DoNotOptimize(read_everything(BlockIndex(image)).data());
    });
}

void one_family(benchmark::State& state, ReaderFamily family, const std::string& name) {
    const BlockIndex index{ByteView(image_of(state.range(0)))};
    time_readers(state, name,
                 [&](ByteView) { benchmark::DoNotOptimize(read_family(index, family).data()); });
}

void shape_it(benchmark::internal::Benchmark* benchmark) {
    for (const auto shape : {plain, ten_times_the_clips, ten_times_the_tracks}) {
        benchmark->Arg(shape);
    }
    benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

void register_all() {
    shape_it(benchmark::RegisterBenchmark("all_readers", all_readers));
    for (std::size_t i = 0; i < reader_family_names.size(); ++i) {
        const std::string name(reader_family_names[i]);
        shape_it(benchmark::RegisterBenchmark(name.c_str(), [i, name](benchmark::State& state) {
            one_family(state, static_cast<ReaderFamily>(i), name);
        }));
    }
}

}  // namespace tanrove::bench

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    tanrove::bench::register_all();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
