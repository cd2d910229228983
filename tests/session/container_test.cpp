// What a session says of itself: whether it is whole, what saved it, its settings, its files.
#include <gtest/gtest.h>

#include "reading.hpp"
#include "session/audio_file_folders.hpp"
#include "session/damage_scan.hpp"
#include "session/session_settings.hpp"
#include "session/session_version.hpp"
#include "support/real_sessions.hpp"
#include "support/session_builder.hpp"

namespace tanrove {
namespace {

using namespace builder;

TEST(DamageScan, NamesWhatIsWrongAndWhere) {
    // A header of 20 bytes and four top-level blocks of 109 bytes; the third one holds a block.
    constexpr std::size_t second = 20 + 109;
    constexpr std::size_t third = second + 109;
    constexpr std::size_t fourth = third + 109;
    constexpr std::size_t nested_end = third + 9 + 40 + 29;
    const Bytes nested = ByteWriter().zeros(40).block(0x2222, Bytes(20)).zeros(31).bytes();
    const Bytes outer = ByteWriter().block(0x1111, Bytes(100)).bytes();
    const Bytes whole =
        ByteWriter().zeros(20).raw(outer).raw(outer).block(0x1111, nested).raw(outer).bytes();
    const auto with = [&](std::size_t at, std::uint8_t value) {
        Bytes bytes = whole;
        bytes[at] = value;
        return bytes;
    };
    const auto astray = [](std::size_t at) { return fields("damaged at", at); };
    const Reads cases[] = {
        {"whole", whole, "none"},
        {"nine bytes", Bytes(9, 'Z'), "none"},
        {"no block at all", Bytes(300), "none"},
        {"an empty file", {}, "none"},
        {"bytes behind the last block", ByteWriter().raw(whole).zeros(7).bytes(), "7 left"},
        {"a last block without a byte", ByteWriter().zeros(20).raw(outer).block(1, {}).bytes(),
         "9 left"},
        {"cut between two blocks", cut_to(whole, fourth), "none"},
        {"cut in the last block", cut_to(whole, fourth + 60), "60 left"},
        {"cut in a header", cut_to(whole, fourth + 6), "6 left"},
        {"cut behind a nested block", cut_to(whole, nested_end + 10), "10 left"},
        {"a cut at a nested block's end hides itself", cut_to(whole, nested_end), astray(third)},
        {"a marker lost", with(second, 'Y'), astray(second)},
        {"a size of zero", with(third + 3, 0), astray(third)},
        {"a size that leads astray", with(second + 3, 90), astray(second + 97)},
        {"a size past the end", with(second + 6, 0x40), astray(second)},
        {"a type that is none", with(fourth + 2, 1), "109 left"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const DamageReport report = over(c.image, scanDamage);
        const bool damaged = report.verdict == DamageVerdict::damaged;
        EXPECT_EQ(damaged ? astray(report.break_at)
                  : report.verdict == DamageVerdict::incomplete
                      ? fields(report.trailing_bytes, "left")
                      : "none",
                  c.text);
        if (!damaged) continue;
        EXPECT_DOUBLE_EQ(report.break_percent, 100.0 * static_cast<double>(report.break_at) /
                                                   static_cast<double>(c.image.size()));
    }
}

TEST(DamageScan, CallsABuiltSessionWholeAndEveryCutOfItNot) {
    const Bytes image = SessionBuilder().audio_file({"a.wav", 100}).image();
    EXPECT_EQ(over(image, scanDamage).verdict, DamageVerdict::none);
    EXPECT_EQ(over(SessionBuilder().index_word(1 << 20).image(), scanDamage).verdict,
              DamageVerdict::incomplete)
        << "the last block should begin behind the end";
    const std::size_t last_block = image.size() - session_index_block().size();
    for (std::size_t size = last_block + 1; size < image.size(); ++size) {
        const DamageReport report = over(cut_to(image, size), scanDamage);
        EXPECT_EQ(report.verdict, DamageVerdict::incomplete) << size;
        EXPECT_EQ(report.trailing_bytes, size - last_block);
    }
}

Bytes head(std::string_view product, std::string_view version, std::size_t in_front = 30) {
    ByteWriter image;
    image.zeros(in_front).counted(product).zeros(9).counted(version).zeros(100);
    return image.bytes();
}

Bytes saved_by(const char* product, const char* version) {
    return SessionBuilder().product(product, version).image();
}

TEST(SessionVersion, StandsInTheLastProductRecordElseAtTheHead) {
    const Bytes earlier = product_block({"Pro Tools", "10.3.2"});
    const Bytes no_product = ByteWriter().block(0x0003, Bytes(60, 1)).bytes();
    const Bytes twice =
        ByteWriter()
            .raw(SessionBuilder().top_level(earlier).product("Pro Tools", "2018.1").image())
            .raw(no_product)
            .bytes();
    const Bytes texts = ByteWriter().counted("Pro Tools HD").counted("11.2").bytes();
    const std::string longest(64, '1');
    constexpr std::size_t last_place = 1024 - 16 - 9 - 10;  // of texts that end at 1024
    const Reads cases[] = {
        {"plain", head("Pro Tools HD", "12.8.3"), "Pro Tools HD 12.8.3 12"},
        {"nothing behind the name", head("Pro Tools", "12.8.3"), "  -1"},
        {"another product", head("Amateur Tools", "12.8.3"), "  -1"},
        {"letters in the version", head("Pro Tools LE", "8.0.0f314"), "  -1"},
        {"a version that begins with a point", head("Pro Tools LE", ".12"), "  -1"},
        {"one byte is no text", head("Pro Tools LE", "9"), "  -1"},
        {"64 bytes", head("Pro Tools LE", longest), "Pro Tools LE " + longest + " 2147483647"},
        {"65 bytes are none", head("Pro Tools LE", longest + "1"), "  -1"},
        {"text bytes only", head("Pro Tools \xc1", "12.8"), "  -1"},
        {"no version", head("Pro Tools LE", ""), "  -1"},
        {"at the head's end", head("Pro Tools X", "12.83.3", last_place), "Pro Tools X 12.83.3 12"},
        {"behind the head", head("Pro Tools HD", "12.8.3", last_place + 1), "  -1"},
        {"four bytes", Bytes(4, 1), "  -1"},
        {"record", saved_by("Pro Tools", "2019.6.0"), "Pro Tools 2019.6.0 2019"},
        {"record of another", saved_by("Media Composer", "2021.10.0"), "  -1"},
        {"both or none", saved_by("Pro Tools", "2019.6.0b3"), "  -1"},
        {"no record", SessionBuilder().without_product().image(), "  -1"},
        {"the last record", twice, "Pro Tools 2018.1 2018"},
        {"the record before the head", ByteWriter().block(0x1111, texts).raw(twice).bytes(),
         "Pro Tools 2018.1 2018"},
        {"no product but folders",
         SessionBuilder().path({"Disk", "Pro Tools Sessions", "2016"}).image(),
         "Pro Tools 2021.10.0 2021"},
    };
    for (const auto& c : cases) {
        const SessionVersion found = over(c.image, scanSessionVersion);
        EXPECT_EQ(fields(found.product, found.version, found.major), c.text) << c.what;
    }
}

TEST(SessionVersion, DarkThemeSessionsAreThoseSavedAfter2020_10) {
    const std::pair<const char*, bool> cases[] = {
        {"2021.1", true},    {"2020.11.0", true},   {"2020.10", false},        {"2020.9", false},
        {"2020", false},     {"2020.", false},      {"2019.12", false},        {"12.8.3", false},
        {"2020.010", false}, {"99999999999", true}, {"2020.99999999999", true}};
    for (const auto& [version, later] : cases) {
        const auto found = over(head("Pro Tools X", version), scanSessionVersion);
        EXPECT_EQ(found.version, version);
        EXPECT_EQ(saved_after_2020_10(found), later) << version;
    }
    EXPECT_TRUE(saved_after_2020_10({}));
}

/// Format, bits, whether they are floats, pan depth.
std::string settings_of(const Bytes& image) {
    const auto depth = over(image, readBitDepth).value_or(BitDepth{});
    return fields(over(image, readAudioFormat), depth.bits, depth.is_float,
                  over(image, readPanDepth));
}

TEST(SessionSettings, StandBehindAPathOfAnyLengthOrAtTheirFixedPlace) {
    SettingsSpec spec = {.audio_format = 4, .pan_depth = 3, .is_float = true, .bit_depth = 32};
    for (const std::size_t parts : {0U, 1U, 8U, 256U}) {
        spec.path_parts.assign(parts, "Disk");
        EXPECT_EQ(settings_of(settings_block(spec)), "2 32 1 3") << parts;
    }
    EXPECT_EQ(settings_of(settings_block_fixed_offsets(spec)), "2 32 1 3");

    const struct {
        std::uint8_t pan_depth, bits;
        const char* text;
    } cases[] = {{1, 16, "1 16 0 1"},
                 {4, 24, "1 24 0 4"},
                 {0, 24, "1 32 0 3"},
                 {5, 24, "1 32 0 3"},
                 {2, 20, "1 32 0 3"}};
    for (const auto& c : cases) {
        const Bytes path =
            settings_block({.path_parts = {"Disk"}, .pan_depth = c.pan_depth, .bit_depth = c.bits});
        Bytes image = settings_block_fixed_offsets({.pan_depth = 3, .bit_depth = 32});
        std::copy(path.begin() + 21, path.end(), image.begin() + 21);
        EXPECT_EQ(settings_of(image), c.text) << int{c.pan_depth} << ' ' << int{c.bits};
    }
}

TEST(SessionSettings, AtTheFixedPlaceThePanDepthIsSignedAndTheBitDepthOneOfThree) {
    const Bytes odd = settings_block_fixed_offsets({.pan_depth = 0xff, .bit_depth = 20});
    EXPECT_EQ(over(odd, readPanDepth), -1);
    EXPECT_FALSE(over(odd, readBitDepth));
    const Bytes whole = settings_block_fixed_offsets({.audio_format = 5, .pan_depth = 2});
    const std::pair<long, const char*> cases[] = {
        {118, "0 0 0 -"}, {119, "0 0 0 2"}, {121, "0 0 0 2"}, {122, "0 24 0 2"}};
    for (const auto& [end, text] : cases) {
        const Bytes payload(whole.begin() + 9, whole.begin() + end);
        EXPECT_EQ(settings_of(block(0x1028, payload)), text);
    }
}

TEST(ClickSetting, IsOnOffOrUnknown) {
    Bytes longer = click_block(1);
    longer.push_back(0);
    ++longer[3];
    const std::pair<Bytes, int> cases[] = {
        {SessionBuilder().click(true).image(), 1},
        {click_block(0), 0},
        {click_block(2), -1},
        {{}, -1},
        {ByteWriter().raw(longer).raw(click_block(0)).bytes(), 0}};
    for (const auto& [image, setting] : cases) EXPECT_EQ(over(image, readClickSetting), setting);
}

AudioFileFolders folders_of(const std::vector<std::pair<std::string, std::string>>& entries) {
    ByteWriter list;
    list.u32(entries.size());
    for (const auto& [name, tag] : entries) list.u8(2).u32(0).counted(name).raw(tag);
    return over(block(0x103a, list.bytes()), readAudioFileFolders);
}

TEST(ReadAudioFileFolders, FilesLieInTheFolderInFrontOfThemUpToABadName) {
    const std::string folder(4, '\0');
    EXPECT_EQ(
        folders_of({{"lost.wav", "EVAW"},
                    {"Drums", folder},
                    {"kick.wav", "EVAW"},
                    {"snare.aif", "FFIA"},
                    {"Disk", "\x88\x74\x8f\xd5"},
                    {"hat.mxf", "MXFf"},
                    {"Other", folder},
                    {"kick.wav", "WAVE"},
                    {"notes.txt", "TEXT"}}),
        (AudioFileFolders{{"kick.wav", "Drums"}, {"snare.aif", "Drums"}, {"hat.mxf", "Drums"}}));
    const std::pair<std::string, std::size_t> cases[] = {
        {std::string(512, 'n'), 2}, {std::string(513, 'n'), 1}, {"", 1}, {"a\x1f", 1}, {"a\x7f", 1},
        {"\xc3\xa4.wav", 2}};
    for (const auto& [name, files] : cases) {
        const auto read =
            folders_of({{"F", folder}, {"a.wav", "EVAW"}, {name, "TEXT"}, {"b.wav", "EVAW"}});
        EXPECT_EQ(read.size(), files) << name;
    }
    TANROVE_REAL_SESSION(image, "TestPTX.ptx");
    EXPECT_EQ(over(image, readAudioFileFolders),
              (AudioFileFolders{{"monoTone.wav", "Desktop"},
                                {"monoTone.1.aif", "Audio Files"},
                                {"stereoTone.L.aif", "Audio Files"},
                                {"stereoTone.R.aif", "Audio Files"}}));
}

}  // namespace
}  // namespace tanrove
