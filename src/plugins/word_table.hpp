// Places in a list by a word of 32 bits, the places of one word in their order; and a filter for
// the words that somebody will ask for. A list of a hundred thousand plug-ins, each under a dozen
// words, is larger than a processor's cache: what nobody asks for is not kept.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tanrove {

/// A word for a text. Two texts may have the same one, so what is found has to be compared.
std::uint32_t text_word(std::string_view text);

/// Tells a set of words from others, of which it takes a few in a hundred for one of its own.
class WordFilter {
public:
    explicit WordFilter(std::span<const std::uint32_t> words);

    bool may_hold(std::uint32_t word) const;

private:
    std::vector<bool> bits_;  ///< a power of two of them, of which each word has two
    int shift_ = 0;
};

/// Places under words of several kinds, all in one table: who looks a word up under one kind mostly
/// asks for the next kind as well, and finds both side by side.
class WordTable {
public:
    /// Kinds and places that a row has room for; what is beyond them is not added.
    static constexpr std::uint32_t max_kinds = 16;
    static constexpr std::size_t max_places = std::size_t{1} << 28;

    /// To be called in the order of the places, all before `finish`.
    void add(std::uint32_t word, std::uint32_t kind, std::size_t place);
    void finish();

    struct Row {
        std::uint32_t word = 0;            ///< as it is spread
        std::uint32_t kind_and_place = 0;  ///< the kind in the highest bits

        std::size_t place() const { return kind_and_place % max_places; }
    };

    std::span<const Row> places_of(std::uint32_t word, std::uint32_t kind) const;

private:
    void sort_by_digit(int shift);
    void note_starts();

    std::vector<Row> rows_;
    std::vector<Row> sorted_;  ///< what a pass of the sorting writes to
    /// For the first bits of a word the first row that has them, and behind all the number of rows.
    std::vector<std::uint32_t> starts_;
    int start_shift_ = 0;
};

}  // namespace tanrove
