// What a conversion costs beyond moving its bytes: its processor time in terms of that of a program
// which reads and deciphers the same session, looks at every byte, and writes as many bytes as the
// project has. And a small session through the program itself, which is mostly its start.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <vector>

#include "built_session.hpp"
#include "own_process.hpp"
#include "ptformat/ptformat.hpp"
#include "run/convert_session.hpp"
#include "session/session_image.hpp"
#include "support/temp_folder.hpp"

namespace tanrove::bench {

namespace {

constexpr int runs = 9;

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// A written session and where its project goes.
struct Files {
    explicit Files(const builder::SessionBuilder& built) {
        options.session_path = folder / "Song.ptx";
        options.output_path = folder / "Song.rpp";
        options.overwrite = true;
        if (!built.write(options.session_path)) std::abort();
    }

    builder::TempFolder folder;
    RunOptions options;
};

double seconds_to_convert(const RunOptions& options) {
    NullSink silent;
    console_state().console_sink = &silent;
    const double start = processor_seconds();
    if (convert_session(options, nullptr, nullptr) != 0) std::abort();
    return processor_seconds() - start;
}

double seconds_to_move_bytes(const RunOptions& options, std::size_t project_bytes) {
    const std::string project_path = options.output_path + ".bytes";
    std::filesystem::remove(project_path);  // a project is a new file as well
    const double start = processor_seconds();
    PTFFormat file;
    if (file.load(options.session_path, default_session_rate_hz) != 0) std::abort();
    const auto image = ByteView({file.image(), static_cast<std::size_t>(file.image_size())});
    std::uint64_t sum = 0;
    for (std::size_t at = 0; at < image.size(); ++at) sum += image.u8(at);
    benchmark::DoNotOptimize(sum);
    std::ofstream project(project_path, std::ios::binary);
    const auto* bytes = reinterpret_cast<const char*>(file.image());
    for (std::size_t left = project_bytes; left > 0;) {
        const std::size_t count = std::min(left, image.size());
        project.write(bytes, static_cast<std::streamsize>(count));
        left -= count;
    }
    project.close();
    if (!project) std::abort();
    return processor_seconds() - start;
}

/// 100,000 clips on 500 tracks. The counter "ratio" is the conversion in terms of the floor, and
/// stays below 3.5.
void convert_beside_floor(benchmark::State& state) {
    const Files files(session_of(500, 200));
    if (convert_session(files.options, nullptr, nullptr) != 0) std::abort();
    const auto bytes =
        static_cast<std::size_t>(std::filesystem::file_size(files.options.output_path));
    std::vector<double> conversions;
    std::vector<double> floors;
    for (auto _ : state) {
        floors.push_back(
            measured_in_a_process([&] { return seconds_to_move_bytes(files.options, bytes); }));
        conversions.push_back(
            measured_in_a_process([&] { return seconds_to_convert(files.options); }));
        state.SetIterationTime(conversions.back());
    }
    state.counters["floor_ms"] = median(floors) * 1e3;
    state.counters["ratio"] = median(conversions) / median(floors);
    state.counters["project_MB"] = static_cast<double>(bytes) / 1e6;
}

/// Ten tracks of ten clips, through the program, from its start to its end.
void run_the_program(benchmark::State& state) {
    const Files files(session_of(10, 10));
    std::string program = TANROVE_PROGRAM;
    std::string session = files.options.session_path;
    std::string check = "--check";
    char* const arguments[] = {program.data(), check.data(), session.data(), nullptr};
    posix_spawn_file_actions_t silent;
    posix_spawn_file_actions_init(&silent);
    posix_spawn_file_actions_addopen(&silent, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    for (auto _ : state) {
        pid_t run = 0;
        rusage used = {};
        int status = 0;
        if (posix_spawn(&run, program.c_str(), &silent, nullptr, arguments, environ) != 0 ||
            wait4(run, &status, 0, &used) != run || status != 0) {
            std::abort();
        }
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        };
        state.SetIterationTime(seconds(used.ru_utime) + seconds(used.ru_stime));
    }
    posix_spawn_file_actions_destroy(&silent);
}

BENCHMARK(convert_beside_floor)->Iterations(runs)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(run_the_program)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
