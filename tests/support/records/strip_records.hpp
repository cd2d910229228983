// The four places in which a session knows its tracks: the strip table, the track list of the clip
// data, the strip rows of the mixer and the display records in them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/track_spec.hpp"

namespace tanrove::builder {

/// Forms of a strip table entry, by the sessions that have them.
enum class StripTableForm : std::uint8_t {
    before_12_8,  ///< ends at 57 and the name's length
    before_2019,  ///< ends at 68 and the name's length
    before_2022,  ///< ends at 69 and the name's length
    since_2022,   ///< ends at 79 and the name's length; flag, and active mark
};

/// The identity of the track that stands at this place of the session.
std::uint64_t track_identity(std::size_t place);

/// One entry of the strip table.
Bytes strip_table_entry(const TrackSpec& track, std::size_t place, StripTableForm form);

/// 0x2519: a list of all strips and twice their entries.
Bytes strip_table_block(const std::vector<TrackSpec>& tracks, StripTableForm form,
                        double picture_rate = 0);

/// 0x1014 of a track whose clip rows have these ids.
Bytes track_list_entry(const std::string& name, const std::vector<std::uint16_t>& channels,
                       std::uint64_t identity);

/// 0x1015: an entry for each audio track; the ids run through all of their channels.
Bytes track_list_block(const std::vector<TrackSpec>& tracks);

/// 0x2015 and the byte behind it. `display_row` counts from 1.
Bytes display_record(const TrackSpec& track, int display_row);

/// The row of one strip: with the 0x261c around an audio track's. Empty for a Basic folder, which
/// the mixer does not show.
Bytes strip_row(const TrackSpec& track, std::size_t place);

/// 0x2624: all rows.
Bytes strip_rows_block(const std::vector<TrackSpec>& tracks);

}  // namespace tanrove::builder
