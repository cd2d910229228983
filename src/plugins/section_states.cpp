// The session chain: "6SMC", 36 bytes on "DHSH", and from there sections of
//
//   0    four characters, digits and upper-case letters
//   8    u64 length
//   24   the contents
//
// "LGSH" holds what the session was called there; its first byte is cleared, or the build asks for
// that file. The preset chain: 32 bytes into the state "RHCP", and sections of
//
//   0    four characters, the last two "CP"
//   8    u32 length
//   16   the contents
#include "plugins/section_states.hpp"

#include <algorithm>

#include "plugins/state_frames.hpp"

namespace tanrove {

namespace {

constexpr std::string_view session_chain_code = "Lin66SAX";
constexpr std::size_t session_chain_from_mark = 36;
constexpr std::size_t session_head_bytes = 60;  // the mark, and the first section's head
constexpr std::size_t session_section_head = 24;
constexpr std::size_t max_session_sections = 32;

constexpr std::size_t preset_chain_at = 32;
constexpr std::size_t preset_section_head = 16;
constexpr std::size_t max_preset_sections = 16;
constexpr std::size_t length_at = 8;
constexpr std::size_t tag_bytes = 4;
constexpr std::size_t trailing_zeros = 8;

constexpr std::size_t usual_document_at = 116;  // of "DPCP", in the state
constexpr std::size_t usual_rest_at = 208;
constexpr std::size_t bytes_around_rest = 184;
constexpr std::size_t second_length_at = 12;  // in the row's head
constexpr std::size_t min_window_bytes = 3;   // a "VGCP" no longer than this holds no switch
constexpr std::size_t window_switch_from_length = 12;

bool is_section_tag(std::string_view tag) {
    return std::ranges::all_of(
        tag, [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); });
}

struct SessionChain {
    std::size_t size = 0;
    std::optional<std::size_t> file_name_at;  ///< contents of "LGSH", from the chain's start
    bool has_amplifier = false;               ///< "APSH" stands in it
};

/// The chain at `start`; nullopt where a section is longer than what is left.
std::optional<SessionChain> walk_session_chain(ByteView bytes, std::size_t start) {
    SessionChain chain;
    for (std::size_t n = 0; n < max_session_sections; ++n) {
        const std::size_t at = start + chain.size;
        if (!bytes.holds(at, session_section_head)) break;
        const std::string_view tag = *bytes.text(at, tag_bytes);
        if (!is_section_tag(tag)) break;
        const std::uint64_t length = bytes.u64(at + length_at);
        if (length > bytes.size() - at - session_section_head) return std::nullopt;
        if (tag == "LGSH" && length > 0) chain.file_name_at = chain.size + session_section_head;
        if (tag == "APSH") chain.has_amplifier = true;
        chain.size += session_section_head + static_cast<std::size_t>(length);
    }
    return chain;
}

struct PresetSections {
    std::optional<std::size_t> document_at;  ///< "DPCP", in the image
    std::optional<std::size_t> window_at;    ///< "VGCP"
};

PresetSections walk_preset_chain(ByteView bytes, std::size_t start) {
    PresetSections found;
    std::size_t at = start;
    for (std::size_t n = 0; n < max_preset_sections; ++n) {
        if (!bytes.holds(at, preset_section_head) || !bytes.has(at + 2, "CP")) break;
        if (bytes.has(at, "DPCP") && !found.document_at) found.document_at = at;
        if (bytes.has(at, "VGCP") && !found.window_at) found.window_at = at;
        const std::size_t length = bytes.u32(at + length_at);
        if (length > bytes.size() - at - preset_section_head) break;
        at += preset_section_head + length;
    }
    return found;
}

/// The state behind the head that the row gives, its two lengths filled in.
std::string framed_by_row(const PluginTableRow& row, std::string_view rest) {
    std::string head = row.headerTemplate;
    const std::string length = StateBytes().little(rest.size() + bytes_around_rest).take();
    for (const std::size_t at : {std::size_t{0}, second_length_at}) {
        if (head.size() >= at + length.size()) head.replace(at, length.size(), length);
    }
    return head + std::string(rest) + row.trailer;
}

/// The whole chain under the build's own tag, the window that it remembers taken as closed.
std::string framed_chain(const SettingsCase& c, std::optional<std::size_t> window_at) {
    const std::size_t start = static_cast<std::size_t>(c.insert.chunkOffset) + preset_chain_at;
    std::string chain(c.rest_from(start));
    if (window_at) {
        const std::size_t length = c.bytes.u32(*window_at + length_at);
        const bool fits = c.bytes.holds(*window_at + preset_section_head, length);
        if (length > min_window_bytes && fits) {
            chain[*window_at - start + length + window_switch_from_length] = '\0';
        }
    }
    StateBytes state;
    state.little(chain.size() + length_at).little(1).text("CMXH").little(chain.size());
    return state.text(chain).zeros(trailing_zeros).take();
}

}  // namespace

RuleAnswer translate_session_chain(const SettingsCase& insert_case) {
    const SettingsCase& c = insert_case;
    if (c.insert.code != session_chain_code) return std::nullopt;
    const std::size_t mark = c.bytes.find("6SMC", c.insert.blockStart);
    if (mark == ByteView::npos || mark == 0 || !c.bytes.holds(mark, session_head_bytes)) {
        return refused_state;
    }
    const std::size_t start = mark + session_chain_from_mark;
    if (!c.bytes.has(start, "DHSH")) return refused_state;
    const auto chain = walk_session_chain(c.bytes, start);
    if (!chain || !chain->file_name_at || !chain->has_amplifier) return refused_state;
    std::string sections(*c.bytes.text(start, chain->size));
    sections[*chain->file_name_at] = '\0';
    StateBytes state;
    state.little(chain->size + length_at).little(1).text("CMS6").little(chain->size);
    return state.text(sections).zeros(trailing_zeros).take();
}

RuleAnswer translate_preset_chain(const SettingsCase& insert_case) {
    const SettingsCase& c = insert_case;
    if (c.row.headerTemplate.empty() || c.row.trailerFlag == 0) return std::nullopt;
    if (c.kind() != ContainerKind::hxmc) return refused_state;
    const auto state_at = static_cast<std::size_t>(c.insert.chunkOffset);
    if (!c.bytes.has(state_at + preset_chain_at, "RHCP")) return refused_state;
    const PresetSections sections = walk_preset_chain(c.bytes, state_at + preset_chain_at);
    if (!sections.document_at) return refused_state;
    if (*sections.document_at != state_at + usual_document_at) {
        return framed_chain(c, sections.window_at);
    }
    const std::string_view rest = c.rest_from(state_at + usual_rest_at);
    return rest.empty() ? std::string() : framed_by_row(c.row, rest);
}

}  // namespace tanrove
