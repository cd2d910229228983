// What the settings become for each build: states of every container are translated under rows of
// each kind, read back by a decoder of frames, and the session's bytes looked for inside.
#include "plugins/translate_settings.hpp"

#include <gtest/gtest.h>

#include <random>

#include "plugins/elck_chunks.hpp"
#include "plugins/parameter_documents.hpp"
#include "plugins/plugin_inserts.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove {
namespace {

using namespace std::string_literals;
using namespace builder;
using Kind = ContainerKind;

constexpr std::size_t state_at = 64;
const std::string refused;

std::string le(std::size_t word) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(word >> (8 * i) & 0xff);
    return bytes;
}
std::string be(std::size_t word) {
    const std::string bytes = le(word);
    return {bytes.rbegin(), bytes.rend()};
}
std::string sized(const std::string& bytes) {
    return le(bytes.size()) + bytes;
}
std::string real(float value) {
    return le(std::bit_cast<std::uint32_t>(value));
}

/// The blocks of a VST3 build's state, "component|controller"; the words that break it otherwise.
std::string blocks(const std::string& state) {
    const ByteView view(
        std::span(reinterpret_cast<const std::uint8_t*>(state.data()), state.size()));
    const auto component = view.text(8, view.u32(0));
    if (state.empty() || !component || view.u32(4) != 1) return "no component";
    const std::size_t second = 8 + component->size();
    const auto controller = view.text(second + 8, view.u32(second));
    if (!controller || view.u32(second + 4) != 0) return "no controller";
    if (second + 8 + controller->size() != state.size()) return "bytes behind";
    return std::string(*component) + "|" + std::string(*controller);
}

PluginTableRow row_of(const std::string& format, const std::string& ident) {
    PluginTableRow row;
    row.fxName = format + ": Product (Maker)";
    row.ident = ident;
    return row;
}
const PluginTableRow vst2 = row_of("VST", "1234<00>");
const PluginTableRow vst3 = row_of("VST3", "1234{00}");
const PluginTableRow clap = row_of("CLAP", "com.maker.product");
const PluginTableRow nameless = row_of("VST", "");

/// One state in an image: bytes in front, the state, the limit, and bytes that nobody may read.
struct StoredState {
    Kind kind = Kind::scored;
    std::string state;
    std::string code = "MakePrd1";
    std::string in_front = {};
    PluginInsert insert = {};

    std::string under(const PluginTableRow& row, const TranslationInput& input = {}) const {
        return settings(row, input).state;
    }
    TranslatedSettings settings(const PluginTableRow& row,
                                const TranslationInput& input = {}) const {
        std::string image = std::string(state_at - in_front.size(), '.') + in_front + state;
        PluginInsert made = insert;
        made.code = code;
        made.containerKind = kind;
        made.chunkOffset = state_at;
        made.chunkSize = static_cast<std::uint32_t>(state.size());
        made.chunkLimit = image.size();
        image += "behind the limit";
        return translate_settings(made, row, ByteView(bytes_of(image)), input);
    }
    static std::span<const std::uint8_t> bytes_of(const std::string& text) {
        return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
    }
};

