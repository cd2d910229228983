// What `--list` prints: tempo, rate, tracks and buses of a session, without converting it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ptformat/ptformat.hpp"
#include "session/track_table.hpp"

namespace tanrove {

/// The whole listing.
std::string session_listing(const PTFFormat& file, const SessionTrackTable& table,
                            const std::vector<std::string>& buses, std::int64_t rate_hz,
                            double tempo_bpm);

}  // namespace tanrove
