// Which frozen tracks arrive frozen, and why others do not. Without the option nothing is said:
// that a frozen track converts unfrozen is then what was asked for.
#include "report/account_frozen.hpp"

#include <string>
#include <vector>

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr CountText delivered =
    "  %d frozen track(s) delivered FROZEN (Keep frozen tracks frozen\n"
    "      is on); Track > Unfreeze in REAPER restores the source and\n"
    "      plug-ins\n";

constexpr CountText unfrozen =
    "  %d frozen track(s) converted UNFROZEN although Keep frozen\n"
    "      tracks frozen is on:\n";

std::string reason_of(const RefusedFreeze& refused) {
    switch (refused.reason) {
        case FreezeRefusal::several_renders:
            return "its freeze record places more than one render (not measured yet)";
        case FreezeRefusal::two_mono_files:
            return "its render is two mono files, one per side (not supported yet)";
        case FreezeRefusal::unidentified:
            return "its render could not be identified in the session";
        case FreezeRefusal::not_on_disk:
            return "its render \"" + refused.render + "\" is not on disk";
        case FreezeRefusal::has_lanes:
            return "it has alternate playlist lanes";
        case FreezeRefusal::feeds_surround_panner:
            return "it feeds a surround panner";
        case FreezeRefusal::unreadable:
            return "its render could not be read";
        case FreezeRefusal::no_temporary_file:
            return "no temporary file could be made beside the project";
    }
    return {};
}

}  // namespace

void print_frozen_tracks(TextBuffer& out, const FrozenTallies& tallies) {
    print_count(out, tallies.delivered, delivered);
    if (!print_count(out, count_of(tallies.refused), unfrozen)) return;
    std::vector<std::string> lines;
    for (const RefusedFreeze& refused : tallies.refused) {
        lines.push_back("\"" + refused.track + "\": " + reason_of(refused));
    }
    out.print("%s", one_name_a_line(lines, no_cap).c_str());
}

}  // namespace tanrove
