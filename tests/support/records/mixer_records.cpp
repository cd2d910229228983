// The mixer's records, field by field as real sessions store them. The send channels of a row stand
// one behind the other, the strip's own first.
#include "support/records/mixer_records.hpp"

#include <algorithm>
#include <cmath>

#include "support/records/event_records.hpp"
#include "support/records/midi_records.hpp"

namespace tanrove::builder {

namespace {

Bytes marked(std::uint64_t identity) {
    return ByteWriter().raw("*").zeros(3).u64(identity).bytes();
}

int tenths_of(double db) {
    return static_cast<int>(std::lround(db * 10));
}

LaneSpec with_initial(LaneSpec lane, int value) {
    if (!lane.initial) lane.initial = value;
    return lane;
}

std::uint8_t width_code(const IoPathSpec& path) {
    constexpr std::uint8_t codes[] = {0, 0, 1, 2, 3, 5, 6, 9, 10};
    return path.width_code.value_or(codes[std::min<std::size_t>(path.channels.size(), 8)]);
}

/// The lanes of a channel: volume and mute flat, the pans in groups, the LFE and the trim flat
/// behind them. A group that no knob needs stands there empty.
Bytes channel_lanes(const std::vector<Bytes>& flat, const std::vector<std::vector<Bytes>>& groups,
                    const std::vector<Bytes>& behind_groups) {
    ByteWriter lanes;
    for (const auto& lane : flat) lanes.u8(1).raw(lane);
    lanes.u8(0);
    for (const auto& group : groups) lanes.raw(lane_group(group));
    for (const auto& lane : behind_groups) lanes.u8(1).raw(lane);
    return lanes.zeros(behind_groups.empty() ? 9 : 8).bytes();
}

Bytes own_channel(const TrackSpec& track) {
    const bool is_stereo = track.channels > 1;
    const int pan = track.pan.value_or(is_stereo ? -100 : 0);
    const int pan_right = track.pan_right.value_or(is_stereo ? 100 : 0);
    const int fader = tenths_of(track.fader_db);
    const auto lane = [&](const LaneSpec& spec, int value) {
        return lane_record(with_initial(spec, value), track.tick_based);
    };
    std::vector<std::vector<Bytes>> groups(2);
    if (track.panners.empty()) {
        groups[0].push_back(lane(track.pan_lane, pan));
        if (is_stereo) groups[1].push_back(lane(track.pan_right_lane, pan_right));
    }
    for (std::size_t i = 0; i < track.panners.size() && i < groups.size(); ++i) {
        for (const auto& control : track.panners[i]) groups[i].push_back(lane(control, 0));
    }
    const Bytes record = channel_record({.fader_tenths = fader,
                                         .muted = track.muted,
                                         .pan = pan,
                                         .pan_right = pan_right,
                                         .panners = track.stored_panners});
    std::vector<Bytes> behind_groups;
    if (track.lfe_lane) behind_groups.push_back(lane(*track.lfe_lane, 0));
    if (track.trim_lane) behind_groups.push_back(lane(*track.trim_lane, 0));
    return send_channel(
        record, output_name_record(track.output, output_id(track.output)),
        channel_lanes({lane(track.volume_lane, fader), lane(track.mute_lane, track.muted ? 1 : 0)},
                      groups, behind_groups));
}

Bytes send(const SendSpec& send, bool in_ticks) {
    const auto lane = [&](const LaneSpec& spec, int value) {
        return lane_record(with_initial(spec, value), in_ticks);
    };
    const int level = tenths_of(send.level_db);
    std::vector<std::vector<Bytes>> groups(2);
    groups[0].push_back(lane(send.pan_lane, send.pan));
    if (send.pan_right) groups[1].push_back(lane(send.pan_right_lane, *send.pan_right));
    const Bytes record =
        channel_record({.fader_tenths = level,
                        .muted = send.muted,
                        .pan = send.pan,
                        .pan_right = send.pan_right.value_or(0),
                        .link = static_cast<std::uint8_t>(send.pre_fader ? 1 : 0)});
    return send_channel(
        record, output_name_record(send.target, output_id(send.target)),
        channel_lanes({lane(send.level_lane, level), lane(send.mute_lane, send.muted ? 1 : 0)},
                      groups, {}));
}

}  // namespace

std::uint64_t path_identity(const std::string& name) {
    std::uint64_t identity = 0xcbf29ce484222325ULL;
    for (const char c : name) {
        identity = (identity ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
    }
    return identity;
}

std::uint64_t identity_of(const IoPathSpec& path) {
    return path.identity != 0 ? path.identity : path_identity(path.name);
}

Bytes io_path_record(const IoPathSpec& path) {
    const std::uint8_t width = width_code(path);
    ByteWriter record;
    record.u8(path.type).u8(width).counted(path.name).u32(path.channels.size());
    for (const auto channel : path.channels) record.u16(channel);
    record.u16(path.parent.value_or(0xffff)).u8(1).zeros(4).raw(marked(identity_of(path)));
    record.zeros(3).u16(0xffff).u8(0).counted(path.name).u8(width).zeros(2).u8(width).zeros(4);
    return block(0x1021, record.u8(1).u8(0).bytes(), 11);
}

Bytes io_path_record_later_count(const IoPathSpec& path, std::size_t gap) {
    ByteWriter record;
    record.u8(path.type).u8(width_code(path)).counted(path.name);
    record.u32(0).u32(path.channels.size());
    for (const auto channel : path.channels) record.u16(channel);
    record.zeros(gap).raw(marked(identity_of(path))).zeros(3);
    return block(0x1021, record.bytes(), 11);
}

namespace {

bool is_own(const IoPathSpec& path) {
    return path.type == 2;
}

/// With their parents counted as sessions with a path table count them: the hardware's paths first.
std::vector<IoPathSpec> with_stored_parents(std::vector<IoPathSpec> paths) {
    std::vector<std::uint16_t> stored(paths.size());
    std::uint16_t next = 0;
    for (const bool own : {false, true}) {
        for (std::size_t i = 0; i < paths.size(); ++i) {
            if (is_own(paths[i]) == own) stored[i] = next++;
        }
    }
    for (auto& path : paths) {
        if (path.parent) path.parent = stored.at(*path.parent);
    }
    return paths;
}

}  // namespace

Bytes io_paths_block(const std::vector<IoPathSpec>& paths, bool has_path_table) {
    const auto is_here = [&](const IoPathSpec& path) {
        const bool is_mapped = path.mapped || (path.parent && paths.at(*path.parent).mapped);
        return !has_path_table || !is_own(path) || !is_mapped;
    };
    const auto stored = has_path_table ? with_stored_parents(paths) : paths;
    ByteWriter records;
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (!is_here(paths[i])) continue;
        records.raw(io_path_record(stored[i]));
        ++count;
    }
    return block(0x1022, ByteWriter().u32(count).raw(records.bytes()).zeros(4).bytes());
}

Bytes own_path_record(const IoPathSpec& path, std::uint64_t parent_identity) {
    ByteWriter hardware;
    if (path.mapped) {
        const Bytes played = marked(path_identity(path.hardware));
        hardware.u32(1).block(0x2600, ByteWriter().zeros(12).raw(played).zeros(36).bytes(), 7);
    }
    if (!path.mapped) hardware.u32(0);
    ByteWriter record;
    record.u8(path.type).u8(width_code(path)).counted(path.name);
    record.u32(path.channels.size());
    for (const auto channel : path.channels) record.u16(channel);
    record.u16(path.parent.value_or(0xffff)).u8(1).u8(path.mapped ? 1 : 0).zeros(4);
    record.raw(marked(identity_of(path))).zeros(4);
    record.raw(parent_identity != 0 ? marked(parent_identity) : Bytes(12));
    record.block(0x2601, hardware.bytes(), 1).u8(0xff).zeros(11);
    return block(0x2602, record.bytes(), 7);
}

Bytes path_table_block(const std::vector<IoPathSpec>& paths) {
    const auto stored = with_stored_parents(paths);
    ByteWriter records;
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (!is_own(paths[i])) continue;
        const auto parent = paths[i].parent;
        records.raw(own_path_record(stored[i], parent ? identity_of(paths.at(*parent)) : 0));
        ++count;
    }
    if (count == 0) return {};
    return block(0x2603, ByteWriter().u32(count).raw(records.bytes()).bytes(), 1);
}

