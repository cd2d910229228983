// The chain of a track: which channels its plug-ins hear, and what is written once for several.
// What else a chain holds stands in the golden projects.
#include "chains/plan_chain.hpp"

#include <gtest/gtest.h>

#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr std::size_t state_at = 100;

/// A run over one track, with a plug-in of the user's own table for each code of his.
class ChainRun {
public:
    ChainRun() {
        image_.assign(state_at, 0);
        for (const char c : std::string("bytes")) image_.push_back(static_cast<std::uint8_t>(c));
        learn("MakePrd1", "VST: One (Make)", "1<00>");
        learn("Lin6Helx", "VST: Helix (L6)", "3<00>");
        learn("MakeClap", "CLAP: Clap (Make)", "make.clap");
    }

    void learn(const std::string& code, const std::string& fx_name, const std::string& ident) {
        PluginTableRow row;
        row.code = code;
        row.productName = code;
        row.fxName = fx_name;
        row.file = "file.dll";
        row.ident = ident;
        row.pinsIn = keyed_pins_in;
        learned_[code] = row;
    }

    ChainPlan chain(std::vector<PluginInsert> inserts, int width = 2) {
        return chain(std::move(inserts), ChainTrack{.name = "Voice", .width = width});
    }

    ChainPlan chain(std::vector<PluginInsert> inserts, ChainTrack track) {
        for (PluginInsert& insert : inserts) {
            ChainInsert place{.insert = &insert};
            if (insert.keyInput > 0) place.key_channel = insert.keyInput;
            track.inserts.push_back(place);
        }
        TextBuffer lines;
        const NamesByCode no_names;
        const ParameterNames no_parameters;
        const PluginIdentities identities({.scan = {},
                                           .built_in = built_in_plugins(),
                                           .learned = learned_,
                                           .inserts = inserts,
                                           .session_names = no_names,
                                           .settings_translate = {}},
                                          lines);
        const TempoClock clock({}, 120);
        StandInMaker stand_ins{ByteView(image_)};
        tallies = {};
        return plan_chain(track,
                          {.image = ByteView(image_),
                           .identities = identities,
                           .names = no_parameters,
                           .times = {.clock = clock, .rate_hz = 48000},
                           .stand_ins = stand_ins},
                          {}, tallies);
    }

    /// A plug-in whose settings block stands in the image, behind all else.
    PluginInsert stored(const std::string& code, const Bytes& state) {
        PluginInsert made;
        made.code = code;
        made.channels = 2;
        made.blockStart = made.slot_end = image_.size();
        image_.insert(image_.end(), 17, 0);
        image_.insert(image_.end(), state.begin(), state.end());
        made.chunkLimit = image_.size();
        return made;
    }

    ChainTallies tallies;

private:
    std::vector<std::uint8_t> image_;
    RowsByKey learned_;
};

PluginInsert insert(const std::string& code) {
    static std::uint64_t slot = 0;
    PluginInsert made;
    made.code = code;
    made.channels = 2;
    made.slot_end = ++slot;
    made.chunkLimit = state_at + 5;
    made.chunkOffset = state_at;
    made.chunkSize = 5;
    made.containerKind = ContainerKind::xml;
    return made;
}

/// The channels of the input pins in a header: of each pin its first channel, "-" for none.
std::string input_pins(const std::string& header) {
    const ByteView bytes(
        std::span(reinterpret_cast<const std::uint8_t*>(header.data()), header.size()));
    std::string pins;
    for (std::size_t i = 0; i < bytes.u32(8); ++i) {
        const std::uint64_t mask = bytes.u64(12 + 8 * i);
        pins += mask == 0 ? "-" : std::to_string(std::countr_zero(mask));
    }
    return pins;
}

TEST(PlanChain, ConnectsTheKeyInputToItsOwnChannelsOnly) {
    const struct {
        const char* code;
        int width, key_input;
        const char* pins;
    } cases[] = {{"MakePrd1", 2, -1, "01--"}, {"MakePrd1", 1, -1, "01--"},
                 {"MakePrd1", 6, -1, "0123"}, {"MakePrd1", 2, 2, "0123"},
                 {"MakePrd1", 2, 4, "0145"},  {"MakePrd1", 2, 0, "0123"},
                 {"MakePrd1", 6, 0, "01--"},  {"MakePrd1", 2, 63, "0163-"},
                 {"Lin6Helx", 1, -1, "0---"}, {"Lin6Helx", 2, -1, "01--"}};
    for (const auto& c : cases) {
        ChainRun run;
        PluginInsert made = insert(c.code);
        made.keyInput = c.key_input;
        PluginInsert clap = made;
        clap.code = "MakeClap";
        clap.containerKind = ContainerKind::scored;
        run.chain({clap}, c.width);
        EXPECT_EQ(run.tallies.misled_claps.size(), c.key_input > 2 ? 1U : 0U);
        EXPECT_EQ(input_pins(run.chain({made}, c.width).slots.front().header), c.pins);
    }
}

TEST(PlanChain, WritesUnlinkedChannelsOnce) {
    ChainRun run;
    PluginInsert left = insert("MakePrd1");
    left.channels = 1;
    PluginInsert right = left, other = left, further = left;
    further.slot_end = 9999;
    EXPECT_EQ(run.chain({left, right, other, further}).slots.size(), 2U);
    EXPECT_EQ(run.tallies.multi_mono, std::vector<std::string>{"Voice / MakePrd1"});
    const Bytes one = plugin_chunk("MakePrd1", "dflt", "", {1, 2});
    const Bytes another = plugin_chunk("MakePrd1", "more", "", {1, 2});
    for (const auto& second : {one, another}) {
        run.chain({run.stored("MakePrd1", ByteWriter().raw(one).raw(second).bytes())});
        EXPECT_EQ(run.tallies.multi_mono.size(), second == one ? 1U : 0U);
    }
    EXPECT_EQ(run.chain({left, right}, 1).slots.size(), 2U) << "a mono track has one channel";
    right.blockStart = 9;
    const ChainTrack leg{.name = "Voice", .width = 1, .leg = 1};
    EXPECT_EQ(run.chain({left, right, further}, leg).slots.size(), 2U);
    EXPECT_EQ(run.chain({left, right}, leg).slots[0].guid_seed, 9U | 1U << 24)
        << "the leg's own settings";
}

}  // namespace
}  // namespace tanrove
