// The one table of options, of which everything is made that knows them: the reading of the command
// line, `tanrove --help`, the manual page and the completions of the shells.
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include "run/command_line.hpp"

namespace tanrove {

/// The arguments that are still to be read.
class ArgumentReader {
public:
    ArgumentReader(int count, const char* const* arguments)
        : end_(arguments + std::max(count, 0)), next_(arguments) {}

    std::size_t left() const { return static_cast<std::size_t>(end_ - next_); }
    std::string_view next() const { return left() > 0 ? *next_ : std::string_view(); }
    /// Only while something is left.
    const char* take() { return *next_++; }

private:
    const char* const* end_;
    const char* const* next_;
};

/// What the values of an option are, so that a shell can offer some.
enum class ValueKind {
    none,
    file,  ///< the first value; those behind it are no files
    folder,
    words,  ///< one of those that `values` shows between bars
    other
};

/// What an option is about; the manual has a section for each.
enum class OptionSubject { files, tracks, clips, midi, colours, plugins, reports, program };

/// One name of an option.
struct OptionRow {
    std::string_view name = {};
    /// As the manual shows them, a blank between two; in brackets: optional.
    std::string_view values = {};
    ValueKind kind = ValueKind::none;
    OptionSubject subject = OptionSubject::program;
    void (*act)(CommandLine& line, ArgumentReader& values) = nullptr;
    /// Its heading in the help text; empty: it stands in no block of it.
    std::string_view help = {};
    /// What it does, in the lines of the help text. Empty: what the next row does.
    std::string_view text = {};

    /// How many values it cannot do without.
    std::size_t value_count() const {
        if (values.empty() || values.front() == '[') return 0;
        return 1 + static_cast<std::size_t>(std::ranges::count(values, ' '));
    }
};

/// All options, in the order of the help text.
std::span<const OptionRow> option_table();

}  // namespace tanrove
