// Near the top of the image the names of all tracks stand in one run, as counted texts with few
// bytes between them. The run has no header to find it by: it opens at the first text that is the
// name of a track with clips. So tracks without clips that stand first, auxes say, are lost to the
// scan, or come last in it: the first of them is named again close behind the run. And a folder of
// the session's path, whose names stand in front of all, can be called like a track. The strip rows
// know better: the scan serves sessions whose rows could not be joined with the strip table.
#include "session/track_table.hpp"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace tanrove {

namespace {

constexpr std::size_t scanned_bytes = 400000;
constexpr std::size_t count_width = 4;
constexpr std::size_t min_name_bytes = 2;
constexpr std::size_t max_scanned_name_bytes = 64;
constexpr std::size_t max_gap = 40;  // bytes between one name and the next
constexpr std::size_t max_extension_bytes = 4;

/// Folder and file names that stand near the track names in many sessions.
constexpr std::array<std::string_view, 18> never_tracks = {"Users",         "Documents",
                                                           "AppData",       "Roaming",
                                                           "Local",         "Temp",
                                                           "Pro Tools",     "Pro Tools Projects",
                                                           "Audio Files",   "Plug-In Settings",
                                                           "Avid",          "Music",
                                                           "Desktop",       "Video Files",
                                                           "Bounced Files", "Session File Backups",
                                                           "WaveCache.wfm", "Rendered Files"};

constexpr std::array<std::string_view, 8> file_extensions = {"wav", "aif", "aiff", "mp3",
                                                             "ptx", "pio", "tfx",  "wfm"};

/// The text behind the last point in lower case; empty without one, or for a long one.
std::string extension_of(std::string_view name) {
    const auto point = name.rfind('.');
    if (point == std::string_view::npos || name.size() - point - 1 > max_extension_bytes) return {};
    std::string extension(name.substr(point + 1));
    for (char& c : extension) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return extension;
}

template <typename List>
bool is_among(const List& list, std::string_view name) {
    return std::find(list.begin(), list.end(), name) != list.end();
}

struct Candidate {
    std::size_t at = 0;  ///< position of the count
    std::string_view text;

    std::size_t end() const { return at + count_width + text.size(); }
};

std::vector<Candidate> find_candidates(ByteView image) {
    std::vector<Candidate> candidates;
    for (std::size_t at = 0; at < image.size(); ++at) {
        const std::size_t count = image.u8(at);
        if (count < min_name_bytes || count > max_scanned_name_bytes) continue;
        const auto text = readCountedText(image, at, max_scanned_name_bytes, image.size());
        if (text && is_session_text(*text) && is_track_name(*text))
            candidates.push_back({at, *text});
    }
    return candidates;
}

std::vector<std::string> scan_names(ByteView image, std::span<const std::string> clip_track_names) {
    const std::set<std::string_view> known(clip_track_names.begin(), clip_track_names.end());
    const auto candidates = find_candidates(image);
    const auto first =
        std::find_if(candidates.begin(), candidates.end(),
                     [&](const Candidate& candidate) { return known.contains(candidate.text); });
    std::vector<std::string> names;
    if (first == candidates.end()) return names;
    std::set<std::string_view> taken;
    std::size_t cursor = first->at;
    for (auto candidate = first; candidate != candidates.end(); ++candidate) {
        if (candidate->at < cursor) continue;
        if (candidate->at - cursor > max_gap) break;
        if (taken.insert(candidate->text).second) names.emplace_back(candidate->text);
        cursor = candidate->end();
    }
    return names;
}

std::vector<std::string> current_names(std::span<const StripRow> rows) {
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const StripRow& row : rows) {
        names.push_back(shown_name(row));
    }
    return names;
}

}  // namespace

bool is_track_name(std::string_view name) {
    return name.size() >= min_name_bytes && name.find_first_of(":\\/") == std::string_view::npos &&
           !is_among(never_tracks, name) && !is_among(file_extensions, extension_of(name));
}

SessionTrackTable readTrackTable(const BlockIndex& index,
                                 std::span<const std::string> clip_track_names,
                                 const StripRows& rows) {
    SessionTrackTable table;
    table.names = scan_names(index.image().window(0, scanned_bytes), clip_track_names);
    table.scanned_count = table.names.size();
    if (!rows.bound && !rows.some_bound) return table;
    table.names = current_names(rows.rows);
    table.from_strip_rows = table.scanned_count < table.names.size();
    return table;
}

}  // namespace tanrove
