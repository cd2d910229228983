// The names of the mixer's strips, and which of them a playlist's name points at.
#include "mix/strip_names.hpp"

#include "base/text_lines.hpp"

namespace tanrove {

namespace {

/// "Vox" of "Vox.01"; empty where the name does not end that way.
std::string_view without_playlist_number(std::string_view name) {
    constexpr std::size_t number_length = 3;
    if (name.size() <= number_length) return {};
    const auto number = name.substr(name.size() - number_length);
    if (number[0] != '.' || !is_digit(number[1]) || !is_digit(number[2])) return {};
    return name.substr(0, name.size() - number_length);
}

}  // namespace

StripNames::StripNames(std::span<const StripRow> rows) : rows_(rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (shown_name(rows[i]).empty()) continue;
        row_of_shown_.try_emplace(shown_name(rows[i]), i);
        row_of_original_.try_emplace(rows[i].original_name, i);
    }
}

std::optional<std::size_t> StripNames::row_shown(std::string_view name) const {
    const auto found = row_of_shown_.find(name);
    return found == row_of_shown_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> StripNames::row_called(std::string_view name) const {
    if (name.empty()) return std::nullopt;
    if (const auto shown = row_shown(name)) return shown;
    const auto found = row_of_original_.find(name);
    return found == row_of_original_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> StripNames::strip_called(std::string_view name) const {
    const auto row = row_called(name);
    return row ? std::optional(shown_name(rows_[*row])) : std::nullopt;
}

std::optional<std::string> StripNames::parent_of(std::string_view playlist) const {
    if (auto own = strip_called(playlist)) return own;
    return strip_called(without_playlist_number(playlist));
}

}  // namespace tanrove
