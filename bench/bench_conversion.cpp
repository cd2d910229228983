// How fast a session opens, is indexed and converts, in bytes of image a second; and whether ten
// times as many edits take ten times as long.
#include <benchmark/benchmark.h>

#include <string>

#include "built_session.hpp"
#include "median_times.hpp"
#include "ptformat/ptformat.hpp"
#include "run/convert_session.hpp"
#include "session/block_index.hpp"
#include "session/session_image.hpp"
#include "support/temp_folder.hpp"

namespace tanrove::bench {

namespace {

constexpr std::size_t tracks = 500;
constexpr std::size_t clips_per_track = 1000;  // half a million clips
constexpr std::size_t tenth_of_the_clips = clips_per_track / 10;

/// A built session, as an image and as a file.
struct Built {
    builder::Bytes image;
    builder::TempFolder folder;
    std::string path;

    explicit Built(std::size_t clips) {
        const auto session = session_of(tracks, clips);
        image = session.image();
        path = folder / "Big.ptx";
        if (!session.write(path)) std::abort();
    }
    std::int64_t bytes() const { return static_cast<std::int64_t>(image.size()); }
};

const Built& built(std::int64_t clips) {
    static const Built small(tenth_of_the_clips);
    static const Built large(clips_per_track);
    return static_cast<std::size_t>(clips) == clips_per_track ? large : small;
}

void count_bytes(benchmark::State& state, const Built& session) {
    state.SetBytesProcessed(state.iterations() * session.bytes());
    state.counters["image_MB"] = static_cast<double>(session.bytes()) / 1e6;
}

void open_session(benchmark::State& state) {
    const Built& session = built(state.range(0));
    for (auto _ : state) {
        PTFFormat file;
        if (file.load(session.path, default_session_rate_hz) != 0) std::abort();
        benchmark::DoNotOptimize(file.image());
    }
    count_bytes(state, session);
}

void index_blocks(benchmark::State& state) {
    const Built& session = built(state.range(0));
    for (auto _ : state) {
        const BlockIndex index{ByteView(session.image)};
        benchmark::DoNotOptimize(index.blocks().all().data());
    }
    count_bytes(state, session);
}

void convert(benchmark::State& state) {
    const Built& session = built(state.range(0));
    NullSink silent;
    console_state().console_sink = &silent;
    RunOptions options;
    options.session_path = session.path;
    options.output_path = session.folder / "Big.rpp";
    options.overwrite = true;
    for (auto _ : state) {
        if (convert_session(options, nullptr, nullptr) != 0) std::abort();
    }
    console_state().console_sink = nullptr;
    count_bytes(state, session);
}

/// Converts without a disk, so that its speed is none of the time.
class CheckedConversion {
public:
    explicit CheckedConversion(const builder::SessionBuilder& session) {
        options_.session_path = folder_ / "Song.ptx";
        options_.check_only = true;
        if (!session.write(options_.session_path)) std::abort();
        console_state().console_sink = &silent_;
    }
    ~CheckedConversion() { console_state().console_sink = nullptr; }
    CheckedConversion(const CheckedConversion&) = delete;
    CheckedConversion& operator=(const CheckedConversion&) = delete;

    void list() { options_.list_only = true; }
    void operator()() const {
        if (convert_session(options_, nullptr, nullptr) != 0) std::abort();
    }

private:
    builder::TempFolder folder_;
    NullSink silent_;
    RunOptions options_;
};

/// 50,000 clips on 500 tracks, overlapping and faded, and ten times as many. The counter "ratio" is
/// the second time in terms of the first, and stays below 10.5 where every step is linear.
void convert_edits(benchmark::State& state) {
    const auto clips = static_cast<std::size_t>(state.range(0));
    const CheckedConversion conversion(edited_session_of(tracks, clips));
    time_median(state, "edits " + std::to_string(clips),
                "edits " + std::to_string(tenth_of_the_clips), [&] { conversion(); });
}

/// The same with ten times the tracks of as many clips each.
void convert_tracks(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const CheckedConversion conversion(edited_session_of(count, tenth_of_the_clips));
    time_median(state, "tracks " + std::to_string(count), "tracks " + std::to_string(tracks / 10),
                [&] { conversion(); });
}

/// The listing alone, of as many clips.
void list_session(benchmark::State& state) {
    const auto clips = static_cast<std::size_t>(state.range(0));
    CheckedConversion conversion(session_of(tracks, clips));
    conversion.list();
    time_median(state, "list " + std::to_string(clips),
                "list " + std::to_string(tenth_of_the_clips), [&] { conversion(); });
}

constexpr std::size_t midi_clips = 2000;

/// Up to a million notes: the time a note stays the same.
void convert_midi(benchmark::State& state) {
    const auto notes_per_clip = static_cast<std::size_t>(state.range(0));
    const builder::TempFolder folder;
    NullSink silent;
    console_state().console_sink = &silent;
    RunOptions options;
    options.session_path = folder / "Notes.ptx";
    options.output_path = folder / "Notes.rpp";
    options.overwrite = true;
    if (!midi_session_of(midi_clips, notes_per_clip).write(options.session_path)) std::abort();
    for (auto _ : state) {
        if (convert_session(options, nullptr, nullptr) != 0) std::abort();
    }
    console_state().console_sink = nullptr;
    state.SetItemsProcessed(state.iterations() *
                            static_cast<std::int64_t>(midi_clips * notes_per_clip));
}

BENCHMARK(open_session)
    ->Arg(tenth_of_the_clips)
    ->Arg(clips_per_track)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(index_blocks)
    ->Arg(tenth_of_the_clips)
    ->Arg(clips_per_track)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(convert_edits)->Arg(tenth_of_the_clips)->Arg(clips_per_track)->Apply(run_equally_often);
BENCHMARK(convert_tracks)->Arg(tracks / 10)->Arg(tracks)->Apply(run_equally_often);
BENCHMARK(list_session)->Arg(tenth_of_the_clips)->Arg(clips_per_track)->Apply(run_equally_often);
BENCHMARK(convert_midi)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(convert)->Arg(tenth_of_the_clips)->Arg(clips_per_track)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
