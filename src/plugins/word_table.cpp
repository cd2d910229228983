// The table is sorted by counting, byte for byte from the lowest: every pass keeps the order of the
// one before. Sorted are the words as they are spread, so that the first bits of each tell where it
// stands: a lookup touches a few rows and not the whole table.
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

constexpr std::size_t rows_per_start = 4;
constexpr std::size_t least_starts = 2;

std::size_t byte_of(std::uint32_t word, int shift) {
    return word >> shift & (byte_values - 1);
}

/// Codes are letters, which lie close together: they are spread over all bits. No two words are
/// spread to one.
std::uint32_t spread(std::uint32_t word) {
    return word * 2654435769U;
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

std::size_t WordFilter::bit_of(std::uint32_t word) const {
    return shift_ > 0 ? spread(word) >> shift_ : spread(word);
}

void WordTable::add(std::uint32_t word, std::size_t place) {
    rows_.push_back({spread(word), static_cast<std::uint32_t>(place)});
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
    note_starts();
}

void WordTable::note_starts() {
    const std::size_t count = std::bit_ceil(std::max(rows_.size() / rows_per_start, least_starts));
    start_shift_ = word_bits - std::countr_zero(count);
    starts_.resize(count + 1);
    std::uint32_t row = 0;
    for (std::size_t start = 0; start < count; ++start) {
        while (row < rows_.size() && rows_[row].word >> start_shift_ < start) ++row;
        starts_[start] = row;
    }
    starts_[count] = static_cast<std::uint32_t>(rows_.size());
}

std::span<const WordTable::Row> WordTable::places_of(std::uint32_t word) const {
    const std::uint32_t wanted = spread(word);
    const std::size_t start = wanted >> start_shift_;
    const Row* row = rows_.data() + starts_[start];
    const Row* end = rows_.data() + starts_[start + 1];
    const Row* found = std::ranges::lower_bound(row, end, wanted, {}, &Row::word);
    return {found, std::ranges::upper_bound(found, end, wanted, {}, &Row::word)};
}

}  // namespace tanrove
