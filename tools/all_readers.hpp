// Every reader of a session in one call, by families: what the fuzzing targets, the tests of
// damaged sessions, the benchmark and the table of facts go through, so that a new reader is proved
// by being listed here once.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/block_index.hpp"
#include "session/session_lists.hpp"

namespace tanrove {

enum class ReaderFamily : std::uint8_t {
    container,
    blocks,
    tracks,
    mixer,
    lanes,
    clips,
    clip_tables,
    time,
    midi,
    tables,
    plugins,
};

constexpr std::array<std::string_view, 11> reader_family_names = {
    "container",   "blocks", "tracks", "mixer",  "lanes",   "clips",
    "clip tables", "time",   "midi",   "tables", "plug-ins"};

/// What one reader gave.
struct Reading {
    ReaderFamily family = ReaderFamily::container;
    std::string_view reader;
    std::size_t records = 0;   ///< entries of its list; 1 or 0 for a value that is there or not
    std::size_t bytes = 0;     ///< memory that the records hold
    std::uint64_t digest = 0;  ///< changes with any field of any record
    std::vector<std::string> texts = {};  ///< one a record, where they were asked for

    bool operator==(const Reading&) const = default;
};

/// Calls the readers of one family. `files` are the library's, whose names the regions carry.
std::vector<Reading> read_family(const BlockIndex& index, ReaderFamily family,
                                 std::span<const AudioFileEntry> files = {});

/// Calls all readers, family by family.
std::vector<Reading> read_everything(const BlockIndex& index,
                                     std::span<const AudioFileEntry> files = {},
                                     bool with_texts = false);

}  // namespace tanrove
