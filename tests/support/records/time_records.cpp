// The records of the session's time frame, field by field as real sessions store them.
#include "support/records/time_records.hpp"

#include <cstdio>

namespace tanrove::builder {

namespace {

constexpr const char* day = "24:00:00:00";

/// A tempo event is a constant stretch, kept as an object in an object.
void write_tempo_event(ByteWriter& out, const TempoSpec& point, bool is_first) {
    out.raw("Const").u16(1).u32(46).raw("TMS").u16(1);
    out.u32(20).u8(0).u8(is_first ? 1 : 0).zeros(8);
    out.number(static_cast<std::uint64_t>(point.tick + 1000000000000LL), 8);
    out.u8(0).u8(is_first ? 1 : 0).f64(point.bpm).u32(point.beat_ticks).zeros(9);
}

std::string bars_text(const BarsSpec& value) {
    char text[48];
    std::snprintf(text, sizeof text, "%4u|%2u| %03u", value.bars, value.beats, value.ticks);
    return text;
}

void write_location_colour(ByteWriter& out, const LocationSpec& location) {
    out.u16(location.colour).u32(static_cast<std::uint64_t>(location.colour_blocks));
    for (int i = 0; i < location.colour_blocks; ++i) {
        out.block(0x2506, ByteWriter().u32(0xffffffff).zeros(4).bytes(), 3);
    }
    ByteWriter tail;
    tail.u32(0).counted(location.comment);
    const std::size_t head = tail.bytes().size() - location.comment.size();
    if (location.rgb) {
        tail.zeros(62 - head).u8(*location.rgb >> 16).zeros(1).u8(*location.rgb >> 8).zeros(1);
        tail.u8(*location.rgb);
    } else if (location.form == LocationForm::palette) {
        tail.zeros(61 - head).u8(0xff);
    }
    const auto length = static_cast<std::size_t>(location.form) + location.comment.size();
    out.raw(tail.pad_to(length).bytes());
}

}  // namespace

Bytes tempo_block(const std::vector<TempoSpec>& points) {
    ByteWriter payload;
    payload.raw("Tempo").u16(2).u32(4 + 61 * points.size()).u32(points.size()).u32(0);
    for (const auto& point : points) write_tempo_event(payload, point, &point == points.data());
    return block(0x2028, payload.zeros(9).f64(48000).bytes(), 3);
}

Bytes tempo_block_plain(const std::vector<TempoSpec>& points) {
    constexpr std::size_t header = 9;
    ByteWriter payload;
    payload.raw("Tempo");
    for (std::size_t i = 0; i < points.size(); ++i) {
        payload.pad_to(58 - header + 61 * i);
        payload.number(static_cast<std::uint64_t>(points[i].tick + 1000000000000LL), 5).zeros(5);
        payload.f64(points[i].bpm);
    }
    return block(0x2028, payload.bytes());
}

Bytes default_tempo_bytes(double bpm, std::uint32_t beat_ticks, bool whole_mark) {
    ByteWriter out;
    out.u32(20).u8(0).u8(1).zeros(8).u64(1000000000000ULL);
    return out.u8(0).u8(whole_mark ? 1 : 7).f64(bpm).u32(beat_ticks).bytes();
}

Bytes meter_block(const std::vector<MeterSpec>& meters) {
    ByteWriter payload;
    payload.raw("Meter").u16(2).u32(12 + 52 * meters.size()).u32(meters.size());
    for (const auto& meter : meters) {
        payload.u64(static_cast<std::uint64_t>(meter.tick + 1000000000000LL));
        payload.u32(meter.bar).u32(meter.numerator).u32(meter.denominator);
        payload.u16(1).u32(3).u16(0).u32(2).u32(3);
    }
    for (const auto& meter : meters) payload.u32(meter.bar).u32(1).u64(0);
    return block(0x2029, payload.u64(1000000000000ULL).bytes());
}

Bytes location_block(const LocationSpec& location) {
    ByteWriter payload;
    payload.u16(location.number).u8(location.flags).u8(location.kind).u16(0);
    payload.counted(location.name);
    if ((location.flags & 2) != 0) {
        payload.u64(static_cast<std::uint64_t>(location.start));
        payload.u64(static_cast<std::uint64_t>(location.end));
    } else {
        payload.ticks(location.start).ticks(location.end);
    }
    payload.zeros(105);
    write_location_colour(payload, location);
    return block(0x2077, payload.bytes(), 14);
}

Bytes timecode_block(const TimecodeSpec& timecode) {
    ByteWriter payload;
    payload.u32(timecode.base_code).zeros(5).u32(timecode.start_frames).zeros(4);
    payload.u32(timecode.extended ? 1 : 0).u32(timecode.base_code).counted(day);
    if (timecode.extended) {
        payload.u32(timecode.extended_code).u32(timecode.extended_start_frames);
        payload.u32(timecode.extended_code).counted(day);
    }
    return block(0x204d, payload.bytes(), 5);
}

Bytes values_block(const std::vector<BarsSpec>& values) {
    Bytes codes;
    for (const auto& value : values) codes.push_back(value.unit);
    const Bytes marks(values.size(), 0);
    ByteWriter payload;
    for (const auto& list : {codes, marks, marks}) payload.u32(values.size()).raw(list);
    payload.u32(values.size());
    for (const auto& value : values) {
        payload.u32(5).counted(bars_text(value)).counted("  0:01.000");
        payload.counted("00:00:01:00.00").counted("     1+00.00").counted("      10000");
    }
    payload.u32(values.size());
    for (std::size_t i = 0; i < values.size(); ++i) payload.u32(0xffffffff);
    return block(0x2066, payload.bytes(), 2);
}

Bytes click_block(std::uint8_t on) {
    ByteWriter payload;
    payload.u16(60).u16(100).u16(100).u16(60).u16(127).u16(100).u16(2).u32(0x01010101);
    return block(0x2055, payload.u16(12000).u8(on).f64(120).bytes(), 5);
}

Bytes tempo_and_meter_blocks(const TimeFrameSpec& time) {
    ByteWriter out;
    if (time.default_tempo) {
        const auto& tempo = *time.default_tempo;
        out.block(0x2718, default_tempo_bytes(tempo.bpm, tempo.beat_ticks));
    }
    if (!time.tempos.empty()) {
        const Bytes map = tempo_block(time.tempos);
        out.block(0x2718, map).raw(map);
    }
    if (!time.meters.empty()) {
        const Bytes map = meter_block(time.meters);
        out.block(0x2719, map).raw(map);
    }
    if (time.click) out.raw(click_block(*time.click ? 1 : 0));
    return out.bytes();
}

Bytes grid_and_location_blocks(const TimeFrameSpec& time) {
    ByteWriter out;
    if (!time.nudge_and_grid.empty()) {
        // Another window's values stand in front.
        out.block(0x2016, values_block({{4, 0, 0}, {2, 0, 0}}));
        std::vector<BarsSpec> values = time.nudge_and_grid;
        out.raw(values_block((values.push_back({0, 1, 0}), values)));
    }
    if (time.locations.empty()) return out.bytes();
    ByteWriter list;
    list.u32(time.locations.size());
    for (const auto& location : time.locations) list.raw(location_block(location));
    const Bytes copy = block(0x2030, list.bytes(), 4);
    return out.block(0x271a, copy).raw(copy).bytes();
}

}  // namespace tanrove::builder
