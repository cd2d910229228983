// The audio clips of a session and the tracks they lie on, for sessions that the program's own list
// reader cannot take: old big-endian ones.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "ptformat/container.hpp"
#include "ptformat/ptformat.hpp"

namespace tanrove::ptformat {

/// Most regions of a kind: a region index of 65535 means "none".
constexpr std::size_t max_regions = 0xffff;

/// A longer name is cut here, so that a thousand clips on a track with an endless name cost no
/// endless memory.
constexpr std::size_t max_name_bytes = 255;

/// Owns the names of tracks, each once; the rows of clips look into it.
using TrackNames = std::deque<std::string>;

/// The audio regions in the order of their lists; positions in samples at the session's rate.
std::vector<PTFFormat::Region> read_audio_regions(const Container& session);

/// One row per clip on an audio track, ordered by track; tracks are numbered from 0 without gaps.
std::vector<PTFFormat::Track> read_audio_tracks(const Container& session,
                                                const std::vector<PTFFormat::Region>& regions,
                                                TrackNames& names);

}  // namespace tanrove::ptformat
