// Reads words from left to right: options by their table, all else pieces of the session's path.
#include "run/command_line.hpp"

#include <algorithm>
#include <string_view>

#include "run/option_table.hpp"

namespace tanrove {

namespace {

/// The option of that name, if as many values as it needs are left; else null.
const OptionRow* matching_row(std::string_view name, const ArgumentReader& values) {
    const auto rows = option_table();
    const auto row = std::ranges::find(rows, name, &OptionRow::name);
    if (row == rows.end() || row->value_count() > values.left()) return nullptr;
    return &*row;
}

bool ends_the_reading(Command command) {
    return command != Command::convert && command != Command::learn;
}

void read_argument(CommandLine& line, ArgumentReader& arguments) {
    const std::string_view argument = arguments.take();
    if (argument.empty()) return;
    if (const OptionRow* row = matching_row(argument, arguments)) {
        row->act(line, arguments);
    } else if (argument.front() == '-') {
        line.command = Command::refuse;
        line.unknown_option = argument;
    } else {
        line.path_pieces.emplace_back(argument);
    }
}

}  // namespace

CommandLine read_command_line(int argument_count, const char* const* arguments) {
    CommandLine line;
    ArgumentReader reader(argument_count, arguments);
    if (reader.left() > 0) line.options.program_path = reader.take();
    while (reader.left() > 0 && !ends_the_reading(line.command)) read_argument(line, reader);
    return line;
}

}  // namespace tanrove
