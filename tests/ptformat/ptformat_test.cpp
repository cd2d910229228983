// The container library against built sessions of both ciphers and both byte orders, against damage
// of every kind, and against real sessions where they are at hand.
#include "ptformat/ptformat.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/formatted_text.hpp"
#include "support/real_sessions.hpp"
#include "support/records/old_session_records.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

using namespace builder;

constexpr std::uint8_t some_step = 0x4d;

Bytes image_of(const PTFFormat& format) {
    if (format.image() == nullptr) return {};
    return {format.image(), format.image() + format.image_size()};
}

int load_image(PTFFormat& format, const Bytes& image, std::int64_t target_rate = 48000) {
    return format.load_bytes(encrypted(image, Cipher::ptx, some_step), target_rate);
}

OldSessionSpec old_song() {
    OldSessionSpec song;
    song.files = {{"drums.aif", 96000}, {"bass.aif", 70000, 44100}};
    song.regions = {{"drums", 0, 96000, 0}, {"bass-01", 300, 0x12345, 1}};
    song.tracks = {{"Drums", {4, 2}, {{0, 0}, {0, 0x123456}}},
                   {"Idle", {0}, {}},
                   {"Bass", {3}, {{1, 24000}, {7, 5}}}};
    song.midi = {{"keys", "Piano", 4, 1920000}, {"pad", "Strings", 2, 0}};
    return song;
}

TEST(PTFFormat, DecryptsBothCiphersWithEveryStep) {
    const Bytes plain = SessionBuilder().top_level(block(0x7777, Bytes(9000, 0xa5))).image();
    PTFFormat format;
    for (const Cipher cipher : {Cipher::ptx, Cipher::old_sessions}) {
        for (unsigned step = 0; step < 256; ++step) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(cipher) << " step " << step);
            const Bytes file = encrypted(plain, cipher, static_cast<std::uint8_t>(step));
            ASSERT_EQ(format.load_bytes(file, 48000), PTFFormat::load_ok);
            Bytes image = image_of(format);
            ASSERT_EQ(image.size(), plain.size());
            EXPECT_TRUE(std::equal(image.begin() + 20, image.end(), plain.begin() + 20));
            EXPECT_TRUE(std::equal(image.begin(), image.begin() + 20, file.begin()));
        }
    }
}

TEST(PTFFormat, RefusesWhatIsNoSession) {
    const Bytes good = SessionBuilder().file();
    const auto with = [&](std::size_t at, std::uint8_t value) {
        Bytes bytes = good;
        bytes[at] = value;
        return bytes;
    };
    const struct {
        const char* what;
        Bytes file;
        int result;
        bool has_image;
    } cases[] = {
        {"empty", {}, -1, false},
        {"19 bytes", Bytes(good.begin(), good.begin() + 19), -1, false},
        {"20 bytes", Bytes(good.begin(), good.begin() + 20), -2, true},
        {"first byte", with(0, 4), -1, false},
        {"marker text", with(16, '0'), -1, false},
        {"cipher type 0", with(18, 0), -1, false},
        {"cipher type 2", with(18, 2), -1, false},
        {"cipher type 6", with(18, 6), -1, false},
        {"random bytes", Bytes(5000, 0x35), -1, false},
        {"the other cipher, which leaves noise", with(18, 1), -2, true},
    };
    TempFolder folder;
    const std::string path = folder / "song.ptx";
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_TRUE(write_file_text(path, std::string(c.file.begin(), c.file.end())));
        PTFFormat format;
        EXPECT_EQ(format.load(path, 48000), c.result);
        EXPECT_EQ(format.image() != nullptr, c.has_image);
        EXPECT_EQ(format.session_rate(), 0);
        EXPECT_EQ(format.unxor(path), c.has_image ? 0 : -1);
        EXPECT_EQ(format.image_size(), c.has_image ? c.file.size() : 0);
    }
    PTFFormat format;
    EXPECT_EQ(format.load(folder / "missing.ptx", 48000), -1);
    EXPECT_EQ(format.load(folder.path(), 48000), -1);
    EXPECT_EQ(format.load("/dev/zero", 48000), -1);
    EXPECT_EQ(format.unxor(folder.path()), -1);
}

