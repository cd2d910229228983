// Clip gain: one table of entries, a fixed gain or a drawn line each, and the clips that use them.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct ClipGainPoint {
    double position = 0;  ///< samples from the start of the clip's audio file
    double gain_db = 0;
};

/// One entry of the table: at least one point.
using ClipGainEntry = std::vector<ClipGainPoint>;

/// What the clips of one kind have, by their names.
struct NamedClipGains {
    std::map<std::string, double, std::less<>> fixed_db;  ///< of every clip that has an entry
    std::map<std::string, std::size_t, std::less<>>
        line_of_clip;  ///< entries of two points or more
};

/// All that the session knows of clip gain.
struct ClipGains {
    std::vector<ClipGainEntry> entries;  ///< the whole table, in its order
    NamedClipGains audio;
    NamedClipGains groups;
    int count_disagreements = 0;  ///< entries whose stated count differs from their length's

    /// The drawn line of the clip of that name; nullptr if it has none.
    const ClipGainEntry* line(const NamedClipGains& clips, std::string_view clip) const {
        const auto found = clips.line_of_clip.find(clip);
        return found == clips.line_of_clip.end() ? nullptr : &entries[found->second];
    }
};

/// Empty for a session without a gain table, or with one that breaks its limits. MIDI clips have no
/// gain.
ClipGains readClipGains(const BlockIndex& index);

}  // namespace tanrove
