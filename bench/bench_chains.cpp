// How long it takes to write 2,000 plug-ins with 20 KB of settings each, of every container, as the
// FX chains of 200 tracks; and ten times as many. The counter "times_copying" is that time in terms
// of copying and coding the same bytes and nothing else, "ratio" the time of ten times as many in
// terms of the plain.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <random>

#include "base/base64.hpp"
#include "base/formatted_text.hpp"
#include "chains/plan_chain.hpp"
#include "median_times.hpp"
#include "project/fx_chain_text.hpp"

namespace tanrove::bench {

namespace {

constexpr std::size_t state_bytes = 20480;
constexpr std::size_t inserts_on_track = 10;
constexpr std::int64_t plain_inserts = 2000;
constexpr std::array kinds = {
    ContainerKind::ffbs,        ContainerKind::xml,     ContainerKind::meta_comment,
    ContainerKind::sized_magic, ContainerKind::zlib,    ContainerKind::preset_tree,
    ContainerKind::index_text,  ContainerKind::archive, ContainerKind::hsin,
    ContainerKind::scored,
};

/// A session's plug-ins, each with a state of its own, and REAPER's builds of them, of both kinds.
struct Session {
    std::vector<std::uint8_t> image;
    std::vector<PluginInsert> inserts;
    RowsByKey rows;
};

Session session_of(std::int64_t count) {
    Session session;
    std::mt19937 random(5);
    const auto wanted = static_cast<std::size_t>(count);
    session.image.resize((wanted + 1) * state_bytes);
    for (std::uint8_t& byte : session.image) byte = static_cast<std::uint8_t>(random());
    for (std::size_t i = 0; i < wanted; ++i) {
        PluginInsert insert;
        insert.code = formatted("Make%04u", static_cast<unsigned>(i % 100));
        insert.containerKind = kinds[i % kinds.size()];
        insert.pluginSubComp = "Part";
        insert.blockStart = insert.chunkOffset = (i + 1) * state_bytes;
        insert.chunkSize = state_bytes;
        insert.chunkLimit = insert.chunkOffset + state_bytes;
        const std::string_view head("FFBS\1\0\0\0\4\0\0\0", 12);
        std::copy(head.begin(), head.end(),
                  session.image.begin() + static_cast<std::ptrdiff_t>(insert.chunkOffset));
        PluginTableRow& row = session.rows[insert_key(insert)];
        row.code = insert_key(insert);
        row.fxName = "VST3: " + row.code + " (Maker)";
        row.file = row.code + ".vst3";
        row.ident = i % 3 == 0 ? "12345<00>" : "12345{00}";
        session.inserts.push_back(std::move(insert));
    }
    return session;
}

/// Plans the chains and hands out each.
template <typename Use>
void for_each_chain(const Session& session, Use use) {
    TextBuffer lines;
    const NamesByCode no_names;
    const PluginIdentities identities({.scan = {},
                                       .built_in = built_in_plugins(),
                                       .learned = session.rows,
                                       .inserts = session.inserts,
                                       .session_names = no_names,
                                       .settings_translate = {}},
                                      lines);
    const TempoClock clock({}, 120);
    const ParameterNames names;
    StandInMaker stand_ins{ByteView(session.image)};
    const ChainSources sources = {.image = ByteView(session.image),
                                  .identities = identities,
                                  .names = names,
                                  .times = {.clock = clock, .rate_hz = 48000},
                                  .stand_ins = stand_ins};
    ChainTallies tallies;
    for (std::size_t i = 0; i < session.inserts.size(); i += inserts_on_track) {
        ChainTrack track{.name = "Track"};
        for (std::size_t k = 0; k < inserts_on_track; ++k) {
            track.inserts.push_back({.insert = &session.inserts[i + k]});
        }
        use(plan_chain(track, sources, {}, tallies));
    }
}

/// The states of all plug-ins, one behind the other's, as they are written.
std::vector<std::string> states_of(const Session& session) {
    std::vector<std::string> states;
    for_each_chain(session, [&](const ChainPlan& chain) {
        for (const FxSlot& slot : chain.slots) states.push_back(slot.state);
    });
    if (states.size() != session.inserts.size()) std::abort();
    for (const std::string& state : states) {
        if (state.size() < state_bytes) std::abort();
    }
    return states;
}

std::string name_of(const char* work, std::int64_t count) {
    return formatted("%s %d", work, static_cast<int>(count));
}

void copy_and_code(benchmark::State& state) {
    const auto states = states_of(session_of(state.range(0)));
    const auto copy = [&] {
        for (const std::string& bytes : states) {
            // The copy is what is timed.
            // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
            const std::string copied = bytes;
            benchmark::DoNotOptimize(
                base64({reinterpret_cast<const std::uint8_t*>(copied.data()), copied.size()}));
        }
    };
    time_median(state, name_of("copying", state.range(0)), name_of("copying", plain_inserts), copy);
}

void write_chains(benchmark::State& state) {
    const Session session = session_of(state.range(0));
    const auto write = [&] {
        for_each_chain(session, [](const ChainPlan& chain) {
            std::string text;
            TextSink out(text);
            write_fx_chain(out, chain_level, track_chain_tag, chain);
            benchmark::DoNotOptimize(text.data());
        });
    };
    const std::string name = name_of("writing", state.range(0));
    time_median(state, name, name_of("writing", plain_inserts), write);
    const double copying = medians()[name_of("copying", state.range(0))];
    state.counters["times_copying"] = medians()[name] / copying;
}

BENCHMARK(copy_and_code)->Arg(plain_inserts)->Arg(10 * plain_inserts)->Apply(run_equally_often);
BENCHMARK(write_chains)->Arg(plain_inserts)->Arg(10 * plain_inserts)->Apply(run_equally_often);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
