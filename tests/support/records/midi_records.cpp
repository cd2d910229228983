// MIDI as real sessions store it. Controllers, SysEx and the longer settings stand in no session
// that is at hand: their bytes are built from their fields.
#include "support/records/midi_records.hpp"

#include <cstdlib>

namespace tanrove::builder {

namespace {

ByteWriter& tick_number(ByteWriter& out, std::int64_t ticks) {
    return out.number(static_cast<std::uint64_t>(ticks), 7).u8(0x40);
}

/// A record that a text opens: version and length in front of its payload.
Bytes text_record(std::string_view mark, std::uint16_t version, const Bytes& payload) {
    return ByteWriter().raw(mark).u16(version).u32(payload.size()).raw(payload).bytes();
}

Bytes list_block(std::uint16_t type, const std::vector<Bytes>& entries) {
    ByteWriter payload;
    payload.u32(entries.size());
    for (const auto& entry : entries) payload.raw(entry);
    return block(type, payload.bytes());
}

/// The block that names a region and says where it begins in its stream.
Bytes region_name_block(const MidiRegionSpec& region, std::uint16_t type) {
    ByteWriter name;
    name.counted(region.name).u8(0).u8(0x51).u8(0x50).u8(0).u8(8);
    name.number(static_cast<std::uint64_t>(1000000000000LL + region.head), 5);
    name.number(region.length, 5).u64(~std::uint64_t{0}).i16(-2).u32(0).u32(0x0004ffff).u32(4);
    return block(type, name.zeros(19).u32(0xffffffff).bytes(), 2);
}

Bytes region_list(const std::vector<MidiRegionSpec>& regions, std::uint16_t list_type,
                  std::uint16_t group_type, std::uint16_t name_type) {
    std::vector<Bytes> groups;
    for (const auto& region : regions) {
        const Bytes name = region_name_block(region, name_type);
        groups.push_back(block(group_type, ByteWriter().raw(name).u32(region.stream).bytes()));
    }
    return list_block(list_type, groups);
}

Bytes placement(const MidiClipSpec& clip, std::uint32_t region, bool tick_based) {
    ByteWriter inner;
    inner.u8(clip.locked ? 1 : 0)
        .u8(clip.muted ? 1 : 0)
        .u32(clip.clip_group.value_or(region))
        .u8(0);
    if (tick_based) {
        inner.ticks(clip.position);
    } else {
        inner.u64(static_cast<std::uint64_t>(clip.position));
    }
    inner.u8(clip.overlap).i16(clip.colour).u8(clip.clip_group ? 1 : 0).u8(0).u8(1).u8(0);
    inner.u64(~std::uint64_t{0}).zeros(5);
    return block(0x1056, block(0x104f, inner.bytes(), 10));
}

Bytes playlist(const TrackSpec& track, std::uint32_t first_region, const Bytes& properties) {
    ByteWriter payload;
    payload.counted(track.name).u32(track.midi_clips.size());
    for (const auto& clip : track.midi_clips) {
        payload.raw(placement(clip, first_region++, track.tick_based));
    }
    return block(0x1057, payload.raw(properties).u8(track.tick_based ? 2 : 1).bytes(), 3);
}

bool plays_midi(const TrackSpec& track) {
    return track.kind == TrackKind::midi || track.kind == TrackKind::instrument;
}

}  // namespace

Bytes note_list(const MidiStreamSpec& stream) {
    ByteWriter notes;
    notes.u32(stream.counted.value_or(static_cast<std::uint32_t>(stream.notes.size())));
    for (const auto& note : stream.notes) {
        notes.ticks(note.position).u8(note.key);
        tick_number(notes, note.length).u8(note.velocity).u8(64);
        tick_number(tick_number(notes, 0), 0);
    }
    notes.u32(stream.notes.size()).u32(11);
    for (const auto& note : stream.notes) {
        tick_number(notes.u8(note.key), note.length).u8(note.velocity).u8(64);
    }
    notes.u32(stream.notes.size()).u16(1).u16(1).u16(0).zeros(stream.notes.size());
    return text_record("MdNLB", 3, notes.bytes());
}

Bytes controller_list(const std::vector<ControllerSpec>& of_one_kind) {
    const Bytes kind = ByteWriter().u16(of_one_kind.front().kind).u32(0).bytes();
    ByteWriter events;
    events.u32(of_one_kind.size());
    for (const auto& event : of_one_kind) events.ticks(event.position).u32(event.value);
    return text_record("MdCDS", 1,
                       ByteWriter()
                           .raw(text_record("Mdss", 1, kind))
                           .raw(text_record("MdCD", 1, events.bytes()))
                           .bytes());
}

Bytes sysex_list(const std::vector<SysexSpec>& events) {
    ByteWriter list;
    list.u32(events.size());
    for (const auto& event : events) {
        list.ticks(event.position).u8(1).u8(0).u32(event.data.size() + 5).u8(0);
        list.u32(event.data.size()).raw(event.data);
    }
    return text_record("MdES", 1, text_record("MdTEL", 1, list.bytes()));
}

Bytes midi_stream(const MidiStreamSpec& stream) {
    ByteWriter records;
    records.raw(note_list(stream));
    for (std::size_t from = 0, to = 0; from < stream.controllers.size(); from = to) {
        std::vector<ControllerSpec> of_one_kind;
        for (; to < stream.controllers.size(); ++to) {
            if (stream.controllers[to].kind != stream.controllers[from].kind) break;
            of_one_kind.push_back(stream.controllers[to]);
        }
        records.raw(controller_list(of_one_kind));
    }
    records.raw(sysex_list(stream.sysex)).u32(0).raw("*").zeros(3).u64(0x5574fbbed6d56c5c).u8(1);
    return text_record("MdChun", 1, records.bytes());
}

Bytes midi_streams_block(const std::vector<MidiStreamSpec>& streams) {
    std::vector<Bytes> entries;
    for (const auto& stream : streams) entries.push_back(midi_stream(stream));
    return list_block(0x2000, entries);
}

Bytes midi_region_list_block(const std::vector<MidiRegionSpec>& regions) {
    return region_list(regions, 0x2634, 0x2633, 0x2628);
}

Bytes older_midi_region_list_block(const std::vector<MidiRegionSpec>& regions) {
    return region_list(regions, 0x2002, 0x2001, 0x1007);
}

Bytes compound_midi_list_block(const std::vector<CompoundMidiSpec>& compounds) {
    std::vector<Bytes> groups;
    for (const auto& compound : compounds) {
        ByteWriter name;
        name.counted("Group").zeros(5);
        if (compound.marked) name.block(0x2523, Bytes(4));
        const Bytes name_block = block(0x2628, name.bytes());
        groups.push_back(
            block(0x262b, ByteWriter().raw(name_block).u32(0).u32(compound.stream).bytes()));
    }
    return list_block(0x262c, groups);
}

Bytes midi_playlist_block(const TrackSpec& track, std::uint32_t first_region) {
    return playlist(track, first_region, real_time_block(track.real_time));
}

Bytes short_midi_playlist_block(const TrackSpec& track, std::uint32_t first_region) {
    return playlist(track, first_region, {});
}

Bytes midi_playlists_block(const std::vector<Bytes>& playlists) {
    return list_block(0x1058, playlists);
}

Bytes real_time_block(const RealTimeSpec& properties) {
    // Offsets of the record of ordinary length, which count from its 'Z'.
    constexpr std::size_t header = 9;
    constexpr std::size_t switches_at = 79;
    ByteWriter grid;
    grid.zeros(54 - 13 - header).u8(properties.swing).pad_to(properties.grid_size - 2);
    ByteWriter record;
    record.u8(1).u8(1).u8(properties.quantize ? 1 : 0).u8(1);
    record.block(static_cast<std::uint16_t>(properties.without_grid ? 0x7777 : 0x103d),
                 grid.bytes(), 2);
    const std::size_t moved = record.size() + header - switches_at;
    const auto at = [&](std::size_t offset) -> ByteWriter& {
        return record.pad_to(offset - header + moved);
    };
    at(89).u8(properties.duration ? 1 : 0);
    const std::uint64_t early = properties.delay_ticks < 0;
    const auto delay = static_cast<std::uint32_t>(std::abs(properties.delay_ticks));
    at(133).u8(properties.delay ? 1 : 0).u8(early);
    at(136).u32(delay * 1000U);
    at(148).u8(properties.velocity ? 1 : 0).u8(properties.velocity_scale).u8(0);
    at(151).number(static_cast<std::uint64_t>(properties.velocity_offset), 1);
    at(156).u8(properties.transpose ? 1 : 0).u8(properties.duration_value);
    record.number(static_cast<std::uint64_t>(properties.octaves), 1);
    record.number(static_cast<std::uint64_t>(properties.semitones), 1).u8(60).zeros(2);
    return block(0x2502, record.bytes(), 2);
}

Bytes midi_settings_record(const MidiSettingsSpec& settings) {
    constexpr std::size_t header = 9;
    ByteWriter record;
    record.number(static_cast<std::uint64_t>(settings.volume), 1).zeros(6).u8(0x40);
    record.number(static_cast<std::uint64_t>(settings.pan), 1).zeros(3);
    record.u32(static_cast<std::uint32_t>(settings.output));
    record.number(static_cast<std::uint64_t>(settings.patch), 1).u8(0xff).u16(0xc000);
    record.zeros(2).u8(0x60).zeros(7).u8(0x40).zeros(3);
    if (settings.identity) {
        record.pad_to(43 - header).u8(settings.plays_instrument ? 1 : 0);
        record.pad_to(64 - header).raw("*").zeros(3).u64(*settings.identity);
    }
    return block(0x2036, record.bytes(), 4);
}

Bytes midi_outputs_block(const std::vector<MidiOutputSpec>& outputs) {
    std::vector<Bytes> entries;
    for (const auto& output : outputs) {
        ByteWriter node;
        if (output.node) {
            ByteWriter value;
            value.u8(1).u32(6).zeros(8);
            if (!output.short_node) value.u32(static_cast<std::uint32_t>(*output.node)).zeros(12);
            const Bytes innermost = block(0x2097, value.bytes(), 4);
            const Bytes middle =
                block(0x208c, ByteWriter().u16(0).counted(output.name).raw(innermost).bytes());
            node.block(0x2086, ByteWriter().u8(0).counted(output.name).raw(middle).bytes(), 2);
        }
        ByteWriter name;
        name.u16(0xffff).counted(output.name).u8(static_cast<std::uint64_t>(output.number - 1));
        if (!output.node_beside_name) name.raw(node.bytes()).zeros(4);
        ByteWriter entry;
        entry.u32(0).u32(output.name.empty() ? 0 : 1);
        if (!output.name.empty()) entry.block(0x2006, name.bytes(), 3);
        if (output.node_beside_name) entry.raw(node.bytes());
        if (output.port) entry.block(0x2401, ByteWriter().u8(*output.port).zeros(4).bytes());
        entries.push_back(block(0x2005, entry.bytes()));
    }
    return list_block(0x2004, entries);
}

Bytes midi_blocks(const std::vector<TrackSpec>& tracks,
                  const std::vector<MidiOutputSpec>& outputs) {
    std::vector<MidiStreamSpec> streams;
    std::vector<MidiRegionSpec> regions;
    std::vector<Bytes> playlists;
    for (const auto& track : tracks) {
        if (!plays_midi(track)) continue;
        playlists.push_back(midi_playlist_block(track, static_cast<std::uint32_t>(regions.size())));
        for (const auto& clip : track.midi_clips) {
            const auto length = static_cast<std::uint64_t>(clip.length);
            regions.push_back({clip.region, clip.head, length, 0});
            streams.insert(streams.begin(), clip.stream);
        }
    }
    for (std::size_t i = 0; i < regions.size(); ++i) {
        regions[i].stream = static_cast<std::uint32_t>(regions.size() - 1 - i);
    }
    return ByteWriter()
        .raw(midi_streams_block(streams))
        .raw(midi_region_list_block(regions))
        .raw(midi_playlists_block(playlists))
        .raw(midi_outputs_block(outputs))
        .bytes();
}

}  // namespace tanrove::builder
