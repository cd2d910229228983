// The written record of a conversion, made to be read and to be sent in: the track list, the fate
// of every plug-in, and one list of what needs a person's look.
#pragma once

#include <cstdint>
#include <string>

#include "report/run_tallies.hpp"
#include "session/session_settings.hpp"

namespace tanrove {

/// What the report states besides counters: the session, the paths and the switches of the run.
struct ReportFacts {
    std::string application_version;  ///< of the application around this program; may be anything
    std::string problem_kind;         ///< empty: none was recorded
    std::string problem_detail;
    std::string session_path;
    std::string project_path;
    bool check_only = false;
    int session_major = 0;             ///< "Pro Tools 2019": the number
    bool session_is_or_later = false;  ///< the number is the least that it can be
    std::int64_t sample_rate_hz = 48000;
    BitDepth bit_depth = {};  ///< 0 bits: not known
    AudioFormat audio_format = AudioFormat::unknown;
    double tempo_bpm = 120;
    bool has_tempo_map = false;
    bool has_session_start = false;
    int instrument_tracks = 0;  ///< of the written tracks
    bool no_stand_ins = false;
    int console_warnings = 0;  ///< how many the account has
    bool usage_shared = false;
};

struct ConversionReport {
    std::string text;
    int needs_look = 0;  ///< items that a person should look at
};

ConversionReport conversion_report(const ReportFacts& facts, const RunTallies& tallies);

}  // namespace tanrove
