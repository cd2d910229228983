// A set of names that answers which of them a text begins with: one look-up a text, whatever the
// number of names.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tanrove {

class PrefixNames {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    /// Keeps the names sorted by their bytes, each once; empty ones are left out.
    explicit PrefixNames(std::vector<std::string> names);

    const std::vector<std::string>& names() const { return names_; }

    /// Index of the longest name that `text` begins with; `none` if there is none. Costs a binary
    /// search, and a step for each name that begins the one found.
    std::size_t longest_prefix_of(std::string_view text) const;

    /// Index of the longest other name that this name begins with; `none` if there is none.
    std::size_t next_shorter(std::size_t index) const { return next_shorter_[index]; }

    std::size_t longest_bytes() const { return longest_bytes_; }

private:
    std::vector<std::string> names_;
    std::vector<std::size_t> next_shorter_;
    std::array<bool, 256> is_first_byte_ = {};
    std::size_t longest_bytes_ = 0;
};

}  // namespace tanrove
