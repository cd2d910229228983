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
    std::size_t bit_of(std::uint32_t word) const;

    std::vector<bool> bits_;  ///< a power of two of them
    int shift_ = 0;
};

class WordTable {
public:
    /// To be called in the order of the places, all before `finish`.
    void add(std::uint32_t word, std::size_t place);
    void finish();

    struct Row {
        std::uint32_t word = 0;  ///< as it is spread
        std::uint32_t place = 0;
    };

    std::span<const Row> places_of(std::uint32_t word) const;

private:
    void note_starts();

    std::vector<Row> rows_;
    /// For the first bits of a word the first row that has them, and behind all the number of rows.
    std::vector<std::uint32_t> starts_;
    int start_shift_ = 0;
};

}  // namespace tanrove
