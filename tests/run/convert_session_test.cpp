// The whole road under everything that can go wrong: each failure has its words and its code, and
// leaves no project behind.
#include "run/convert_session.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <filesystem>
#include <new>

#include "support/project_reader.hpp"
#include "support/records/clip_table_records.hpp"
#include "support/records/old_session_records.hpp"
#include "support/rich_session.hpp"
#include "support/session_builder.hpp"
#include "support/temp_folder.hpp"
#include "support/told_counts.hpp"

namespace tanrove {
namespace {

namespace fs = std::filesystem;
using namespace builder;

class Conversion : public testing::Test {
protected:
    Conversion() {
        console_state().console_sink = &silent_;
        folder_.enter();
    }
    ~Conversion() override { console_state().console_sink = nullptr; }

    std::int32_t convert(const RunOptions& options) {
        return convert_session(options, &result_, nullptr);
    }
    bool said(const std::string& words) const {
        return result_.console_text.find(words) != std::string::npos;
    }
    static bool write_bytes(const std::string& path, const Bytes& bytes) {
        return write_file_text(path, std::string(bytes.begin(), bytes.end()));
    }
    static RunOptions song() {
        RunOptions options;
        options.session_path = "Song.ptx";
        return options;
    }
    static SessionBuilder small_session() {
        const ClipSpec clip{.region = "Voice", .length = 48000};
        TrackSpec track{.name = "Voice", .clips = {clip, clip}};
        track.clips[1].position = 96000;
        return SessionBuilder().audio_file({"Voice.wav", 48000, 0}).tempo(0, 90).track(track);
    }

