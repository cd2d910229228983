// The plug-ins' records, field by field.
#include "support/records/plugin_records.hpp"

#include "support/records/mixer_records.hpp"

namespace tanrove::builder {

namespace {

std::string backwards(const std::string& word) {
    return {word.rbegin(), word.rend()};
}

Bytes control(const std::string& prefix, const std::string& name, const Bytes& value,
              std::size_t spacing) {
    return ByteWriter().raw(prefix).raw(name).pad_to(spacing).raw(value).bytes();
}

/// Name, index and id of a control.
Bytes lane_label(const PluginLaneSpec& lane) {
    return ByteWriter()
        .zeros(7)
        .counted(lane.name)
        .zeros(4)
        .u32(lane.index)
        .zeros(8)
        .counted(lane.id)
        .bytes();
}

}  // namespace

Bytes plugin_chunk(const std::string& code, const std::string& tag, const std::string& name,
                   const Bytes& payload) {
    constexpr std::size_t header = 56;
    const Bytes length = ByteWriter(true).u32(header + payload.size()).u32(1).bytes();
    return ByteWriter()
        .raw(length)
        .raw(code)
        .raw("Poly")
        .raw(tag)
        .raw(name)
        .pad_to(header)
        .raw(payload)
        .bytes();
}

Bytes real_control(const std::string& name, double value, std::size_t spacing) {
    return control("d_", name, ByteWriter(true).f64(value).bytes(), spacing);
}

Bytes whole_control(const std::string& name, std::int32_t value, std::size_t spacing) {
    const auto word = static_cast<std::uint32_t>(value);
    return control("l_", name, ByteWriter(true).u32(word).bytes(), spacing);
}

Bytes plugin_settings_block(const InsertSpec& insert) {
    const Bytes state = insert.state.empty()
                            ? plugin_chunk(insert.code, "dflt", "Default", Bytes(64, 3))
                            : insert.state;
    return block(0x1038, ByteWriter()
                             .u8(insert.channels)
                             .zeros(3)
                             .u32(state.size())
                             .raw(state)
                             .zeros(insert.padding)
                             .bytes());
}

Bytes control_lane(const PluginLaneSpec& lane) {
    constexpr std::uint64_t origin = 1000000000000ULL;
    const auto word = [](auto value) { return static_cast<std::uint32_t>(value); };
    ByteWriter record;
    record.u8(1).raw("F").u16(1).u32(22 + 8 * lane.points.size()).u8(lane.in_ticks ? 1 : 0).u8(0);
    record.u16(1).u16(0).u16(2).u16(lane.points.size());
    record.number(lane.in_ticks ? origin : 0, 5).zeros(3).u32(word(lane.default_value));
    for (const auto& point : lane.points) record.u32(word(point.position)).u32(word(point.value));
    ByteWriter part;
    part.u8(1).block(0x260b, record.zeros(2).bytes());
    if (lane.label_behind_part)
        return ByteWriter().block(0x260f, part.bytes()).raw(lane_label(lane)).bytes();
    return block(0x260f, part.raw(lane_label(lane)).bytes());
}

Bytes insert_slot(const InsertSpec& insert) {
    ByteWriter slot;
    slot.raw(plugin_settings_block(insert)).u8(insert.active ? 1 : 0);
    slot.raw(output_name_record("", insert.key_input.value_or(0xffff)));
    for (const auto& lane : insert.lanes) slot.raw(control_lane(lane));
    slot.u8(insert.bypassed ? 1 : 0);
    return slot.block(0x2614, ByteWriter().u32(insert.slot_word).zeros(8).bytes()).bytes();
}

Bytes plugin_name_record(const PluginNameSpec& name) {
    const std::string maker = name.code.substr(0, 4);
    const std::string product = name.code.substr(4);
    return block(0x1017,
                 ByteWriter()
                     .u8(4)
                     .counted(name.name)
                     .raw(backwards(maker) + backwards(product) + backwards(name.build))
                     .u16(1)
                     .u16(1)
                     .zeros(3)
                     .counted("com.maker.product")
                     .zeros(2)
                     .bytes(),
                 6);
}

Bytes plugin_name_record_later_code(const PluginNameSpec& name) {
    const std::string code = backwards(name.code.substr(0, 4)) + backwards(name.code.substr(4));
    return block(0x1017, ByteWriter().u16(4).counted(name.name).zeros(4).raw(code).bytes(), 4);
}

Bytes plugin_names_block(const std::vector<PluginNameSpec>& names) {
    ByteWriter records;
    records.u32(names.size());
    for (const auto& name : names) records.raw(plugin_name_record(name));
    return block(0x1018, records.bytes());
}

}  // namespace tanrove::builder
