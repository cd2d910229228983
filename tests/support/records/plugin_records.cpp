// The plug-ins' records, field by field.
#include "support/records/plugin_records.hpp"

#include "support/records/event_records.hpp"
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

/// Name, index, switches and id of a control.
Bytes lane_label(const PluginLaneSpec& lane) {
    ByteWriter label;
    label.counted(lane.name).u32(lane.index);
    label.u8(lane.is_bypass ? 1 : 0).zeros(2).u8(lane.steps).zeros(4);
    if (!lane.id.empty()) label.counted(lane.id);
    return label.bytes();
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

Bytes bare_state(const Bytes& payload) {
    return ByteWriter().zeros(8).raw("DigiTest").raw(Bytes(40, 0x81)).raw(payload).bytes();
}

Bytes trim_state(const std::vector<TrimSpec>& channels, bool is_older) {
    ByteWriter state(true);
    state.zeros(8);
    for (const TrimSpec& channel : channels) {
        state.raw("DigiTrim").zeros(40).u32(static_cast<std::uint32_t>(channel.gain_word));
        if (!is_older) state.u32(channel.inverted ? 0x7fffffff : 0);
    }
    return state.bytes();
}

Bytes preset_chunk(const std::string& tree) {
    const Bytes length = ByteWriter(true).u32(28 + tree.size()).bytes();
    return ByteWriter().raw(length).zeros(16).raw("XPst").zeros(4).raw(tree).zeros(9).bytes();
}

std::vector<ContainerSpec> tagged_containers() {
    const std::string sub = "<PluginSubComp>WQ10</PluginSubComp><ActiveSetup>SETUP_B</ActiveSetup>";
    const std::string tree = "<PresetChunkXMLTree>" + sub + "</PresetChunkXMLTree>";
    const Bytes archived = ByteWriter().raw("22 serialization::archive").pad_to(70).bytes();
    return {
        {1, ByteWriter().raw("abFFBSxFFEx1234tail").bytes(), 2, 13},
        {2, ByteWriter().raw("VC2!").u32(3).zeros(20).bytes(), 0, 12},
        {3, ByteWriter().raw("<?xml?>").zeros(3).bytes(), 0, 8},
        {4, ByteWriter().raw("HXMCabcdef").bytes(), 4, 6},
        {6, ByteWriter().raw("/*@Meta {}").bytes(), 0, 10},
        {7, ByteWriter().u32(0x0085988d).u32(0).u32(5).zeros(9).bytes(), 0, 17},
        {8, ByteWriter().u32(1).u32(2).u32(14).u32(64).u16(0x9c78).zeros(30).bytes(), 16, 10},
        {9, preset_chunk(tree), 28, tree.size()},
        {10, ByteWriter().raw("{\n\tindex = {\n\tindex = { a = \"}\\\"\" } }").bytes(), 11, 26},
        {11, ByteWriter().u32(70).raw(archived).zeros(4).raw(archived).bytes(), 4, 70},
        {12, ByteWriter().u32(76).u32(0).u32(1).raw("hsin").zeros(70).bytes(), 12, 64},
    };
}

std::vector<InsertSpec> inserts_of_all_kinds() {
    std::vector<InsertSpec> inserts;
    for (const auto& container : tagged_containers()) {
        inserts.push_back({.state = bare_state(container.payload)});
    }
    const Bytes values = ByteWriter().zeros(4).raw(real_control("Gain", -6.5, 8)).bytes();
    const Bytes map = plugin_chunk("DigiTest", "elck", "", values);
    const Bytes chunk = plugin_chunk("DigiTest", "dflt", "Default", Bytes(64, 3));
    inserts.push_back({.state = ByteWriter().raw(map).raw(chunk).bytes()});
    inserts.push_back({.state = chunk});
    inserts.push_back({.state = bare_state({})});
    return inserts;
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
    const auto word = [](auto value) { return static_cast<std::uint32_t>(value); };
    std::vector<EventSpec> events = {{0, word(lane.default_value)}};
    for (const auto& point : lane.points) events.push_back({point.position, word(point.value)});
    const Bytes record = event_record(events, 4, lane.in_ticks);
    ByteWriter part;
    part.u8(1).block(0x260b, ByteWriter().raw(record).zeros(2).bytes()).raw(lane_label(lane));
    return block(0x260f, part.bytes(), lane.id.empty() ? 1 : 2);
}

Bytes insert_slot(const InsertSpec& insert) {
    ByteWriter settings;
    settings.raw(plugin_settings_block(insert)).u8(insert.active ? 1 : 0);
    ByteWriter plugin;
    plugin.block(0x2613, settings.bytes());
    if (insert.key_input) plugin.raw(output_name_record("", *insert.key_input));
    ByteWriter controls;
    controls.u32(insert.lanes.size());
    for (const auto& lane : insert.lanes) controls.raw(control_lane(lane));
    ByteWriter slot;
    slot.block(0x2615, plugin.bytes()).u8(insert.bypassed ? 1 : 0);
    return block(0x2616, slot.block(0x2614, controls.zeros(8).bytes()).bytes());
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
