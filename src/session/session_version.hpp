// Which program saved the session, in the session's own words.
#pragma once

#include <cstdint>
#include <string>

#include "session/block_index.hpp"

namespace tanrove {

/// All empty where the session does not record it.
struct SessionVersion {
    std::string product;      ///< begins with "Pro Tools"
    std::string version;      ///< digits and points, as in "2020.11.0"
    std::int32_t major = -1;  ///< the digits before the first point
};

/// The product and version text: at the head of the session, or else in the product record that
/// stands near its end.
SessionVersion scanSessionVersion(const BlockIndex& index);

/// True for sessions that open in the Dark theme: saved by a version later than 2020.10, or by one
/// that the session does not record.
bool saved_after_2020_10(const SessionVersion& version);

}  // namespace tanrove