Bytes channel_record(const ChannelSpec& channel) {
    const auto word = [](int value) { return static_cast<std::uint32_t>(value); };
    constexpr std::size_t header = 9;
    ByteWriter record;
    record.u8(channel.link).u32(word(channel.fader_tenths)).u32(channel.muted ? 1 : 0).zeros(4);
    if (channel.panners.empty()) {
        record.u32(word(channel.pan)).pad_to(50 - header).u32(word(channel.pan_right));
    }
    for (const auto& panner : channel.panners) {
        for (const int number : panner) record.u32(word(number));
    }
    record.pad_to(108 - header).u32(word(channel.pan));
    record.pad_to(136 - header).u32(word(channel.pan_right));
    record.pad_to(channel.payload_bytes);
    return block(0x1029, record.bytes(), 13);
}

std::uint16_t output_id(const std::string& name) {
    return static_cast<std::uint16_t>(path_identity(name) % 0x7fff);
}

Bytes output_name_record(const std::string& name, std::uint16_t id) {
    ByteWriter record;
    record.u16(id).u16(0x0101).zeros(4).raw(marked(path_identity(name))).zeros(16);
    return block(0x260e, record.counted(name).u16(0x0101).number(~0ULL, 8).bytes(), 4);
}

Bytes lane_record(const LaneSpec& lane, bool in_ticks) {
    const auto word = [](auto value) { return static_cast<std::uint32_t>(value); };
    std::vector<EventSpec> events = {{0, word(lane.initial.value_or(0))}};
    events.reserve(lane.points.size() + 1);
    for (const auto& point : lane.points) events.push_back({point.position, word(point.value)});
    return block(0x260a, ByteWriter().raw(event_record(events, 2, in_ticks)).zeros(2).bytes());
}

