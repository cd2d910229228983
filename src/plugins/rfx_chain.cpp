// A VST in a chain:
//
//   <VST "VST: Product (Maker)" file 0 "title" ident "preset"
//     header, settings and tail in lines of base64, each padded by itself or all cut from one
//   >
//
// Its header, in words: the number, a magic word, the count of input pins, a mask each, the count
// of output pins, a mask each, the length of the settings, 0 or 1, the tail word. Masks have 8
// bytes, or 4 in the oldest chains. A CLAP's line holds name and ident only.
#include "plugins/rfx_chain.hpp"

#include <vector>

#include "base/base64.hpp"
#include "base/byte_view.hpp"
#include "base/text_lines.hpp"
#include "plugins/plugin_table_row.hpp"

namespace tanrove {

namespace {

constexpr std::size_t magic_at = 4;
constexpr std::size_t pins_in_at = 8;
constexpr std::size_t word_bytes = 4;
constexpr std::size_t mask_widths[] = {8, 4};

constexpr std::string_view vst_opening = "<VST ";
constexpr std::string_view clap_opening = "<CLAP ";

/// The next word of a line: up to a blank, or between quotes of one kind. nullopt at the end.
std::optional<std::string_view> take_token(std::string_view& rest) {
    rest = trimmed(rest);
    if (rest.empty()) return std::nullopt;
    constexpr std::string_view quotes = "\"'`";
    const char first = rest.front();
    if (quotes.find(first) == std::string_view::npos) return take_field(rest, ' ');
    rest.remove_prefix(1);
    if (rest.find(first) == std::string_view::npos) return std::nullopt;
    return take_field(rest, first);
}

/// Places of the tokens behind the opening.
struct LineShape {
    std::size_t file_at;  ///< past the last: none
    std::size_t ident_at;
};

constexpr std::size_t most_tokens = 5;
constexpr LineShape vst_shape = {1, 4};
constexpr LineShape clap_shape = {most_tokens, 1};

/// Name, file and ident; false where the line has no ident.
bool read_line(std::string_view tokens, ChainPlugin& plugin) {
    const LineShape shape = plugin.is_clap ? clap_shape : vst_shape;
    for (std::size_t i = 0; i <= shape.ident_at; ++i) {
        const auto token = take_token(tokens);
        if (!token) return false;
        if (i == 0) plugin.fx_name = *token;
        if (i == shape.file_at) plugin.file = *token;
        if (i == shape.ident_at) plugin.ident = *token;
    }
    return !plugin.fx_name.empty() && !plugin.ident.empty();
}

/// The bytes of the lines that follow.
std::vector<std::uint8_t> read_state(LineReader& lines) {
    std::vector<std::uint8_t> state;
    while (state.size() < max_settings_bytes) {
        const auto line = lines.next();
        if (!line) break;
        const auto bytes = decoded_base64(trimmed(*line));
        if (!bytes || bytes->empty()) break;
        state.insert(state.end(), bytes->begin(), bytes->end());
    }
    return state;
}

std::optional<SettingsHeader> read_header(ByteView state, std::size_t mask_bytes) {
    SettingsHeader header;
    header.pins_in = state.u32(pins_in_at);
    if (!state.holds(pins_in_at, word_bytes) || header.pins_in > max_pins) return std::nullopt;
    const std::size_t pins_out_at = pins_in_at + word_bytes + header.pins_in * mask_bytes;
    header.pins_out = state.u32(pins_out_at);
    if (header.pins_out == 0 || header.pins_out > max_pins) return std::nullopt;
    const std::size_t size_at = pins_out_at + word_bytes + header.pins_out * mask_bytes;
    constexpr std::size_t words_behind_pins = 3;
    if (!state.holds(size_at, words_behind_pins * word_bytes)) return std::nullopt;
    header.settings_bytes = state.u32(size_at);
    if (header.settings_bytes > max_settings_bytes) return std::nullopt;
    if (state.u32(size_at + word_bytes) > 1) return std::nullopt;
    header.tail_word = state.u32(size_at + 2 * word_bytes);
    const std::size_t settings_at = size_at + words_behind_pins * word_bytes;
    constexpr std::string_view fabfilter_tag = "FabF";
    constexpr std::size_t frame_bytes = 8;
    header.is_fabfilter_state = state.has(settings_at, fabfilter_tag) ||
                                state.has(settings_at + frame_bytes, fabfilter_tag);
    return header;
}

}  // namespace

bool is_settings_magic(std::uint32_t word) {
    return word == 0xfeed5eee || word == 0xfeed5eef;
}

ReadChain read_chain(std::string_view text) {
    ReadChain chain;
    LineReader lines(text, text.size());
    while (auto line = lines.next()) {
        std::string_view content = trimmed(*line);
        ChainPlugin& plugin = chain.plugin;
        plugin.is_clap = content.starts_with(clap_opening);
        if (!plugin.is_clap && !content.starts_with(vst_opening)) continue;
        content.remove_prefix(plugin.is_clap ? clap_opening.size() : vst_opening.size());
        if (!read_line(content, plugin)) {
            chain.fault = ChainFault::unreadable_line;
            return chain;
        }
        if (plugin.is_clap) return chain;
        const auto state = read_state(lines);
        const ByteView bytes{state};
        plugin.magic = bytes.u32(magic_at);
        plugin.state_bytes = state.size();
        for (const std::size_t mask_bytes : mask_widths) {
            if (!plugin.header) plugin.header = read_header(bytes, mask_bytes);
        }
        return chain;
    }
    chain.fault = ChainFault::no_plugin;
    return chain;
}

}  // namespace tanrove
