// "FFBS": u32 1, u32 number of values, the values as 32-bit numbers, and what the plug-in keeps
// besides. "FabF": u32 2, the program's name with its length, u32 0, u32 number of values, values.
#include "plugins/fabfilter_settings.hpp"

#include <array>
#include <bit>

#include "plugins/state_frames.hpp"

namespace tanrove {

namespace {

constexpr std::size_t ffbs_count_at = 8;
constexpr std::size_t ffbs_values_at = 12;
constexpr std::size_t value_bytes = 4;
constexpr std::size_t short_code = 8;  // a code under this says no product
constexpr std::uint32_t no_word = 0xffffffff;

struct MidiTrigger {
    std::string_view code;
    std::size_t control;  ///< its value: exactly 0 is on, 1 is off
};

constexpr std::array<MidiTrigger, 2> midi_triggers = {{{"FabFFC2p", 42}, {"FabFFS2a", 699}}};

/// The trigger that has to be switched off, if it is on; nullptr for none.
const MidiTrigger* trigger_to_switch(const SettingsCase& c) {
    if (!c.input.track_has_midi || c.input.keep_plugin_midi) return nullptr;
    for (const MidiTrigger& trigger : midi_triggers) {
        if (trigger.code == c.insert.code) return &trigger;
    }
    return nullptr;
}

/// Where the list of values begins in the state, and how many there are.
struct ValueList {
    std::size_t at = 0;
    std::size_t count = 0;
};

ValueList find_values(std::string_view state) {
    if (const auto tag = state.find("FFBS"); tag != std::string_view::npos) {
        return {tag + ffbs_values_at, little_word(state, tag + ffbs_count_at)};
    }
    const auto tag = state.find("FabF");
    if (tag == std::string_view::npos) return {};
    constexpr std::size_t name_length_at = 8;
    const std::size_t name_bytes = little_word(state, tag + name_length_at);
    const std::size_t count_at = tag + name_length_at + 4 + name_bytes + 4;
    return {count_at + 4, little_word(state, count_at)};
}

std::string clap_program(const SettingsCase& c) {
    if (c.insert.code.size() < short_code) return refused_state;
    const auto& values = c.insert.controlValues;
    StateBytes program;
    program.text("FFBS").little(1).little(values.size());
    for (const float value : values) program.real(value);
    program.text(std::string_view(c.insert.code).substr(4, 4)).little(3);
    program.little(c.row.fabName.size()).text(c.row.fabName);
    program.little(no_word).little(1).little(0).little(0);
    return program.text("CuSV").little(1).little(0).take();
}

}  // namespace

RuleAnswer translate_ffbs(const SettingsCase& insert_case) {
    const SettingsCase& c = insert_case;
    if (c.kind() != ContainerKind::ffbs) return std::nullopt;
    if (c.build() == BuildKind::unknown) return refused_state;
    if (!c.is_vst3()) return std::nullopt;
    const std::string_view state = c.state();
    if (state.size() < ffbs_values_at) return refused_state;
    const auto state_at = static_cast<std::size_t>(c.insert.chunkOffset);
    const std::size_t count = c.bytes.u32(state_at + ffbs_count_at);
    if (count > (state.size() - ffbs_values_at) / value_bytes) return refused_state;
    const std::size_t values_end = ffbs_values_at + count * value_bytes;

    StateBytes component;
    component.text(state.substr(0, values_end)).text("FFpr").little(1).little(0);
    const std::string_view rest = state.substr(values_end);
    StateBytes controller;
    controller.text(rest.substr(0, rest.rfind("FFEx"))).text("FFed").little(0).little(0);
    return two_block_frame(component.take(), controller.take());
}

std::string fabfilter_program(const SettingsCase& insert_case) {
    const SettingsCase& c = insert_case;
    if (c.build() == BuildKind::unknown) return refused_state;
    if (c.is_clap()) return clap_program(c);
    const auto& values = c.insert.controlValues;
    StateBytes program;
    program.text("FabF").little(2).little(c.row.fabName.size()).text(c.row.fabName);
    program.little(0).little(values.size());
    for (const float value : values) program.real(value);
    // The component goes on with two words; the controller's block follows.
    constexpr std::size_t words_behind = 8;
    constexpr std::size_t controller_bytes = 12;
    const std::string body = program.take();
    StateBytes state;
    if (c.is_vst3()) state.little(body.size() + words_behind).little(1);
    state.text(body).little(1).little(1).little(controller_bytes).little(0);
    return state.text("FFed").little(0).real(1.0F).take();
}

bool switch_midi_trigger_off(const SettingsCase& insert_case, std::string& state) {
    const MidiTrigger* trigger = trigger_to_switch(insert_case);
    if (trigger == nullptr) return false;
    const ValueList values = find_values(state);
    const std::size_t at = values.at + trigger->control * value_bytes;
    if (trigger->control >= values.count || at + value_bytes > state.size()) return false;
    if (std::bit_cast<float>(little_word(state, at)) != 0.0F) return false;
    state.replace(at, value_bytes, StateBytes().real(1.0F).take());
    return true;
}

}  // namespace tanrove
