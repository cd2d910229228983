// The names of the mixer's strips, and which of them a playlist's name points at.
#include "mix/strip_names.hpp"

namespace tanrove {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

/// "Vox" of "Vox.01"; empty where the name does not end that way.
std::string_view without_playlist_number(std::string_view name) {
    constexpr std::size_t number_length = 3;
    if (name.size() <= number_length) return {};
    const auto number = name.substr(name.size() - number_length);
    if (number[0] != '.' || !is_digit(number[1]) || !is_digit(number[2])) return {};
    return name.substr(0, name.size() - number_length);
}

}  // namespace

const std::string& shown_name(const StripRow& row) {
    return row.current_name.empty() ? row.original_name : row.current_name;
}

StripNames::StripNames(const StripRows& strips) {
    for (const auto& row : strips.rows) {
        if (shown_name(row).empty()) continue;
        shown_.insert(shown_name(row));
        shown_of_original_.try_emplace(row.original_name, shown_name(row));
    }
}

std::optional<std::string> StripNames::strip_called(std::string_view name) const {
    if (name.empty()) return std::nullopt;
    if (const auto shown = shown_.find(name); shown != shown_.end()) return *shown;
    // Playlists keep their names when the track is renamed.
    const auto original = shown_of_original_.find(name);
    if (original != shown_of_original_.end()) return original->second;
    return std::nullopt;
}

std::optional<std::string> StripNames::parent_of(std::string_view playlist) const {
    if (auto own = strip_called(playlist)) return own;
    return strip_called(without_playlist_number(playlist));
}

}  // namespace tanrove
