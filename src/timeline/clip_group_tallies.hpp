// What laying out clip groups counts for the account.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tanrove {

struct ClipGroupTallies {
    int groups = 0;                               ///< laid out
    int pieces = 0;                               ///< the items that they became
    int fades = 0;                                ///< fades inside groups
    int fade_ins = 0;                             ///< on pieces
    int fade_outs = 0;                            ///< likewise
    int fades_left_off = 0;                       ///< of `fades`: on no edge of a piece
    int spread_fades = 0;                         ///< fades of groups, each over several pieces
    int unreadable = 0;                           ///< groups and pieces that are missing
    std::vector<std::string> unreadable_on = {};  ///< names of the tracks that miss them

    void add_unreadable(std::size_t count);
};

}  // namespace tanrove