TEST(PTFFormat, VersionsAndRatesHaveLimitsAndStayReadable) {
    const struct {
        int version;
        std::uint32_t rate;
        int result;
        int result_if_allowed;
    } cases[] = {
        {4, 48000, -3, 0},    {5, 48000, 0, 0},    {12, 48000, 0, 0},        {13, 48000, -3, 0},
        {200, 22050, -3, -4}, {12, 44099, -4, -4}, {12, 44100, 0, 0},        {12, 192000, 0, 0},
        {12, 192001, -4, -4}, {12, 0, -4, -4},     {12, 0xffffffff, -4, -4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.version << ' ' << c.rate);
        const Bytes image = SessionBuilder().container_version(c.version).rate(c.rate).image();
        for (const bool allow : {false, true}) {
            PTFFormat::allow_unknown_version = allow;
            PTFFormat format;
            EXPECT_EQ(load_image(format, image), allow ? c.result_if_allowed : c.result);
            EXPECT_EQ(format.version(), c.version);
            EXPECT_EQ(format.session_rate(), c.rate);
        }
    }
    PTFFormat::allow_unknown_version = false;
    PTFFormat format;
    const auto endless = SessionBuilder().container_version(-5).image();
    EXPECT_EQ(load_image(format, endless), -3) << "a number that no version has";
    EXPECT_EQ(format.version(), 255);
}

/// Name, index, length and rate of each file.
std::string files_of(const PTFFormat& format) {
    std::string text;
    for (const auto& file : format.audio_files()) {
        text += formatted("%s %d %lld %d; ", std::string(file.name).c_str(),
                          static_cast<int>(file.index), static_cast<long long>(file.length),
                          static_cast<int>(file.rate_hz));
    }
    return text;
}

/// Name, index, region and start of each row of a track list.
template <typename Rows>
std::string rows_of(const Rows& rows) {
    std::string text;
    for (const auto& row : rows) {
        text +=
            formatted("%s %d %d %lld; ", std::string(row.name).c_str(), static_cast<int>(row.index),
                      static_cast<int>(row.region_index), static_cast<long long>(row.start));
    }
    return text;
}

TEST(PTFFormat, ListsAudioFilesWithTheirOwnRatesWhateverTheTarget) {
    PTFFormat format;
    const AudioFileSpec far = {"b.wav", 1ULL << 33, 96000};
    const Bytes image = SessionBuilder().audio_file({"a.wav", 1000}).audio_file(far).image();
    ASSERT_EQ(load_image(format, image, 96000), 0);
    EXPECT_EQ(files_of(format), "a.wav 0 1000 48000; b.wav 1 8589934592 96000; ");
}