TEST(TranslateSettings, EveryContainerIsFramedAsEachBuildStoresIt) {
    const std::string ffbs = "FFBS" + le(1) + le(1) + real(0.5F) + "own";
    const std::string text = "{\n\tindex = 1\n}";
    const std::string program = "#pgm=From Pro Tools\n/*@Meta x";
    StoredState zlib = {Kind::zlib, "packed"};
    zlib.insert.zlibWords = {1, 2, 3, 4};
    const std::string stream = le(1) + le(2) + le(3) + le(4) + "packed";
    const std::string hsin = le(16) + le(0) + le(1) + "hsin";
    StoredState tree = {Kind::preset_tree, "<XML/>"};
    tree.insert.pluginSubComp = "ABCD";
    const std::string bypass_off = "<Bypass Version=\"1\" Bypass=\"0\" />\n";
    const std::string xpst =
        be(34) + be(3) + be(1) + "ABCDsetA" + be(6) + "XPst<XML/>" + bypass_off;
    const struct {
        StoredState stored;
        std::string under_vst2;
        std::string under_vst3;  ///< its blocks; without a mark between them, the state itself
        std::string under_clap = {};
        std::string under_no_ident = {};
    } cases[] = {
        {{Kind::none, ""}, "", ""},
        {{Kind::xml, ""}, "", ""},
        {{Kind::ffbs, ffbs + "FFExFFEx"},
         ffbs + "FFExFFEx",
         ffbs.substr(0, 16) + "FFpr" + le(1) + le(0) + "|ownFFExFFed" + le(0) + le(0),
         ffbs + "FFExFFEx"},
        {{Kind::ffbs, ffbs},
         ffbs,
         ffbs.substr(0, 16) + "FFpr" + le(1) + le(0) + "|ownFFed" + le(0) + le(0),
         ffbs},
        {{Kind::ffbs, ffbs.substr(0, 15)}, ffbs.substr(0, 15), "", ffbs.substr(0, 15)},
        {{Kind::xml, "<?xml?>"}, "<?xml?>", "<?xml?>", "", "<?xml?>"},
        {{Kind::hxmc, "bytes"}, "bytes", "bytes", "", "bytes"},
        {{Kind::meta_comment, "/*@Meta x"}, program, sized(program) + "|" + sized(program)},
        {{Kind::sized_magic, "bytes"},
         sized("bytes") + sized("Default"),
         sized("bytes") + sized("Default"),
         "",
         sized("bytes") + sized("Default")},
        {zlib, sized(stream) + sized("Default"), stream + "|" + stream},
        {tree, le(xpst.size()) + le(1) + xpst + le(0) + le(0), xpst + "|", "",
         le(xpst.size()) + le(1) + xpst + le(0) + le(0)},
        {{Kind::preset_tree, "<XML/>"}, "", ""},
        {{Kind::index_text, text}, text, text + "|"},
        {{Kind::archive, "bytes"},
         le(5) + le(1) + "bytes" + le(5) + le(0) + "bytes",
         "bytes|bytes",
         "",
         le(5) + le(1) + "bytes" + le(5) + le(0) + "bytes"},
        {{Kind::hsin, "hsin"}, hsin, hsin + "|"},
        {{Kind::scored, "bytes"}, "bytes", "bytes|", "bytes", "bytes"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << static_cast<int>(c.stored.kind) << ' ' << c.stored.state);
        EXPECT_EQ(c.stored.under(vst2), c.under_vst2);
        const bool is_framed = c.under_vst3.find('|') != std::string::npos;
        const std::string framed = c.stored.under(vst3);
        EXPECT_EQ(is_framed ? blocks(framed) : framed, c.under_vst3);
        EXPECT_EQ(c.stored.under(clap), c.under_clap);
        EXPECT_EQ(c.stored.under(nameless), c.under_no_ident);
        // A VST2 build that was taken by preference loads two containers only.
        const bool is_known = c.stored.kind == Kind::ffbs || c.stored.kind == Kind::index_text;
        EXPECT_EQ(c.stored.under(vst2, {.is_preferred_vst2 = true}), is_known ? c.under_vst2 : "");
    }
    EXPECT_EQ(StoredState({Kind::hsin, "hsin"}).under(vst3, {.kontakt_state = false}), refused);
}

const std::string private_data =
    "JUCEPrivateData\0\1\1Bypass\0\1\1\3\0\x1d\0\0\0\0\0\0\0JUCEPrivateData"s;

