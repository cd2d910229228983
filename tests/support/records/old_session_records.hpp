// Sessions from before Pro Tools 10, in either byte order: the only ones whose clips and tracks
// come from the container library's own lists.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/records/container_records.hpp"

namespace tanrove::builder {

struct OldRegionSpec {
    std::string name;
    std::uint64_t source_offset = 0;
    std::uint64_t length = 0;
    std::uint32_t file = 0;
};

struct OldClipSpec {
    std::uint32_t region = 0;
    std::uint64_t start = 0;
};

struct OldTrackSpec {
    std::string name;
    std::vector<std::uint16_t> channels;  ///< numbers of its rows, in the order of the playlists
    std::vector<OldClipSpec> clips;       ///< lie on every channel
};

/// One MIDI stream with one note a second, its region, and the region's clip on a track.
struct OldMidiSpec {
    std::string region;
    std::string track;
    std::uint32_t notes = 1;
    std::int64_t start_ticks = 0;
};

struct OldSessionSpec {
    bool big_endian = false;
    bool newer_playlists = false;  ///< 0x1054 and its kind instead of 0x1012
    std::uint32_t rate_hz = 48000;
    std::vector<AudioFileSpec> files;
    std::vector<OldRegionSpec> regions;
    std::vector<OldTrackSpec> tracks;
    std::vector<OldMidiSpec> midi;
};

/// The decrypted image.
Bytes old_session_image(const OldSessionSpec& session);

}  // namespace tanrove::builder
