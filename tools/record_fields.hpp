// Takes plain records of any type apart without knowing them.
#pragma once

#include <concepts>
#include <cstddef>

namespace tanrove::tools {

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
        use_each(__VA_ARGS__);              \
    }

/// Calls `use` with each field of the record, in the order of their declaration.
template <typename Record, typename Use>
void for_each_field(const Record& record, Use use) {
    const auto use_each = [&use](const auto&... fields) { (use(fields), ...); };
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
    TANROVE_RECORD_OF(24, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x)
    TANROVE_RECORD_OF(26, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x, y,
                      z)
    TANROVE_RECORD_OF(29, a, b, c, d, e, f, g, h, i, j, k, l, m, n, o, p, q, r, s, t, u, v, w, x, y,
                      z, aa, ab, ac)
}

#undef TANROVE_RECORD_OF

}  // namespace tanrove::tools