TEST(TranslateSettings, ScoredStatesGoByWhatStandsAroundThem) {
    const auto juce = row_of("VST3", "1{ABCDEF019182FAEB4d616b6550726431}");
    const auto sized_twice = row_of("VST3", "1{F2AEE70D00DE4F4E0000000000000000}");
    const std::string mark = "juce" + std::string(32, '.');
    const std::string head = le(0x0610d6db) + "four" + le(5);
    StoredState twice = {Kind::scored, "bytes"};
    twice.insert.copies = 2;
    StoredState chunk = {Kind::scored, "bytes"};
    chunk.insert.how = elck_how;
    StoredState late = {Kind::scored, "bytes", "MakePrd1", mark};
    late.insert.blockStart = state_at - 35;  // the mark lies in front of the block
    const std::string x = sized("bytes") + le(0);
    const struct {
        StoredState stored;
        const PluginTableRow& row;
        std::string blocks;
    } cases[] = {
        {{Kind::scored, "bytes", "MakePrd1", mark},
         juce,
         "bytes" + std::string(8, '\0') + private_data + "|"},
        {{Kind::scored, "bytes", "MakePrd2", mark}, juce, "bytes|"},
        {late, juce, "bytes|"},
        {twice, vst3, "bytes|bytes"},
        {chunk, vst3, "no component"},
        {{Kind::scored, "bytes", "MakePrd1", head}, vst3, head + "bytes|" + head + "bytes"},
        {{Kind::scored, "byte", "MakePrd1", head}, vst3, "byte|"},
        {{Kind::scored, "bytes"}, sized_twice, x + "|" + x},
    };
    for (const auto& c : cases) EXPECT_EQ(blocks(c.stored.under(c.row)), c.blocks);
}

std::string bank(const std::string& id, std::size_t version, const std::string& document) {
    const std::size_t n = document.size();
    return "VstW" + be(8) + be(1) + be(0) + "CcnK" + be(n + 191) + "FBCh" + be(2) + id +
           be(version) + be(0) + std::string(128, '\0') + be(n + 39) + "VC2!" + le(n - 1) +
           document + std::string(16, '\0') + "JUCEPrivateData|";
}

TEST(TranslateSettings, DocumentsBecomeBanksOrPlainStatesOfAWrapper) {
    const auto document = [](const std::string& code, const std::string& text) {
        return StoredState{Kind::vc2, "VC2!" + le(text.size() - 1) + text + "rest", code};
    };
    const auto wrapped = row_of("VST3", "1{abcdef019182faeb00}");
    const auto of_vst2 = row_of("VST3", "1{56535441624364000000000000000000}");
    const std::string versioned = "<X ChunkVersion=\"1.2.300\"/>";
    EXPECT_EQ(blocks(document("MakePrd1", versioned).under(vst3)),
              bank("Prd1", 0x1032c, versioned));
    EXPECT_EQ(blocks(document("MakePrd1", "<Y/>").under(of_vst2)), bank("AbCd", 0, "<Y/>"));
    EXPECT_EQ(blocks(document("JptrATLv", "<Y/>").under(wrapped)), bank("ATxL", 0, "<Y/>"));
    EXPECT_EQ(blocks(document("Make", "<Y/>").under(vst3)), bank("????", 0, "<Y/>"));
    EXPECT_EQ(blocks(document("MakePrd1", "<Y/>").under(wrapped)),
              "VC2!" + le(3) + "<Y/>" + std::string(8, '\0') + private_data + "|");
    EXPECT_EQ(StoredState({Kind::vc2, "VC2!" + le(8) + "<Y/>"}).under(vst3), refused);
    EXPECT_EQ(document("MakePrd1", "<Y/>").under(vst2), document("MakePrd1", "<Y/>").state);
    EXPECT_EQ(document("AntrVMax", "<Parameters><A></A></Parameters>").under(vst3), refused)
        << "only a part of its parameters is known";

    // Of each id the first place is renamed, in the bank and in the plain state alike.
    const std::string pan = "<PARAM id=\"bypa\"/><PARAM id=\"bypa\"/><PARAM id=\"HumK\"/>";
    const std::string renamed =
        "<PARAM id=\"MasterBypass\"/><PARAM id=\"bypa\"/><PARAM id=\"Humanize_ID\"/>";
    EXPECT_EQ(blocks(document("AntrAPan", pan).under(vst3)), bank("APan", 0, renamed));
    EXPECT_EQ(document("AntrAPan", pan).under(vst2),
              "VC2!" + le(renamed.size() - 1) + renamed + "rest");

    const DocumentParameter all[] = {
        {"aaaa", "1.0", "old1"}, {"bbbb", "2.0", ""}, {"cccc", "3.0", "no"}};
    EXPECT_EQ(with_all_parameters("a<Parameters><N x=\"1\"><PARAM id=\"old1\" value=\"9\"/>"
                                  "<PARAM id=\"\" value=\"8\"/></N></Parameters>z",
                                  all),
              "a<Parameters><N x=\"1\"><PARAM id=\"aaaa\" value=\"9\"/><PARAM id=\"bbbb\" "
              "value=\"2.0\"/><PARAM id=\"cccc\" value=\"3.0\"/></N></Parameters>z");
    for (const char* broken :
         {"", "<Parameters><N", "<Parameters></Parameters>", "<Parameters><N</Parameters>"}) {
        EXPECT_EQ(with_all_parameters(broken, all), broken);
    }
}

