// The real sessions, converted whole: what an independent reader counted in them has to stand in
// the project. Skipped where the sessions are not on this machine.
#include "support/real_sessions.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <tuple>

#include "base/formatted_text.hpp"
#include "run/convert_session.hpp"
#include "session/block_index.hpp"
#include "support/project_reader.hpp"
#include "support/session_cipher.hpp"
#include "support/temp_folder.hpp"
#include "support/told_counts.hpp"

namespace tanrove {
namespace {

using namespace builder;

struct Converted {
    bool found = false;
    std::int32_t code = -1;
    std::size_t file_count = 0;
    ReadProject project;
    std::string console;
};

Converted convert_real(const std::string& file, RunOptions options = {},
                       tanrovegui::Progress* progress = nullptr) {
    Converted converted;
    options.session_path = real_session(file);
    if (options.session_path.empty()) return converted;
    TempFolder folder;
    options.output_path = folder / "out.rpp";
    NullSink silent;
    console_state().console_sink = &silent;
    ConversionResult result;
    converted.code = convert_session(options, &result, progress);
    console_state().console_sink = nullptr;
    converted.found = true;
    converted.file_count = folder.file_count();
    const std::string project = file_text(options.output_path);
    converted.project = read_project(project);
    converted.console = result.console_text;
    if (!project.empty()) {
        expect_told_counts(project, result.console_text, result.report_text,
                           console_state().usage_body);
    }
    EXPECT_EQ(converted.project.closed, converted.file_count > 0);
    return converted;
}

std::vector<std::string> track_names(const ReadProject& project) {
    std::vector<std::string> names;
    for (const auto& track : project.tracks) names.push_back(track.name);
    return names;
}

constexpr double cd_rate = 44100.0;

/// Whole samples at 44100 Hz; far from a whole sample gives -1.
long long cd_samples(double seconds) {
    const double samples = seconds * cd_rate;
    return std::abs(samples - std::round(samples)) < 1e-3 ? std::llround(samples) : -1;
}

/// Name, and position, length and source offset in samples, of each item.
std::string items_of(const ReadTrack& track) {
    std::string text;
    for (const ReadItem& item : track.items) {
        text += formatted("%s %lld %lld %lld; ", item.name.c_str(), cd_samples(item.position),
                          cd_samples(item.length), cd_samples(item.source_offset));
    }
    return text;
}

TEST(RealSessions, RegionTestHasItsSixClipsAndNoFadeFiles) {
    const auto converted = convert_real("RegionTest.ptx");
    if (!converted.found) GTEST_SKIP() << "the real sessions are not on this machine";
    const auto& project = converted.project;
    EXPECT_EQ(project.head_lines("SAMPLERATE"), std::vector<std::string>{"44100 0 0"});
    EXPECT_EQ(track_names(project),
              (std::vector<std::string>{"Track_Name", "Audio 1", "Audio 2", "Audio 3"}));
    const std::string first = "region_name_region-01 0 2650000 0; ";
    const std::string third = "region_name_region-03 950000 1290000 950000; ";
    const std::pair<const char*, std::string> facts[] = {{"Track_Name", first},
                                                         {"Audio 1", first},
                                                         {"Audio 2", first + first},
                                                         {"Audio 3", third + third}};
    for (const auto& [name, items] : facts) {
        SCOPED_TRACE(name);
        const auto track = project.track(name);
        EXPECT_EQ(items_of(track), items);
        EXPECT_EQ(track.channels, 2);
        for (const ReadItem& item : track.items)
            EXPECT_NE(item.file.find("Audio Files/region_name_WAV.wav"), std::string::npos);
    }
    EXPECT_NE(converted.console.find("Pro Tools 2019.6.0, 44100 Hz"), std::string::npos);
    EXPECT_NE(converted.console.find("region_name_WAV.wav"), std::string::npos)
        << "the missing file is named";
}

TEST(RealSessions, APlaylistsNameDecidesNothing) {
    auto image = real_session_image("RegionTest.ptx");
    if (!image) GTEST_SKIP() << "the real sessions are not on this machine";
    TempFolder folder;
    folder.enter();
    const std::size_t playlist = BlockIndex{ByteView(*image)}.of_type(0x1052).all().front().at;
    NullSink silent;
    console_state().console_sink = &silent;
    std::string texts[2];
    for (std::string& text : texts) {
        const auto file = encrypted(*image, Cipher::ptx, 1);
        ASSERT_TRUE(write_file_text("s.ptx", {file.begin(), file.end()}));
        RunOptions options;
        options.session_path = "s.ptx";
        options.overwrite = true;
        convert_session(options, nullptr, nullptr);
        text = file_text("s.rpp");
        image->at(playlist + 13) = 'S';  // the name's first letter, of "Track_Name"
    }
    console_state().console_sink = nullptr;
    EXPECT_NE(texts[0], "");
    EXPECT_EQ(texts[0], texts[1]);
}

/// Tick, length in ticks, key.
using ReadNote = std::tuple<std::uint64_t, std::uint64_t, unsigned>;

/// The notes of a track with one MIDI item at 0, none of them muted and all of velocity 80.
std::vector<ReadNote> midi_notes(const ReadTrack& track) {
    std::vector<ReadNote> notes;
    std::map<unsigned, std::size_t> sounding;
    EXPECT_EQ(track.items.size(), 1U);
    for (const auto& event : track.items.at(0).midi) {
        EXPECT_FALSE(event.muted);
        if (event.status == 0x90) {
            EXPECT_EQ(event.data2, 80U);
            sounding[event.data1] = notes.size();
            notes.emplace_back(event.tick, 0, event.data1);
        } else if (event.status == 0x80) {
            auto& note = notes.at(sounding.at(event.data1));
            std::get<1>(note) = event.tick - std::get<0>(note);
        }
    }
    EXPECT_EQ(track.items[0].position, 0);
    return notes;
}

TEST(RealSessions, TestPtxHasItsStereoPairAndItsMidiTracks) {
    const auto converted = convert_real("TestPTX.ptx");
    if (!converted.found) GTEST_SKIP() << "the real sessions are not on this machine";
    const auto& project = converted.project;
    EXPECT_EQ(project.head_lines("SAMPLERATE"), std::vector<std::string>{"48000 0 0"});
    EXPECT_EQ(track_names(project),
              (std::vector<std::string>{"monoTone", "stereoTone", "MIDI 1", "MIDI 2", "MIDI 3"}));
    const auto mono = project.track("monoTone");
    ASSERT_EQ(mono.items.size(), 1U);
    EXPECT_DOUBLE_EQ(mono.items[0].length, 10.0);
    const auto stereo = project.track("stereoTone");
    ASSERT_EQ(stereo.items.size(), 2U);
    EXPECT_DOUBLE_EQ(stereo.items[0].take_pan, -1);
    EXPECT_DOUBLE_EQ(stereo.items[1].take_pan, 1);
    EXPECT_NE(stereo.items[0].file.find("stereoTone.L.aif"), std::string::npos);
    EXPECT_NE(stereo.items[1].file.find("stereoTone.R.aif"), std::string::npos);
    EXPECT_DOUBLE_EQ(stereo.items[0].position, 0);

    const auto first_notes = midi_notes(project.track("MIDI 1"));
    const std::vector<ReadNote> expected = {{0, 240, 64},    {240, 240, 64},  {480, 240, 64},
                                            {960, 240, 59},  {1200, 240, 59}, {1440, 240, 59},
                                            {1920, 240, 64}, {2160, 240, 64}, {2400, 240, 64}};
    EXPECT_EQ(first_notes, expected);
    EXPECT_EQ(midi_notes(project.track("MIDI 2")).size(), 16U);
    EXPECT_EQ(midi_notes(project.track("MIDI 3")).size(), 4U);
    EXPECT_NE(converted.console.find("5 tracks, 3 clips, 29 MIDI notes"), std::string::npos);
}

TEST(RealSessions, TempoTimeKeySigPutsItsClipsOnTheGrid) {
    const auto converted = convert_real("TempoTimeKeySig.ptx");
    if (!converted.found) GTEST_SKIP() << "the real sessions are not on this machine";
    const auto& project = converted.project;
    std::vector<std::pair<double, double>> tempos;  // seconds, bpm
    for (const auto& line : project.head_lines("PT")) {
        char* rest = nullptr;
        const double seconds = std::strtod(line.c_str(), &rest);
        tempos.emplace_back(seconds, std::strtod(rest, nullptr));
    }
    std::vector<double> distinct;
    for (const auto& [seconds, bpm] : tempos) {
        if (distinct.empty() || distinct.back() != bpm) distinct.push_back(bpm);
    }
    ASSERT_GE(distinct.size(), 4U);
    distinct.resize(4);
    EXPECT_EQ(distinct, (std::vector<double>{50, 51, 52, 53}));

    const auto seconds_of = [&](double ticks) {
        double quarters = ticks / 960000;
        for (std::size_t i = 0; i + 1 < tempos.size(); ++i) {
            const double span = tempos[i + 1].first - tempos[i].first;
            const double in_span = span * tempos[i].second / 60;
            if (quarters <= in_span) return tempos[i].first + quarters * 60 / tempos[i].second;
            quarters -= in_span;
        }
        return tempos.back().first + quarters * 60 / tempos.back().second;
    };

    const auto samples = project.track("Audio 1");
    ASSERT_EQ(samples.items.size(), 7U);
    const long long positions[] = {0, 327278, 507498, 573648, 845598, 225358698, 234572658};
    const long long lengths[] = {256532, 92020, 66150, 92020, 256532, 256532, 256532};
    for (std::size_t i = 0; i < 7; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(cd_samples(samples.items[i].position), positions[i]);
        EXPECT_EQ(cd_samples(samples.items[i].length), lengths[i]);
    }
    EXPECT_EQ(samples.timebase, 0);

    const auto ticks = project.track("Audio 2");
    ASSERT_EQ(ticks.items.size(), 7U);
    const double tick_positions[] = {3120000,    7200000,    13920000,  7342800000,
                                     7695600000, 7718400000, 7752720000};
    for (std::size_t i = 0; i < 7; ++i) {
        SCOPED_TRACE(i);
        EXPECT_NEAR(ticks.items[i].position, seconds_of(tick_positions[i]), 1e-6);
    }
    EXPECT_EQ(ticks.timebase, 2);
    EXPECT_NEAR(seconds_of(14400000), 11.007892, 1e-6) << "where a sample-based clip shows it";

    EXPECT_EQ(project.head_lines("MARKER").size(), 2U + 2 * 2U) << "two markers and two regions";
}

/// What Pro Tools itself says of a session, in the text that it exports.
struct ExportedTrack {
    std::string name;
    bool stereo = false;
    std::string comment;
    std::vector<std::string> events;  // channel, name, start, end, state
};

struct ExportedText {
    std::string timecode;  // frames a second, session start
    std::vector<ExportedTrack> tracks;
    std::vector<std::string> markers;          // number, place and name
    std::vector<std::string> marker_comments;  // number and comment
};

std::string trimmed(const std::string& cell) {
    const auto first = cell.find_first_not_of(' ');
    if (first == cell.npos) return {};
    return cell.substr(first, cell.find_last_not_of(' ') + 1 - first);
}

std::vector<std::string> cells_of(const std::string& line) {
    std::vector<std::string> cells;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, '\t');) cells.push_back(trimmed(cell));
    return cells;
}

