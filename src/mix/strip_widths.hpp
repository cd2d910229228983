// How many channels a strip has, by its name.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "session/session_lists.hpp"
#include "session/strip_table.hpp"

namespace tanrove {

class StripWidths {
public:
    /// The track list has one row for each channel of an audio track, in a run, and decides where
    /// both know a name. Further runs of a name are its alternate playlists. The strip table knows
    /// auxes as well.
    StripWidths(const std::vector<TrackTableRow>& track_rows,
                const std::vector<StripTableEntry>& strip_table);

    /// Channels of the strip of this name, 0 if unknown.
    int channels_of(std::string_view name) const;

private:
    std::map<std::string, int, std::less<>> channels_;
};

}  // namespace tanrove