TEST(TranslateSettings, PlainStatesAreCutToTheBuildAndFilledToABank) {
    PluginTableRow row = vst2;
    row.minChunk = 6;
    EXPECT_EQ(StoredState({Kind::xml, "short"}).under(row), refused);
    EXPECT_EQ(StoredState({Kind::xml, "longer"}).under(row), "longer");
    EXPECT_EQ(StoredState({Kind::xml, "longest"}).under(row), "longes");
    const std::string head = "<?xml version=\"1.0\"?><Root>";
    const std::string program = "<Program a><x/></Program></Program>";
    std::string full = head + "<Bank>" + program;
    for (int i = 0; i < 99; ++i) full += "<Program />";
    EXPECT_EQ(StoredState({Kind::xml, head + program + "</Root>"}).under(vst3),
              full + "</Bank>\0"s);
    for (const std::string& other :
         {head + program + "<Bank>", head + "</Program><Program a>" + std::string(20, ' ')}) {
        EXPECT_EQ(StoredState({Kind::xml, other}).under(vst3), other);
    }
}

StoredState values(const std::string& code, std::vector<float> controls) {
    StoredState stored = {Kind::control_values, "", code};
    stored.insert.controlValues = std::move(controls);
    return stored;
}

TEST(TranslateSettings, ControlValuesAreListsAndPrograms) {
    PluginTableRow list = vst2;
    list.stateForm = 1;
    list.paramCount = 3;
    list.paramPad = 2;
    const SteppedParameter steps[] = {{"MakePrd1", 1, 5}, {"MakePrd1", 0, 2}, {"MakePrd2", 0, 9}};
    EXPECT_EQ(blocks(values("MakePrd1", {1.0F, 1.0F}).under(list, {.stepped = steps})),
              "\0\0"s + real(1.0F) + real(0.25F) + real(0) + "|");
    list.paramCount = 0;
    EXPECT_EQ(values("MakePrd1", {1.0F}).under(list).size(), 16U + 2 + 20 * 4);

    const auto named = [](PluginTableRow row) {
        row.fabName = "Default";
        return row;
    };
    const std::string body = "FabF" + le(2) + sized("Default") + le(0) + le(1) + real(0.5F);
    const std::string rest = le(12) + le(0) + "FFed" + le(0) + real(1.0F);
    const StoredState program = values("FabFFC2p", {0.5F});
    EXPECT_EQ(program.under(named(vst2)), body + le(1) + le(1) + rest);
    EXPECT_EQ(program.under(named(vst3)),
              le(body.size() + 8) + le(1) + body + le(1) + le(1) + rest);
    EXPECT_EQ(program.under(named(clap)), "FFBS" + le(1) + le(1) + real(0.5F) + "FC2p" + le(3) +
                                              sized("Default") + le(~0U) + le(1) + le(0) + le(0) +
                                              "CuSV" + le(1) + le(0));
    EXPECT_EQ(values("FabF", {0.5F}).under(named(clap)), refused);
    EXPECT_EQ(values("MakePrd1", {0.5F}).under(named(clap)), refused);
    EXPECT_EQ(program.under(named(nameless)), refused);
    EXPECT_EQ(values("MakePrd1", {0.5F}).under(vst3), refused);
}

