// The rules in the order in which they are tried; the first that applies decides. Each was measured
// on the states that one maker's builds wrote.
#include "plugins/translate_settings.hpp"

#include <array>

#include "plugins/bank_document.hpp"
#include "plugins/elck_chunks.hpp"
#include "plugins/elck_settings.hpp"
#include "plugins/fabfilter_settings.hpp"
#include "plugins/parameter_documents.hpp"
#include "plugins/section_states.hpp"
#include "plugins/settings_case.hpp"
#include "plugins/state_frames.hpp"

namespace tanrove {

namespace {

constexpr std::string_view auto_tune_artist = "JptrATLv";
constexpr std::string_view pan_code = "AntrAPan";

/// A VST2 build that is taken by preference loads only what it is known to load.
RuleAnswer refuse_for_preferred_vst2(const SettingsCase& c) {
    if (!c.input.is_preferred_vst2) return std::nullopt;
    if (c.kind() == ContainerKind::ffbs || c.kind() == ContainerKind::index_text) {
        return std::nullopt;
    }
    return refused_state;
}

RuleAnswer refuse_empty(const SettingsCase& c) {
    if (c.kind() == ContainerKind::none) return refused_state;
    if (c.kind() == ContainerKind::control_values) return std::nullopt;
    if (c.state().empty()) return refused_state;
    return std::nullopt;
}

bool clap_loads_values(const SettingsCase& c) {
    const bool has_values = !c.insert.controlValues.empty();
    const bool is_program = !c.row.fabName.empty() && c.row.stateForm == 0 && has_values &&
                            c.insert.code.starts_with("FabF");
    const bool needs_values = has_values && (c.row.stateForm == 1 || !c.row.fabName.empty());
    return is_program || (c.insert.elckSize != 0 && c.insert.elckChunkCount == 1 && !needs_values);
}

/// CLAP builds are known to load three containers, and programs made of values.
RuleAnswer refuse_for_clap(const SettingsCase& c) {
    if (!c.is_clap()) return std::nullopt;
    if (!c.row.headerTemplate.empty() && c.row.trailerFlag != 0) return refused_state;
    switch (c.kind()) {
        case ContainerKind::ffbs:
        case ContainerKind::vc2:
        case ContainerKind::scored:
            return std::nullopt;
        case ContainerKind::control_values:
            if (clap_loads_values(c)) return std::nullopt;
            return refused_state;
        default:
            return refused_state;
    }
}

/// The bytes that hexadecimal digits spell; empty where one of them is no digit.
std::string bytes_of_digits(std::string_view digits) {
    constexpr std::string_view alphabet = "0123456789ABCDEF";
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        const auto high = alphabet.find(digits[i]);
        const auto low = alphabet.find(digits[i + 1]);
        if (high == alphabet.npos || low == alphabet.npos) return {};
        bytes += static_cast<char>(high << 4 | low);
    }
    return bytes;
}

/// The four characters of a plug-in in the bank's head.
std::string bank_plugin_id(const SettingsCase& c) {
    constexpr std::size_t class_digits = 32;
    constexpr std::size_t id_bytes = 4;
    constexpr std::string_view vst2_class = "VST";
    if (c.insert.code == auto_tune_artist) return "ATxL";
    const std::string class_bytes = bytes_of_digits(class_id_of(c.row).substr(0, class_digits));
    if (class_bytes.size() == class_digits / 2 && class_bytes.starts_with(vst2_class)) {
        return class_bytes.substr(vst2_class.size(), id_bytes);
    }
    return c.insert.code.size() < 2 * id_bytes ? "????" : c.insert.code.substr(id_bytes, id_bytes);
}

bool is_wrapped_class(const PluginTableRow& row) {
    const std::string class_id = class_id_of(row);
    return class_id.starts_with("ABCDEF019182FAEB") ||
           class_id == "565354564D723241564F58205448524F" ||
           class_id == "565354415438314175746F2D54756E65";
}

/// A document behind "VC2!" and its length, for a VST3 build.
RuleAnswer document_state(const SettingsCase& c) {
    constexpr std::size_t head_bytes = 8;
    if (c.kind() != ContainerKind::vc2) return std::nullopt;
    if (c.build() == BuildKind::unknown) return refused_state;
    if (!c.is_vst3()) return std::nullopt;
    const auto at = static_cast<std::size_t>(c.insert.chunkOffset);
    if (!c.bytes.holds(at, head_bytes)) return refused_state;
    const std::size_t length = std::size_t{c.bytes.u32(at + 4)} + 1;
    const auto stored = c.bytes.text(at + head_bytes, length);
    if (!stored) return refused_state;
    const std::string_view tag = *c.bytes.text(at, 4);
    std::string document(*stored);
    const auto framed = [&](const std::string& text) {
        return juce_two_frame(tag, text, bank_plugin_id(c), document_version(text));
    };
    if (c.insert.code == pan_code) return framed(with_renamed_parameters(std::move(document)));
    if (const DocumentTable* table = document_table(c.insert.code)) {
        if (table->known.size() != table->expected) return refused_state;
        document = with_all_parameters(document, table->known);
    }
    if (!is_wrapped_class(c.row) || c.insert.code == auto_tune_artist) return framed(document);
    return juce_one_frame(StateBytes().text(tag).little(document.size() - 1).text(document).take());
}

RuleAnswer meta_comment_state(const SettingsCase& c) {
    if (c.kind() != ContainerKind::meta_comment) return std::nullopt;
    if (c.build() == BuildKind::unknown) return refused_state;
    const std::string program = "#pgm=From Pro Tools\n" + std::string(c.state());
    if (!c.is_vst3()) return program;
    const std::string sized = StateBytes().little(program.size()).text(program).take();
    return two_block_frame(sized, sized);
}

/// What the VST2 host of these plug-ins puts behind a state: the program's name.
StateBytes& add_default_name(StateBytes& state) {
    constexpr std::string_view name = "Default";
    return state.little(name.size()).text(name);
}

RuleAnswer sized_magic_state(const SettingsCase& c) {
    if (c.kind() != ContainerKind::sized_magic) return std::nullopt;
    StateBytes state;
    state.little(c.state().size()).text(c.state());
    return add_default_name(state).take();
}

RuleAnswer zlib_state(const SettingsCase& c) {
    if (c.kind() != ContainerKind::zlib) return std::nullopt;
    if (c.build() == BuildKind::unknown) return refused_state;
    StateBytes stream;
    for (const std::uint32_t word : c.insert.zlibWords) stream.little(word);
    const std::string bytes = stream.text(c.state()).take();
    if (c.is_vst3()) return two_block_frame(bytes, bytes);
    StateBytes state;
    state.little(bytes.size()).text(bytes);
    return add_default_name(state).take();
}

RuleAnswer preset_tree_state(const SettingsCase& c) {
    constexpr std::size_t name_bytes = 4;
    constexpr std::string_view bypass_off = "<Bypass Version=\"1\" Bypass=\"0\" />\n";
    if (c.kind() != ContainerKind::preset_tree) return std::nullopt;
    if (c.insert.pluginSubComp.size() != name_bytes) return refused_state;
    const std::string& setup = c.insert.activeSetup;
    const std::size_t size = c.state().size();
    StateBytes component;
    component.big(size + 28).big(3).big(1).text(c.insert.pluginSubComp);
    component.text(setup.size() == name_bytes ? setup : "setA");
    component.big(size).text("XPst").text(c.state()).text(bypass_off);
    return one_block_frame(component.take());
}

RuleAnswer index_text_state(const SettingsCase& c) {
    if (c.kind() != ContainerKind::index_text) return std::nullopt;
    if (c.build() == BuildKind::unknown) return refused_state;
    if (!c.is_vst3()) return std::string(c.state());
    return one_block_frame(c.state());
}

RuleAnswer archive_state(const SettingsCase& c) {
    if (c.kind() != ContainerKind::archive) return std::nullopt;
    return two_block_frame(c.state(), c.state());
}

/// Kontakt. The head that stands in front of the state in the session is part of it.
RuleAnswer hsin_state(const SettingsCase& c) {
    constexpr std::size_t head_bytes = 12;
    if (c.kind() != ContainerKind::hsin) return std::nullopt;
    if (!c.input.kontakt_state || c.build() == BuildKind::unknown) return refused_state;
    const std::string state = StateBytes()
                                  .little(c.state().size() + head_bytes)
                                  .little(0)
                                  .little(1)
                                  .text(c.state())
                                  .take();
    return c.is_vst3() ? one_block_frame(state) : state;
}

bool is_juce_state(const SettingsCase& c) {
    constexpr std::size_t mark_in_front = 36;
    if (class_id_of(c.row) != "ABCDEF019182FAEB" + upper_hexadecimal(c.insert.code)) return false;
    const std::uint64_t at = c.insert.chunkOffset;
    return at >= c.insert.blockStart + mark_in_front &&
           c.bytes.has(static_cast<std::size_t>(at) - mark_in_front, "juce");
}

/// Twelve bytes in front of the state that say its size belong to it.
bool has_sized_head(const SettingsCase& c) {
    constexpr std::uint32_t head_magic = 0x0610d6db;
    const auto at = static_cast<std::size_t>(c.insert.chunkOffset);
    return at >= 12 && c.bytes.u32(at - 12) == head_magic &&
           c.bytes.u32(at - 4) == c.insert.chunkSize;
}

RuleAnswer scored_state(const SettingsCase& c) {
    if (c.kind() != ContainerKind::scored) return std::nullopt;
    const std::string_view state = c.state();
    if (!c.is_vst3()) return std::string(state);
    if (is_juce_state(c)) return juce_one_frame(state);
    if (c.insert.how == elck_how) return refused_state;
    if (has_sized_head(c)) {
        const auto at = static_cast<std::size_t>(c.insert.chunkOffset) - 12;
        const std::string_view whole = *c.bytes.text(at, state.size() + 12);
        return two_block_frame(whole, whole);
    }
    if (c.row.ident.find("{F2AEE70D00DE4F4E") != std::string::npos) {
        const std::string sized = StateBytes().little(state.size()).text(state).little(0).take();
        return two_block_frame(sized, sized);
    }
    return c.insert.copies == 2 ? two_block_frame(state, state) : one_block_frame(state);
}

/// The one chunk behind the map of controls, as a state that no tag told.
std::string translate_one_chunk(const SettingsCase& c) {
    PluginInsert chunk = c.insert;
    chunk.containerKind = ContainerKind::scored;
    chunk.chunkOffset = c.insert.elckOffset;
    chunk.chunkSize = c.insert.elckSize;
    chunk.how = c.insert.elckHow;
    chunk.copies = c.insert.elckCopies;
    const SettingsCase chunk_case{chunk, c.row, c.bytes, c.input};
    if (chunk_case.state().empty()) return refused_state;
    return scored_state(chunk_case).value_or(refused_state);
}

std::string translate_chunks(const SettingsCase& c) {
    if (c.insert.elckSize == 0) return refused_state;
    return c.insert.elckChunkCount > 1 ? translate_chunk_chain(c) : translate_one_chunk(c);
}

/// What a step of this parameter divides its value by; 1 for a parameter without steps.
float step_divisor(const SettingsCase& c, std::size_t index) {
    constexpr std::uint32_t plain_switch = 2;
    for (const SteppedParameter& parameter : c.input.stepped) {
        if (parameter.index != index || parameter.code != c.insert.code) continue;
        if (parameter.step_count > plain_switch) {
            return static_cast<float>(parameter.step_count - 1);
        }
    }
    return 1.0F;
}

/// A plain list of the controls' values, one a parameter.
std::string parameter_list(const SettingsCase& c) {
    constexpr std::size_t usual_count = 20;
    const std::size_t count = c.row.paramCount == 0 ? usual_count : c.row.paramCount;
    StateBytes list;
    list.zeros(c.row.paramPad);
    for (std::size_t i = 0; i < count; ++i) {
        const bool is_held = i < c.insert.controlValues.size();
        list.real(is_held ? c.insert.controlValues[i] / step_divisor(c, i) : 0.0F);
    }
    return one_block_frame(list.take());
}

RuleAnswer control_values_state(const SettingsCase& c) {
    if (c.kind() != ContainerKind::control_values) return std::nullopt;
    const bool has_one_chunk = c.insert.elckSize != 0 && c.insert.elckChunkCount == 1;
    if (c.insert.code == "xlnAxaAK" && has_one_chunk && c.is_vst3()) {
        const auto chunk = c.bytes.text(c.insert.elckOffset, c.insert.elckSize);
        return chunk ? juce_one_frame(*chunk) : refused_state;
    }
    if (c.insert.controlValues.empty()) return translate_chunks(c);
    if (c.row.stateForm == 1) return parameter_list(c);
    if (c.row.fabName.empty()) return translate_chunks(c);
    return fabfilter_program(c);
}

/// What no other rule has taken goes as it is, cut to what the build loads.
RuleAnswer plain_state(const SettingsCase& c) {
    constexpr std::size_t head_bytes = 8;
    std::string state(c.state());
    if (c.row.minChunk > 0) {
        if (state.size() < c.row.minChunk) return refused_state;
        state.resize(c.row.minChunk);
    }
    if (c.kind() == ContainerKind::vc2 && c.insert.code == pan_code) {
        const std::size_t length = std::size_t{little_word(state, 4)} + 1;
        if (state.size() >= head_bytes + length) {
            const std::string document = with_renamed_parameters(state.substr(head_bytes, length));
            state = StateBytes()
                        .text(std::string_view(state).substr(0, 4))
                        .little(document.size() - 1)
                        .text(document)
                        .text(std::string_view(state).substr(head_bytes + length))
                        .take();
        }
    }
    return with_full_bank(std::move(state));
}

using Rule = RuleAnswer (*)(const SettingsCase&);

constexpr std::array<Rule, 16> rules = {
    refuse_for_preferred_vst2,
    translate_session_chain,
    refuse_empty,
    refuse_for_clap,
    document_state,
    translate_preset_chain,
    translate_ffbs,
    meta_comment_state,
    sized_magic_state,
    zlib_state,
    preset_tree_state,
    index_text_state,
    archive_state,
    hsin_state,
    scored_state,
    control_values_state,
};

std::string translate_by_rules(const SettingsCase& c) {
    for (const Rule rule : rules) {
        if (RuleAnswer answer = rule(c)) return std::move(*answer);
    }
    return plain_state(c).value_or(refused_state);
}

}  // namespace

std::string class_id_of(const PluginTableRow& row) {
    const auto open = row.ident.find('{');
    if (open == std::string::npos) return {};
    std::string class_id;
    for (std::size_t i = open + 1; i < row.ident.size() && row.ident[i] != '}'; ++i) {
        const char c = row.ident[i];
        class_id += c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return class_id;
}

TranslatedSettings translate_settings(const PluginInsert& insert, const PluginTableRow& row,
                                      ByteView image, const TranslationInput& input) {
    const SettingsCase settings_case{
        insert, row, image.window(0, static_cast<std::size_t>(insert.chunkLimit)), input};
    TranslatedSettings settings;
    settings.state = translate_by_rules(settings_case);
    settings.midi_switched_off = switch_midi_trigger_off(settings_case, settings.state);
    return settings;
}

}  // namespace tanrove
