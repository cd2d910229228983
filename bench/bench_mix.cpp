// How a conversion grows with the mix: with its tracks, sends, lanes, folders and groups, each at
// its size, ten times and a hundred times that. The counter "ratio" is the least time in terms of
// that of a tenth of the size, and stays below 11 where every step is linear. Times are processor
// time of a process for each conversion, and nothing is written, so that waiting for others does
// not count; only the caches are shared with them.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "own_process.hpp"
#include "run/convert_session.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove::bench {

namespace {

using builder::SessionBuilder;
using builder::TrackKind;
using builder::TrackSpec;

std::string numbered(const char* name, std::size_t number) {
    return name + std::to_string(number + 1);
}

SessionBuilder tracks(std::size_t count) {
    SessionBuilder session;
    for (std::size_t t = 0; t < count; ++t) session.track({.name = numbered("Track ", t)});
    return session;
}

/// Eight of each track, into sixteen returns.
SessionBuilder sends(std::size_t count) {
    constexpr std::size_t sends_per_track = 8;
    constexpr std::size_t buses = 16;
    SessionBuilder session;
    for (std::size_t b = 0; b < buses; ++b) {
        const std::string bus = numbered("Mix Bus ", b);
        session.bus(bus, static_cast<std::uint16_t>(2 * b));
        session.track({.name = numbered("Return ", b),
                       .kind = TrackKind::aux,
                       .channels = 2,
                       .input = bus,
                       .input_is_bus = true});
    }
    for (std::size_t t = 0; t < count / sends_per_track; ++t) {
        TrackSpec track{.name = numbered("Track ", t)};
        for (std::size_t i = 0; i < sends_per_track; ++i) {
            track.sends.push_back({.target = numbered("Mix Bus ", (t + i) % buses)});
        }
        session.track(track);
    }
    return session;
}

/// Points of the volume lanes of a hundred tracks: small moves, and every 50 a ramp of 12 dB.
SessionBuilder lane_points(std::size_t count) {
    constexpr std::size_t lanes = 100;
    SessionBuilder session;
    for (std::size_t t = 0; t < lanes; ++t) {
        TrackSpec track{.name = numbered("Track ", t)};
        for (std::size_t i = 0; i < count / lanes; ++i) {
            const int swell = i % 100 < 50 ? 0 : -120;
            track.volume_lane.points.push_back(
                {static_cast<std::int64_t>(i) * 2400, swell - static_cast<int>((i + t) % 7)});
        }
        session.track(track);
    }
    return session;
}

/// A track with all of its lanes, over and over.
SessionBuilder lanes(std::size_t count) {
    SessionBuilder session;
    for (std::size_t t = 0; t < count / 5; ++t) {
        TrackSpec track{.name = numbered("Track ", t), .channels = 2};
        const builder::LaneSpec moves{.initial = 0, .points = {{2400, 1}, {4800, 0}}};
        track.volume_lane = track.mute_lane = track.pan_lane = track.pan_right_lane = moves;
        track.trim_lane = moves;
        session.track(track);
    }
    return session;
}

/// Routing folders of two tracks, each inside a Basic folder of four of them.
SessionBuilder folders(std::size_t count) {
    SessionBuilder session;
    session.strip_table_form(builder::StripTableForm::since_2022);
    std::size_t place = 0;
    const auto add = [&](const char* name, TrackKind kind) {
        session.track({.name = numbered(name, place), .kind = kind});
        return place++;
    };
    for (std::size_t f = 0; f < count / 5; ++f) {
        const std::size_t outer = add("Section ", TrackKind::basic_folder);
        std::vector<std::size_t> inner;
        for (int i = 0; i < 4; ++i) {
            inner.push_back(add("Folder ", TrackKind::routing_folder));
            const std::size_t first = add("Track ", TrackKind::audio);
            session.folder(inner.back(), {first, add("Track ", TrackKind::audio)});
        }
        session.folder(outer, inner);
    }
    return session;
}

/// Groups of twenty tracks; every tenth is a VCA's.
SessionBuilder groups(std::size_t count) {
    constexpr std::uint16_t strips = 200;
    SessionBuilder session = tracks(strips);
    for (int v = 0; v < 20; ++v) session.vca(numbered("VCA ", static_cast<std::size_t>(v)), -60);
    for (std::size_t g = 0; g < count; ++g) {
        builder::GroupSpec group{.name = numbered("Group ", g)};
        for (std::size_t i = 0; i < 20; ++i) {
            group.members.push_back(static_cast<std::uint16_t>((g + 7 * i) % strips));
        }
        if (g % 10 == 0) group.vca_master = static_cast<std::uint16_t>(strips + g / 10 % 20);
        session.group(group);
    }
    return session;
}

double seconds_of_a_run(const RunOptions& options) {
    return measured_in_a_process([&] {
        const double start = processor_seconds();
        if (convert_session(options, nullptr, nullptr) != 0) std::abort();
        return processor_seconds() - start;
    });
}

using MakeSession = SessionBuilder (*)(std::size_t);

void convert_mix(benchmark::State& state, MakeSession make_session) {
    static std::map<std::pair<MakeSession, std::size_t>, double> least_seconds;
    const builder::TempFolder folder;
    RunOptions options;
    options.session_path = folder / "Mix.ptx";
    options.check_only = true;
    const auto size = static_cast<std::size_t>(state.range(0));
    if (!make_session(size).write(options.session_path)) std::abort();
    NullSink silent;
    console_state().console_sink = &silent;
    auto& least = least_seconds.try_emplace({make_session, size}, HUGE_VAL).first->second;
    for (auto _ : state) {
        const double seconds = seconds_of_a_run(options);
        state.SetIterationTime(seconds);
        least = std::min(least, seconds);
    }
    console_state().console_sink = nullptr;
    const auto tenth = least_seconds.find({make_session, size / 10});
    if (tenth != least_seconds.end()) state.counters["ratio"] = least / tenth->second;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// From `size` to a hundred times that.
void grow(benchmark::internal::Benchmark* mix, std::int64_t size) {
    mix->Arg(size)->Arg(10 * size)->Arg(100 * size)->UseManualTime();
    mix->MinTime(3)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(convert_mix, tracks, tracks)->Apply([](auto* mix) { grow(mix, 100); });
BENCHMARK_CAPTURE(convert_mix, sends, sends)->Apply([](auto* mix) { grow(mix, 800); });
BENCHMARK_CAPTURE(convert_mix, lanes, lanes)->Apply([](auto* mix) { grow(mix, 500); });
BENCHMARK_CAPTURE(convert_mix, lane_points, lane_points)->Apply([](auto* mix) {
    grow(mix, 50'000);
});
BENCHMARK_CAPTURE(convert_mix, folders, folders)->Apply([](auto* mix) { grow(mix, 40); });
BENCHMARK_CAPTURE(convert_mix, groups, groups)->Apply([](auto* mix) { grow(mix, 10); });

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
