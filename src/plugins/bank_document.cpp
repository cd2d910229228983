// These builds load only whole banks: the other 99 programs are empty.
#include "plugins/bank_document.hpp"

#include <cstddef>
#include <string_view>

namespace tanrove {

namespace {

constexpr std::size_t longest_without_program = 44;
constexpr int empty_programs = 99;

}  // namespace

std::string with_full_bank(std::string state) {
    constexpr std::string_view program_end = "</Program>";
    if (state.size() <= longest_without_program || !state.starts_with("<?xml")) return state;
    const auto begin = state.find("<Program ");
    const auto end = state.rfind(program_end);
    if (begin == std::string::npos || end == std::string::npos || end < begin) return state;
    if (state.find("<Bank>") != std::string::npos) return state;
    std::string bank = state.substr(0, begin) + "<Bank>";
    bank += state.substr(begin, end + program_end.size() - begin);
    for (int i = 0; i < empty_programs; ++i) bank += "<Program />";
    bank += "</Bank>";
    bank += '\0';
    return bank;
}

}  // namespace tanrove
