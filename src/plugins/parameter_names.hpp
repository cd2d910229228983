// The names of plug-ins' parameters in REAPER, from tables that were made there. Sessions automate
// controls by name and REAPER's envelopes count parameters: where a name stands, its number is
// known.
//
// A table is tab-separated, a parameter a line: plug-in, build, a field of no use here, number,
// name.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace tanrove {

constexpr std::size_t max_parameter_file_bytes = std::size_t{256} << 20;
constexpr std::size_t max_parameter_line_bytes = 1024;

/// The parameters of one plug-in.
struct ParameterTable {
    std::map<int, std::string> names;                      ///< by number
    std::map<std::string, int, std::less<>> number_count;  ///< how many numbers have the name
    std::map<std::string, int, std::less<>> plain_count;   ///< likewise, of letters and digits only

    /// True if the name stands at one number.
    bool is_unique(std::string_view name) const;

    /// True if one number's name has these letters, in lower case, and digits.
    bool is_unique_plain(std::string_view plain_name) const;
};

class ParameterNames {
public:
    /// Adds a table; a name replaces the one that an earlier table has at its place. Returns the
    /// plug-in builds that this table names.
    int add(std::string_view text);

    /// To be called when all tables are added: settles what the builds of a plug-in agree on.
    void finish();

    /// The parameters of the plug-in in a row; null where no table has it. The build of this ident
    /// counts, or else what all builds agree on.
    const ParameterTable* table_for(std::string_view fx_name, std::string_view file,
                                    std::string_view ident) const;

private:
    struct Plugin {
        std::map<std::string, ParameterTable, std::less<>> builds;
        ParameterTable agreed;
    };

    std::map<std::string, Plugin, std::less<>> plugins_;
};

}  // namespace tanrove
