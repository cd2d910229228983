// The strip rows: one block per mixer strip, in mixer order, with the names it has now.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/block_types.hpp"

namespace tanrove {

/// Content types of the row blocks.
enum class StripRowType : std::uint16_t {
    audio_or_aux = block_type::audio_row,
    master = block_type::master_row,
    vca = block_type::vca_row,
    midi = block_type::midi_row,
    instrument = block_type::instrument_row,
    video = block_type::video_row,
};

/// Most strips that are read, far more than a session can have. Each grows into a strip with all
/// its settings: empty blocks of a few bytes would otherwise fill the memory.
constexpr std::size_t max_strip_rows = 16384;

/// True for the rows of MIDI and instrument tracks.
inline bool plays_midi(StripRowType type) {
    return type == StripRowType::midi || type == StripRowType::instrument;
}

/// One mixer strip. A row whose name fails its limits keeps an empty name and still counts.
struct StripRow {
    std::size_t start = 0;  ///< span of the row's block
    std::size_t end = 0;
    StripRowType type = StripRowType::audio_or_aux;
    std::string original_name;
    std::string current_name;  ///< equal to `original_name` until the strip table binds it
    /// Also the identity of the strip's entry in the strip table; 0 if the row has none.
    std::uint64_t identity = 0;
    bool active = true;
    /// Not inside a 0x261c: only a 0x261b row of an audio track stands in one.
    bool is_aux = false;
};

/// The name that Pro Tools shows: the current one, or the original where that is empty.
inline const std::string& shown_name(const StripRow& row) {
    return row.current_name.empty() ? row.original_name : row.current_name;
}

/// Rows in image order, and whether the strip table's names could be bound to them.
struct StripRows {
    std::vector<StripRow> rows;
    bool bound = false;       ///< to all of them
    bool some_bound = false;  ///< to one or more by its identity: then all rows are tracks
};

/// Reads the strip rows, the first `max_strip_rows` of them; empty where the session has none.
StripRows readStripRows(const BlockIndex& index);

}  // namespace tanrove