TEST(PTFFormat, RefusesAFileListWhoseCountsPassItsBlock) {
    const auto session = [](const ByteWriter& entries) {
        const Bytes list = ByteWriter().u32(5).block(0x103a, entries.bytes()).bytes();
        return ByteWriter()
            .raw(file_header(false))
            .raw(opening_blocks(10))
            .raw(settings_block({}))
            .block(0x1004, list)
            .bytes();
    };
    const auto entry = [](std::uint64_t count, std::string_view tag) {
        return ByteWriter().u8(2).u32(0).u32(count).raw("abc").raw(tag).bytes();
    };
    const struct {
        const char* what;
        Bytes image;
        int result;
        std::size_t files;
    } cases[] = {
        {"whole", session(ByteWriter().u32(1).raw(entry(3, "WAVE"))), 0, 1},
        {"a video file", session(ByteWriter().u32(1).raw(entry(3, "MooV"))), 0, 0},
        {"no entries", session(ByteWriter().u32(0)), 0, 0},
        {"no count", session(ByteWriter().u16(0)), -4, 0},
        {"text to the last byte", session(ByteWriter().u32(1).raw(entry(3, ""))), -4, 0},
        {"text past the block", session(ByteWriter().u32(1).raw(entry(0xfffffff0, "WAVE"))), -4, 0},
        {"one entry too many", session(ByteWriter().u32(2).raw(entry(3, "WAVE"))), -4, 0},
        {"endless entries", session(ByteWriter().u32(0xffffffff).raw(entry(3, "WAVE"))), -4, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        PTFFormat format;
        EXPECT_EQ(load_image(format, c.image), c.result);
        EXPECT_EQ(format.audio_files().size(), c.files);
        EXPECT_EQ(format.session_rate(), 48000);
    }
}

TEST(PTFFormat, ReadsOldSessionsOfBothByteOrdersAndPlaylistKinds) {
    for (const bool big_endian : {false, true}) {
        for (const bool newer_playlists : {false, true}) {
            SCOPED_TRACE(testing::Message() << big_endian << newer_playlists);
            OldSessionSpec song = old_song();
            song.big_endian = big_endian;
            song.newer_playlists = newer_playlists;
            PTFFormat format;
            ASSERT_EQ(load_image(format, old_session_image(song)), 0);
            EXPECT_EQ(format.version(), 12);
            EXPECT_EQ(files_of(format), "drums.aif 0 96000 48000; bass.aif 1 70000 44100; ");
            ASSERT_EQ(format.regions().size(), 2U);
            EXPECT_EQ(format.regions()[0].name, "drums");
            EXPECT_EQ(format.regions()[0].length, 96000);
            EXPECT_EQ(format.regions()[1].source_offset, 300);
            EXPECT_EQ(format.regions()[1].length, 0x12345);
            EXPECT_EQ(format.regions()[1].file_index, 1);

            // Playlists count from 0: rows 0 and 1 of the playlists are the tracks of channels 0
            // and 1. Channel 1 has no name, and the clip of region 7 has no region.
            EXPECT_EQ(rows_of(format.tracks()), "Idle 0 0 0; Idle 0 0 1193046; Bass 1 1 24000; ");
        }
    }
}

TEST(PTFFormat, ReadsMidiClipsInTicks) {
    for (const bool big_endian : {false, true}) {
        SCOPED_TRACE(big_endian);
        OldSessionSpec song = old_song();
        song.big_endian = big_endian;
        PTFFormat format;
        ASSERT_EQ(load_image(format, old_session_image(song), 96000), 0);
        const auto& regions = format.midi_regions();
        ASSERT_EQ(regions.size(), 2U);
        EXPECT_EQ(regions[0].name, "keys");
        EXPECT_EQ(regions[0].start, 1000000000000);
        EXPECT_EQ(regions[0].source_offset, 1000000000000);
        EXPECT_EQ(regions[0].length, 4 * 960000);
        EXPECT_EQ(rows_of(format.midi_tracks()), "Piano 0 0 1920000; Strings 1 1 0; ");
    }
}

TEST(PTFFormat, ScalesPositionsToTheTargetRate) {
    OldSessionSpec song = old_song();
    song.rate_hz = 44100;
    song.regions = {{"r", 441, 88200, 0}};
    song.tracks = {{"T", {0}, {{0, 22050}, {0, 0x00ffffffffffff}}}};
    song.newer_playlists = true;
    const Bytes image = old_session_image(song);
    const struct {
        std::int64_t target, offset, length, start, far;
    } cases[] = {
        {44100, 441, 88200, 22050, 0x00ffffffffffff},
        {48000, 480, 96000, 24000, 306367321589829},
        {88200, 882, 176400, 44100, 2 * 0x00ffffffffffff},
        {0, 441, 88200, 22050, 0x00ffffffffffff},
        {INT64_MAX, 441, 88200, 22050, 0x00ffffffffffff},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.target);
        PTFFormat format;
        ASSERT_EQ(load_image(format, image, c.target), 0);
        ASSERT_EQ(format.tracks().size(), 2U);
        EXPECT_EQ(format.regions()[0].source_offset, c.offset);
        EXPECT_EQ(format.regions()[0].length, c.length);
        EXPECT_EQ(format.tracks()[0].start, c.start);
        EXPECT_EQ(format.tracks()[1].start, c.far);
    }
}

/// Whatever is done to a session, the answer is one of the codes and the lists hold together.
void expect_clear_answer(const Bytes& image) {
    PTFFormat format;
    const int result = load_image(format, image);
    EXPECT_TRUE(result <= 0 && result >= -4) << result;
    EXPECT_EQ(format.image_size(), image.size());
    if (result != 0) return;
    EXPECT_GE(format.session_rate(), 44100);
    EXPECT_LE(format.session_rate(), 192000);
    const auto in_list = [](const auto& rows, const auto& regions) {
        return std::all_of(rows.begin(), rows.end(), [&](const auto& row) {
            return row.region_index >= 0 &&
                   row.region_index < static_cast<std::int64_t>(regions.size());
        });
    };
    EXPECT_TRUE(in_list(format.tracks(), format.regions()));
    EXPECT_TRUE(in_list(format.midi_tracks(), format.midi_regions()));
}

TEST(PTFFormat, AnswersEveryCutAndEveryFlippedByte) {
    for (const bool big_endian : {false, true}) {
        OldSessionSpec song = old_song();
        song.big_endian = big_endian;
        const Bytes image = old_session_image(song);
        for (std::size_t size = 20; size < image.size(); ++size) {
            SCOPED_TRACE(testing::Message() << "cut at " << size);
            expect_clear_answer(Bytes(image.begin(), image.begin() + static_cast<long>(size)));
        }
        for (std::size_t at = 20; at < image.size(); ++at) {
            SCOPED_TRACE(testing::Message() << "flipped at " << at);
            for (const unsigned flip : {0x01U, 0x80U, 0xffU}) {
                Bytes damaged = image;
                damaged[at] = static_cast<std::uint8_t>(damaged[at] ^ flip);
                expect_clear_answer(damaged);
            }
        }
    }
}

