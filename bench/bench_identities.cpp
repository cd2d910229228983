// How long it takes to find REAPER's plug-in for each of 2,000 different plug-ins of a session
// among 10,000 that REAPER knows, builds of all kinds, every other plug-in unknown to it; and for
// ten times as many among ten times as many. The counter "ratio" is the second time in terms of the
// first: a walk of the list for each plug-in would make it 100. The best of 15 runs counts, since a
// run that another program disturbs tells nothing.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <random>

#include "base/formatted_text.hpp"
#include "own_process.hpp"
#include "plugins/plugin_identities.hpp"

namespace tanrove::bench {

namespace {

constexpr std::int64_t plain_entries = 10000;
constexpr std::int64_t entries_per_insert = 5;

std::string hex(std::string_view bytes) {
    std::string digits;
    for (const char c : bytes) digits += formatted("%02X", static_cast<unsigned char>(c));
    return digits;
}

/// A code of four letters that no other number below 7 million has.
std::string word(std::int64_t number) {
    std::string made;
    for (int i = 0; i < 4; ++i, number /= 52) {
        const auto letter = static_cast<int>(number % 52);
        made += static_cast<char>(letter < 26 ? 'A' + letter : 'a' + letter - 26);
    }
    return made;
}

/// A list as REAPER writes it: VST2s, VST3s of three kinds of classes, plug-ins in shells, CLAPs.
std::vector<ScanEntry> scan_of(std::int64_t count) {
    std::string vsts;
    std::string claps = "[all.clap]\n";
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string product = word(i);
        const std::string name = "Plug-in " + product + " (Maker " + word(i % 100) + ")";
        const auto number =
            static_cast<unsigned>(product[0]) << 24 | static_cast<unsigned>(product[1]) << 16 |
            static_cast<unsigned>(product[2]) << 8 | static_cast<unsigned>(product[3]);
        const std::string classes[] = {"",
                                       hex("VST" + product + "plug-in n"),
                                       hex("\xab\xcd\xef\x01\x91\x82\xfa\xebMake" + product),
                                       hex("Make12" + product + "xy"),
                                       hex("VST" + product + "in shell "),
                                       ""};
        const auto kind = static_cast<std::size_t>(i % 6);
        const std::string brace = classes[kind].empty() ? "" : "{" + classes[kind];
        const std::string file = "Plug_in_" + product + (kind == 0 ? ".dll" : ".vst3");
        if (kind == 5) {
            claps += formatted("com.maker.%s=0|%s\n", product.c_str(), name.c_str());
        } else {
            vsts += formatted("%s=00,%u%s,%s\n", file.c_str(), number, brace.c_str(), name.c_str());
        }
    }
    auto entries = read_vst_list(vsts);
    for (auto& entry : read_clap_list(claps)) entries.push_back(std::move(entry));
    return entries;
}

/// Every other one is not in the list; some of those have a name in the session.
std::vector<PluginInsert> inserts_of(std::int64_t count) {
    std::vector<PluginInsert> inserts;
    for (std::int64_t i = 0; i < count; ++i) {
        PluginInsert insert;
        insert.code = "Make" + word(i % 2 == 0 ? i : 5000000 + i);
        insert.containerKind = ContainerKind::ffbs;
        inserts.push_back(insert);
    }
    std::shuffle(inserts.begin(), inserts.end(), std::mt19937(1));
    return inserts;
}

double seconds_to_identify(const std::vector<ScanEntry>& scan,
                           const std::vector<PluginInsert>& inserts, const NamesByCode& names,
                           bool prefer_vst3) {
    auto list = scan;
    TextBuffer lines;
    const double start = processor_seconds();
    const PluginIdentities identities({.scan = std::move(list),
                                       .built_in = built_in_plugins(),
                                       .learned = {},
                                       .inserts = inserts,
                                       .session_names = names,
                                       .prefer_vst3 = prefer_vst3,
                                       .prefer_clap = true,
                                       .settings_translate = {}},
                                      lines);
    const double seconds = processor_seconds() - start;
    if (lines.text().empty()) std::abort();
    benchmark::DoNotOptimize(&identities);
    return seconds;
}

void identify(benchmark::State& state) {
    static double plain_seconds = 0;
    const auto scan = scan_of(state.range(0));
    const auto inserts = inserts_of(state.range(0) / entries_per_insert);
    NamesByCode names;
    for (const PluginInsert& insert : inserts)
        names.emplace_back(insert.code, "Plug-in " + insert.code.substr(4));
    std::ranges::sort(names);
    double best = std::numeric_limits<double>::max();
    for (auto _ : state) {
        const double seconds = measured_in_a_process(
            [&] { return seconds_to_identify(scan, inserts, names, state.range(1) != 0); });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
    }
    if (state.range(0) == plain_entries) plain_seconds = best;
    state.counters["best_ms"] = best * 1e3;
    state.counters["ratio"] = best / plain_seconds;
}

BENCHMARK(identify)
    ->ArgNames({"entries", "prefer_vst3"})
    ->Args({plain_entries, 1})
    ->Args({10 * plain_entries, 1})
    ->Args({plain_entries, 0})
    ->Args({10 * plain_entries, 0})
    ->Iterations(15)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tanrove::bench

BENCHMARK_MAIN();