TEST(TranslateSettings, AMidiTriggerIsSwitchedOffWhereMidiWouldMeetIt) {
    PluginTableRow program = vst3;
    program.fabName = "Default";
    std::vector<float> controls(43, 0.5F);
    controls[42] = 0.0F;
    const StoredState off = values("FabFFC2p", controls);
    controls[42] = 1.0F;
    const std::string on = values("FabFFC2p", controls).under(program);
    const TranslationInput midi = {.track_has_midi = true};
    EXPECT_EQ(off.under(program, midi), on);
    EXPECT_TRUE(off.settings(program, midi).midi_switched_off);
    EXPECT_FALSE(values("FabFFC2p", controls).settings(program, midi).midi_switched_off);
    EXPECT_NE(off.under(program), on);
    EXPECT_NE(off.under(program, {.track_has_midi = true, .keep_plugin_midi = true}), on);
    EXPECT_FALSE(values("FabFFS2a", controls).settings(program, midi).midi_switched_off);
    StoredState stored = {Kind::ffbs, "FFBS" + le(1) + le(43), "FabFFC2p"};
    for (const float value : off.insert.controlValues) stored.state += real(value);
    EXPECT_TRUE(stored.settings(vst2, midi).midi_switched_off);
    stored.state.pop_back();
    EXPECT_FALSE(stored.settings(vst2, midi).midi_switched_off);
}

TEST(TranslateSettings, ChainsOfSectionsAreCutToWhatTheBuildLoads) {
    const auto section = [](const std::string& tag, const std::string& contents, std::size_t head) {
        return tag + le(0) + le(contents.size()) + std::string(head - 12, '\0') + contents;
    };
    const auto amplifier = [&](const std::string& chain) {
        return StoredState{Kind::none, "..6SMC" + std::string(32, '.') + chain, "Lin66SAX"}.under(
            vst3);
    };
    const std::string start = section("DHSH", "abc", 24);
    const std::string needed = section("LGSH", "file", 24) + section("APSH", "x", 24);
    const std::string closed = start + section("LGSH", "\0ile"s, 24) + section("APSH", "x", 24);
    EXPECT_EQ(blocks(amplifier(start + needed + "ends")), "CMS6" + sized(closed) + "|");
    EXPECT_EQ(amplifier(start + section("APSH", "x", 24)), refused);
    EXPECT_EQ(amplifier(needed), refused);
    EXPECT_EQ(amplifier(start + needed + "LONG" + le(0) + le(99) + std::string(12, '\0')), refused);

    PluginTableRow row = vst3;
    row.headerTemplate = std::string(16, 'h');
    row.trailer = "trailer";
    row.trailerFlag = 1;
    const auto preset = [&](const std::string& chain) {
        return StoredState{Kind::hxmc, std::string(32, '.') + chain}.under(row);
    };
    const std::string window = section("VGCP", "5678", 16);
    const std::string usual = section("RHCP", std::string(68, 'r'), 16) + section("DPCP", "", 16);
    EXPECT_EQ(preset(usual + std::string(76, '.') + "rest"),
              le(188) + "hhhhhhhh" + le(188) + "resttrailer");
    EXPECT_EQ(preset(usual + std::string(76, '.')), refused) << "nothing is left to carry";
    const std::string other = section("RHCP", "r", 16) + section("DPCP", "d", 16);
    EXPECT_EQ(blocks(preset(other + window)), "CMXH" +
                                                  sized(other + section("VGCP",
                                                                        "\0"
                                                                        "678"s,
                                                                        16)) +
                                                  "|");
    EXPECT_EQ(preset(section("RHCP", "r", 16) + window), refused);
    PluginTableRow of_clap = clap;
    of_clap.headerTemplate = "h";
    of_clap.trailerFlag = 1;
    EXPECT_EQ(StoredState({Kind::scored, "bytes"}).under(of_clap), refused);
}

/// The settings of a block with this chain, its places as the reader of inserts finds them.
std::string chain_settings(const Bytes& chain, const PluginTableRow& row) {
    const Bytes image = ByteWriter().raw(plugin_settings_block({.state = chain})).u8(1).bytes();
    const auto inserts = read_plugin_inserts(BlockIndex(ByteView(image)));
    if (inserts.size() != 1 || inserts.front().containerKind != Kind::control_values) return "none";
    return translate_settings(inserts.front(), row, ByteView(image), {}).state;
}

