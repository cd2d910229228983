// A master fader's row 0x261d holds what an audio track's row holds: a channel record 0x1029 and
// the lanes of its fader and its mute.
#include "session/master_strip.hpp"

#include "session/block_types.hpp"
#include "session/channel_records.hpp"
#include "session/strip_lanes.hpp"

namespace tanrove {

namespace {

void read_first(const BlockIndex& index, const StripRow& row, Strip& strip) {
    strip.name = shown_name(row);
    const Block* block = index.at(row.start);
    if (block == nullptr) return;
    if (const Block* channel = index.first_child(*block, block_type::channel_record)) {
        if (const auto record = read_channel_record(index.image(), *channel)) {
            strip.present = true;
            strip.fader_db = record->fader_db;
            strip.muted = record->muted;
            strip.channel_position = record->payload();
        }
    }
    LaneReader reader(index);
    read_lanes_of_row(index, *block, true, reader, 0, strip);
}

}  // namespace

MasterStrips read_master_strips(const BlockIndex& index, std::span<const StripRow> rows) {
    MasterStrips masters;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].type != StripRowType::master) continue;
        if (masters.count++ > 0) continue;
        masters.row = i;
        read_first(index, rows[i], masters.first);
    }
    return masters;
}

}  // namespace tanrove
