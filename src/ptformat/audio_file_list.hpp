// The session's list of audio files, with the length and the rate of each.
#pragma once

#include <optional>
#include <vector>

#include "ptformat/container.hpp"
#include "ptformat/ptformat.hpp"

namespace tanrove::ptformat {

/// Most audio files that a session can name: clips refer to them by numbers of two bytes.
constexpr std::size_t max_audio_files = 0x10000;

/// Longest file name that is kept, in bytes. No file system takes more than 255 characters, here
/// perhaps with a folder in front. What is longer is a broken entry: it is cut, so that it keeps
/// its number and its clips are told to lack their file, and thousands of clips cannot multiply it.
constexpr std::size_t max_file_name = 512;

/// The audio files in the order of the list. Empty for a session that has no list; nullopt for a
/// list whose counts pass its block.
std::optional<std::vector<PTFFormat::AudioFile>> read_audio_files(const Container& session);

}  // namespace tanrove::ptformat
