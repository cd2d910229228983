// The anonymous summary of one run: counts, and which plug-ins converted how. Nothing in it names
// the user's tracks, clips, files or paths, nor a plug-in that the user taught this machine.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "report/run_tallies.hpp"

namespace tanrove {

/// What the summary tells besides the tallies.
struct UsageFacts {
    std::string version;  ///< of the Pro Tools that saved the session
    std::int64_t sample_rate_hz = 48000;
    int bit_depth = 0;  ///< 0: not known
    bool is_float = false;
    int midi_tracks = 0;  ///< written with a MIDI item, likewise the others
    int hidden_tracks = 0;
    int inactive_tracks = 0;
    int lanes = 0;          ///< of all tracks
    int master_faders = 0;  ///< in the session
    bool problem_recorded = false;
};

/// Most plug-ins that a summary lists; the rest is told by a word.
constexpr std::size_t max_usage_plugins = 400;

/// The session, its plug-ins and the words: what stands behind "result".
std::string usage_body(const UsageFacts& facts, const RunTallies& tallies);

/// The whole line with its line feed. A run that ended early has an empty body.
std::string usage_summary(bool converted, const std::string& body);

/// The text in quotes; bytes that are no UTF-8 become U+FFFD.
std::string json_text(std::string_view text);

}  // namespace tanrove
