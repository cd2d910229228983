// Sums up plain records of any type without knowing them: how much memory they hold, and a number
// that changes with any field of theirs. A field that is added to a record counts by itself.
#pragma once

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <ranges>
#include <string_view>
#include <type_traits>
#include <utility>

#include "tools/record_fields.hpp"

namespace tanrove::tools {

class RecordSum {
public:
    std::size_t bytes() const { return bytes_; }
    std::uint64_t digest() const { return digest_; }

    template <typename Value>
    void add(const Value& value) {
        bytes_ += sizeof value;
        look_at(value);
    }

private:
    template <typename Value>
    void look_at(const Value& value) {
        if constexpr (std::floating_point<Value>) {
            mix(std::bit_cast<std::uint64_t>(static_cast<double>(value)));
        } else if constexpr (std::integral<Value> || std::is_enum_v<Value>) {
            mix(static_cast<std::uint64_t>(value));
        } else if constexpr (std::convertible_to<const Value&, std::string_view>) {
            look_at_text(value);
        } else if constexpr (requires { value.has_value(); }) {
            mix(value.has_value());
            if (value) look_at(*value);
        } else if constexpr (std::ranges::range<const Value>) {
            look_at_list(value);
        } else if constexpr (requires { value.first; }) {
            look_at(value.first);
            look_at(value.second);
        } else {
            for_each_field(value, [this](const auto& field) { this->look_at(field); });
        }
    }

    void look_at_text(std::string_view text) {
        bytes_ += text.size();
        mix(text.size());
        for (const char c : text) mix(static_cast<std::uint64_t>(c));
    }

    template <typename List>
    void look_at_list(const List& list) {
        mix(static_cast<std::uint64_t>(std::ranges::distance(list)));
        for (const auto& element : list) add(element);
    }

    void mix(std::uint64_t value) {
        digest_ = (std::rotl(digest_, 5) ^ value) * 0x9e3779b97f4a7c15;
    }

    std::size_t bytes_ = 0;
    std::uint64_t digest_ = 0;
};

}  // namespace tanrove::tools
