// The records every session has: file header, version, settings, product text, file list.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"

namespace tanrove::builder {

struct AudioFileSpec {
    std::string name;
    std::uint64_t length_samples = 0;
    std::uint32_t rate_hz = 0;  ///< 0: the session's own
};

struct SettingsSpec {
    std::uint8_t audio_format = 3;  ///< 3 WAV, 4 AIFF
    std::uint32_t rate_hz = 48000;
    std::vector<std::string> path_parts = {"Disk", "Users", "Last Used.pio"};
    std::uint8_t pan_depth = 2;
    bool is_float = false;
    std::uint8_t bit_depth = 24;
};

struct ProductSpec {
    std::string product = "Pro Tools";
    std::string version = "2021.10.0";
};

/// The first 20 bytes: marker text and byte order; the cipher fills in the last two.
Bytes file_header(bool big_endian);

/// The first two blocks of a session: the word that tells where the session's own list of its
/// blocks stands, and the version, `stored_version` being the library's less 2.
Bytes opening_blocks(std::uint32_t stored_version, std::uint32_t index_at = 0);
/// The session's own list of its blocks, which no reader needs.
Bytes session_index_block();

Bytes settings_block(const SettingsSpec& settings);
/// The settings with the three values at their fixed places 118, 119 and 121, the texts unreadable.
Bytes settings_block_fixed_offsets(const SettingsSpec& settings);
Bytes product_block(const ProductSpec& product);

/// The file list: "Audio Files" with its files in it, then the folders of `path_parts`.
Bytes file_list_block(const std::vector<AudioFileSpec>& files,
                      const std::vector<std::string>& path_parts, std::uint32_t session_rate_hz,
                      const std::string& tag);

}  // namespace tanrove::builder