ExportedText read_export(const std::string& text) {
    ExportedText read;
    std::istringstream lines(text);
    bool in_markers = false;
    for (std::string line; std::getline(lines, line);) {
        const auto cells = cells_of(line);
        in_markers = in_markers || line.starts_with("M A R K E R S");
        if (cells.size() == 2 && cells[0] == "SESSION START TIMECODE:") {
            read.timecode = " fps, Session Start " + cells[1].substr(0, 11);
        } else if (cells.size() == 2 && cells[0] == "TIMECODE FORMAT:") {
            read.timecode = "Timecode: " + cells[1].substr(0, cells[1].find(' ')) + read.timecode;
        } else if (cells.size() == 2 && cells[0] == "TRACK NAME:") {
            ExportedTrack& track = read.tracks.emplace_back();
            const auto stereo = cells[1].rfind(" (Stereo)");
            track.stereo = stereo != cells[1].npos;
            track.name = cells[1].substr(0, stereo);
        } else if (cells.size() == 2 && cells[0] == "COMMENTS:") {
            read.tracks.back().comment = cells[1];
        } else if (cells.size() == 7 && std::isdigit(line.front()) != 0) {
            read.tracks.back().events.push_back(cells[0] + " " + cells[2] + " " + cells[3] + " " +
                                                cells[4] + " " + cells[6]);
        } else if (in_markers && cells.size() >= 5 && std::isdigit(line.front()) != 0) {
            read.markers.push_back(cells[0] + " " + cells[2] + " " + cells[4]);
            const std::string comment = cells.size() > 5 ? cells[5] : "";
            if (!comment.empty()) read.marker_comments.push_back(cells[0] + " " + comment);
        }
    }
    return read;
}

