// Clips as real sessions store them, and the tables that the clips of tracks fill.
#include "support/records/clip_records.hpp"

#include <map>
#include <tuple>

#include "support/records/clip_table_records.hpp"

namespace tanrove::builder {

namespace {

std::size_t bytes_of(std::uint64_t value) {
    std::size_t width = 0;
    for (; value != 0; value >>= 8) ++width;
    return width;
}

/// The warp map 0x2636; its fields count from its content type, 7 behind its first byte.
Bytes warp_block(const WarpSpec& warp) {
    ByteWriter map;
    map.zeros(26).u16(warp.points.size()).zeros(6);
    const auto position = [&](std::uint64_t value) {
        if (warp.in_ticks) {
            map.ticks(static_cast<std::int64_t>(value));
        } else {
            map.u64(value);
        }
    };
    position(warp.anchor);
    for (const auto& [at, sample] : warp.points) {
        position(at);
        map.f64(sample);
    }
    return block(0x2636, map.bytes());
}

Bytes list_block(std::uint16_t type, const std::vector<Bytes>& entries) {
    ByteWriter payload;
    payload.u32(entries.size());
    for (const auto& entry : entries) payload.raw(entry);
    return block(type, payload.bytes());
}

template <typename Spec, typename Write>
Bytes list_of(std::uint16_t type, const std::vector<Spec>& specs, Write write) {
    std::vector<Bytes> entries;
    for (const auto& spec : specs) entries.push_back(write(spec));
    return list_block(type, entries);
}

}  // namespace

Bytes three_point(const RegionSpec& region) {
    const auto first = bytes_of(region.source_offset);
    const auto gap = bytes_of(region.sync_samples);
    const auto second = bytes_of(region.length);
    const auto third = region.start_in_ticks ? 8 : bytes_of(region.start);
    ByteWriter point;
    point.u8(region.source_offset != 0 ? 1 : 0).u8(first << 4).u8(second << 4 | gap);
    point.u8(third << 4).u8(0);
    point.number(region.source_offset, first).number(region.sync_samples, gap);
    point.number(region.length, second);
    if (region.start_in_ticks) {
        point.ticks(static_cast<std::int64_t>(region.start));
    } else {
        point.number(region.start, third);
    }
    return point.bytes();
}

Bytes clip_name_block(const RegionSpec& region, std::uint16_t type) {
    ByteWriter clip;
    clip.counted(region.name).raw(three_point(region)).i16(-2).u32(0).u32(0x0004ffff);
    if (region.gain_place == GainPlace::old_marker) {
        clip.u32(0).u32(4).zeros(15);
    } else {
        clip.u16(4).u32(region.warp ? 1 : 0);
        if (region.warp) clip.raw(warp_block(*region.warp));
        clip.zeros(17);
    }
    clip.u32(region.gain_entry);
    if (region.gain_place != GainPlace::last) clip.zeros(6);
    return block(type, clip.bytes(), 2);
}

Bytes region_block(const RegionSpec& region) {
    const auto& pitch = region.pitch;
    ByteWriter behind_name;
    if (pitch.short_form) {
        behind_name.u32(region.file_index)
            .zeros(3)
            .u32(static_cast<std::uint32_t>(pitch.semitones));
        behind_name.f32(pitch.cents).zeros(7);
    } else {
        behind_name.u32(region.file_index).u16(region.file_channel).f32(1).f32(1);
        behind_name.u32(static_cast<std::uint32_t>(pitch.semitones)).f32(pitch.cents);
    }
    const Bytes effects = block(0x4403, block(0x1000, Bytes(18)));
    return block(0x2629,
                 ByteWriter()
                     .raw(clip_name_block(region, 0x2628))
                     .raw(behind_name.bytes())
                     .u8(0xff)
                     .zeros(16)
                     .u8(0)
                     .u64(region.effects_identity)
                     .raw(effects)
                     .bytes(),
                 5);
}

Bytes region_list_block(const std::vector<RegionSpec>& regions) {
    return list_of(0x262a, regions, region_block);
}

Bytes older_region_list_block(const std::vector<RegionSpec>& regions) {
    return list_of(0x100b, regions, [](const RegionSpec& region) {
        const Bytes name = clip_name_block(region, 0x1007);
        return block(0x1008, ByteWriter().raw(name).u32(region.file_index).zeros(8).bytes());
    });
}

Bytes placement_block(const PlacementSpec& placement, bool tick_based) {
    ByteWriter inner;
    inner.u8(placement.locked ? 1 : 0).u8(placement.muted ? 1 : 0).u32(placement.id).u8(0);
    if (tick_based) {
        inner.ticks(placement.position);
    } else {
        inner.number(static_cast<std::uint64_t>(placement.position), 8);
    }
    inner.u8(placement.overlap).i16(placement.colour).u8(placement.in_group ? 1 : 0);
    inner.zeros(3).u64(~std::uint64_t{0}).u8(placement.muted_late ? 1 : 0).zeros(4);
    inner.raw(placement.inside);
    ByteWriter outer;
    if (placement.out_of_place) outer.zeros(2);
    outer.block(0x104f, inner.bytes(), 10).u8(placement.is_fade ? 1 : 0).u8(1);
    return block(0x1050, outer.bytes(), 2);
}

Bytes playlist_block(const PlaylistSpec& playlist) {
    ByteWriter payload;
    payload.counted(playlist.name);
    payload.u32(playlist.counted.value_or(static_cast<std::uint32_t>(playlist.placements.size())));
    for (const auto& placement : playlist.placements) {
        payload.raw(placement_block(placement, playlist.tick_based));
    }
    payload.u8(playlist.kind.value_or(playlist.tick_based ? 2 : 1)).u8(0);
    return block(0x1052, payload.bytes(), 3);
}

Bytes playlists_block(const std::vector<PlaylistSpec>& playlists) {
    return list_of(0x1054, playlists, playlist_block);
}

Bytes older_playlists_block(const std::vector<std::vector<std::uint32_t>>& channels) {
    return list_of(0x1012, channels, [](const std::vector<std::uint32_t>& regions) {
        const auto entry = [](std::uint32_t region) {
            return block(0x100f, block(0x100e, ByteWriter().u16(0).u32(region).zeros(8).bytes()));
        };
        return list_of(0x1011, regions, entry);
    });
}

Bytes fade_block(const FadeSpec& fade) {
    constexpr std::uint8_t crossfade = 1;
    constexpr std::uint8_t fade_out = 2;
    constexpr std::uint8_t fade_in = 3;
    const auto first = bytes_of(fade.pre);
    const auto second = bytes_of(fade.length);
    ByteWriter payload;
    payload.zeros(5).u8(first | second << 4).zeros(2);
    payload.number(fade.pre, first).number(fade.length, second);
    payload.u8(fade.kind).u8(fade.slope).zeros(4);
    if (fade.kind == fade_in) {
        payload.u8(fade.in_type).i16(fade.in_setting).zeros(3);
    } else {
        payload.u8(fade.linked ? 1 : 0).zeros(2).u8(fade.linked ? 1 : 0).zeros(2);
    }
    if (fade.kind == fade_out || fade.kind == crossfade) {
        payload.u8(fade.out_type).i16(fade.out_setting);
    }
    if (fade.kind == crossfade) payload.zeros(4).u8(fade.in_type).i16(fade.in_setting);
    return block(0x262f, payload.bytes(), 2);
}

Bytes fade_list_block(const std::vector<FadeSpec>& fades) {
    return list_of(0x2630, fades, fade_block);
}

namespace {

std::string channel_region_name(const std::string& name, int channel) {
    if (channel == 0) return name + ".L";
    if (channel == 1) return name + ".R";
    return name + "." + std::to_string(channel + 1);
}

RegionSpec region_of(const ClipSpec& clip, int channel) {
    RegionSpec region;
    region.name = clip.region;
    region.file_index = clip.file_index;
    region.file_channel = clip.file_channel;
    if (clip.file_per_channel) {
        region.name = channel_region_name(clip.region, channel);
        region.file_index += static_cast<std::uint32_t>(channel);
    }
    region.source_offset = static_cast<std::uint64_t>(clip.source_offset);
    region.length = static_cast<std::uint64_t>(clip.length);
    region.sync_samples = clip.sync_samples;
    return region;
}

/// Fills the tables clip by clip. Clips that play the same share a region.
class ClipCollector {
public:
    void add_playlists(const TrackSpec& track, const std::string& name,
                       const std::vector<ClipSpec>& clips) {
        for (int channel = 0; channel < track.channels; ++channel) {
            PlaylistSpec playlist;
            playlist.name = name;
            playlist.tick_based = track.tick_based;
            for (const auto& clip : clips) playlist.placements.push_back(place(clip, channel));
            tables_.playlists.push_back(playlist);
        }
    }