    TempFolder folder_;
    ConversionResult result_;

private:
    NullSink silent_;
};

/// What is left of a damaged session is told as what is left of a good one.
TEST_F(Conversion, ASessionCutOrChangedAnywhereMakesAWholeProjectOrNone) {
    constexpr std::size_t places = 12;
    for (const auto& [name, session] : family_sessions()) {
        const Bytes whole = session.image();
        for (std::size_t i = 0; i < 2 * places; ++i) {
            SCOPED_TRACE(name + " " + std::to_string(i));
            Bytes bad = whole;
            const std::size_t at = whole.size() * (i / 2 + 1) / (places + 1);
            if (i % 2 == 0) {
                bad.resize(at);
            } else {
                bad[at] ^= 0xff;
            }
            fs::remove("Song.rpp");
            ASSERT_TRUE(write_bytes("Song.ptx", encrypted(bad, Cipher::ptx, 0x35)));
            const bool converts = convert(song()) == 0;
            const std::string project = file_text("Song.rpp");
            EXPECT_EQ(converts, read_project(project).closed);
            EXPECT_EQ(converts, !said("Could not read:")) << result_.console_text;
            if (!converts) continue;
            expect_told_counts(project, result_.console_text, result_.report_text,
                               console_state().usage_body);
        }
    }
}

TEST_F(Conversion, AFlippedSizeWordIsToldAndTheRestConverts) {
    Bytes image = small_session().image();
    // The high byte of the size of the last top-level block.
    image[image.size() - session_index_block().size() + 6] ^= 0x40;
    ASSERT_TRUE(write_bytes("Song.ptx", encrypted(image, Cipher::ptx, 0x35)));
    EXPECT_EQ(convert(song()), 0);
    EXPECT_TRUE(said("THIS SESSION FILE")) << result_.console_text;
    EXPECT_EQ(read_project(file_text("Song.rpp")).track("Voice").items.size(), 2U);
}

TEST_F(Conversion, TheWordOfTheFirstBlockIsNoTypeWhateverItReadsAs) {
    SessionBuilder session = small_session();
    session.top_level(block(0x7777, Bytes(10000)));
    std::string project;
    std::string account;
    for (const std::uint32_t word : {0U, 0x1028U, 0x1004U, 0x251aU, 0x1015U, 0x261bU}) {
        RunOptions options = song();
        options.overwrite = true;
        ASSERT_TRUE(session.index_word(word).write("Song.ptx"));
        ASSERT_EQ(convert(options), 0) << word;
        if (project.empty()) {
            project = file_text("Song.rpp");
            account = result_.console_text;
        }
        EXPECT_EQ(file_text("Song.rpp"), project) << word;
        EXPECT_EQ(result_.console_text, account) << word;
    }
}

TEST_F(Conversion, AProjectThatCannotBeWrittenIsSaidSo) {
    ASSERT_TRUE(small_session().write("Song.ptx"));
    const std::string session = file_text("Song.ptx");
    fs::create_directory("Folder.rpp");
    for (const std::string path : {"no/such/out.rpp", "Folder.rpp", "Song.ptx", "/dev/full"}) {
        if (path == "/dev/full" && !fs::exists(path)) continue;
        SCOPED_TRACE(path);
        RunOptions options = song();
        options.output_path = path;
        options.overwrite = true;
        EXPECT_EQ(convert(options), 1);
        EXPECT_TRUE(said("\nCould not write " + path + "\n"));
        EXPECT_FALSE(said("Wrote:"));
    }
    EXPECT_EQ(file_text("Song.ptx"), session) << "the session itself is never written over";
    EXPECT_EQ(folder_.file_count(), 1U);
}

TEST_F(Conversion, ListPrintsTheSessionAndWritesNothing) {
    TrackSpec renamed;
    renamed.name = "Now\x1b[2J";
    renamed.original_name = "Audio 1";
    renamed.clips.resize(1);
    ASSERT_TRUE(small_session().track(renamed).bus("Verb", 2).write("Song.ptx"));
    RunOptions options = song();
    options.list_only = true;
    ASSERT_EQ(convert(options), 0);
    EXPECT_EQ(result_.console_text,
              "\n  tempo 90 BPM, 48000 Hz\n"
              "\n  session track table (2):\n     1  Voice\n     2  Audio 1\n"
              "\n  buses (1): Verb | \n"
              "\n  libptformat track names (2 unique):\n"
              "    Voice                              \n"
              "    Now [2J                            <- not in table\n");
    ASSERT_TRUE(SessionBuilder().write("Song.ptx"));
    ASSERT_EQ(convert(options), 0);
    EXPECT_TRUE(
        said("Hz\n\n  session track table (0):\n\n  buses (0): \n\n  libptformat track "
             "names (0 unique):\n"))
        << result_.console_text;
    // The name scan begins at the first clip track, so the strip rows give the table.
    SessionBuilder aux_first;
    aux_first.track({.name = "Verb", .kind = TrackKind::aux});
    ASSERT_TRUE(aux_first.track({.name = "Voice", .clips = {{}}}).write("Song.ptx"));
    ASSERT_EQ(convert(options), 0);
    EXPECT_TRUE(said("table (2):\n     1  Verb\n     2  Voice\n")) << result_.console_text;
    EXPECT_EQ(folder_.file_count(), 1U);
}

TEST_F(Conversion, ASessionOfTheOtherByteOrderComesFromTheLibrarysLists) {
    OldSessionSpec old;
    old.big_endian = old.newer_playlists = true;
    old.files = {{"drums.aif", 96000, 0}, {"bass.aif", 48000, 0}};
    old.regions = {{"drums", 0, 96000, 0}, {"bass-01", 4800, 24000, 1}};
    old.tracks = {{"Drums", {0}, {{0, 0}, {0, 144000}}}, {"Bass", {1}, {{1, 48000}}}};
    const Bytes image = old_session_image(old);
    ASSERT_TRUE(write_bytes("Song.ptx", encrypted(image, Cipher::ptx, 0x35)));
    ASSERT_EQ(convert(song()), 0) << result_.console_text;
    const auto project = read_project(file_text("Song.rpp"));
    EXPECT_EQ(project.track("Drums").items.size(), 2U);
    ASSERT_EQ(project.track("Bass").items.size(), 1U);
    const auto bass = project.track("Bass").items[0];
    EXPECT_EQ(std::vector({bass.position, bass.length, bass.source_offset}),
              std::vector({1.0, 0.5, 0.1}));
    EXPECT_EQ(bass.file, "./Audio Files/bass.aif");
}

TEST_F(Conversion, TempoEventsAndTheOptionMakeTheProjectsTempo) {
    constexpr std::int64_t beat = 960000;
    const std::string at_60 = "0.0000000000 60.000000 1 262147 0 1";
    const struct {
        std::vector<TempoSpec> events;
        double option;
        std::vector<std::string> lines;  ///< the project's tempo, then its events
        const char* words;
    } cases[] = {
        {{{0, 450}}, 0, {"450 3 4"}, "Hz, 450 BPM\n"},
        {{{0, 450}}, 90, {"90 3 4"}, "Hz, 90 BPM\n"},
        {{{0, 450}}, 5.01, {"5.01 3 4"}, "Hz, 5.01 BPM\n"},
        {{{0, 450}}, 5, {"450 3 4"}, "it counts as not given"},
        {{{0, 450}}, 500, {"450 3 4"}, "it counts as not given"},
        {{{0, 450}}, no_tempo, {"450 3 4"}, "it counts as not given"},
        {{{0, 60}, {beat, 90}}, 70, {"70 3 4", at_60, "1.0000000000 90.000000 1"}, "1 changes\n"},
        // The first event's tempo holds from the origin on.
        {{{beat, 60}, {2 * beat, 90}},
         0,
         {"60 3 4", at_60, "1.0000000000 60.000000 1", "2.0000000000 90.000000 1"},
         "Hz, 60 BPM\n"},
        // An event out of range ends the map, and the account says so.
        {{{0, 501}, {beat, 60}}, 0, {"120 3 4"}, "project runs at 120 BPM throughout"},
        {{{0, 60}, {beat, 501}},
         0,
         {"60 3 4"},
         "from 0.000 s on the project\n      runs at 60 BPM"},
        {{{0, 60}, {beat, 90}, {2 * beat, 501}, {3 * beat, 70}},
         0,
         {"60 3 4", at_60, "1.0000000000 90.000000 1"},
         "breaks off at its event 3 of 4: a\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.words);
        SessionBuilder session;
        for (const auto& event : c.events) session.tempo(event.tick, event.bpm);
        ASSERT_TRUE(session.meter(0, 1, 3, 4).write("Song.ptx"));
        RunOptions options = song();
        options.tempo_override = c.option;
        options.overwrite = true;
        ASSERT_EQ(convert(options), 0);
        const auto project = read_project(file_text("Song.rpp"));
        auto lines = project.head_lines("TEMPO");
        for (const auto& event : project.head_lines("PT")) lines.push_back(event);
        EXPECT_EQ(lines, c.lines);
        EXPECT_TRUE(said(c.words)) << result_.console_text;
    }
}

TEST_F(Conversion, TheReportStandsBesideItsProjectAndIsTheTextHandedBack) {
    ASSERT_TRUE(small_session().write("Song.ptx"));
    RunOptions options = song();
    ASSERT_EQ(convert(options), 0);
    EXPECT_FALSE(result_.report_text.empty());
    EXPECT_EQ(result_.report_path, "");

    options.write_report = true;
    setenv("VORLANE_VERSION", "2.5 beta", 1);
    ASSERT_EQ(convert(options), 0);
    unsetenv("VORLANE_VERSION");
    EXPECT_NE(result_.report_text.find("\nmade with   vorlane 2.5 beta\n"), std::string::npos);
    EXPECT_EQ(result_.report_path, "Song (1)-vorlane-report.txt");
    EXPECT_EQ(file_text(result_.report_path), result_.report_text);
    EXPECT_TRUE(said("\n  report written: Song (1)-vorlane-report.txt\n"));
    EXPECT_NE(result_.report_text.find("\noutput   Song (1).rpp\n"), std::string::npos);

    options.check_only = true;  // no name is searched
    ASSERT_EQ(convert(options), 0);
    EXPECT_EQ(file_text("Song-vorlane-report.txt"), result_.report_text);
    EXPECT_NE(result_.report_text.find("\noutput   (not written: this was a check)\n"),
              std::string::npos);

    options.check_only = false;
    std::filesystem::create_directory("Song (2)-vorlane-report.txt");
    ASSERT_EQ(convert(options), 0);
    EXPECT_TRUE(said("\n  could not write report: Song (2)-vorlane-report.txt\n"));
    EXPECT_EQ(result_.report_path, "");
    options.output_path = "/dev/null";  // a device has no place beside it
    ASSERT_EQ(convert(options), 0);
    EXPECT_TRUE(said("\n  could not write report: /dev/null-vorlane-report.txt\n"));
    EXPECT_FALSE(result_.report_text.empty());
}

TEST_F(Conversion, EditsThatMelodyneKeepsBesideTheSessionAreMissed) {
    ASSERT_TRUE(small_session().write("Song.ptx"));
    for (const bool has_edits : {false, true}) {
        if (has_edits) std::filesystem::create_directory("ARA Data");
        for (const bool no_ara : {false, true}) {
            RunOptions options = song();
            options.no_ara = no_ara;
            ASSERT_EQ(convert(options), 0);
            EXPECT_EQ(said("WARNING: this session has Melodyne (ARA) edits"), has_edits && !no_ara);
        }
    }
}

/// Nothing that a user has named may leave the machine.
TEST_F(Conversion, TheUsageSummaryHoldsNoNameOfTheUsers) {
    const ClipSpec clip{.region = "MARK clip", .length = 48000};
    TrackSpec track{.name = "MARK track", .clips = {clip}};
    track.comment = "MARK comment";
    track.inserts = {{}, {.code = "MakePrd1"}, {.code = "MakePrd2"}};
    track.alternates = {{"MARK playlist", {clip}}};
    ASSERT_TRUE(write_file_text("tanrove-plugins.txt",
                                "MakePrd1 | MARK of mine (MARK) | MARK.dll | 1<2>\n"
                                "MakePrd2 | VST3: Known (Maker) | MARK.vst3 | 3{4}\n"));
    SessionBuilder session;
    session.audio_file({"MARK file.wav", 48000, 0}).track(track);
    session.marker("MARK marker", 960000);
    std::filesystem::create_directory("MARK folder");
    ASSERT_TRUE(session.write("MARK folder/MARK song.ptx"));
    RunOptions options;
    options.session_path = "MARK folder/MARK song.ptx";
    ASSERT_EQ(convert(options), 0);
    EXPECT_TRUE(said("MARK track") || said("MARK file.wav")) << result_.console_text;
    EXPECT_NE(result_.report_text.find("[settings] MARK of mine"), std::string::npos);
    const std::string& usage = console_state().usage_body;
    for (const char* part : {"\"clips\":2", "{\"product\":\"MakePrd1\",\"result\":",
                             "{\"product\":\"Known\",\"maker\":\"Maker\","}) {
        EXPECT_NE(usage.find(part), std::string::npos) << usage;
    }
    EXPECT_EQ(usage.find("MARK"), std::string::npos) << usage;
}

TEST_F(Conversion, ATrackThatNoStripShowsIsAProblemToReport) {
    TrackSpec twice;
    twice.name = "Twice";
    twice.alternates = {{"Twice", {}}};  // a second channel of the name, apart from the first
    ASSERT_TRUE(small_session().track(twice).track({.name = "Bass"}).write("Song.ptx"));
    ASSERT_EQ(convert(song()), 0);
    EXPECT_TRUE(said("1 track(s) matched no strip row")) << result_.console_text;
    EXPECT_EQ(console_state().problem_kind, "unmatched-tracks");
    EXPECT_EQ(console_state().problem_detail, "1 track(s) matched no strip row");
}

TEST_F(Conversion, LeavesStretchAndFadesOutAndKeepsRenderedFadesOnDemand) {
    const ClipSpec clip{.region = "Slow", .length = 48000};
    TrackSpec track{.name = "Elastic", .clips = {clip, clip}};
    track.clips[0].warp = WarpSpec{{{0, 0}, {192000, 96000.0}}, false, 0};
    track.clips[1].position = 96000;  // where the stretched clip ends
    track.clips[1].is_fade = true;
    track.clips[1].fade = {.kind = 2, .pre = 4800, .length = 4800};
    ASSERT_TRUE(small_session().track(track).write("Song.ptx"));
    for (int round = 0; round < 8; ++round) {
        RunOptions options = song();
        options.overwrite = true;
        options.no_stretch = round % 2 == 1;
        options.no_fades = round / 2 % 2 == 1;
        options.keep_fade_clips = round / 4 == 1;
        ASSERT_EQ(convert(options), 0);
        const auto items = read_project(file_text("Song.rpp")).track("Elastic").items;
        EXPECT_EQ(items.at(0).length, options.no_stretch ? 1 : 2);
        EXPECT_EQ(said("1 fade-outs"), !options.no_fades && !options.keep_fade_clips)
            << "a fade whose rendered file is kept is that file";
        EXPECT_EQ(items.size(), options.keep_fade_clips ? 2U : 1U);
        EXPECT_EQ(said("fade references dropped"), !options.keep_fade_clips);
    }
}

TEST_F(Conversion, TheProjectIsTheSameInEveryLocale) {
    ASSERT_TRUE(small_session().write("Song.ptx"));
    ASSERT_EQ(convert(song()), 0);
    const char* host = std::setlocale(LC_ALL, "de_DE.UTF-8");
    if (host == nullptr) GTEST_SKIP() << "no locale with a decimal comma on this machine";
    RunOptions options = song();
    options.output_path = "Other.rpp";
    EXPECT_EQ(convert(options), 0);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(file_text("Song.rpp"), file_text("Other.rpp"));
}

/// How many points the first block of this head has in the project.
int points_in(const std::string& head) {
    const std::string text = file_text("Song.rpp");
    const std::size_t end = text.find(">\n", text.find(head + "\n"));
    int points = 0;
    for (auto at = text.find(head + "\n"); (at = text.find(" PT ", at)) < end; ++at) ++points;
    return points;
}

TEST_F(Conversion, ALaneAndAGainLineOfSeventyThousandEventsArriveWhole) {
    constexpr int many = 70000;
    TrackSpec track{.name = "Ride", .volume_lane = {.initial = 0}};
    ClipSpec clip{.region = "Voice", .length = 48 * (many + 1)};
    for (int i = 0; i < many; ++i) {
        track.volume_lane.points.push_back({48 * (i + 1), i % 2 * 10});
        clip.gain.emplace_back(48 * i, static_cast<float>(i % 2));
    }
    track.clips = {clip};
    ASSERT_TRUE(SessionBuilder()
                    .audio_file({"Voice.wav", 48UL * (many + 1), 0})
                    .track(track)
                    .write("Song.ptx"));
    ASSERT_EQ(convert(song()), 0);
    EXPECT_EQ(points_in("<VOLENV2"), many + 1) << "with the value it starts on";
    EXPECT_EQ(points_in("<VOLENV"), many);
}

class Stages : public tanrovegui::Progress {
public:
    bool stage(int index, int total, const char* text) override {
        EXPECT_EQ(total, stage_total);
        if (index == breaks_at) throw std::bad_alloc();
        heard.push_back(std::to_string(index) + " " + text);
        return true;
    }
    std::vector<std::string> heard;
    int breaks_at = -1;
};

TEST_F(Conversion, AListenerHearsEveryStageAndGetsItsSummaryLine) {
    ASSERT_TRUE(small_session().write("Song.ptx"));
    Stages stages;
    ASSERT_EQ(convert_session(song(), nullptr, &stages), 0);
    EXPECT_EQ(stages.heard,
              (std::vector<std::string>{"0 reading", "1 clips", "2 tracks", "3 writing",
                                        "3 writing 0/1", "4 media", "5 report"}));
    EXPECT_EQ(console_state().summary_line,
              "summary tracks=1 clips=2 notes=0 fx=0 written=0 needs_look=1");
}

TEST_F(Conversion, ItCountsThePluginsOfWrittenTracksAndPlacedClipsWhoseEffectsAreMoved) {
    const auto effects = [](std::uint64_t identity, float value) {
        const auto stored = std::bit_cast<std::uint32_t>(value);
        return EffectsSpec{identity, {{"EQ On/Off", stored}}};
    };
    TrackSpec shaped{.name = "Shaped"};
    for (int i = 0; i < 3; ++i) {
        shaped.clips.push_back({.region = i < 2 ? "on" : "off",
                                .position = 48000 * i,
                                .length = 48000,
                                .effects_identity = i < 2 ? 1U : 2U});
    }
    shaped.inserts = {{}, {.bypassed = true}};
    ASSERT_TRUE(small_session()
                    .track(shaped)
                    .track({.name = "Off", .active = false, .inserts = {{}}})
                    .track({.name = "Main", .kind = TrackKind::master, .inserts = {{}}})
                    .top_level(effects_block({effects(1, 1), effects(2, 0)}))
                    .write("Song.ptx"));
    RunOptions options = song();
    options.skip_inactive_tracks = true;
    ASSERT_EQ(convert(options), 0);
    EXPECT_TRUE(said("  1 clip(s) carry Pro Tools Clip Effects")) << result_.console_text;
    EXPECT_TRUE(said("    3 cannot transfer - AAX only")) << result_.console_text;
    EXPECT_TRUE(said("      2 of these processed audio")) << result_.console_text;
    EXPECT_EQ(console_state().summary_line,
              "summary tracks=2 clips=5 notes=0 fx=3 written=0 needs_look=2");
}

TEST_F(Conversion, ARunThatEndsInAnExceptionLeavesNoPointerBehind) {
    ASSERT_TRUE(small_session().write("Song.ptx"));
    Stages stages;
    stages.breaks_at = stage_tracks;
    EXPECT_THROW(convert_session(song(), &result_, &stages), std::bad_alloc);
    EXPECT_EQ(console_state().console_capture, nullptr);
    EXPECT_EQ(console_state().progress, nullptr);
}

TEST_F(Conversion, ACheckOfAFrozenTrackLeavesNoFile) {
    ASSERT_TRUE(small_session()
                    .audio_file({"Voice-FZ.wav", 48000, 0})
                    .freeze_render({.name = "Voice-01", .file_index = 1, .length = 48000})
                    .write("Song.ptx"));
    std::filesystem::create_directory("Audio Files");
    ASSERT_TRUE(write_file_text("Audio Files/Voice-FZ.wav", "RIFF"));
    RunOptions options = song();
    options.keep_frozen = options.check_only = true;
    EXPECT_EQ(convert(options), 0);
    EXPECT_TRUE(said("  1 frozen track(s) delivered FROZEN")) << result_.console_text;
    EXPECT_TRUE(said("--check: nothing was written."));
    EXPECT_EQ(folder_.file_count(), 2U);
    options.check_only = false;
    EXPECT_EQ(convert(options), 0);
    EXPECT_EQ(folder_.file_count(), 3U);
}

}  // namespace
}  // namespace tanrove
