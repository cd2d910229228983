// The gaps of this build, in a sentence each.
#include "report/account_not_carried.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_named_texts = 8;

constexpr CountRow<NotCarriedTallies> not_carried_rows[] = {
    {&NotCarriedTallies::unnumbered_clips,
     "  WARNING: %d clip placement(s) are NOT in the project: they play clips\n"
     "      past number 65535, where the session's clip numbers end for this\n"
     "      tool. Remove unused clips in Pro Tools, save, and convert again.\n"},
};

}  // namespace

void print_melodyne_edits(TextBuffer& out, const NotCarriedTallies& tallies) {
    if (!tallies.melodyne_edits) return;
    out.append(
        "  WARNING: this session has Melodyne (ARA) edits, which this build does not carry:\n"
        "      those clips play as recorded. Commit them in Pro Tools to keep the edits.\n");
}

void print_not_carried(TextBuffer& out, const NotCarriedTallies& tallies) {
    print_rows(out, tallies, not_carried_rows);
    if (tallies.long_texts.empty()) return;
    out.print(
        "  WARNING: %d name(s) or comment(s) are too long for this tool (a name has\n"
        "      255 bytes at most). What they name is missing here or has another name.\n"
        "      They begin:%s\n",
        count_of(tallies.long_texts), quoted_names(tallies.long_texts, max_named_texts).c_str());
}

}  // namespace tanrove