    void add_group(const ClipGroupSpec& group) {
        PlaylistSpec list;
        list.name = group.name;
        list.tick_based = true;  // members count from the tick origin, in samples
        list.kind = 1;
        for (const auto& member : group.members) list.placements.push_back(place(member, 0));
        tables_.group_lists.push_back(list);
    }

    const ClipTables& tables() const { return tables_; }

private:
    using RegionKey =
        std::tuple<std::string, std::uint32_t, std::uint64_t, std::uint64_t, std::uint64_t>;

    PlacementSpec place(const ClipSpec& clip, int channel) {
        PlacementSpec placement;
        placement.position = clip.position;
        placement.is_fade = clip.is_fade;
        placement.muted = clip.muted;
        placement.locked = clip.locked;
        placement.overlap = clip.overlap;
        placement.colour = clip.colour.value_or(-2);
        placement.out_of_place = clip.deleted;
        if (clip.loop) placement.inside = loop_block(*clip.loop);
        if (clip.is_fade) {
            placement.id = static_cast<std::uint32_t>(tables_.fades.size());
            tables_.fades.push_back(clip.fade);
        } else if (clip.clip_group) {
            placement.id = *clip.clip_group;
            placement.in_group = true;
        } else {
            placement.id = region_number(region_of(clip, channel), clip);
        }
        return placement;
    }

