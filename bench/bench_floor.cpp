// What a conversion costs beyond moving its bytes: the processor time of the program in terms of
// that of a program which reads and deciphers the same session, looks at every byte, and writes as
// many bytes as the project has. And a small session, which is mostly the program's start.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "built_session.hpp"
#include "support/temp_folder.hpp"

namespace tanrove::bench {

namespace {

constexpr int runs = 15;

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// A written session and where its project goes.
struct Files {
    explicit Files(const builder::SessionBuilder& built) {
        if (!built.write(session)) std::abort();
    }

    builder::TempFolder folder;
    std::string session = folder / "Song.ptx";
    std::string project = folder / "Song.rpp";
};

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

/// The processor time of a program from its start to its end, the system's part included.
double processor_seconds_of(std::vector<std::string> words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t silent;
    posix_spawn_file_actions_init(&silent);
    posix_spawn_file_actions_addopen(&silent, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t run = 0;
    rusage used = {};
    int status = 0;
    if (posix_spawn(&run, arguments[0], &silent, nullptr, arguments.data(), environ) != 0 ||
        wait4(run, &status, 0, &used) != run || status != 0) {
        std::abort();
    }
    posix_spawn_file_actions_destroy(&silent);
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/// 100,000 clips on 500 tracks. The counter "ratio" is the conversion in terms of the floor, and
/// stays below 3.5.
void convert_beside_floor(benchmark::State& state) {
    const Files files(session_of(500, 200));
    const auto convert = [&] {
        std::filesystem::remove(files.project);
        return processor_seconds_of({TANROVE_PROGRAM, files.session, "-o", files.project});
    };
    convert();
    const std::uintmax_t bytes = std::filesystem::file_size(files.project);
    std::vector<double> conversions;
    std::vector<double> floors;
    for (auto _ : state) {
        std::filesystem::remove(files.project);
        floors.push_back(processor_seconds_of(
            {TANROVE_MOVE_BYTES, files.session, files.project, std::to_string(bytes)}));
        conversions.push_back(convert());
        state.SetIterationTime(conversions.back());
    }
    state.counters["floor_ms"] = median(floors) * 1e3;
    state.counters["ratio"] = median(conversions) / median(floors);
    state.counters["project_MB"] = static_cast<double>(bytes) / 1e6;
}

/// Ten tracks of ten clips.
void run_the_program(benchmark::State& state) {
    const Files files(session_of(10, 10));
    for (auto _ : state) {
        state.SetIterationTime(processor_seconds_of({TANROVE_PROGRAM, "--check", files.session}));
    }
}

BENCHMARK(convert_beside_floor)->Iterations(runs)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(run_the_program)->Iterations(200)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
