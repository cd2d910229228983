// Makes the demo session: a folder with a session file and its short WAV files, all generated.
//   make_demo <folder>
#include <cstdio>
#include <filesystem>
#include <string>

#include "support/session_builder.hpp"
#include "wav_file.hpp"

namespace tanrove::demo {

namespace {

using builder::ClipSpec;
using builder::SessionBuilder;
using builder::TrackSpec;

constexpr std::int64_t rate_hz = 48000;
constexpr std::int64_t quarter_ticks = 960000;
constexpr double opening_bpm = 120;
constexpr double verse_bpm = 96;

/// The audio files in the order of the session's list.
enum File : std::uint16_t { clicks, bass, pad_left, pad_right, lead };

struct DemoSound {
    const char* file;
    Sound sound;
};

std::vector<DemoSound> demo_sounds() {
    const auto tone = [](double frequency, double seconds) {
        return plucked_tone(frequency, seconds, rate_hz);
    };
    return {
        {"Clicks.wav", in_steps(std::vector<Sound>(4, click(0.1, rate_hz)), 0.25, rate_hz)},
        {"Bass.wav", in_steps({tone(55, 0.25), tone(55, 0.25), tone(82.4, 0.25), tone(73.4, 0.25)},
                              0.25, rate_hz)},
        {"Pad.L.wav", tone(220, 1.0)},
        {"Pad.R.wav", tone(277.2, 1.0)},
        {"Lead.wav",
         in_steps({tone(440, 0.25), tone(554.4, 0.25), tone(659.3, 0.5)}, 0.25, rate_hz)},
    };
}

ClipSpec clip(const std::string& region, File file, std::int64_t position, std::int64_t length,
              std::int64_t source_offset = 0) {
    ClipSpec spec;
    spec.region = region;
    spec.file_index = file;
    spec.position = position;
    spec.length = length;
    spec.source_offset = source_offset;
    return spec;
}

TrackSpec drums() {
    TrackSpec track;
    track.name = "Clicks";
    track.tick_based = true;
    for (std::int64_t bar = 0; bar < 4; ++bar) {
        track.clips.push_back(clip("Clicks", clicks, bar * 4 * quarter_ticks, rate_hz));
    }
    return track;
}

TrackSpec bass_line() {
    TrackSpec track;
    track.name = "Bass";
    track.clips = {
        clip("Bass", bass, 0, rate_hz),
        clip("Bass-01", bass, 2 * rate_hz, rate_hz / 2),
        clip("Bass-02", bass, 3 * rate_hz, rate_hz / 2, rate_hz / 2),
    };
    track.clips[1].muted = true;
    track.clips[2].locked = true;
    track.alternates = {{"Bass.01", {clip("Bass-03", bass, 0, rate_hz / 4, rate_hz / 4)}}};
    return track;
}

TrackSpec pad() {
    TrackSpec track;
    track.name = "Pad";
    track.channels = 2;
    track.clips = {clip("Pad", pad_left, rate_hz, rate_hz),
                   clip("Pad-01", pad_left, 4 * rate_hz, rate_hz / 2, rate_hz / 4)};
    for (auto& spec : track.clips) spec.file_per_channel = true;
    return track;
}

TrackSpec lead_line() {
    TrackSpec track;
    track.name = "Lead (new name)";
    track.original_name = "Audio 4";
    track.clips = {
        clip("Lead", lead, rate_hz / 2, 3 * rate_hz / 4),
        clip("Lead-01", lead, 5 * rate_hz, rate_hz / 4, rate_hz / 4),
    };
    return track;
}

TrackSpec empty_track() {
    TrackSpec track;
    track.name = "Reverb to come";
    return track;
}

SessionBuilder demo_session(const std::vector<DemoSound>& sounds) {
    SessionBuilder session;
    session.rate(rate_hz).product("Pro Tools", "2021.10.0");
    for (const auto& sound : sounds) session.audio_file({sound.file, sound.sound.size(), 0});
    session.tempo(0, opening_bpm).tempo(8 * quarter_ticks, verse_bpm);
    session.meter(0, 1, 4, 4).meter(12 * quarter_ticks, 4, 3, 4);
    session.marker("Intro", 0).marker("Verse", 8 * quarter_ticks);
    session.selection("Pad comes in", 4 * quarter_ticks, 8 * quarter_ticks);
    session.track(drums()).track(bass_line()).track(pad()).track(lead_line()).track(empty_track());
    return session;
}

bool make_demo(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder / "Audio Files");
    const auto sounds = demo_sounds();
    for (const auto& sound : sounds) {
        if (!write_wav((folder / "Audio Files" / sound.file).string(), sound.sound, rate_hz)) {
            return false;
        }
    }
    return demo_session(sounds).write((folder / "Demo Song.ptx").string());
}

}  // namespace

}  // namespace tanrove::demo

int main(int argc, char** argv) {
    if (argc != 2) {
        std::puts("usage: make_demo <folder>");
        return 2;
    }
    if (!tanrove::demo::make_demo(argv[1])) {
        std::printf("could not write the demo session into %s\n", argv[1]);
        return 1;
    }
    std::printf("Made the demo session %s/Demo Song.ptx\n", argv[1]);
    return 0;
}
