// The listing of a session: its own track table beside the names that the container library gives.
#include "run/session_listing.hpp"

#include <set>

#include "base/formatted_text.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

/// Names of the library's tracks, each once, in their order.
std::vector<std::string> library_track_names(const PTFFormat& file) {
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const auto* tracks : {&file.tracks(), &file.midi_tracks()}) {
        for (const auto& track : *tracks) {
            if (seen.emplace(track.name).second) names.emplace_back(track.name);
        }
    }
    return names;
}

}  // namespace

std::string session_listing(const PTFFormat& file, const SessionTrackTable& table,
                            const std::vector<std::string>& buses, std::int64_t rate_hz,
                            double tempo_bpm) {
    TextBuffer out;
    out.print("\n  tempo %g BPM, %lld Hz\n", tempo_bpm, static_cast<long long>(rate_hz));
    out.print("\n  session track table (%d):\n", static_cast<int>(table.names.size()));
    int number = 0;
    for (const auto& name : table.names)
        out.print("    %2d  %s\n", ++number, shown_name(name).c_str());

    out.print("\n  buses (%d): ", static_cast<int>(buses.size()));
    for (const auto& bus : buses) out.print("%s | ", shown_name(bus).c_str());

    const auto library_names = library_track_names(file);
    const std::set<std::string> known(table.names.begin(), table.names.end());
    out.print("\n\n  libptformat track names (%d unique):\n",
              static_cast<int>(library_names.size()));
    for (const auto& name : library_names) {
        out.print("    %-34s %s\n", shown_name(name).c_str(),
                  known.count(name) > 0 ? "" : "<- not in table");
    }
    return out.text();
}

}  // namespace tanrove
