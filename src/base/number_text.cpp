// Numbers are exact: "%f" rounds the double's true value, ties to even digits, as printf does.
#include "base/number_text.hpp"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace tanrove {

namespace {

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

/// "00", "01" to "99", one behind the other.
constexpr auto digit_pairs = [] {
    std::array<char, 200> pairs = {};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        pairs[i] = static_cast<char>('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
    }
    return pairs;
}();

/// Writes a number with so many digits, zeros in front.
void put_digits(char* at, std::uint64_t number, int count) {
    for (; count >= 2; count -= 2) {
        std::memcpy(at + count - 2, &digit_pairs[number % 100 * 2], 2);
        number /= 100;
    }
    if (count == 1) *at = static_cast<char>('0' + number);
}

}  // namespace

char* put_part(char* at, const Fixed& number) {
    const auto [value, precision] = number;
    const double size = std::abs(value);
    if (!(size < whole_limit) || precision < 1 || precision > max_digits_behind_point) {
        return std::to_chars(at, at + longest_number_bytes, value, std::chars_format::fixed,
                             precision)
            .ptr;
    }
    auto whole = static_cast<std::uint64_t>(size);
    const double fraction = size - static_cast<double>(whole);
    const std::uint64_t power = powers_of_ten[static_cast<std::size_t>(precision)];
    const bool is_whole = fraction == 0;
    std::uint64_t digits = is_whole ? 0 : digits_of(fraction, power);
    if (digits == power) {
        digits = 0;
        ++whole;
    }
    if (std::signbit(value)) *at++ = '-';
    if (whole < 10) {
        *at++ = static_cast<char>('0' + whole);
    } else {
        at = put_part(at, whole);
    }
    *at++ = '.';
    if (is_whole) {
        std::memset(at, '0', max_digits_behind_point);  // there is room for all of them
    } else {
        put_digits(at, digits, precision);
    }
    return at + precision;
}

char* put_part(char* at, const General& number) {
    const auto [value, precision] = number;
    // Small whole numbers are printed as what they are.
    constexpr double small = 10;
    const int digit = value >= 0 && value < small ? static_cast<int>(value) : -1;
    if (digit == value && !std::signbit(value)) {
        *at = static_cast<char>('0' + digit);
        return at + 1;
    }
    return std::to_chars(at, at + longest_number_bytes, value, std::chars_format::general,
                         precision)
        .ptr;
}

char* put_part(char* at, const HexByte& number) {
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr unsigned two_digits = 0xff;
    constexpr unsigned digit_mask = 0xf;
    if (number.value > two_digits) {
        return std::to_chars(at, at + longest_number_bytes, number.value, 16).ptr;
    }
    *at++ = digits[number.value >> 4];
    *at++ = digits[number.value & digit_mask];
    return at;
}

}  // namespace tanrove
