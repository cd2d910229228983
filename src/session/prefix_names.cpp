// Of the names that sort at or in front of a text, the last one shares the most with it: every name
// that the text begins with also begins that one, or is that one. So the answer stands in the chain
// of names that begin it.
#include "session/prefix_names.hpp"

#include <algorithm>

namespace tanrove {

PrefixNames::PrefixNames(std::vector<std::string> names) : names_(std::move(names)) {
    std::erase_if(names_, [](const std::string& name) { return name.empty(); });
    std::sort(names_.begin(), names_.end());
    names_.erase(std::unique(names_.begin(), names_.end()), names_.end());
    next_shorter_.reserve(names_.size());
    std::vector<std::size_t> chain;  // names that begin the one at hand, shortest first
    for (std::size_t i = 0; i < names_.size(); ++i) {
        while (!chain.empty() && !names_[i].starts_with(names_[chain.back()])) chain.pop_back();
        next_shorter_.push_back(chain.empty() ? none : chain.back());
        chain.push_back(i);
        is_first_byte_[static_cast<unsigned char>(names_[i].front())] = true;
        longest_bytes_ = std::max(longest_bytes_, names_[i].size());
    }
}

std::size_t PrefixNames::longest_prefix_of(std::string_view text) const {
    if (text.empty() || !is_first_byte_[static_cast<unsigned char>(text.front())]) return none;
    const auto behind = std::upper_bound(names_.begin(), names_.end(), text);
    if (behind == names_.begin()) return none;
    auto index = static_cast<std::size_t>(behind - names_.begin()) - 1;
    while (index != none && !text.starts_with(names_[index])) index = next_shorter_[index];
    return index;
}

}  // namespace tanrove
