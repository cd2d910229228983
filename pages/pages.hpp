// What is installed beside the program for those who type: each page is the text of a whole file.
#pragma once

#include <string>

namespace tanrove::pages {

/// The names of all options, a line each, for those who check the pages.
std::string option_names();

/// The manual page, in roff.
std::string manual_page();

std::string bash_completion();
std::string zsh_completion();
std::string fish_completion();

}  // namespace tanrove::pages
