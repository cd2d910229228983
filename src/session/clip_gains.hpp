// Clip gain: one table of entries, a fixed gain or a drawn line each, and the clips that use them.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct ClipGainPoint {
    double position = 0;  ///< samples from the start of the clip's audio file
    double gain_db = 0;
};

/// One entry of the table: at least one point.
using ClipGainEntry = std::vector<ClipGainPoint>;

/// The drawn lines: entries of two points or more, and which clip uses which of them.
struct ClipGainLines {
    std::vector<ClipGainEntry> entries;  ///< the whole table, in its order
    std::map<std::string, std::size_t> entry_of_clip;
    int count_disagreements = 0;  ///< entries whose stated count differs from their length's

    /// The line of the clip of that name; nullptr if it has none.
    const ClipGainEntry* line(const std::string& clip) const {
        const auto found = entry_of_clip.find(clip);
        return found == entry_of_clip.end() ? nullptr : &entries[found->second];
    }
};

/// All that the session knows of clip gain, by clip name; a clip group's stands under its name.
struct ClipGains {
    std::map<std::string, double> fixed_db;
    ClipGainLines lines;
};

/// Empty for a session without a gain table, or with one that breaks its limits.
ClipGainLines readClipGains(const BlockIndex& index);

/// The fixed gain, in dB, of every clip that has an entry: its first point's.
std::map<std::string, double> readFirstClipGains(const BlockIndex& index);

}  // namespace tanrove