    std::uint32_t region_number(RegionSpec region, const ClipSpec& clip) {
        const RegionKey key{region.name, region.file_index, region.source_offset, region.length,
                            region.sync_samples};
        const auto next = static_cast<std::uint32_t>(tables_.regions.size());
        const auto [known, is_new] = numbers_.try_emplace(key, next);
        if (is_new) {
            if (!clip.gain.empty()) {
                region.gain_entry = static_cast<std::uint32_t>(tables_.gains.size());
                tables_.gains.push_back({.points = clip.gain});
            }
            region.warp = clip.warp;
            region.pitch = clip.pitch;
            region.effects_identity = clip.effects_identity;
            tables_.regions.push_back(region);
        }
        return known->second;
    }

    ClipTables tables_;
    std::map<RegionKey, std::uint32_t> numbers_;
};

}  // namespace

ClipTables clip_tables(const std::vector<TrackSpec>& tracks,
                       const std::vector<ClipGroupSpec>& groups) {
    ClipCollector collector;
    for (const auto& track : tracks) {
        if (track.kind == TrackKind::audio) collector.add_playlists(track, track.name, track.clips);
    }
    for (const auto& track : tracks) {
        for (const auto& alternate : track.alternates) {
            collector.add_playlists(track, alternate.name, alternate.clips);
        }
    }
    for (const auto& group : groups) {
        if (!group.list_of) collector.add_group(group);
    }
    return collector.tables();
}

std::vector<TrackSpec> alternate_tracks(const std::vector<TrackSpec>& tracks) {
    std::vector<TrackSpec> lanes;
    for (const auto& track : tracks) {
        for (std::size_t i = 0; i < track.alternates.size(); ++i) {
            TrackSpec lane;
            lane.name = track.name;
            lane.channels = track.channels;
            lanes.push_back(lane);
        }
    }
    return lanes;
}

}  // namespace tanrove::builder
