// Reads a finished project back, so that tests can ask what is where in it.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tanrove::builder {

/// An event of a MIDI source, a system exclusive message with the status 0xf0.
struct ReadMidiEvent {
    std::uint64_t tick = 0;
    unsigned status = 0;
    unsigned data1 = 0;
    unsigned data2 = 0;
    bool muted = false;

    auto operator<=>(const ReadMidiEvent&) const = default;
};

struct ReadItem {
    double position = 0;
    double length = 0;
    double source_offset = 0;
    bool muted = false;
    std::string name;
    std::string file;
    double take_pan = 0;
    double volume = 1;
    double playrate = 1;
    double fade_in = 0;   ///< seconds
    double fade_out = 0;  ///< likewise
    bool locked = false;
    std::vector<std::pair<double, double>> markers;   ///< seconds of the item and of its file
    std::vector<std::pair<double, double>> envelope;  ///< seconds and gain of the take's volume
    std::vector<ReadMidiEvent> midi;
};

struct ReadTrack {
    std::string name;
    int channels = 0;
    bool muted = false;
    int timebase = 0;
    std::vector<ReadItem> items;
};

struct ReadProject {
    std::vector<std::string> head;  ///< the lines in front of the first track, without indentation
    std::vector<ReadTrack> tracks;
    bool closed = false;  ///< every block is closed and nothing stands behind the project

    /// Values of the head's lines that begin with `token`, as they stand behind it.
    std::vector<std::string> head_lines(const std::string& token) const;
    /// The track of this name; an empty one if there is none.
    ReadTrack track(const std::string& name) const;
};

ReadProject read_project(const std::string& text);

}  // namespace tanrove::builder
