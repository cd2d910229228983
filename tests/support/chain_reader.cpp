// A slot's block holds lines of base64 (VST), a block STATE of them (CLAP) or one of values (JS).
#include "support/chain_reader.hpp"

#include <algorithm>
#include <sstream>
#include <utility>

namespace tanrove::builder {

namespace {

/// The words of a line; a quoted one without its quotes.
std::vector<std::string> tokens_of(const std::string& line) {
    std::vector<std::string> tokens;
    for (std::size_t at = 0; at < line.size();) {
        if (line[at] == ' ') {
            ++at;
            continue;
        }
        const bool is_quoted = std::string("\"'`").find(line[at]) != std::string::npos;
        const char end = is_quoted ? line[at++] : ' ';
        const std::size_t close = std::min(line.find(end, at), line.size());
        tokens.push_back(line.substr(at, close - at));
        at = close + 1;
    }
    return tokens;
}

std::uint64_t number(const std::string& bytes, std::size_t at, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = width; i-- > 0;) {
        value = value << 8 | static_cast<std::uint8_t>(at + i < bytes.size() ? bytes[at + i] : 0);
    }
    return value;
}

void read_header(const std::string& bytes, ReadSlot& slot) {
    std::size_t at = 0;
    const auto word = [&] {
        at += 4;
        return static_cast<std::uint32_t>(number(bytes, at - 4, 4));
    };
    const auto pins = [&](std::vector<std::uint64_t>& masks) {
        for (std::uint32_t count = word(); count > 0 && at < bytes.size(); --count) {
            masks.push_back(number(bytes, at, 8));
            at += 8;
        }
    };
    slot.id = word();
    slot.magic = word();
    pins(slot.pins_in);
    pins(slot.pins_out);
    slot.state_bytes = word();
    slot.magic_flag = word();
    slot.tail_word = word();
    slot.has_header = at == bytes.size();
}

void take_vst(const std::vector<std::string>& lines, ReadSlot& slot) {
    if (lines.size() < 2) return;
    read_header(base64_bytes(lines.front()), slot);
    for (std::size_t i = 1; i + 1 < lines.size(); ++i) slot.state += base64_bytes(lines[i]);
    slot.tail = base64_bytes(lines.back());
}

void take_envelope(const std::vector<std::string>& opening, const std::vector<std::string>& lines,
                   ReadSlot& slot) {
    ReadParameterEnvelope envelope{.parameter = opening.at(1), .name = opening.back()};
    for (const std::string& line : lines) {
        const auto tokens = tokens_of(line);
        if (tokens.at(0) == "ACT") envelope.active = tokens.at(1) == "1";
        if (tokens.at(0) == "DEFSHAPE") envelope.default_shape = std::stoi(tokens.at(1));
        if (tokens.at(0) != "PT") continue;
        envelope.points.push_back(
            {std::stod(tokens.at(1)), std::stod(tokens.at(2)), std::stoi(tokens.at(3))});
    }
    slot.envelopes.push_back(envelope);
}

/// A block of the slot, its inner blocks' lines among its own.
void take_block(const std::vector<std::string>& opening, std::vector<std::string> lines,
                ReadSlot& slot) {
    const std::string& kind = opening.at(0);
    if (kind == "<PARMENV") return take_envelope(opening, lines, slot);
    if (kind == "<VST" || kind == "<CLAP" || kind == "<JS") slot.tokens = opening;
    if (kind == "<VST") take_vst(lines, slot);
    if (kind == "<JS" && !lines.empty()) slot.values = tokens_of(lines.front());
    if (kind != "<CLAP") return;
    for (const std::string& line : lines) {
        if (line.find(' ') == std::string::npos) slot.state += base64_bytes(line);
    }
}

/// A line of the slot that is no block.
void take_line(const std::vector<std::string>& tokens, ReadSlot& slot) {
    if (tokens[0] == "BYPASS") {
        slot.bypassed = tokens.at(1) == "1";
        slot.offline = tokens.at(2) == "1";
    }
    if (tokens[0] == "PRESETNAME") slot.preset_name = tokens.at(1);
    if (tokens[0] == "FXID") slot.fxid = tokens.at(1);
}

}  // namespace

std::string base64_bytes(const std::string& line) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0, held = 0;
    for (const char c : line.substr(0, line.find('='))) {
        const auto digit = alphabet.find(c);
        if (digit == alphabet.npos) return {};
        bits = bits << 6 | static_cast<unsigned>(digit);
        held += 6;
        if (held < 8) continue;
        held -= 8;
        bytes += static_cast<char>(bits >> held & 0xff);
    }
    return bytes;
}

std::vector<ReadSlot> read_fx_slots(const std::string& text) {
    std::vector<ReadSlot> slots;
    std::vector<std::string> opening, inside;
    int depth = 0;
    bool in_slot = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        while (!line.empty() && line.back() == '\r') line.pop_back();
        line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
        const auto tokens = tokens_of(line);
        if (tokens.empty()) continue;
        const bool opens = line[0] == '<';
        if (depth > 0) {
            depth += opens ? 1 : (line == ">" ? -1 : 0);
            if (!opens && line != ">") inside.push_back(line);
            if (depth == 0) take_block(opening, std::exchange(inside, {}), slots.back());
            continue;
        }
        if (tokens[0] == "BYPASS") slots.emplace_back();
        in_slot = tokens[0] == "BYPASS" || (in_slot && line != ">");
        if (!in_slot) continue;
        slots.back().lines.push_back(tokens[0]);
        if (opens) {
            opening = tokens;
            depth = 1;
        } else {
            take_line(tokens, slots.back());
        }
    }
    return slots;
}

}  // namespace tanrove::builder
