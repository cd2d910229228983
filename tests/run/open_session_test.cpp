// The door of a conversion: who is let in, who is refused in which words, and who counts as a
// problem of ours.
#include "run/open_session.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

#include "run/colour_theme.hpp"
#include "run/console.hpp"
#include "support/golden_text.hpp"
#include "support/real_sessions.hpp"
#include "support/records/old_session_records.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"

namespace tanrove {
namespace {

using namespace builder;

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
        EXPECT_TRUE(write_file_text(name, as_text(file)));
        return open(name, progress);
    }
    bool says(const std::string& words) const { return text.find(words) != std::string::npos; }

    TempFolder folder;
    std::string text;

private:
    NullSink silent_;
};

/// A session whose file list is broken and that names its maker `gap` bytes behind.
Bytes unparsable_session(std::size_t gap = 0) {
    return ByteWriter()
        .raw(file_header(false))
        .raw(opening_blocks(10))
        .raw(settings_block({}))
        .block(0x1004, ByteWriter().u32(1).block(0x103a, Bytes(1)).bytes())
        .zeros(gap)
        .raw("ProTools 12 saved this, and much of it, with a long name\x01that")
        .bytes();
}

TEST_F(OpenSession, RefusesEachKindOfFileInItsOwnWords) {
    const auto ptx = [](const Bytes& image) { return encrypted(image, Cipher::ptx, 9); };
    const Bytes older_file = encrypted(SessionBuilder().image(), Cipher::old_sessions, 9);
    const Bytes session = SessionBuilder().file();
    const struct {
        const char* what;
        const char* name;
        Bytes file;
        bool is_ours = false;  ///< recorded as a problem of ours; it then asks for the session
    } cases[] = {
        {"empty", "song.ptx", {}},
        {"older by its bytes", "song.ptx", older_file},
        {"older by its name, though it loads", "song.PTF", session},
        {"older by its name, and no session", "s.pts", Bytes(3)},
        {"rate too low", "song.ptx", SessionBuilder().rate(44099).file()},
        {"rate too high", "song.ptx", SessionBuilder().rate(192001).file()},
        {"unknown version at a rate too low", "song.ptx",
         SessionBuilder().container_version(40).rate(22050).file()},
        {"random bytes", "song.ptx", Bytes(999, 0x77), true},
        {"a header alone", "song.ptx", Bytes(session.begin(), session.begin() + 20), true},
        {"a list that cannot be read", "song.ptx", ptx(unparsable_session()), true},
        {"a maker named far behind the head", "song.ptx", ptx(unparsable_session(4096)), true},
        {"no rate", "song.ptx", SessionBuilder().rate(0).file(), true},
    };
    std::string told;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        told += std::string("---- ") + c.what;
        Listener listener;
        for (Listener* progress : {static_cast<Listener*>(nullptr), &listener}) {
            EXPECT_FALSE(open_bytes(c.name, c.file, progress).has_value());
            told += (progress ? "\n-- for an application" : "\n-- for everyone") + text;
            EXPECT_EQ(console_state().problem_kind, c.is_ours ? "unreadable" : "");
            EXPECT_EQ(says("Please send this text"), c.is_ours && progress == nullptr);
        }
        told += "-- problem: " + console_state().problem_detail + "\n";
        EXPECT_EQ(listener.stages, "0/6 reading;");
    }
    std::ofstream("song.ptx").put('\x03');
    for (const std::uintmax_t bytes : {PTFFormat::max_file_bytes, PTFFormat::max_file_bytes + 1}) {
        std::filesystem::resize_file("song.ptx", bytes);
        EXPECT_FALSE(open("song.ptx", nullptr).has_value());
        EXPECT_EQ(says("TOO LARGE"), bytes > PTFFormat::max_file_bytes);
    }
    for (const char* path : {"song.ptx", "gone.ptx", "gone.ptf", "."}) {
        told += std::string("---- no session: ") + path;
        Listener listener;
        for (Listener* progress : {static_cast<Listener*>(nullptr), &listener}) {
            EXPECT_FALSE(open(path, progress).has_value());
            told += text;
            EXPECT_EQ(console_state().problem_kind, "");
        }
    }
    expect_golden(TANROVE_TEXTS_FOLDER "/refusals.txt", told);
}

TEST_F(OpenSession, ANameThatIsNothingButAnExtensionIsNoOlderName) {
    EXPECT_TRUE(open_bytes(".ptf", SessionBuilder().file()).has_value());
    EXPECT_EQ(text, "");
}

TEST_F(OpenSession, ResamplesNoPosition) {
    OldSessionSpec song;
    song.rate_hz = 88200;
    song.regions = {{"r", 1001, 333333, 0}};
    const auto file = encrypted(old_session_image(song), Cipher::ptx, 3);
    const auto session = open_bytes("song.ptx", file);
    ASSERT_TRUE(session.has_value());
    EXPECT_EQ(session->file->regions().at(0).source_offset, 1001);
    EXPECT_EQ(session->file->regions().at(0).length, 333333);
}

TEST_F(OpenSession, TheDamageWarningNamesItsNumbersAndTheCheckItsWord) {
    const DamageReport reports[] = {
        {},
        {.verdict = DamageVerdict::incomplete, .trailing_bytes = 77},
        {.verdict = DamageVerdict::damaged, .break_at = 1250, .break_percent = 12.5}};
    for (const DamageReport& report : reports) {
        for (const bool check_only : {false, true}) {
            text += check_only ? "---- check\n" : "---- run\n";
            tell_damage(report, check_only);
        }
    }
    expect_golden(TANROVE_TEXTS_FOLDER "/damage_warnings.txt", text);
}

TEST(ColourTheme, FollowsTheOptionAndThenTheSession) {
    const SessionVersion old_one = {.product = "Pro Tools", .version = "2020.10", .major = 2020};
    const SessionVersion new_one = {.product = "Pro Tools", .version = "2020.11", .major = 2020};
    RunOptions options;
    EXPECT_FALSE(colour_theme(options, old_one).dark);
    EXPECT_TRUE(colour_theme(options, new_one).dark);
    options.theme_mode = theme_dark;
    EXPECT_TRUE(colour_theme(options, old_one).dark);
    options.theme_mode = theme_classic;
    EXPECT_FALSE(colour_theme(options, new_one).dark);
}

using OpenBytes = std::function<std::optional<OpenedSession>(const Bytes&)>;

/// Every cut of a session is refused in words, or opens with a verdict on what it lacks.
void expect_words_for_cuts(const std::string& file, ByteView image,
                           const std::vector<std::size_t>& cuts, const OpenBytes& open,
                           const std::string& text) {
    int opened = 0;
    for (const std::size_t size : cuts) {
        SCOPED_TRACE(testing::Message() << "cut to " << size);
        const auto session = open(Bytes(file.begin(), file.begin() + static_cast<long>(size)));
        EXPECT_EQ(session.has_value(), text.empty());
        if (!session) continue;
        ++opened;
        const auto verdict = scanDamage(BlockIndex(session->image.bytes)).verdict;
        EXPECT_EQ(verdict == DamageVerdict::none, size == image.size());
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
        const std::string path = real_session(c.name);
        if (path.empty()) GTEST_SKIP() << "no real sessions on this machine";
        const auto session = open(path, nullptr);
        ASSERT_EQ(session.has_value(), c.product != nullptr) << text;
        const std::string file = file_text(path);
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
