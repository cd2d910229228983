// The shared forms of name lists.
#include "report/name_lists.hpp"

#include <algorithm>
#include <utility>

#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

bool is_control(char c) {
    return (c >= 0 && c < ' ') || c == '\x7f';
}

}  // namespace

void print_named(TextBuffer& out, const std::vector<std::string>& names, CountText text) {
    if (!print_count(out, count_of(names), text)) return;
    out.append(quoted_names(names, no_cap) + "\n");
}

void print_named_below(TextBuffer& out, const std::vector<std::string>& names, CountText text,
                       std::size_t cap) {
    if (print_count(out, count_of(names), text)) out.append(one_name_a_line(names, cap));
}

std::string shown_name(std::string name) {
    std::replace_if(name.begin(), name.end(), is_control, ' ');
    return name;
}

std::string quoted_names(const std::vector<std::string>& names, std::size_t cap) {
    const std::size_t shown = std::min(names.size(), cap);
    std::string list;
    for (std::size_t i = 0; i < shown; ++i) {
        list += (i == 0 ? " \"" : ", \"") + shown_name(names[i]) + "\"";
    }
    if (names.size() > shown) list += ", ...";
    return list;
}

std::string one_name_a_line(const std::vector<std::string>& names, std::size_t cap) {
    const std::size_t shown = std::min(names.size(), cap);
    std::string list;
    for (std::size_t i = 0; i < shown; ++i) list += "      " + shown_name(names[i]) + "\n";
    if (names.size() > shown) {
        list += formatted("      ... and %d more\n", static_cast<int>(names.size() - shown));
    }
    return list;
}

std::string meters_at_bars(const std::vector<MeterPoint>& meters, std::size_t cap) {
    const std::size_t shown = std::min(meters.size(), cap);
    std::string list;
    for (std::size_t i = 0; i < shown; ++i) {
        list += formatted("%s %u/%u at bar %u", i == 0 ? "" : ",", meters[i].numerator,
                          meters[i].denominator, meters[i].bar);
    }
    if (meters.size() > shown) {
        list += formatted(", ... and %d more", static_cast<int>(meters.size() - shown));
    }
    return list;
}

std::string counted_names(const std::vector<CountedName>& names) {
    std::string list;
    const char* separator = "";
    for (const CountedName& item : names) {
        list += formatted("%s%s x%d", separator, shown_name(item.name).c_str(), item.count);
        separator = ", ";
    }
    return list;
}

std::string control_lanes(const std::vector<ControlLanes>& controls) {
    std::string list;
    const char* separator = "";
    for (const ControlLanes& item : controls) {
        list += separator;
        list += formatted("%s %s (%d)", shown_name(item.plugin).c_str(),
                          shown_name(item.control).c_str(), item.lanes);
        separator = ", ";
    }
    return list;
}

}  // namespace tanrove
