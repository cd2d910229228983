// What the account states besides counters: the session, the paths and the switches of the run.
#pragma once

#include <cstdint>
#include <string>

#include "report/long_media.hpp"

namespace tanrove {

struct AccountFacts {
    std::string product;          ///< "Pro Tools Ultimate"
    std::string product_version;  ///< "2019.6.0"; empty where the session does not record it
    std::int64_t sample_rate_hz = 48000;
    double tempo_bpm = 120;
    std::string project_path;  ///< the path that was written
    std::string media_dir;
    LongMedia long_media;
    bool check_only = false;
    bool usage_shared = false;
};

}  // namespace tanrove
