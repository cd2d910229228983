// A line-wise reader of project text: it follows the nesting and picks out what tests ask for.
#include "support/project_reader.hpp"

#include <cstdlib>
#include <sstream>
#include <tuple>

namespace tanrove::builder {

namespace {

/// The text between the quotes with which `value` begins; all of it if it is not quoted.
std::string unquoted(const std::string& value) {
    if (value.size() < 2 || std::string("\"'`").find(value.front()) == std::string::npos)
        return value;
    return value.substr(1, value.find(value.front(), 1) - 1);
}

/// Reads a line "E", "Em" or "<X", whose first number is the delta.
void read_midi_line(const std::string& token, const std::string& value, ReadItem& item) {
    const bool is_event = token == "E" || token == "Em";
    if (!is_event && token != "<X") return;
    ReadMidiEvent event;
    event.muted = token == "Em";
    char* rest = nullptr;
    event.tick = std::strtoull(value.c_str(), &rest, 10);
    if (!item.midi.empty()) event.tick += item.midi.back().tick;
    event.status = is_event ? static_cast<unsigned>(std::strtoul(rest, &rest, 16)) : 0xf0;
    if (is_event) event.data1 = static_cast<unsigned>(std::strtoul(rest, &rest, 16));
    if (is_event) event.data2 = static_cast<unsigned>(std::strtoul(rest, &rest, 16));
    item.midi.push_back(event);
}

/// The two numbers with which `value` begins.
std::pair<double, double> pair_in(const std::string& value) {
    char* rest = nullptr;
    const double first = std::strtod(value.c_str(), &rest);
    return {first, std::strtod(rest, nullptr)};
}

void read_track_line(const std::string& token, const std::string& value, ReadTrack& track) {
    if (token == "NAME") track.name = unquoted(value);
    if (token == "NCHAN") track.channels = std::atoi(value.c_str());
    if (token == "BEAT") track.timebase = std::atoi(value.c_str());
    if (token == "MUTESOLO") track.muted = value.front() == '1';
}

void read_item_line(const std::string& token, const std::string& value, ReadItem& item) {
    const double number = std::strtod(value.c_str(), nullptr);
    if (token == "POSITION") item.position = number;
    if (token == "LENGTH") item.length = number;
    if (token == "SOFFS") item.source_offset = number;
    if (token == "MUTE") item.muted = value.front() == '1';
    if (token == "NAME") item.name = unquoted(value);
    if (token == "PLAYRATE") item.playrate = number;
    if (token == "LOCK") item.locked = true;
    if (token == "FADEIN") item.fade_in = pair_in(value).second;
    if (token == "FADEOUT") item.fade_out = pair_in(value).second;
    if (token == "VOLPAN") std::tie(item.volume, item.take_pan) = pair_in(value);
    if (token != "SM") return;
    for (std::size_t at = 0; at != value.npos; at = value.find('+', at + 1)) {
        item.markers.push_back(pair_in(value.substr(at + (at > 0 ? 1 : 0))));
    }
}

}  // namespace

std::vector<std::string> ReadProject::head_lines(const std::string& token) const {
    std::vector<std::string> values;
    for (const auto& line : head) {
        if (line.rfind(token + " ", 0) == 0) values.push_back(line.substr(token.size() + 1));
    }
    return values;
}

ReadTrack ReadProject::track(const std::string& name) const {
    for (const auto& track : tracks) {
        if (track.name == name) return track;
    }
    return {};
}

ReadProject read_project(const std::string& text) {
    ReadProject project;
    std::vector<std::string> open;
    std::istringstream lines(text);
    std::string line;
    bool broken = false;
    while (std::getline(lines, line)) {
        line.erase(0, line.find_first_not_of(' '));
        const auto blank = line.find(' ');
        const std::string token = line.substr(0, blank);
        const std::string value = blank == std::string::npos ? "" : line.substr(blank + 1);
        if (line == ">") {
            broken = broken || open.empty();
            if (!open.empty()) open.pop_back();
            continue;
        }
        if (token == "<TRACK") project.tracks.emplace_back();
        if (token == "<ITEM") project.tracks.back().items.emplace_back();
        if (project.tracks.empty()) project.head.push_back(line);
        if (!open.empty() && open.back() == "<SOURCE")
            read_midi_line(token, value, project.tracks.back().items.back());
        if (!line.empty() && line.front() == '<') {
            broken = broken || (open.empty() && token != "<REAPER_PROJECT");
            open.push_back(token);
            continue;
        }
        if (open.empty() || project.tracks.empty()) continue;
        if (open.back() == "<TRACK") read_track_line(token, value, project.tracks.back());
        if (open.back() == "<ITEM")
            read_item_line(token, value, project.tracks.back().items.back());
        if (open.back() == "<VOLENV" && open.size() > 2 && token == "PT" &&
            open[open.size() - 2] == "<ITEM") {
            project.tracks.back().items.back().envelope.push_back(pair_in(value));
        }
        if (open.back() == "<SOURCE" && token == "FILE") {
            project.tracks.back().items.back().file = unquoted(value);
        }
    }
    project.closed = open.empty() && !broken && !project.head.empty();
    return project;
}

}  // namespace tanrove::builder