std::string timecode(long long frames) {
    return formatted("%02lld:%02lld:%02lld:%02lld", frames / 108000, frames / 1800 % 60,
                     frames / 30 % 60, frames % 30);
}

std::string in_samples(long long sample) {
    return std::to_string(sample);
}

/// A frame of 29.97 per second, from 01:00:00:00, begins at the sample below its exact place.
std::string in_frames(long long sample) {
    const auto begins_at = [](long long frame) { return frame * 8008 / 5; };
    long long frame = sample * 5 / 8008;
    if (begins_at(frame + 1) <= sample) ++frame;
    return timecode(108000 + frame);
}

/// Frames of 30 per second, from 01:00:00:00, with hundredths, which are rounded.
std::string in_subframes(long long sample) {
    const long long hundredths = (sample + 8) / 16;
    return timecode(108000 + hundredths / 100) + formatted(".%02lld", hundredths % 100);
}

/// The items of a track as the text would have them.
std::vector<std::string> events_of(const ReadTrack& track, bool stereo,
                                   std::string (*cell)(long long)) {
    std::vector<std::string> events;
    for (const int channel : {1, 2}) {
        for (const ReadItem& item : track.items) {
            const int side = stereo && item.take_pan > 0 ? 2 : 1;
            if (side != channel) continue;
            const auto start = std::llround(item.position * 48000);
            const auto end = std::llround((item.position + item.length) * 48000);
            EXPECT_NEAR(static_cast<double>(start), item.position * 48000, 1e-3);
            events.push_back(std::to_string(channel) + " " + trimmed(item.name) + " " +
                             cell(start) + " " + cell(end) + (item.muted ? " Muted" : " Unmuted"));
        }
    }
    return events;
}

