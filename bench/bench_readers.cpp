// How long all readers take over a session of 500 tracks, 50,000 clips and 500,000 automation
// points, and over one ten times as long: in clips and points, or in tracks. The counter "ratio" is
// the second median in terms of the first, and stays below 10.5 where every reader is linear.
#include <benchmark/benchmark.h>

#include <map>
#include <string>

#include "median_times.hpp"
#include "support/rich_session.hpp"
#include "tools/all_readers.hpp"

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

/// Times `read` on the image of the benchmark's shape, against its own time on the plain shape.
template <typename Read>
void time_readers(benchmark::State& state, const std::string& what, Read read) {
    const auto shape = state.range(0);
    const builder::Bytes& image = image_of(shape);
    time_median(state, what + shape_names[shape], what + shape_names[plain],
                [&] { read(ByteView(image)); });
    state.SetLabel(shape_names[shape]);
    state.counters["image_MB"] = static_cast<double>(image.size()) / 1e6;
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
    run_equally_often(benchmark);
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
