// Prints plain records of any type without knowing them, for people who look into a session: fields
// in the order of their declaration, texts in quotes, lists in brackets, "-" for what is not there.
#pragma once

#include <concepts>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>

#include "base/formatted_text.hpp"
#include "tools/record_fields.hpp"

namespace tanrove::tools {

inline std::string quoted(std::string_view text) {
    std::string shown = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool is_plain = byte >= 0x20 && byte != 0x7f && c != '"' && c != '\\';
        shown += is_plain ? std::string(1, c) : formatted("\\x%02x", byte);
    }
    return shown + "\"";
}

template <typename Value>
std::string record_text(const Value& value) {
    if constexpr (std::same_as<Value, bool>) {
        return value ? "yes" : "no";
    } else if constexpr (std::floating_point<Value>) {
        return formatted("%.17g", static_cast<double>(value));
    } else if constexpr (std::is_enum_v<Value>) {
        return std::to_string(static_cast<std::underlying_type_t<Value>>(value));
    } else if constexpr (std::integral<Value>) {
        return std::to_string(value);
    } else if constexpr (std::convertible_to<const Value&, std::string_view>) {
        return quoted(value);
    } else if constexpr (requires { value.has_value(); }) {
        return value ? record_text(*value) : "-";
    } else if constexpr (std::ranges::range<const Value>) {
        std::string all;
        for (const auto& element : value) all += (all.empty() ? "" : ", ") + record_text(element);
        return "[" + all + "]";
    } else if constexpr (requires { value.first; }) {
        return record_text(value.first) + ": " + record_text(value.second);
    } else {
        std::string all;
        for_each_field(value, [&all](const auto& field) {
            all += (all.empty() ? "" : ", ") + record_text(field);
        });
        return "{" + all + "}";
    }
}

}  // namespace tanrove::tools
