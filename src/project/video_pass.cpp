// Text surgery on the finished project: cut out the run of video tracks, put it in front of the
// first track, and add its length to the source of every send that comes from a track it passed.
#include "project/video_pass.hpp"

#include <string>
#include <unordered_map>

#include "base/guid.hpp"
#include "project/receive_source.hpp"

namespace tanrove {

namespace {

constexpr const char* pass_suffix = ".vtmp";
constexpr std::string_view track_opening = "\n  <TRACK ";
constexpr std::string_view track_end = "\n  >\n";
constexpr std::size_t nowhere = std::string_view::npos;

/// The tracks of a project text, in order, each told by the line end in front of it.
struct TrackStarts {
    std::size_t first = nowhere;
    std::unordered_map<std::string_view, std::size_t> at_of_guid;  ///< nowhere if it occurs twice
    std::unordered_map<std::size_t, std::size_t> number_of_start;
};

TrackStarts find_tracks(std::string_view text) {
    TrackStarts tracks;
    std::size_t number = 0;
    for (std::size_t at = text.find(track_opening); at != nowhere;
         at = text.find(track_opening, at + 1)) {
        if (number == 0) tracks.first = at;
        const std::size_t guid_at = at + track_opening.size();
        const std::size_t line_end = text.find('\n', guid_at);
        if (line_end == nowhere) break;
        const auto guid_text = text.substr(guid_at, line_end - guid_at);
        const auto [known, is_new] = tracks.at_of_guid.try_emplace(guid_text, at);
        if (!is_new) known->second = nowhere;
        tracks.number_of_start.emplace(at, number++);
    }
    return tracks;
}

/// The run of video tracks: from the line end in front of it to its own last one.
struct Run {
    std::size_t start = nowhere;
    std::size_t end = nowhere;
};

/// nullopt unless each of the tracks is there once, and each begins where the one before it ends.
std::optional<Run> find_run(std::string_view text, const TrackStarts& tracks, std::size_t count) {
    Run run;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string id = guid(video_track_seed + static_cast<unsigned>(i));
        const auto found = tracks.at_of_guid.find(id);
        if (found == tracks.at_of_guid.end() || found->second == nowhere) return std::nullopt;
        const std::size_t start = found->second;
        if (i == 0) run.start = start;
        if (i > 0 && start != run.end) return std::nullopt;
        const std::size_t closing = text.find(track_end, start);
        if (closing == nowhere) return std::nullopt;
        run.end = closing + track_end.size() - 1;
    }
    return run;
}

/// The text with `added` on every source below `moved`; nullopt if a source cannot be read.
std::optional<std::string> with_moved_sources(const std::string& text, std::size_t moved,
                                              std::size_t added) {
    const std::string opening = "\n" + std::string(receive_opening);
    std::string result;
    result.reserve(text.size());
    std::size_t copied = 0;
    for (std::size_t at = text.find(opening); at != nowhere; at = text.find(opening, at + 1)) {
        const std::size_t digits_at = at + opening.size();
        const auto source = receive_source(std::string_view(text).substr(digits_at));
        if (!source) return std::nullopt;
        if (source->track >= moved) continue;
        result.append(text, copied, digits_at - copied);
        result += std::to_string(source->track + added);
        copied = digits_at + source->digits;
    }
    result.append(text, copied);
    return result;
}

}  // namespace

std::optional<std::string> with_video_tracks_first(std::string_view text, std::size_t count) {
    if (count == 0) return std::nullopt;
    const TrackStarts tracks = find_tracks(text);
    if (tracks.first == nowhere) return std::nullopt;
    const auto run = find_run(text, tracks, count);
    if (!run || run->start == tracks.first) return std::nullopt;

    std::string moved;
    moved.reserve(text.size());
    moved += text.substr(0, tracks.first);
    moved += text.substr(run->start, run->end - run->start);
    moved += text.substr(tracks.first, run->start - tracks.first);
    moved += text.substr(run->end);
    return with_moved_sources(moved, tracks.number_of_start.at(run->start), count);
}

bool move_video_tracks_first(const std::string& path, std::size_t count, const DiskSteps& disk) {
    const auto text = read_whole_file(path, disk);
    if (!text) return false;
    const auto moved = with_video_tracks_first(*text, count);
    return moved && write_whole_file(path, *moved, disk, pass_suffix);
}

}  // namespace tanrove
