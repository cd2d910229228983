// The forms in which messages list names. Names come from the session and may hold any byte; a
// control character is shown as a blank, so that a name cannot break a line or move the cursor.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "report/count_rows.hpp"
#include "session/meter_map.hpp"

namespace tanrove {

/// A list that names every item it is given.
constexpr std::size_t no_cap = std::numeric_limits<std::size_t>::max();

struct CountedName {
    std::string name;
    int count = 0;
};

/// A control of a plug-in with the number of its automation lanes.
struct ControlLanes {
    std::string plugin;
    std::string control;
    int lanes = 0;
};

/// Prints the message, which ends in a colon, and all the names behind it; nothing if there are
/// none.
void print_named(TextBuffer& out, const std::vector<std::string>& names, CountText text);

/// The name with its control characters made blanks.
std::string shown_name(std::string name);

/// ` "a", "b"` on the line, a blank in front; past the cap ", ..." ends it.
std::string quoted_names(const std::vector<std::string>& names, std::size_t cap);

/// "      a\n" for each name; past the cap a line "      ... and 3 more\n".
std::string one_name_a_line(const std::vector<std::string>& names, std::size_t cap);

/// " 4/4 at bar 3, 3/4 at bar 7"; past the cap ", ... and 3 more" ends it.
std::string meters_at_bars(const std::vector<MeterPoint>& meters, std::size_t cap);

/// Prints the message and below it the names, one a line; nothing if there are none.
void print_named_below(TextBuffer& out, const std::vector<std::string>& names, CountText text,
                       std::size_t cap);

/// "a x2, b x1".
std::string counted_names(const std::vector<CountedName>& names);

/// "plug-in control (2), plug-in control (1)".
std::string control_lanes(const std::vector<ControlLanes>& controls);

}  // namespace tanrove
