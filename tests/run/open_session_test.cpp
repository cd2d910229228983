// The door of a conversion: who is let in, who is refused in which words, and who counts as a
// problem of ours.
#include "run/open_session.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "base/formatted_text.hpp"
#include "run/console.hpp"
#include "support/real_sessions.hpp"
#include "support/records/old_session_records.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

using builder::Bytes;
using builder::ByteWriter;
using builder::Cipher;
using builder::SessionBuilder;

std::string as_text(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

class Listener : public tanrovegui::Progress {
public:
    bool stage(int index, int total, const char* text) override {
        stages += std::to_string(index) + "/" + std::to_string(total) + " " + text + ";";
        return true;
    }
    std::string stages;
};

class OpenSession : public testing::Test {
protected:
    void SetUp() override {
        console_state() = {};
        console_state().console_sink = &silent_;
        console_state().console_capture = &text;
        folder.enter();
    }
    void TearDown() override {
        console_state() = {};
        PTFFormat::allow_unknown_version = false;
    }

    std::optional<OpenedSession> open(const std::string& path, tanrovegui::Progress* progress) {
        text.clear();
        console_state().progress = progress;
        console_state().problem_kind.clear();
        console_state().problem_detail.clear();
        RunOptions options;
        options.session_path = path;
        return openSession(options);
    }
    std::optional<OpenedSession> open_bytes(const std::string& name, const Bytes& file,
                                            tanrovegui::Progress* progress = nullptr) {
        EXPECT_TRUE(builder::write_file_text(name, as_text(file)));
        return open(name, progress);
    }
    bool says(const std::string& words) const { return text.find(words) != std::string::npos; }

    builder::TempFolder folder;
    std::string text;

private:
    NullSink silent_;
};

/// A session whose file list is broken and that names its maker `gap` bytes behind.
Bytes unparsable_session(std::size_t gap = 0) {
    return ByteWriter()
        .raw(builder::file_header(false))
        .raw(builder::opening_blocks(10))
        .raw(builder::settings_block({}))
        .block(0x1004, ByteWriter().u32(1).block(0x103a, Bytes(1)).bytes())
        .zeros(gap)
        .raw("ProTools 12 saved this, and much of it, with a long name\x01that")
        .bytes();
}

constexpr const char* empty_words =
    "\n  Could not read: song.ptx\n"
    "  Reason: the file is EMPTY (0 bytes). There is no session in it\n"
    "          to convert. If the session folder has a \"Session File\n"
    "          Backups\" folder, the newest .ptx in it may convert.\n";
constexpr const char* older_words =
    "\n  Could not convert: %s\n"
    "  Reason: this is an OLDER Pro Tools session format (Pro Tools 5 - 9,\n"
    "          .pts or .ptf). This tool converts .ptx sessions (Pro Tools\n"
    "          10 and later) only. An older session is refused rather than\n"
    "          converted partly, because a partial mix would look finished.\n"
    "\n"
    "  To convert it: open the session in Pro Tools 10 or later, use\n"
    "  File > Save As to save it as a .ptx, and convert that file.\n";
constexpr const char* older_line =
    "\n  Not converted: this is an older Pro Tools session format (.pts or .ptf). Save the session "
    "as a .ptx from Pro Tools 10 or later, then convert that file.\n";
constexpr const char* rate_words =
    "\n  Could not read: song.ptx\n"
    "  Reason: this session is at %d Hz, which is outside the range\n"
    "          this tool supports (44100 - 192000 Hz).\n"
    "\n"
    "  The file itself is fine -- it is the rate that is not handled.\n"
    "  Re-save the session from Pro Tools at a supported rate, or send\n"
    "  this text if you need %d Hz supported.\n";
constexpr const char* please_send =
    "\n  Please send this text and the .ptx file to the address on the program's download page.\n";
constexpr const char* rate_line =
    "\n  Not converted: the session is at %d Hz, outside the supported range (44100 - 192000 "
    "Hz).\n";

/// What the user of a refused session reads.
struct Refusal {
    std::string words;          ///< for everyone
    std::string listener_line;  ///< behind them, for an application in front
    std::string problem;        ///< recorded as ours; it then asks for the session
};

Refusal unreadable(const std::string& reason, const std::string& decryption) {
    const auto mark = reason.find(".  (");
    return {"\n  Could not read: song.ptx\n  Reason: that session " + reason + "\n" + decryption,
            "\n  vorlane will offer to send this as a problem report.\n",
            "the session " + reason.substr(0, mark) + reason.substr(mark + 2)};
}

TEST_F(OpenSession, RefusesEachKindOfFileInItsOwnWords) {
    const auto ptx = [](const Bytes& image) { return builder::encrypted(image, Cipher::ptx, 9); };
    const Bytes older_file = builder::encrypted(SessionBuilder().image(), Cipher::old_sessions, 9);
    const Bytes session = SessionBuilder().file();
    const auto rate = [](int hz) {
        return Refusal{formatted(rate_words, hz, hz), formatted(rate_line, hz), ""};
    };
    const auto older = [](const char* name) {
        return Refusal{formatted(older_words, name), older_line, ""};
    };
    const auto not_parsed = [](std::size_t bytes, const char* header_text) {
        return unreadable("was decrypted but the contents could not be parsed.  (code -4)",
                          formatted("  Decryption: OK (%d bytes)\n  Version byte: 12\n%s",
                                    static_cast<int>(bytes), header_text));
    };
    const struct {
        const char* what;
        const char* name;
        Bytes file;
        Refusal refusal;
    } cases[] = {
        {"empty",
         "song.ptx",
         {},
         {empty_words,
          "\n  Not converted: the session file is empty (0 bytes), so there is no session to "
          "convert.\n",
          ""}},
        {"older by its bytes", "song.ptx", older_file, older("song.ptx")},
        {"older by its name, though it loads", "song.PTF", session, older("song.PTF")},
        {"older by its name, and no session", "s.pts", Bytes(3), older("s.pts")},
        {"rate too low", "song.ptx", SessionBuilder().rate(44099).file(), rate(44099)},
        {"rate too high", "song.ptx", SessionBuilder().rate(192001).file(), rate(192001)},
        {"unknown version at a rate too low", "song.ptx",
         SessionBuilder().container_version(40).rate(22050).file(), rate(22050)},
        {"random bytes", "song.ptx", Bytes(999, 0x77),
         unreadable("could not be decrypted - is this really a Pro Tools session file?.  (code -1)",
                    "  Decryption: FAILED\n")},
        {"a header alone", "song.ptx", Bytes(session.begin(), session.begin() + 20),
         unreadable("has no readable version marker.  (code -2)",
                    "  Decryption: OK (20 bytes)\n  Version byte: 0\n")},
        {"a list that cannot be read", "song.ptx", ptx(unparsable_session()),
         not_parsed(unparsable_session().size(),
                    "  Header text: ProTools 12 saved this, and much of it, \n")},
        {"a maker named far behind the head", "song.ptx", ptx(unparsable_session(4096)),
         not_parsed(unparsable_session(4096).size(), "")},
        {"no rate", "song.ptx", SessionBuilder().rate(0).file(),
         not_parsed(SessionBuilder().rate(0).image().size(), "")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Refusal& refusal = c.refusal;
        const char* own_line = refusal.problem.empty() ? "" : please_send;
        Listener listener;
        for (Listener* progress : {static_cast<Listener*>(nullptr), &listener}) {
            EXPECT_FALSE(open_bytes(c.name, c.file, progress).has_value());
            EXPECT_EQ(text, refusal.words + (progress ? refusal.listener_line : own_line));
            EXPECT_EQ(console_state().problem_detail, refusal.problem);
            EXPECT_EQ(console_state().problem_kind, refusal.problem.empty() ? "" : "unreadable");
        }
        EXPECT_EQ(listener.stages, "0/6 reading;");
    }
}

TEST_F(OpenSession, WhatIsNoFileHasItsWordsForPeopleAndForApplications) {
    Listener listener;
    for (const std::string& path : {folder / "gone.ptx", folder / "gone.ptf", folder.path()}) {
        EXPECT_FALSE(open(path, nullptr).has_value());
        EXPECT_EQ(text, "\n  No such file:\n    " + path +
                            "\n\n  If the name has spaces, put it in quotes:\n"
                            "    tanrove \"My Song.ptx\"\n");
        EXPECT_FALSE(open(path, &listener).has_value());
        EXPECT_EQ(text,
                  "\n  No such file:\n    " + path +
                      "\n\n  Not converted: the session file was not found. The file may "
                      "have been moved, renamed or deleted, or its drive is not connected.\n");
        EXPECT_EQ(console_state().problem_kind, "");
    }
}

TEST_F(OpenSession, ANameThatIsNothingButAnExtensionIsNoOlderName) {
    EXPECT_TRUE(open_bytes(".ptf", SessionBuilder().file()).has_value());
    EXPECT_EQ(text, "");
}

TEST_F(OpenSession, OpensAtTheSessionsOwnRateWhateverItsVersion) {
    const struct {
        std::uint32_t rate;
        int version;
    } cases[] = {{44100, 12}, {48000, 12}, {96000, 5}, {192000, 12}, {48000, 4}, {96000, 13}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.rate << " version " << c.version);
        PTFFormat::allow_unknown_version = false;
        const auto image = SessionBuilder().rate(c.rate).container_version(c.version).image();
        const auto session = open_bytes("song.ptx", builder::encrypted(image, Cipher::ptx, 0x22));
        ASSERT_TRUE(session.has_value());
        EXPECT_EQ(text, "");
        EXPECT_EQ(session->image.rate, c.rate);
        EXPECT_EQ(session->image.bytes.size(), image.size());
        EXPECT_EQ(session->file->version(), c.version);
        EXPECT_EQ(PTFFormat::allow_unknown_version, c.version == 4 || c.version == 13);
    }
}

TEST_F(OpenSession, ResamplesNoPosition) {
    builder::OldSessionSpec song;
    song.rate_hz = 88200;
    song.regions = {{"r", 1001, 333333, 0}};
    const auto file = builder::encrypted(builder::old_session_image(song), Cipher::ptx, 3);
    const auto session = open_bytes("song.ptx", file);
    ASSERT_TRUE(session.has_value());
    EXPECT_EQ(session->file->regions().at(0).source_offset, 1001);
    EXPECT_EQ(session->file->regions().at(0).length, 333333);
}

TEST_F(OpenSession, TheDamageWarningNamesItsNumbersAndTheCheckItsWord) {
    const DamageReport incomplete = {.verdict = DamageVerdict::incomplete, .trailing_bytes = 77};
    const DamageReport damaged = {
        .verdict = DamageVerdict::damaged, .break_at = 1250, .break_percent = 12.5};
    tell_damage({}, false);
    EXPECT_EQ(text, "");
    tell_damage({}, true);
    EXPECT_EQ(text, "damage none\n");
    text.clear();
    tell_damage(incomplete, true);
    EXPECT_EQ(text,
              "damage incomplete\n"
              "  *** THIS SESSION FILE LOOKS INCOMPLETE ***\n"
              "      77 byte(s) after the last complete block. The file was very\n"
              "      likely truncated in a copy or a sync. Tracks, clips and\n"
              "      automation may be MISSING from this conversion.\n"
              "      Re-copy the .ptx from the original and convert it again.\n");
    const std::string damaged_words =
        "  *** THIS SESSION FILE IS DAMAGED ***\n"
        "      Its structure breaks at byte 1250, 12% of the way in, as a bad\n"
        "      disk or a failed copy leaves it. Tracks, clips, mixer settings\n"
        "      and automation after that point may be MISSING or wrong in\n"
        "      this conversion. Convert a backup instead if you have one --\n"
        "      the newest .ptx in the session's \"Session File Backups\"\n"
        "      folder, or a copy from another drive.\n";
    text.clear();
    tell_damage(damaged, false);
    EXPECT_EQ(text, damaged_words);
    text.clear();
    tell_damage(damaged, true);
    EXPECT_EQ(text, "damage damaged\n" + damaged_words);
}

TEST_F(OpenSession, ThemesFollowTheOptionAndThenTheSession) {
    const SessionVersion old_one = {.product = "Pro Tools", .version = "2020.10", .major = 2020};
    const SessionVersion new_one = {.product = "Pro Tools", .version = "2020.11", .major = 2020};
    RunOptions options;
    EXPECT_FALSE(uses_dark_theme(options, old_one));
    EXPECT_TRUE(uses_dark_theme(options, new_one));
    options.theme_mode = theme_dark;
    EXPECT_TRUE(uses_dark_theme(options, old_one));
    options.theme_mode = theme_classic;
    EXPECT_FALSE(uses_dark_theme(options, new_one));
}

/// Where the chain of top-level blocks can be cut without a trace.
std::set<std::size_t> chain_ends(ByteView image) {
    std::set<std::size_t> ends;
    for (std::size_t p = 20; isBlockAt(image, p, image.size());) {
        p += 7 + image.u32(p + 3);
        ends.insert(p);
    }
    return ends;
}

using OpenBytes = std::function<std::optional<OpenedSession>(const Bytes&)>;

/// Every cut of a session is refused in words, or opens with a verdict on what it lacks.
void expect_words_for_cuts(const std::string& file, ByteView image,
                           const std::vector<std::size_t>& cuts, const OpenBytes& open,
                           const std::string& text) {
    const std::set<std::size_t> traceless = chain_ends(image);
    ASSERT_EQ(*traceless.rbegin(), image.size());
    int opened = 0;
    for (const std::size_t size : cuts) {
        SCOPED_TRACE(testing::Message() << "cut to " << size);
        const auto session = open(Bytes(file.begin(), file.begin() + static_cast<long>(size)));
        EXPECT_EQ(session.has_value(), text.empty());
        if (!session) continue;
        ++opened;
        const auto verdict = scanDamage(BlockIndex(session->image.bytes)).verdict;
        EXPECT_EQ(verdict == DamageVerdict::none, traceless.count(size) == 1);
    }
    EXPECT_GT(opened, 0);
}

TEST_F(OpenSession, OpensRealSessionsAndRefusesTheOlderOnes) {
    const struct {
        const char* name;
        const char* product;
        const char* version;
        std::int64_t rate;
        bool later;
    } cases[] = {
        {"RegionTest.ptx", "Pro Tools", "2019.6.0", 44100, false},
        {"TestPTX.ptx", "Pro Tools HD", "12.8.3", 48000, false},
        {"Untitled32.ptx", "Pro Tools Ultimate", "2021.2.0", 44100, true},
        {"TempoTimeKeySig.ptx", "Pro Tools Ultimate", "2021.10.0", 44100, true},
        {"goodplaylists2.ptf", nullptr, nullptr, 0, false},
        {"Fa_16_48.pts", nullptr, nullptr, 0, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = builder::real_session(c.name);
        if (path.empty()) GTEST_SKIP() << "no real sessions on this machine";
        const auto session = open(path, nullptr);
        ASSERT_EQ(session.has_value(), c.product != nullptr) << text;
        const std::string file = builder::file_text(path);
        if (!session) {
            EXPECT_TRUE(says("OLDER"));
            EXPECT_FALSE(open_bytes("renamed.ptx", Bytes(file.begin(), file.end())).has_value());
            EXPECT_TRUE(says("OLDER")) << "a new name makes no new session";
            continue;
        }
        EXPECT_EQ(session->image.rate, c.rate);
        const BlockIndex index(session->image.bytes);
        const SessionVersion version = scanSessionVersion(index);
        EXPECT_EQ(version.product, c.product);
        EXPECT_EQ(version.version, c.version);
        EXPECT_EQ(saved_after_2020_10(version), c.later);
        EXPECT_EQ(scanDamage(index).verdict, DamageVerdict::none);

        std::vector<std::size_t> cuts;
        for (std::size_t tenth = 1; tenth < 10; ++tenth) cuts.push_back(file.size() * tenth / 10);
        for (const Block& block : index.blocks().all()) {
            if (block.at % 8 == 0) cuts.push_back(block.at);
        }
        expect_words_for_cuts(
            file, session->image.bytes, cuts,
            [&](const Bytes& cut) { return open_bytes("cut.ptx", cut); }, text);
    }
}

}  // namespace
}  // namespace tanrove
