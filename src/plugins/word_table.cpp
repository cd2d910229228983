// The table is sorted by counting, byte for byte from the lowest: every pass keeps the order of the
// one before.
#include "plugins/word_table.hpp"

#include <algorithm>
#include <array>
#include <bit>

namespace tanrove {

namespace {

constexpr std::size_t byte_values = 256;
constexpr int word_bits = 32;
/// So few of a filter's bits are set that not many other words fall on one.
constexpr std::size_t bits_per_word = 32;
constexpr std::size_t least_bits = 64;

std::size_t byte_of(std::uint32_t word, int shift) {
    return word >> shift & (byte_values - 1);
}

}  // namespace

std::uint32_t text_word(std::string_view text) {
    std::uint32_t word = 0x811c9dc5;
    for (const char c : text) word = (word ^ static_cast<std::uint8_t>(c)) * 16777619U;
    return word;
}

WordFilter::WordFilter(std::span<const std::uint32_t> words)
    : bits_(std::bit_ceil(std::max(words.size() * bits_per_word, least_bits))),
      shift_(word_bits - std::countr_zero(bits_.size())) {
    for (const std::uint32_t word : words) bits_[bit_of(word)] = true;
}

bool WordFilter::may_hold(std::uint32_t word) const {
    return bits_[bit_of(word)];
}

/// Codes are letters, which lie close together: they are spread over all bits first.
std::size_t WordFilter::bit_of(std::uint32_t word) const {
    const std::uint32_t spread = word * 2654435769U;
    return shift_ > 0 ? spread >> shift_ : spread;
}

void WordTable::add(std::uint32_t word, std::size_t place) {
    rows_.push_back({word, static_cast<std::uint32_t>(place)});
}

void WordTable::finish() {
    std::vector<Row> sorted(rows_.size());
    for (int shift = 0; shift < word_bits; shift += 8) {
        std::array<std::size_t, byte_values> next = {};
        for (const Row& row : rows_) ++next[byte_of(row.word, shift)];
        std::size_t begin = 0;
        for (std::size_t& at : next) {
            const std::size_t count = at;
            at = begin;
            begin += count;
        }
        for (const Row& row : rows_) sorted[next[byte_of(row.word, shift)]++] = row;
        rows_.swap(sorted);
    }
}

std::span<const WordTable::Row> WordTable::places_of(std::uint32_t word) const {
    const auto begin = std::ranges::lower_bound(rows_, word, {}, &Row::word);
    return {begin, std::ranges::upper_bound(rows_, word, {}, &Row::word)};
}

}  // namespace tanrove
