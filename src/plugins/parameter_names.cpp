// Lines that are no row are left out, the header line among them.
#include "plugins/parameter_names.hpp"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "base/text_lines.hpp"
#include "plugins/product_names.hpp"

namespace tanrove {

namespace {

constexpr std::size_t field_count = 5;
constexpr std::size_t most_number_digits = 6;
constexpr std::string_view header_plugin = "plugin";

struct ParameterRow {
    std::string_view plugin;
    std::string_view build;
    int number = -1;  ///< not negative in a row
    std::string_view name;
};

ParameterRow read_row(std::string_view line) {
    ParameterRow row;
    const bool has_fields =
        std::ranges::count(line, '\t') >= static_cast<std::ptrdiff_t>(field_count - 1);
    if (!has_fields) return row;
    std::array<std::string_view, field_count> fields;
    for (auto& field : fields) field = take_field(line, '\t');
    const std::string_view number = fields[3];
    if (fields[0] == header_plugin || fields[4].empty()) return row;
    if (!is_number(number) || number.size() > most_number_digits) return row;
    row = {fields[0], fields[1], static_cast<int>(leading_number(number)), fields[4]};
    return row;
}

void count_names(ParameterTable& table) {
    for (const auto& [number, name] : table.names) {
        ++table.number_count[name];
        ++table.plain_count[lower_alnum(name)];
    }
}

/// The names that stand at the same number in all of them.
template <typename Builds>
ParameterTable agreed_names(const Builds& builds) {
    const auto names_of = [](const auto& build) { return build.second.names.size(); };
    const auto shortest = std::ranges::min_element(builds, {}, names_of);
    ParameterTable agreed;
    for (const auto& entry : shortest->second.names) {
        const bool all_have_it = std::ranges::all_of(builds, [&](const auto& build) {
            const auto found = build.second.names.find(entry.first);
            return found != build.second.names.end() && found->second == entry.second;
        });
        if (all_have_it) agreed.names.insert(entry);
    }
    return agreed;
}

}  // namespace

bool ParameterTable::is_unique(std::string_view name) const {
    const auto count = number_count.find(name);
    return count != number_count.end() && count->second == 1;
}

bool ParameterTable::is_unique_plain(std::string_view plain_name) const {
    const auto count = plain_count.find(plain_name);
    return count != plain_count.end() && count->second == 1;
}

int ParameterNames::add(std::string_view text) {
    std::set<std::pair<std::string_view, std::string_view>> builds;
    LineReader lines(text, max_parameter_line_bytes);
    while (const auto line = lines.next()) {
        const ParameterRow row = read_row(*line);
        if (row.number < 0) continue;
        builds.emplace(row.plugin, row.build);
        ParameterTable& table = plugins_[std::string(row.plugin)].builds[std::string(row.build)];
        table.names.insert_or_assign(row.number, std::string(row.name));
    }
    return static_cast<int>(builds.size());
}

void ParameterNames::finish() {
    for (auto& [name, plugin] : plugins_) {
        for (auto& [ident, table] : plugin.builds) count_names(table);
        plugin.agreed = agreed_names(plugin.builds);
        count_names(plugin.agreed);
    }
}

const ParameterTable* ParameterNames::table_for(std::string_view fx_name, std::string_view file,
                                                std::string_view ident) const {
    auto plugin = plugins_.find(fx_name);
    if (plugin == plugins_.end() && !file.empty()) plugin = plugins_.find(file);
    if (plugin == plugins_.end()) return nullptr;
    const auto build = plugin->second.builds.find(ident);
    return build == plugin->second.builds.end() ? &plugin->second.agreed : &build->second;
}

}  // namespace tanrove
