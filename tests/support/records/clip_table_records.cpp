// The tables beside the clips, field by field.
#include "support/records/clip_table_records.hpp"

#include <bit>

#include "support/records/event_records.hpp"

namespace tanrove::builder {

Bytes clip_gain_block(const std::vector<GainEntrySpec>& entries) {
    ByteWriter table;
    table.u32(entries.size());
    for (const auto& entry : entries) {
        std::vector<EventSpec> events;
        for (const auto& [position, gain] : entry.points) {
            events.push_back({position, std::bit_cast<std::uint32_t>(gain)});
        }
        Bytes record = event_record(events, 4, false);
        constexpr std::size_t event_count_at = 10;
        if (entry.counted) record[event_count_at] = *entry.counted;
        table.raw(record);
    }
    return block(0x2637, table.bytes());
}

Bytes loop_block(const LoopSpec& loop) {
    ByteWriter payload;
    payload.u8(loop.mode).zeros(2).u32(loop.length).zeros(20).u32(loop.count).zeros(8);
    payload.u32(loop.extra).pad_to(loop.size - 2);
    return block(0x242b, payload.bytes());
}

Bytes group_definitions_block(const std::vector<GroupClipSpec>& clips) {
    ByteWriter table;
    table.u32(clips.size());
    for (const auto& clip : clips) {
        RegionSpec region;
        region.name = clip.name;
        region.length = clip.length;
        region.gain_entry = clip.gain_entry;
        const bool is_window = clip.is_piece || clip.start != 0;
        const std::int64_t origin = 1000000000000;
        if (is_window) region.source_offset = static_cast<std::uint64_t>(origin + clip.start);
        Bytes name = clip_name_block(region, clip.broken ? 0x2629 : 0x2628);
        if (!clip.is_piece) name[13 + clip.name.size()] = 0;
        ByteWriter record;
        record.raw(name)
            .u8(0)
            .u32(clip.number_place)
            .zeros(11)
            .u8(clip.compound)
            .zeros(4)
            .u8(clip.kind)
            .zeros(10);
        table.block(0x262b, record.bytes());
    }
    return block(0x262c, table.bytes());
}

Bytes list_numbers_block(const std::vector<std::pair<std::uint32_t, std::string>>& numbers) {
    ByteWriter table;
    table.u32(numbers.size());
    for (const auto& [list, name] : numbers) {
        table.block(0x2423, ByteWriter().u32(list).counted(name).u32(0).bytes());
    }
    return block(0x2424, table.bytes());
}

Bytes group_lists_block(const std::vector<PlaylistSpec>& lists) {
    return block(0x2428, playlists_block(lists));
}

Bytes effects_block(const std::vector<EffectsSpec>& records) {
    ByteWriter set;
    set.u32(records.size());
    for (const auto& record : records) {
        ByteWriter area;
        area.raw("cfx_param_chnk");
        for (const auto& [name, value] : record.parameters) {
            area.raw("px").u8(1).u8(0).u32(name.size() + 12).counted(name).u32(value);
        }
        set.u64(record.identity).u32(0).u32(area.size()).raw(area.bytes());
    }
    return block(0x4400, set.bytes());
}

Bytes midi_playlist_block(const PlaylistSpec& playlist, int properties) {
    ByteWriter payload;
    payload.counted(playlist.name);
    payload.u32(playlist.counted.value_or(static_cast<std::uint32_t>(playlist.placements.size())));
    for (const auto& placement : playlist.placements) {
        Bytes row = placement_block(placement, playlist.tick_based);
        row[7] = 0x56;  // a MIDI placement: 0x1056
        payload.raw(row);
    }
    for (int i = 0; i < properties; ++i) payload.block(0x2502, Bytes(150));
    payload.u8(playlist.kind.value_or(playlist.tick_based ? 2 : 1));
    return block(0x1057, payload.bytes(), 3);
}

}  // namespace tanrove::builder