TEST(RealSessions, AgreeWithTheTextsThatProToolsWroteOfThem) {
    const struct {
        const char* session;
        const char* text;
        std::string (*cell)(long long);
        std::size_t tracks, events, markers;
    } cases[] = {
        {"RobinHood.ptx", "RobinHood_samples.txt", in_samples, 17, 93, 1},
        {"RobinHood.ptx", "RobinHood.txt", in_frames, 14, 91, 1},
        {"TestExport.ptx", "TestExport_samples.txt", in_samples, 4, 5, 0},
        {"TestExport.ptx", "TestExport_timecode.txt", in_subframes, 4, 5, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const std::string folder = "protools-texts/";
        const auto converted = convert_real(folder + c.session);
        if (!converted.found) GTEST_SKIP() << "the real sessions are not on this machine";
        const auto exported = read_export(file_text(real_session(folder + c.text)));
        // The later export was made of a session that had been set to drop frame.
        const bool is_later = exported.timecode.ends_with(";00");
        EXPECT_TRUE(is_later || converted.console.find(exported.timecode) != std::string::npos);
        std::vector<std::string> listed;
        std::size_t events = 0;
        for (const auto& track : exported.tracks) {
            SCOPED_TRACE(track.name);
            const auto written = converted.project.track(track.name);
            EXPECT_EQ(events_of(written, track.stereo, c.cell), track.events);
            EXPECT_EQ(written.timebase, 0);
            const auto notes = converted.project.head_lines("|" + track.name + ":");
            EXPECT_EQ(notes.empty() ? "" : trimmed(notes[0]), track.comment);
            listed.push_back(track.name);
            events += track.events.size();
        }
        auto written = track_names(converted.project);
        std::erase_if(written, [&](const std::string& name) {
            return std::ranges::find(listed, name) == listed.end();
        });
        EXPECT_EQ(written, listed) << "the order of the edit window";
        EXPECT_EQ(std::tuple(listed.size(), events, exported.markers.size()),
                  std::tuple(c.tracks, c.events, c.markers))
            << "the text was read whole";
        std::vector<std::string> markers;
        for (const auto& line : converted.project.head_lines("MARKER")) {
            const auto name = line.find('"');
            markers.push_back(formatted(
                "%d %lld %s", std::atoi(line.c_str()),
                std::llround(std::atof(line.c_str() + line.find(' ')) * 48000),
                trimmed(line.substr(name + 1, line.find('"', name + 1) - name - 1)).c_str()));
        }
        EXPECT_EQ(markers, exported.markers);
        std::vector<std::string> comments;
        for (const auto& line : converted.project.head_lines("|Marker")) {
            comments.push_back(line.substr(0, line.find(' ')) + line.substr(line.find(" }: ") + 3));
        }
        EXPECT_EQ(comments, exported.marker_comments);
    }
}

TEST(RealSessions, RobinHoodShowsItsPictureFromTheFrameOfItsOwnList) {
    const auto converted = convert_real("protools-texts/RobinHood.ptx");
    if (!converted.found) GTEST_SKIP() << "the real sessions are not on this machine";
    const auto picture = converted.project.track("PIX");
    ASSERT_EQ(picture.items.size(), 1U);
    constexpr double frame = 1001.0 / 30000;
    EXPECT_EQ(picture.items[0].name, "RobinHood-01");
    EXPECT_EQ(picture.items[0].file, "RobinHood.mov");
    EXPECT_NEAR(picture.items[0].position, 240 * frame, 1e-5) << "where the guide track begins";
    EXPECT_NEAR(picture.items[0].length, 16436 * frame, 1e-3);
    EXPECT_NEAR(picture.items[0].source_offset, 1547 * frame, 1e-3);
}

struct Stages : tanrovegui::Progress {
    bool stage(int index, int /*total*/, const char* text) override {
        heard += std::to_string(index) + " " + text + "\n";
        return true;
    }
    std::string heard;
};

TEST(RealSessions, AreListedAndCheckedWithoutATraceAndTellTheirStages) {
    const struct {
        const char* file;
        const char* head;
        std::vector<std::string> tracks;
    } cases[] = {
        {"RegionTest.ptx", "120 BPM, 44100", {"Track_Name", "Audio 1", "Audio 2", "Audio 3"}},
        {"TestPTX.ptx", "120 BPM, 48000", {"monoTone", "stereoTone", "MIDI 1", "MIDI 2", "MIDI 3"}},
        {"TempoTimeKeySig.ptx", "50 BPM, 44100", {"Audio 1", "Audio 2"}},
        {"Untitled32.ptx", "120 BPM, 44100", {}},
    };
    const auto account = [](const std::string& text) {
        const auto first = text.find("tracks, ");
        return text.substr(first, text.find("PRIVACY") - first);
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        RunOptions list_only, check_only;
        list_only.list_only = check_only.check_only = true;
        const auto listed = convert_real(c.file, list_only);
        if (!listed.found) GTEST_SKIP() << "the real sessions are not on this machine";
        const auto checked = convert_real(c.file, check_only);
        Stages stages;
        const auto written = convert_real(c.file, {}, &stages);
        EXPECT_EQ(listed.code + checked.code + written.code, 0);
        EXPECT_EQ(listed.file_count + checked.file_count, 0U);

        const int count = static_cast<int>(c.tracks.size());
        std::string list =
            formatted("\n  tempo %s Hz\n\n  session track table (%d):\n", c.head, count);
        std::string heard = "0 reading\n1 clips\n2 tracks\n3 writing\n";
        for (int i = 0; i < count; ++i) {
            list +=
                formatted("    %2d  %s\n", i + 1, c.tracks[static_cast<std::size_t>(i)].c_str());
            heard += formatted("3 writing %d/%d\n", i, count);
        }
        EXPECT_EQ(listed.console.rfind(list + "\n  buses (", 0), 0U) << listed.console;
        EXPECT_EQ(checked.console.rfind("damage none\n", 0), 0U);
        EXPECT_EQ(account(checked.console), account(written.console));
        EXPECT_EQ(stages.heard, heard + "4 media\n5 report\n");
    }
}

}  // namespace
}  // namespace tanrove