TEST(PTFFormat, ADamagedBlockCostsOnlyWhatItHolds) {
    Bytes image = SessionBuilder().audio_file({"a.wav", 5}).image();
    const Bytes needle = {'Z', 10, 0};
    const auto settings =
        std::search(image.begin() + 60, image.end(), needle.begin(), needle.end());
    ASSERT_NE(settings, image.end());
    const Bytes noise = block(0x1234, Bytes(50, 'Z'));
    image.insert(settings, noise.begin() + 1, noise.end());  // a block whose marker is lost
    PTFFormat format;
    EXPECT_EQ(load_image(format, image), 0);
    EXPECT_EQ(format.session_rate(), 48000);
    EXPECT_EQ(format.audio_files().size(), 1U);
}

TEST(PTFFormat, ALongNameOnManyClipsDoesNotMultiply) {
    OldSessionSpec song = old_song();
    song.newer_playlists = true;
    song.tracks = {{std::string(400000, 'n'), {0}, std::vector<OldClipSpec>(5000)}};
    song.files[0].name = std::string(400000, 'f');
    PTFFormat format;
    ASSERT_EQ(load_image(format, old_session_image(song)), 0);
    ASSERT_EQ(format.tracks().size(), 5000U);
    EXPECT_EQ(format.tracks()[0].name, std::string(255, 'n'));
    EXPECT_EQ(format.tracks()[4999].name.data(), format.tracks()[0].name.data()) << "one copy";
    EXPECT_EQ(format.audio_files().at(0).name, std::string(512, 'f'));
}

TEST(PTFFormatOnRealSessions, FindsRatesVersionsAndFiles) {
    const struct {
        const char* session;
        int rate;
        const char* files;
    } cases[] = {
        {"RegionTest.ptx", 44100, "region_name_WAV.wav 0 5910132 44100; "},
        {"TestPTX.ptx", 48000,
         "monoTone.wav 0 480000 48000; monoTone.1.aif 1 480000 48000; "
         "stereoTone.L.aif 2 480000 48000; stereoTone.R.aif 3 480000 48000; "},
        {"TempoTimeKeySig.ptx", 44100, "Audio 1_01.wav 0 256532 44100; "},
        {"Untitled32.ptx", 44100, ""},
        {"goodplaylists2.ptf", 48000,
         "24000.wav 0 24000 48000; 24000.1.wav 1 24000 48000; 24000.2.wav 2 24000 48000; "},
        {"Fa_16_48.pts", 48000, "24000.aif 0 24000 48000; "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.session);
        const std::string path = real_session(c.session);
        if (path.empty()) GTEST_SKIP() << "no real sessions on this machine";
        PTFFormat format;
        EXPECT_EQ(format.load(path, 48000), 0);
        EXPECT_EQ(format.version(), 12);
        EXPECT_EQ(format.session_rate(), c.rate);
        EXPECT_EQ(files_of(format), c.files);
    }
}

TEST(PTFFormatOnRealSessions, ReadsTheClipsOfABigEndianSession) {
    const std::string path = real_session("Fa_16_48.pts");
    if (path.empty()) GTEST_SKIP() << "no real sessions on this machine";
    PTFFormat format;
    ASSERT_EQ(format.load(path, 48000), 0);
    ASSERT_EQ(format.regions().size(), 1U);
    EXPECT_EQ(format.regions()[0].name, "24000");
    EXPECT_EQ(format.regions()[0].length, 24000);
    const std::string rows = rows_of(format.tracks());
    EXPECT_EQ(std::count(rows.begin(), rows.end(), ';'), 14);
    EXPECT_EQ(rows.substr(0, rows.find("Audio 1")),
              "24000 0 0 0; 24000 0 0 24000; 24000 0 0 48000; 24000 0 0 72000; "
              "24000 0 0 96000; 24000 0 0 120000; 24000 0 0 144000; 24000 0 0 168000; ");
    EXPECT_LT(rows.rfind("Audio 1"), rows.find("Audio 2"));
    EXPECT_LT(rows.rfind("Audio 2"), rows.find("Audio 3"));
}

}  // namespace
}  // namespace tanrove
