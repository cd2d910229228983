// Numbers are exact: "%f" rounds the double's true value, ties to even digits, as printf does.
#include "base/c_locale_print.hpp"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

constexpr int usual_precision = 6;
constexpr int max_precision = 17;
constexpr std::size_t longest_number_bytes = 400;  // 309 digits, sign, point and precision

// Doubles below 2^53 come apart into a whole number and a fraction without loss.
constexpr double whole_limit = 9007199254740992.0;
constexpr int mantissa_bits = 52;
constexpr std::uint64_t mantissa_mask = (std::uint64_t{1} << mantissa_bits) - 1;
constexpr int exponent_offset = 1075;  // a double is mantissa * 2 ^ (stored exponent - this)

constexpr std::array<std::uint64_t, 11> powers_of_ten = {
    1,         10,         100,         1'000,         10'000,        100'000,
    1'000'000, 10'000'000, 100'000'000, 1'000'000'000, 10'000'000'000};
constexpr int max_digits_behind_point = 10;

/// A number of two words.
struct Wide {
    std::uint64_t high = 0;
    std::uint64_t low = 0;
};

/// The product of a mantissa of 53 bits and a power of ten of 34.
Wide product(std::uint64_t mantissa, std::uint64_t power) {
    constexpr int half_bits = 27;
    const std::uint64_t upper = (mantissa >> half_bits) * power;
    const std::uint64_t lower = (mantissa & ((std::uint64_t{1} << half_bits) - 1)) * power;
    Wide sum;
    sum.low = (upper << half_bits) + lower;
    sum.high = (upper >> (64 - half_bits)) + (sum.low < lower ? 1 : 0);
    return sum;
}

/// `number` / 2 ^ `shift`, 53 to 88, to the nearest whole number, ties to the even one.
std::uint64_t shifted_and_rounded(const Wide& number, int shift) {
    Wide rest;
    Wide half;
    std::uint64_t whole = 0;
    if (shift < 64) {
        whole = number.high << (64 - shift) | number.low >> shift;
        rest.low = number.low & ((std::uint64_t{1} << shift) - 1);
        half.low = std::uint64_t{1} << (shift - 1);
    } else {
        whole = number.high >> (shift - 64);
        rest = {number.high & ((std::uint64_t{1} << (shift - 64)) - 1), number.low};
        if (shift == 64) {
            half.low = std::uint64_t{1} << 63;
        } else {
            half.high = std::uint64_t{1} << (shift - 65);
        }
    }
    const bool is_half = rest.high == half.high && rest.low == half.low;
    const bool is_more = rest.high > half.high || (rest.high == half.high && rest.low > half.low);
    return whole + (is_more || (is_half && whole % 2 == 1) ? 1 : 0);
}

/// A fraction below 1, times a power of ten, to the nearest whole number.
std::uint64_t digits_of(double fraction, std::uint64_t power) {
    constexpr int last_shift_that_counts = 88;  // beyond it the product is below a quarter
    const auto bits = std::bit_cast<std::uint64_t>(fraction);
    const int shift = exponent_offset - static_cast<int>(bits >> mantissa_bits);
    if (shift > last_shift_that_counts) return 0;
    const std::uint64_t mantissa = (bits & mantissa_mask) | (mantissa_mask + 1);
    return shifted_and_rounded(product(mantissa, power), shift);
}

void append_fixed(std::string& target, double value, int precision) {
    std::array<char, longest_number_bytes> text;
    char* const end = text.data() + text.size();
    const double size = std::abs(value);
    if (!(size < whole_limit) || precision < 1 || precision > max_digits_behind_point) {
        const auto done =
            std::to_chars(text.data(), end, value, std::chars_format::fixed, precision);
        target.append(text.data(), done.ptr);
        return;
    }
    auto whole = static_cast<std::uint64_t>(size);
    const std::uint64_t power = powers_of_ten[static_cast<std::size_t>(precision)];
    std::uint64_t digits = digits_of(size - static_cast<double>(whole), power);
    if (digits == power) {
        digits = 0;
        ++whole;
    }
    char* at = text.data();
    if (std::signbit(value)) *at++ = '-';
    at = std::to_chars(at, end, whole).ptr;
    *at = '.';
    for (int i = precision; i > 0; --i) {
        at[i] = static_cast<char>('0' + digits % 10);
        digits /= 10;
    }
    target.append(text.data(), at + precision + 1);
}

void append_general(std::string& target, double value, int precision) {
    std::array<char, longest_number_bytes> text;
    char* const end = text.data() + text.size();
    // Small whole numbers are printed as what they are.
    constexpr double small = 10;
    if (std::abs(value) < small && !std::signbit(value) && value == std::floor(value)) {
        target += static_cast<char>('0' + static_cast<int>(value));
        return;
    }
    const auto done = std::to_chars(text.data(), end, value, std::chars_format::general, precision);
    target.append(text.data(), done.ptr);
}

template <typename Whole>
void append_whole(std::string& target, Whole value) {
    std::array<char, 24> text;
    const auto done = std::to_chars(text.data(), text.data() + text.size(), value);
    target.append(text.data(), done.ptr);
}

/// The precision at `format`, which moves behind it; -1 for one that is not known.
int read_precision(const char*& format) {
    if (*format != '.') return usual_precision;
    ++format;
    if (*format < '0' || *format > '9') return -1;
    int precision = 0;
    for (; *format >= '0' && *format <= '9' && precision <= max_precision; ++format) {
        precision = precision * 10 + (*format - '0');
    }
    return precision <= max_precision ? precision : -1;
}

}  // namespace

bool append_plain(std::string& target, const char* format, std::va_list values) {
    const std::size_t before = target.size();
    const auto refuse = [&] {
        target.resize(before);
        return false;
    };
    for (;;) {
        const char* const conversion = std::strchr(format, '%');
        if (conversion == nullptr) break;
        target.append(format, conversion);
        format = conversion + 1;
        const bool has_precision = *format == '.';
        const int precision = read_precision(format);
        const bool is_real = *format == 'f' || *format == 'g';
        if (precision < 0 || (has_precision && !is_real)) return refuse();
        if (*format == 'f') {
            append_fixed(target, va_arg(values, double), precision);
        } else if (*format == 'g') {
            append_general(target, va_arg(values, double), precision);
        } else if (*format == 's') {
            const char* const text = va_arg(values, const char*);
            if (text == nullptr) return refuse();
            target.append(text);
        } else if (*format == 'd') {
            append_whole(target, va_arg(values, int));
        } else if (*format == 'u') {
            append_whole(target, va_arg(values, unsigned));
        } else if (*format == 'l' && format[1] == 'u') {
            ++format;
            append_whole(target, va_arg(values, unsigned long));
        } else if (*format == '%') {
            target += '%';
        } else {
            return refuse();
        }
        ++format;
    }
    target.append(format);
    return target.size() - before < max_formatted_bytes || refuse();
}

}  // namespace tanrove
