// A slot is its bypass line, its block, and the lines that belong to the slot and not to the
// plug-in. What stands behind WAK may be taken for the next slot's, so WAK ends it.
#include "project/fx_chain_text.hpp"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/base64.hpp"
#include "base/formatted_text.hpp"
#include "base/guid.hpp"
#include "project/quoted_text.hpp"

namespace tanrove {

namespace {

constexpr std::size_t text_line_length = 128;  // of base64

/// Bytes of a slot as text, whole.
std::string text_of(std::string_view bytes) {
    return base64({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

/// Bytes in lines of the usual length, put together before they are handed on: states are long.
void write_bytes(TextSink& out, int level, std::string_view bytes) {
    const std::string text = text_of(bytes);
    const std::string indent(static_cast<std::size_t>(level) * 2, ' ');
    std::string lines;
    lines.reserve(text.size() + (text.size() / text_line_length + 1) * (indent.size() + 1));
    for (std::size_t at = 0; at < text.size(); at += text_line_length) {
        lines += indent;
        lines.append(text, at, text_line_length);
        lines += '\n';
    }
    out.raw(lines);
}

void write_vst(TextSink& out, int level, const FxSlot& slot) {
    const std::string file = slot.form == SlotForm::stock_vst ? slot.file : quoted(slot.file);
    out.line(level, "<VST %s %s 0 %s %s \"\"", quoted(slot.name).c_str(), file.c_str(),
             quoted(slot.title).c_str(), slot.ident.c_str());
    out.line(level + 1, "%s", text_of(slot.header).c_str());
    write_bytes(out, level + 1, slot.state);
    out.line(level + 1, "%s", text_of(slot.tail).c_str());
    out.line(level, ">");
}

void write_clap(TextSink& out, int level, const FxSlot& slot) {
    out.line(level, "<CLAP %s %s \"\"", quoted(slot.name).c_str(), slot.ident.c_str());
    out.line(level + 1, "CFG 4 0 0 \"\"");
    if (!slot.state.empty()) {
        out.line(level + 1, "<STATE");
        write_bytes(out, level + 2, slot.state);
        out.line(level + 1, ">");
    }
    out.line(level, ">");
}

void write_js(TextSink& out, int level, const FxSlot& slot) {
    out.line(level, "<JS %s %s", slot.name.c_str(), quoted(slot.title).c_str());
    out.line(level + 1, "%s", slot.parameters.c_str());
    out.line(level, ">");
}

void write_block(TextSink& out, int level, const FxSlot& slot) {
    if (slot.form == SlotForm::clap) return write_clap(out, level, slot);
    if (slot.form == SlotForm::js) return write_js(out, level, slot);
    write_vst(out, level, slot);
}

/// A point's value as the envelope may hold it.
double held_value(double value) {
    return std::clamp(printable(value), 0.0, 1.0);
}

void write_parameter_envelope(TextSink& out, int level, const FxEnvelope& envelope) {
    const int shape = envelope.steps ? 1 : 0;
    const std::string mark =
        envelope.mark.empty() ? formatted("%u", envelope.parameter) : envelope.mark;
    out.line(level, "<PARMENV %u:%s %d %d 0.5 %s", envelope.parameter, mark.c_str(),
             envelope.runs_down ? 1 : 0, envelope.runs_down ? 0 : 1, quoted(envelope.name).c_str());
    out.line(level + 1, "EGUID %s", guid(envelope.guid_seed).c_str());
    out.line(level + 1, "ACT %d -1", envelope.active ? 1 : 0);
    out.line(level + 1, "VIS 1 1 1");
    out.line(level + 1, "LANEHEIGHT 0 0");
    out.line(level + 1, "ARM 0");
    out.line(level + 1, "DEFSHAPE %d -1 -1", shape);
    if (!envelope.points.empty() && envelope.points.front().seconds > 0) {
        out.line(level + 1, "PT 0 %.9f 0", held_value(envelope.default_value));
    }
    for (const FxEnvelopePoint& point : envelope.points) {
        out.line(level + 1, "PT %.10f %.9f %d", printable(std::max(point.seconds, 0.0)),
                 held_value(point.value), shape);
    }
    out.line(level, ">");
}

/// `seed_base` is added to the seed of the slot's identifier.
void write_fx_slot(TextSink& out, int level, const FxSlot& slot, std::uint32_t seed_base = 0) {
    out.line(level, "BYPASS %d %d 0", slot.bypassed ? 1 : 0, slot.offline ? 1 : 0);
    write_block(out, level, slot);
    if (!slot.preset_name.empty()) {
        out.line(level, "PRESETNAME %s", quoted(slot.preset_name).c_str());
    }
    out.line(level, "FLOATPOS 0 0 0 0");
    out.line(level, "FXID %s", guid(seed_base + slot.guid_seed).c_str());
    for (const FxEnvelope& envelope : slot.envelopes) {
        write_parameter_envelope(out, level, envelope);
    }
    if (slot.marks_last_pins) out.line(level, "PINFLAGS 1");
    out.line(level, "WAK 0 0");
}

}  // namespace

void write_fx_chain(TextSink& out, int level, const char* tag, const ChainPlan& chain) {
    if (chain.slots.empty()) return;
    out.line(level, "<%s", tag);
    out.line(level + 1, "WNDRECT 0 0 0 0");
    out.line(level + 1, "SHOW 0");
    out.line(level + 1, "LASTSEL 0");
    out.line(level + 1, "DOCKED 0");
    for (const FxSlot& slot : chain.slots) write_fx_slot(out, level + 1, slot);
    out.line(level, ">");
}

void write_take_fx(TextSink& out, const ChainPlan& chain, std::uint32_t number) {
    constexpr int level = 3;
    constexpr std::uint32_t first_seed = 0x43450000;
    constexpr std::uint32_t seeds_a_take = 64;
    if (chain.slots.empty()) return;
    out.line(level, "<TAKEFX");
    out.line(level + 1, "SHOW 0");
    out.line(level + 1, "LASTSEL 0");
    out.line(level + 1, "DOCKED 0");
    for (const FxSlot& slot : chain.slots) {
        write_fx_slot(out, level + 1, slot, first_seed + seeds_a_take * number);
    }
    out.line(level, ">");
}

}  // namespace tanrove