TEST(TranslateSettings, ChunksBehindAMapOfControls) {
    const std::string code = InsertSpec().code;
    const auto chunk = [&](const std::string& tag, const std::string& payload) {
        return plugin_chunk(code, tag, "", Bytes(payload.begin(), payload.end()));
    };
    const Bytes map = plugin_chunk(code, "elck", "",
                                   ByteWriter()
                                       .zeros(4)
                                       .raw(real_control("AB", 0.5, 4))
                                       .raw(real_control("CD", 1e300, 4))
                                       .bytes());
    const std::string one(40, '\x81');
    const Bytes single = ByteWriter().raw(map).raw(chunk("one.", one)).bytes();
    EXPECT_EQ(chain_settings(single, vst2), one);
    EXPECT_EQ(chain_settings(single, clap), one);
    EXPECT_EQ(chain_settings(single, vst3), refused) << "where it goes is not known";

    const auto named = [](const std::string& name, const std::string& rest) {
        return "HEAD" + be(name.size()) + name + rest;
    };
    const std::string name = "\0P\0r\0o\0g"s;
    const std::string first = named(name, one), second = named(name, one + "x");
    const auto chain = [&](const std::string& a, const std::string& b) {
        return ByteWriter()
            .raw(map)
            .raw(chunk("one.", a))
            .raw(chunk("two.", b))
            .raw(chunk("mdfy", one))
            .bytes();
    };
    const std::string body =
        std::string(12, '\0') + le(2) + real(0.5F) + le(0x7f800000) + sized(first) + sized(second);
    const std::string state = le(body.size() - 12) + body;
    EXPECT_EQ(chain_settings(chain(first, second), vst2), state);
    EXPECT_EQ(blocks(chain_settings(chain(first, second), vst3)), state + "|");
    EXPECT_EQ(chain_settings(chain(first, second), nameless), refused);
    EXPECT_EQ(chain_settings(chain(first, second), clap), refused);
    for (const std::string& other : {named("\0P\0r\0o\0f"s, one), named("P\0r\0o\0g\0"s, one),
                                     named(name + "\0"s, one), one}) {
        EXPECT_EQ(chain_settings(chain(first, other), vst2), refused);
    }
}

/// Bytes of every kind under every row: nothing outside the limit turns up, nothing is read there.
TEST(TranslateSettings, NoBytesFromBehindTheLimitTurnUpInAnyState) {
    std::mt19937 random(7);
    const auto any = [&](std::uint32_t below) {
        return static_cast<std::uint32_t>(random()) % below;
    };
    const std::string pieces[] = {"FFBS",       "FFEx", "VC2!", "<?xml", "<Program ",
                                  "</Program>", "6SMC", "DHSH", "RHCP",  "DPCP",
                                  "juce",       le(3),  le(40), le(~0U)};
    for (int i = 0; i < 4000; ++i) {
        StoredState stored = {static_cast<Kind>(any(15)), "",
                              any(2) != 0 ? "Lin66SAX" : "FabFFC2p"};
        while (any(12) != 0) stored.state += pieces[any(std::size(pieces))];
        stored.insert.copies = any(3);
        stored.insert.elckOffset = any(200);
        stored.insert.elckSize = any(200);
        stored.insert.elckChunkCount = any(3);
        if (any(2) != 0) stored.insert.controlValues.resize(any(50));
        PluginTableRow row = std::array{vst2, vst3, clap, nameless}[any(4)];
        if (any(3) == 0) row.headerTemplate = std::string(any(20), 'h');
        row.trailerFlag = any(2);
        row.minChunk = any(2) * any(60);
        row.fabName = any(2) != 0 ? "Default" : "";
        const std::string state = stored.under(row, {.track_has_midi = true});
        EXPECT_EQ(state.find("behind"), std::string::npos);
    }
}

}  // namespace
}  // namespace tanrove
