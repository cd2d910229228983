// People edit this table: what a field does not say has a default.
#include "plugins/learned_plugins.hpp"

#include <charconv>
#include <vector>

#include "base/formatted_text.hpp"
#include "base/text_lines.hpp"
#include "plugins/identity_rules.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

constexpr char field_mark = '|';
constexpr std::size_t least_fields = 4;

/// The insert key that a signature means; empty where it is too short. The blanks around it are the
/// table's, unless the code would fall short without those that belong to it.
std::string key_of(std::string_view field) {
    std::string_view signature = trimmed(field);
    if (signature.size() < code_characters && field.size() > code_characters) {
        signature = field.substr(0, field.size() - 1);
    }
    if (signature.size() == shell_key_characters) return std::string(signature);
    return signature.size() < code_characters ? std::string()
                                              : std::string(signature.substr(0, code_characters));
}

/// The whole field as a number; nullopt where it is none or passes 32 bits.
std::optional<std::uint32_t> number_in(std::string_view field) {
    std::uint32_t number = 0;
    const char* end = field.data() + field.size();
    const auto read = std::from_chars(field.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return number;
}

std::int32_t pins_in_field(std::string_view field) {
    const auto pins = number_in(field);
    return pins && *pins <= max_pins ? static_cast<std::int32_t>(*pins) : default_pins;
}

/// The product in "VST3: Product (Maker)".
std::string product_of(const std::string& fx_name, const std::string& code) {
    const std::string_view product = without_vendor(behind_kind(fx_name));
    return product.empty() ? code : std::string(product);
}

std::optional<PluginTableRow> read_row(std::string_view line) {
    std::vector<std::string_view> fields;
    const std::string_view signature = line.substr(0, line.find(field_mark));
    while (!line.empty()) fields.push_back(trimmed(take_field(line, field_mark)));
    PluginTableRow row;
    row.code = key_of(signature);
    if (fields.size() < least_fields || row.code.empty() || fields[3].empty()) return std::nullopt;
    fields.resize(8);
    row.fxName = fields[1].empty() ? row.code : fields[1];
    row.productName = product_of(row.fxName, row.code);
    row.named_by_user = !is_named_by_reaper(row.fxName);
    row.file = fields[2];
    row.ident = fields[3];
    row.pinsIn = pins_in_field(fields[4]);
    row.pinsOut = pins_in_field(fields[5]);
    row.tailWord = static_cast<std::int32_t>(number_in(fields[6]).value_or(0));
    row.fabName = fields[7].empty() ? program_name_for(row.code) : std::string(fields[7]);
    return row;
}

std::string as_field(const std::string& text) {
    std::string field = text;
    for (char& c : field) {
        const bool is_control = static_cast<unsigned char>(c) < ' ';
        if (c == field_mark || is_control) c = ' ';
    }
    return field;
}

}  // namespace

LearnedPlugins read_learned_plugins(std::string_view text) {
    LearnedPlugins learned;
    LineReader lines(text, max_learned_line_bytes);
    while (const auto line = lines.next()) {
        if (line->starts_with('#')) continue;
        auto row = read_row(*line);
        if (!row) continue;
        ++learned.line_count;
        std::string code = row->code;
        learned.rows.insert_or_assign(std::move(code), std::move(*row));
    }
    return learned;
}

std::string learned_line(const std::string& signature, const ChainPlugin& plugin) {
    SettingsHeader header;
    header.pins_in = default_pins;
    header.pins_out = default_pins;
    if (plugin.header) header = *plugin.header;
    const std::string program =
        header.is_fabfilter_state ? std::string(" | ") + default_program_name : std::string();
    return formatted("%s | %s | %s | %s | %u | %u | %u%s\n", as_field(signature).c_str(),
                     as_field(plugin.fx_name).c_str(), as_field(plugin.file).c_str(),
                     as_field(plugin.ident).c_str(), header.pins_in, header.pins_out,
                     header.tail_word, program.c_str());
}

}  // namespace tanrove
