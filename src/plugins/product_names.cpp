// Takes the groups in parentheses off the end of a name, one by one.
#include "plugins/product_names.hpp"

#include <algorithm>
#include <iterator>

#include "base/text_lines.hpp"

namespace tanrove {

namespace {

constexpr std::string_view group_opening = " (";

/// Position of the blank in front of the last group; npos where the name does not end with one.
std::size_t last_group_at(std::string_view name) {
    if (!name.ends_with(')')) return std::string_view::npos;
    return name.rfind(group_opening);
}

std::string_view text_of_group(std::string_view name, std::size_t group_at) {
    const std::size_t at = group_at + group_opening.size();
    return name.substr(at, name.size() - at - 1);
}

/// "mono", "stereo", "8ch", "2->6ch" or "32 out".
bool is_channel_layout(std::string_view group) {
    if (group == "mono" || group == "stereo") return true;
    constexpr std::string_view outputs = " out";
    constexpr std::string_view channels = "ch";
    if (group.ends_with(outputs)) {
        return is_number(group.substr(0, group.size() - outputs.size()));
    }
    if (!group.ends_with(channels)) return false;
    const std::string_view counts = group.substr(0, group.size() - channels.size());
    constexpr std::string_view arrow = "->";
    const std::size_t arrow_at = counts.find(arrow);
    if (arrow_at == std::string_view::npos) return is_number(counts);
    return is_number(counts.substr(0, arrow_at)) &&
           is_number(counts.substr(arrow_at + arrow.size()));
}

}  // namespace

std::string lower_alnum(std::string_view text) {
    std::string kept;
    kept.reserve(text.size());
    for (const char c : text) {
        if (is_digit(c) || (c >= 'a' && c <= 'z')) kept += c;
        if (c >= 'A' && c <= 'Z') kept += static_cast<char>(c - 'A' + 'a');
    }
    return kept;
}

std::string_view without_channel_layout(std::string_view name) {
    std::size_t at = last_group_at(name);
    while (at != std::string_view::npos && is_channel_layout(text_of_group(name, at))) {
        name = name.substr(0, at);
        at = last_group_at(name);
    }
    return name;
}

std::string_view short_name(std::string_view name) {
    const std::string_view plain = without_channel_layout(name);
    return plain.substr(0, plain.rfind(group_opening));
}

std::string_view without_vendor(std::string_view name) {
    for (std::size_t at = last_group_at(name); at != std::string_view::npos;) {
        name = name.substr(0, at);
        at = last_group_at(name);
    }
    return name;
}

std::string_view maker_of(std::string_view name) {
    const std::string_view plain = without_channel_layout(name);
    const std::size_t at = last_group_at(plain);
    return at == std::string_view::npos ? std::string_view() : text_of_group(plain, at);
}

std::string_view behind_kind(std::string_view fx_name) {
    constexpr std::string_view kind_end = ": ";
    const std::size_t at = fx_name.find(kind_end);
    return at == std::string_view::npos ? fx_name : fx_name.substr(at + kind_end.size());
}

bool is_named_by_reaper(std::string_view fx_name) {
    constexpr std::string_view kinds[] = {"VST", "VST3", "CLAP", "LV2", "JS", "AU", "DX"};
    std::string_view kind = fx_name.substr(0, fx_name.find(": "));
    if (kind.size() == fx_name.size()) return false;
    if (kind.ends_with('i')) kind.remove_suffix(1);  // an instrument
    return std::ranges::find(kinds, kind) != std::end(kinds);
}

std::string_view raw_file_stem(std::string_view path) {
    const std::size_t slash = path.find_last_of("/\\");
    if (slash != std::string_view::npos) path.remove_prefix(slash + 1);
    return path.substr(0, path.rfind('.'));
}

std::string file_stem(std::string_view path) {
    return lower_alnum(raw_file_stem(path));
}

}  // namespace tanrove
