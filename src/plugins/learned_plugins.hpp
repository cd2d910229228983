// Plug-ins that the user has taught us: a table of one line each, beside the program.
//
//   signature | name | file | ident | input pins | output pins | tail word | program name
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "plugins/plugin_table_row.hpp"
#include "plugins/rfx_chain.hpp"

namespace tanrove {

constexpr const char* learned_file_name = "tanrove-plugins.txt";
constexpr std::size_t max_learned_file_bytes = std::size_t{64} << 20;
constexpr std::size_t max_learned_line_bytes = 4096;

/// The table's rows by insert key, and how many lines gave one. Of two lines for one plug-in the
/// later counts; a line that names no plug-in or no build is left out.
struct LearnedPlugins {
    RowsByKey rows;
    int line_count = 0;
};

LearnedPlugins read_learned_plugins(std::string_view text);

/// The table's line for a plug-in. A `|` or a control character inside a field becomes a blank.
std::string learned_line(const std::string& signature, const ChainPlugin& plugin);

}  // namespace tanrove
