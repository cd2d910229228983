// The tables beside the clips: gain, loops, clip groups, clip effects; and the MIDI playlists.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/records/clip_records.hpp"

namespace tanrove::builder {

/// 0x2637.
Bytes clip_gain_block(const std::vector<GainEntrySpec>& entries);

/// 0x242b, for the inside of a placement.
Bytes loop_block(const LoopSpec& loop);

struct GroupClipSpec {
    std::string name = {};
    bool is_piece = false;   ///< bears the mark of one that was cut from a group
    std::int64_t start = 0;  ///< of its window, samples of the group
    std::uint64_t length = 0;
    std::uint8_t compound = 0;
    std::uint8_t kind = 1;
    bool broken = false;                  ///< holds no clip
    std::uint32_t number_place = 0xffff;  ///< of its record in the table of list numbers
    std::uint32_t gain_entry = 0xffffffff;
};

/// 0x2424: which list each definition plays, and the definition's name.
Bytes list_numbers_block(const std::vector<std::pair<std::uint32_t, std::string>>& numbers);

/// 0x262c: the definitions of clip groups.
Bytes group_definitions_block(const std::vector<GroupClipSpec>& clips);

/// 0x2428: the lists of what lies in them.
Bytes group_lists_block(const std::vector<PlaylistSpec>& lists);

struct EffectsSpec {
    std::uint64_t identity = 0;
    std::vector<std::pair<std::string, std::uint32_t>> parameters = {};
};

/// 0x4400.
Bytes effects_block(const std::vector<EffectsSpec>& records);

/// 0x1057; `properties` is how many of the blocks it has that real sessions have in front of the
/// kind.
Bytes midi_playlist_block(const PlaylistSpec& playlist, int properties);

}  // namespace tanrove::builder
