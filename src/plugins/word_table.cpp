// The table is sorted by counting, digit for digit from the lowest: every pass keeps the order of
// the one before. Sorted are the words as they are spread, so that the first bits of each tell
// where it stands: a lookup touches a few rows and not the whole table.
#include "plugins/word_table.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace tanrove {

namespace {

constexpr int word_bits = 32;
constexpr int kind_bits = std::countr_zero(WordTable::max_kinds);
/// A word and its kind are three digits: few passes, each with counters that stay at hand.
constexpr int digit_bits = (word_bits + kind_bits) / 3;
constexpr std::size_t digit_values = std::size_t{1} << digit_bits;
static_assert(3 * digit_bits == word_bits + kind_bits);

/// So few of a filter's bits are set that not many other words fall on one.
constexpr std::size_t bits_per_word = 8;
constexpr std::uint32_t bit_factors[] = {2654435769U, 2246822519U};  // odd, without a pattern
constexpr std::size_t least_bits = 64;
constexpr std::size_t most_bits = std::size_t{1} << 28;

constexpr std::size_t rows_per_start = 4;
constexpr std::size_t least_starts = 2;

/// Codes are letters, which lie close together: they are spread over all bits. No two words are
/// spread to one.
std::uint32_t spread(std::uint32_t word) {
    return word * 2654435769U;
}

std::size_t digit_of(const WordTable::Row& row, int shift) {
    const std::uint64_t kind = row.kind_and_place / WordTable::max_places;
    return (std::uint64_t{row.word} << kind_bits | kind) >> shift & (digit_values - 1);
}

}  // namespace

std::uint32_t text_word(std::string_view text) {
    std::uint32_t word = 0x811c9dc5;
    for (const char c : text) word = (word ^ static_cast<std::uint8_t>(c)) * 16777619U;
    return word;
}

WordFilter::WordFilter(std::span<const std::uint32_t> words)
    : bits_(std::bit_ceil(std::clamp(words.size() * bits_per_word, least_bits, most_bits))),
      shift_(word_bits - std::countr_zero(bits_.size())) {
    for (const std::uint32_t word : words) {
        for (const std::uint32_t factor : bit_factors) bits_[word * factor >> shift_] = true;
    }
}

bool WordFilter::may_hold(std::uint32_t word) const {
    return std::ranges::all_of(
        bit_factors, [&](std::uint32_t factor) { return bits_[word * factor >> shift_]; });
}

void WordTable::add(std::uint32_t word, std::uint32_t kind, std::size_t place) {
    if (kind >= max_kinds || place >= max_places) return;
    const std::size_t kind_and_place = kind * max_places + place;
    rows_.push_back({spread(word), static_cast<std::uint32_t>(kind_and_place)});
}

void WordTable::sort_by_digit(int shift) {
    std::array<std::uint32_t, digit_values> next = {};
    for (const Row& row : rows_) ++next[digit_of(row, shift)];
    std::uint32_t begin = 0;
    for (std::uint32_t& at : next) begin += std::exchange(at, begin);
    for (const Row& row : rows_) sorted_[next[digit_of(row, shift)]++] = row;
    rows_.swap(sorted_);
}

void WordTable::finish() {
    sorted_.resize(rows_.size());
    for (int shift = 0; shift < kind_bits + word_bits; shift += digit_bits) sort_by_digit(shift);
    sorted_ = {};
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

std::span<const WordTable::Row> WordTable::places_of(std::uint32_t word, std::uint32_t kind) const {
    const auto in_order = [](const Row& row) {
        return std::uint64_t{row.word} << word_bits | row.kind_and_place;
    };
    const std::uint32_t spread_word = spread(word);
    const std::size_t start = spread_word >> start_shift_;
    const Row* row = rows_.data() + starts_[start];
    const Row* end = rows_.data() + starts_[start + 1];
    const std::uint64_t wanted = (std::uint64_t{spread_word} << word_bits) + kind * max_places;
    const Row* first = std::ranges::lower_bound(row, end, wanted, {}, in_order);
    return {first, std::ranges::lower_bound(first, end, wanted + max_places, {}, in_order)};
}

}  // namespace tanrove
