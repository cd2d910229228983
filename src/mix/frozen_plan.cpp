// A frozen track is told by a clip of its name whose file Pro Tools marked as a freeze file.
#include "mix/frozen_plan.hpp"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>

#include "base/paths.hpp"
#include "base/session_numbers.hpp"

namespace tanrove {

namespace {

constexpr std::string_view freeze_mark = "-FZ";

// Positions from here on are ticks, which count from the session's origin.
constexpr double least_ticks = static_cast<double>(tick_origin) / 2;

bool is_freeze_file(const AudioFileEntry& file) {
    return file_name_of(file.name).find(freeze_mark) != std::string::npos;
}

/// The freeze files by the names of the clips that play them, one entry a clip.
using FreezeFiles = std::multimap<std::string_view, std::string>;

FreezeFiles freeze_files(const FrozenInput& input) {
    std::vector<bool> is_freeze;
    is_freeze.reserve(input.files.size());
    for (const AudioFileEntry& file : input.files) is_freeze.push_back(is_freeze_file(file));
    FreezeFiles files;
    for (const Region& region : input.regions) {
        const auto place = static_cast<std::size_t>(region.file);
        if (region.file < 0 || place >= input.files.size() || !is_freeze[place]) continue;
        files.emplace(region.name, file_name_of(input.files[place].name));
    }
    return files;
}

/// What a track's renders lead to.
struct TrackRender {
    const FreezeRender* record = nullptr;  ///< of the first that plays a freeze file
    std::vector<std::string> files;        ///< of all that do
    std::size_t names = 0;                 ///< different names among those
};

TrackRender render_of(const std::vector<FreezeRender>& records, const FreezeFiles& files) {
    TrackRender render;
    std::set<std::string_view> names;
    for (const FreezeRender& record : records) {
        const auto [first, last] = files.equal_range(record.name);
        if (first == last || !names.insert(record.name).second) continue;
        if (render.record == nullptr) render.record = &record;
        for (auto file = first; file != last; ++file) render.files.push_back(file->second);
    }
    render.names = names.size();
    return render;
}

/// The file's name with the letter of its side taken out; nullopt if it is no left or right half.
std::optional<std::string> without_side(const std::string& file, std::string_view side) {
    const std::string stem = without_extension(file);
    if (!stem.ends_with(side)) return std::nullopt;
    return stem.substr(0, stem.size() - side.size()) + file.substr(stem.size());
}

bool are_sides(const std::string& one, const std::string& other) {
    const auto left = without_side(one, ".L");
    return left && left == without_side(other, ".R");
}

/// Why the session alone, before the disk is asked, does not tell one render.
std::optional<FreezeRefusal> ambiguity(const TrackRender& render) {
    const auto& files = render.files;
    const bool one_file = std::ranges::count(files, files.front()) == std::ranges::ssize(files);
    if (render.names > 1 || (one_file && files.size() > 1)) return FreezeRefusal::several_renders;
    if (files.size() == 2 && (are_sides(files[0], files[1]) || are_sides(files[1], files[0]))) {
        return FreezeRefusal::two_mono_files;
    }
    if (files.size() > 1 || render.record->length <= 0) return FreezeRefusal::unidentified;
    return std::nullopt;
}

std::optional<FreezeRefusal> obstacle(const TrackPlan& track, const RenderFile& file) {
    if (!file.found) return FreezeRefusal::not_on_disk;
    if (!track.lanes.empty()) return FreezeRefusal::has_lanes;
    if (track.has_surround_panner()) return FreezeRefusal::feeds_surround_panner;
    if (!file.readable) return FreezeRefusal::unreadable;
    return std::nullopt;
}

FrozenRender in_seconds(const FreezeRender& record, std::string path, double rate_hz,
                        const TempoClock& clock) {
    const double ticks = record.start - static_cast<double>(tick_origin);
    return {
        .start = record.start < least_ticks ? record.start / rate_hz
                                            : std::max(0.0, clock.seconds(ticks)),
        .length = record.length / rate_hz,
        .source_offset = record.source_offset / rate_hz,
        .path = std::move(path),
    };
}

}  // namespace

bool has_freeze_files(std::span<const AudioFileEntry> files) {
    return std::ranges::any_of(files, is_freeze_file);
}

std::vector<std::string> names_of_renders(const std::vector<TrackPlan>& tracks) {
    std::vector<std::string> names;
    for (const TrackPlan& track : tracks) {
        if (!track.session_name.empty()) names.push_back(track.session_name);
    }
    return names;
}

void plan_frozen(std::vector<TrackPlan>& tracks, const FrozenInput& input, const TempoClock& clock,
                 FrozenTallies& tallies) {
    const FreezeFiles files = freeze_files(input);
    if (files.empty()) return;
    for (TrackPlan& track : tracks) {
        const auto renders = input.renders.find(track.session_name);
        if (renders == input.renders.end()) continue;
        const TrackRender render = render_of(renders->second, files);
        if (render.record == nullptr) continue;
        ++tallies.frozen_tracks;
        if (!input.keep_frozen) continue;

        std::string name;
        RenderFile file;
        auto reason = ambiguity(render);
        if (!reason) {
            name = render.files.front();
            file = input.find_render(name);
            reason = obstacle(track, file);
        }
        if (reason) {
            tallies.refused.push_back({track.session_name, *reason, name});
        } else {
            track.frozen = in_seconds(*render.record, file.path, input.rate_hz, clock);
        }
    }
}

}  // namespace tanrove
