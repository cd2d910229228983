// The strip records, field by field as real sessions store them. What is not known to be read is
// filled with what an ordinary track has there.
#include "support/records/strip_records.hpp"

#include "support/records/mixer_records.hpp"
#include "support/records/plugin_records.hpp"

namespace tanrove::builder {

namespace {

/// The marker and the identity behind it.
Bytes marked(std::uint64_t identity) {
    return ByteWriter().raw("*").zeros(3).u64(identity).bytes();
}

std::uint16_t strip_type_code(TrackKind kind) {
    switch (kind) {
        case TrackKind::midi:
            return 1;
        case TrackKind::master:
            return 3;
        case TrackKind::instrument:
            return 4;
        case TrackKind::video:
            return 5;
        case TrackKind::vca:
            return 6;
        case TrackKind::basic_folder:
            return 11;
        case TrackKind::audio:
        case TrackKind::aux:
        case TrackKind::routing_folder:
            break;
    }
    return 0;
}

std::uint16_t row_type(TrackKind kind) {
    switch (kind) {
        case TrackKind::master:
            return 0x261d;
        case TrackKind::vca:
            return 0x261f;
        case TrackKind::midi:
            return 0x2620;
        case TrackKind::instrument:
            return 0x2621;
        case TrackKind::video:
            return 0x2623;
        case TrackKind::audio:
        case TrackKind::aux:
        case TrackKind::routing_folder:
        case TrackKind::basic_folder:
            break;
    }
    return 0x261b;
}

/// What stands in the strip table both in its opening list and in the entries.
Bytes table_fields(const TrackSpec& track, std::size_t place, std::uint8_t width) {
    return ByteWriter()
        .u16(strip_type_code(track.kind))
        .counted(track.name)
        .u8(width)
        .zeros(5)
        .raw(marked(track_identity(place)))
        .u16(place + 1)
        .u8(0)
        .bytes();
}

/// A number of the display settings: one byte in a nest of two blocks.
Bytes display_setting(TrackKind kind) {
    const std::uint16_t type = kind == TrackKind::midi ? 0x203a : 0x2038;
    return block(type, ByteWriter().block(0x2037, {}).u8(0).bytes());
}

/// The first child of a strip row: name and identity, solo and automation.
Bytes attributes(const TrackSpec& track, std::size_t place) {
    const Bytes identity = marked(track_identity(place));
    const Bytes name = ByteWriter()
                           .counted(track.first_name())
                           .u16(track.original_name.empty() ? 0 : 1)
                           .u16(1)
                           .zeros(3)
                           .raw(identity)
                           .zeros(4)
                           .raw(identity)
                           .zeros(8)
                           .u8(1)
                           .zeros(37)
                           .block(0x4301, Bytes(32))
                           .zeros(4)
                           .raw(identity)
                           .zeros(2)
                           .bytes();
    const Bytes payload = ByteWriter()
                              .block(0x2619, name, 9)
                              .u8(track.soloed ? 1 : 0)
                              .u8(track.automation_mode)
                              .u8(track.trim ? 1 : 0)
                              .zeros(2)
                              .u16(1)
                              .bytes();
    return block(0x102d, payload, 3);
}

/// The inserts' slots; the byte in front says whether the track is active.
Bytes active_mark(const TrackSpec& track) {
    ByteWriter slots;
    slots.u16(11);
    for (std::size_t i = 0; i < 11; ++i) {
        const bool is_used = i < track.inserts.size();
        slots.block(0x2625, block(0x2626, is_used ? insert_slot(track.inserts[i]) : Bytes()));
    }
    return ByteWriter().zeros(3).u8(track.active ? 1 : 0).block(0x2627, slots.bytes()).bytes();
}

/// The display record as it stands in a row or behind it.
Bytes display_part(const TrackSpec& track, std::size_t place, std::uint16_t outer_type) {
    const Bytes inner = ByteWriter()
                            .raw(display_record(track, static_cast<int>(place) + 1))
                            .u8(0)
                            .raw(display_setting(track.kind))
                            .bytes();
    return block(outer_type, ByteWriter().block(0x200a, inner, 10).zeros(4).bytes(), 9);
}

}  // namespace

std::uint64_t track_identity(std::size_t place) {
    return 0x9f81a34cd94cdc00ULL + 0x0123450000000007ULL * place;
}

Bytes strip_table_entry(const TrackSpec& track, std::size_t place, StripTableForm form) {
    const bool is_long = form == StripTableForm::since_2022;
    const bool is_stereo = track.channels > 1;
    constexpr int codes[] = {0, 0, 1, 2, 3, 5, 6};  // of channels; 7.1 and its like further on
    constexpr int widest_known = 6;
    const int code = track.channels > widest_known ? 9 : codes[track.channels];
    const int width = is_long ? track.channels : code;
    ByteWriter entry;
    entry.raw(table_fields(track, place, static_cast<std::uint8_t>(width))).zeros(7);
    entry.raw(marked(track_identity(place))).u16(is_stereo ? 1 : 0).block(0x4420, Bytes(2));
    const bool is_folder =
        track.kind == TrackKind::basic_folder || track.kind == TrackKind::routing_folder;
    if (form == StripTableForm::before_2022) entry.u8(0);
    if (is_long) entry.u8(is_folder ? 1 : 0).zeros(4).u8(track.active ? 1 : 0).zeros(5);
    return block(0x251a, entry.bytes(), 7);
}

Bytes strip_table_block(const std::vector<TrackSpec>& tracks, StripTableForm form,
                        double picture_rate) {
    ByteWriter table;
    table.u16(1).f64(picture_rate).u32(1).u16(3).u32(tracks.size());
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        table.raw(table_fields(tracks[i], i, tracks[i].channels > 1 ? 1 : 0));
    }
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        table.raw(strip_table_entry(tracks[i], i, form));
    }
    table.u32(tracks.size());
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        table.raw(strip_table_entry(tracks[i], i, form));
    }
    table.zeros(16).block(0x2716, Bytes(4)).block(0x4420, Bytes(2));
    return block(0x2519, table.bytes(), 7);
}

