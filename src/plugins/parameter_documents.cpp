// A document's list of parameters:
//
//   <Parameters><NAME ...><PARAM id="..." value="..."/> ... </NAME></Parameters>
#include "plugins/parameter_documents.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <utility>

namespace tanrove {

namespace {

constexpr std::size_t version_window_bytes = 512;
constexpr std::size_t min_versioned_document = 16;

constexpr std::array<std::pair<std::string_view, std::string_view>, 25> renamed_ids = {{
    {"bypa", "MasterBypass"},    {"vrpu", "InputType_ID"},    {"sld1", "RetuneSpeed_ID"},
    {"kypu", "Key_ID"},          {"scpu", "Scale_ID"},        {"butc", "CKey_ID"},
    {"butC", "CSharpKey_ID"},    {"butd", "DKey_ID"},         {"butD", "DSharpKey_ID"},
    {"bute", "EKey_ID"},         {"butf", "FKey_ID"},         {"butF", "FSharpKey_ID"},
    {"butg", "GKey_ID"},         {"butG", "GSharpKey_ID"},    {"buta", "AKey_ID"},
    {"butA", "ASharpKey_ID"},    {"butb", "BKey_ID"},         {"papu", "Pattern_ID"},
    {"busy", "HostSynch_ID"},    {"dil1", "GestureTempo_ID"}, {"butr", "Trigger_ID"},
    {"sld2", "PatternSpeed_ID"}, {"sld3", "Tracking_ID"},     {"dil7", "TempoSynchLen_ID"},
    {"HumK", "Humanize_ID"},
}};

// Measured on the documents that the VST builds wrote. A plug-in of which parameters are missing
// here is refused: a document with a part of them loads the defaults of all.
constexpr DocumentParameter warm_parameters[] = {
    {"bypa", "0.0", "but3"}, {"driv", "0.0", "sld1"}, {"ingn", "0.0", ""}};
constexpr DocumentParameter maximizer_parameters[] = {{"ceil", "-3.0", "sld3"}};
constexpr DocumentParameter choir_parameters[] = {{"Sprd", "100.0", "sld4"}};
constexpr DocumentParameter morph_parameters[] = {{"x001", "12.0", "pnt5"}};
constexpr DocumentParameter aspire_parameters[] = {{"QQQQ", "0.699999988079071", "sld5"}};

constexpr DocumentTable document_tables[] = {
    {"AntrHE41", 103, {}},
    {"AntrVMrp", 25, morph_parameters},
    {"AntrArti", 19, {}},
    {"AntrMutr", 13, {}},
    {"AntrMicX", 12, {}},
    {"AntrVDbl", 10, {}},
    {"AntrAspr", 9, aspire_parameters},
    {"AntrWarm", 6, warm_parameters},
    {"AntrVChr", 6, choir_parameters},
    {"AntrVMax", 4, maximizer_parameters},
};

constexpr std::string_view list_begin = "<Parameters>";
constexpr std::string_view list_end = "</Parameters>";

/// The text between `before` at or behind `from` and the next `after`.
std::optional<std::string_view> text_between(std::string_view text, std::size_t from,
                                             std::string_view before, std::string_view after) {
    const auto begin = text.find(before, from);
    if (begin == std::string_view::npos) return std::nullopt;
    const auto inside = begin + before.size();
    const auto end = text.find(after, inside);
    if (end == std::string_view::npos) return std::nullopt;
    return text.substr(inside, end - inside);
}

/// The values of the list by their ids; of two of one id the later counts.
std::map<std::string_view, std::string_view> values_of(std::string_view list) {
    constexpr std::string_view mark = "<PARAM id=\"";
    std::map<std::string_view, std::string_view> values;
    for (auto at = list.find(mark); at != std::string_view::npos;) {
        const auto next = list.find(mark, at + mark.size());
        const auto element = list.substr(at, next - at);
        const auto id = text_between(element, 0, mark, "\"");
        const auto value = text_between(element, mark.size(), "value=\"", "\"");
        if (id && value) values[*id] = *value;
        at = next;
    }
    return values;
}

/// Takes a number of digits off the front, and the point behind it.
std::uint32_t take_version_number(std::string_view& text) {
    std::uint32_t number = 0;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        number = number * 10 + static_cast<std::uint32_t>(text.front() - '0');
        text.remove_prefix(1);
    }
    if (text.starts_with('.')) text.remove_prefix(1);
    return number;
}

}  // namespace

const DocumentTable* document_table(std::string_view code) {
    const auto* table = std::ranges::find(document_tables, code, &DocumentTable::code);
    return table == std::end(document_tables) ? nullptr : table;
}

std::string with_renamed_parameters(std::string document) {
    for (const auto& [from, to] : renamed_ids) {
        constexpr std::string_view mark = "<PARAM id=\"";
        const std::string old_start = std::string(mark) + std::string(from) + "\"";
        const auto at = document.find(old_start);
        if (at == std::string::npos) continue;
        document.replace(at + mark.size(), from.size(), to);
    }
    return document;
}

std::string with_all_parameters(const std::string& document,
                                std::span<const DocumentParameter> parameters) {
    const std::string_view text = document;
    const auto begin = text.find("<Parameters><");
    if (begin == std::string_view::npos) return document;
    const auto element_at = begin + list_begin.size();
    const auto end = text.find(list_end, element_at);
    const auto element_end = text.find('>', element_at);
    if (end == std::string_view::npos || element_end == std::string_view::npos) return document;
    if (element_end >= end) return document;

    const std::string_view opening = text.substr(element_at, element_end + 1 - element_at);
    const auto name_end = std::min(opening.find(' '), opening.find('>'));
    const auto values = values_of(text.substr(element_at, end - element_at));
    std::string list(list_begin);
    list += opening;
    for (const DocumentParameter& parameter : parameters) {
        const auto held = values.find(parameter.control_id);
        const bool is_held = !parameter.control_id.empty() && held != values.end();
        list += "<PARAM id=\"" + std::string(parameter.tag) + "\" value=\"";
        list += is_held ? held->second : parameter.default_value;
        list += "\"/>";
    }
    list += "</" + std::string(opening.substr(1, name_end - 1)) + ">";
    return document.substr(0, begin) + list + document.substr(end);
}

std::uint32_t document_version(std::string_view document) {
    if (document.size() < min_versioned_document) return 0;
    const auto window = document.substr(0, version_window_bytes);
    constexpr std::string_view mark = "ChunkVersion=\"";
    const auto at = window.find(mark);
    if (at == std::string_view::npos) return 0;
    std::string_view digits = window.substr(at + mark.size());
    const std::uint32_t major = take_version_number(digits);
    const std::uint32_t minor = take_version_number(digits);
    const std::uint32_t build = take_version_number(digits);
    return major << 16 | (minor << 8 & 0xffff) | build;
}

}  // namespace tanrove
