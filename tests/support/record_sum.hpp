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

namespace tanrove::builder {

/// Stands for any field while the fields of a record are counted.
struct AnyField {
    template <typename Field>
    constexpr operator Field() const {
        return Field{};
    }
};

template <typename Record, typename... Fields>
constexpr std::size_t field_count() {
    if constexpr (requires { Record{Fields{}..., AnyField{}}; }) {
        return field_count<Record, Fields..., AnyField>();
    } else {
        return sizeof...(Fields);
    }
}

// A structured binding must spell out its names.
#define TANROVE_RECORD_OF(count, ...)       \
    if constexpr (fields == (count)) {      \
        const auto& [__VA_ARGS__] = record; \
        look_at_each(__VA_ARGS__);          \
    }

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
            look_at_fields(value);
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

    template <typename... Fields>
    void look_at_each(const Fields&... fields) {
        (look_at(fields), ...);
    }

    template <typename Record>
    void look_at_fields(const Record& record) {
        constexpr std::size_t fields = field_count<Record>();
        static_assert((fields >= 1 && fields <= 24) || fields == 26 || fields == 29,
                      "a line below is missing");
        TANROVE_RECORD_OF(1, a)
        TANROVE_RECORD_OF(2, a, b)
        TANROVE_RECORD_OF(3, a, b, c)
        TANROVE_RECORD_OF(4, a, b, c, d)
        TANROVE_RECORD_OF(5, a, b, c, d, e)
        TANROVE_RECORD_OF(6, a, b, c, d, e, f)
        TANROVE_RECORD_OF(7, a, b, c, d, e, f, g)
        TANROVE_RECORD_OF(8, a, b, c, d, e, f, g, h)
        TANROVE_RECORD_OF(9, a, b, c, d, e, f, g, h, i)
        TANROVE_RECORD_OF(10, a, b, c, d, e, f, g, h, i, j)
        TANROVE_RECORD_OF(11, a, b, c, d, e, f, g, h, i, j, k)
        TANROVE_RECORD_OF(12, a, b, c, d, e, f, g, h, i, j, k, l)
        TANROVE_RECORD_OF(13, a, b, c, d, e, f, g, h, i, j, k, l, m)
        TANROVE_RECORD_OF(14, a, b, c, d, e, f, g, h, i, j, k, l, m, n)
        TANROVE_RECORD_OF(15, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o)
        TANROVE_RECORD_OF(16, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p)
        TANROVE_RECORD_OF(17, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q)
        TANROVE_RECORD_OF(18, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r)
        TANROVE_RECORD_OF(19, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s)
        TANROVE_RECORD_OF(20, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t)
        TANROVE_RECORD_OF(21, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u)
        TANROVE_RECORD_OF(22, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v)
        TANROVE_RECORD_OF(23, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w)
        TANROVE_RECORD_OF(24, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w,
                          x)
        TANROVE_RECORD_OF(26, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w,
                          x, y, z)
        TANROVE_RECORD_OF(29, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w,
                          x, y, z, aa, ab, ac)
    }

    void mix(std::uint64_t value) {
        digest_ = (std::rotl(digest_, 5) ^ value) * 0x9e3779b97f4a7c15;
    }

    std::size_t bytes_ = 0;
    std::uint64_t digest_ = 0;
};

#undef TANROVE_RECORD_OF

}  // namespace tanrove::builder