Bytes track_list_entry(const std::string& name, const std::vector<std::uint16_t>& channels,
                       std::uint64_t identity) {
    const bool is_stereo = channels.size() > 1;
    ByteWriter entry;
    entry.counted(name).u8(is_stereo ? 1 : 0).u32(channels.size());
    for (const auto channel : channels) entry.u16(channel);
    entry.zeros(4).raw(marked(identity)).u16(is_stereo ? 1 : 0).u16(is_stereo ? 1 : 0).zeros(3);
    return block(0x1014, entry.bytes(), 6);
}

Bytes track_list_block(const std::vector<TrackSpec>& tracks) {
    ByteWriter entries;
    std::uint32_t count = 0;
    std::uint16_t next_channel = 0;
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        if (tracks[i].kind != TrackKind::audio) continue;
        std::vector<std::uint16_t> channels;
        for (int c = 0; c < tracks[i].channels; ++c) channels.push_back(next_channel++);
        // The clip data has an identity of its own for the track, a little off the strip's.
        entries.raw(track_list_entry(tracks[i].name, channels, track_identity(i) + 0x1f00000000));
        ++count;
    }
    return block(0x1015, ByteWriter().u32(count).raw(entries.bytes()).bytes());
}

Bytes display_record(const TrackSpec& track, int display_row) {
    const bool is_midi = track.kind == TrackKind::midi;
    ByteWriter record;
    record.raw(display_setting(track.kind)).u8(0).u8(track.hidden ? 0 : 1).zeros(4);
    record.u16(track.height).counted(track.comment).u8(0).f64(0.5);
    if (is_midi || !track.colour_mark) {
        record.u8(0);
    } else {
        const Bytes mark = ByteWriter().block(0x2103, {}).u32(0x3fdfffef).zeros(8).bytes();
        const std::uint16_t mark_type = track.kind == TrackKind::video ? 0x2105 : 0x2104;
        record.u8(1).block(mark_type, mark);
    }
    record.u8(is_midi || track.tick_based ? 2 : 1);
    record.i16(track.colour.value_or(-2)).u8(1).zeros(1).u32(3).u8(1).u8(61).zeros(4).u32(50000);
    record.raw(display_setting(track.kind)).zeros(3).u8(7).zeros(7).u8(1);
    record.block(0x2434, ByteWriter().u8(4).zeros(6).u8(60).zeros(1).bytes());
    record.u32(static_cast<std::uint32_t>(display_row)).raw(display_setting(track.kind));
    return ByteWriter()
        .block(0x2015, record.bytes(), is_midi ? 16 : 18)
        .u8(track.solo_safe ? 1 : 0)
        .bytes();
}

Bytes strip_row(const TrackSpec& track, std::size_t place) {
    if (!track.has_row()) return {};
    ByteWriter row;
    row.raw(attributes(track, place));
    if (track.kind == TrackKind::midi) {
        row.zeros(13);
    } else {
        row.raw(active_mark(track));
    }
    if (track.kind != TrackKind::basic_folder) {
        row.raw(track.mixer.empty() ? mixer_part(track) : track.mixer);
    }
    if (track.kind == TrackKind::audio) {
        const Bytes payload = ByteWriter()
                                  .block(0x261b, row.zeros(8).bytes(), 8)
                                  .u32(1)
                                  .zeros(6)
                                  .u16(track.voice_off ? 0 : 0xffff)
                                  .raw(display_part(track, place, 0x200b))
                                  .zeros(15)
                                  .bytes();
        return block(0x261c, payload, 3);
    }
    const Bytes display = display_part(track, place, 0x2010);
    if (track.kind == TrackKind::aux || track.kind == TrackKind::routing_folder) {
        return block(0x261e, ByteWriter().block(0x261b, row.bytes(), 8).raw(display).bytes(), 3);
    }
    if (track.kind == TrackKind::master) {
        return block(0x261d, ByteWriter().block(0x261b, row.bytes(), 8).raw(display).bytes(), 2);
    }
    return block(row_type(track.kind), row.raw(display).bytes(), 2);
}

Bytes strip_rows_block(const std::vector<TrackSpec>& tracks) {
    ByteWriter rows;
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        const Bytes row = strip_row(tracks[i], i);
        rows.raw(row);
        if (!row.empty()) ++count;
    }
    return block(0x2624, ByteWriter().u32(count).raw(rows.bytes()).bytes());
}

}  // namespace tanrove::builder