Bytes lane_group(const std::vector<Bytes>& lanes) {
    ByteWriter group;
    for (const auto& lane : lanes) group.u8(1).raw(lane);
    if (lanes.empty()) group.u8(0);
    return block(0x260c, group.zeros(13).bytes(), 2);
}

Bytes send_channel(const Bytes& record, const Bytes& output, const Bytes& lanes,
                   std::uint8_t shape) {
    return block(0x260d, ByteWriter().raw(record).u8(shape).u8(0).raw(output).raw(lanes).bytes(),
                 5);
}

Bytes input_mark(const std::string& path_name, std::uint8_t path_type) {
    return ByteWriter()
        .counted(path_name)
        .zeros(4)
        .raw(marked(path_identity(path_name)))
        .u8(0)
        .u8(path_type)
        .zeros(5)
        .bytes();
}

Bytes hardware_insert(const std::string& name) {
    return block(0x2612, ByteWriter().u32(1).raw(output_name_record(name)).bytes());
}

Bytes hardware_insert_fixed_place(const std::string& name) {
    constexpr std::size_t header = 9;
    ByteWriter output;
    output.u16(2).pad_to(42 - header).counted(name).u16(0x0101);
    return block(0x2612, ByteWriter().u32(1).block(0x260e, output.bytes(), 4).bytes());
}

Bytes midi_mixer(const TrackSpec& track) {
    LaneSpec mute = track.mute_lane;
    if (!mute.initial) mute.initial = track.muted ? 1 : 0;
    return block(0x2611, ByteWriter()
                             .raw(midi_settings_record(track.midi_settings))
                             .u8(1)
                             .raw(lane_record(mute, track.tick_based))
                             .bytes());
}

Bytes mixer_part(const TrackSpec& track) {
    if (track.kind == TrackKind::midi) return midi_mixer(track);
    if (track.kind == TrackKind::vca || track.kind == TrackKind::video) return {};
    ByteWriter part;
    part.raw(own_channel(track));
    for (const auto& one : track.sends) part.raw(send(one, track.tick_based));
    part.zeros(2).u16(0x0101).u16(10);
    for (std::uint32_t slot = 0; slot < 10; ++slot) part.u32(0x18 + slot);
    part.zeros(5).u8(8).zeros(4);
    if (track.input.empty()) {
        part.zeros(28);
    } else {
        part.raw(input_mark(track.input, track.input_is_bus ? 2 : 0));
    }
    part.number(0xffffffff, 4).u8(0).u16(0x7fff).u16(10).zeros(160);
    if (track.kind == TrackKind::instrument) part.raw(midi_settings_record(track.midi_settings));
    return part.bytes();
}

}  // namespace tanrove::builder
