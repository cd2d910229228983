// The plug-ins of a track as Pro Tools shows them: an unlinked multi-mono one is a single plug-in
// there, and an insert for each of its channels in the session.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "plugins/plugin_insert.hpp"

namespace tanrove {

/// One insert of the strip.
struct ChainInsert {
    const PluginInsert* insert = nullptr;  ///< never null
    /// The first of the two channels of its key, from 0; nullopt where none is wired.
    std::optional<int> key_channel = {};
};

struct ChainTrack {
    std::string name;  ///< as Pro Tools shows it
    std::vector<ChainInsert> inserts = {};
    int width = 2;  ///< channels; 2 where they are not known
    /// On a leg of a strip that could not be written as one track: the channel that it plays.
    std::optional<std::size_t> leg = {};
    bool has_midi = false;
    bool is_master = false;
    bool is_frozen = false;  ///< it arrives playing its render
};

struct TrackPlugin {
    ChainInsert place;  ///< the insert that is written
    int slot = 1;       ///< its place on the strip, from 1
    /// The inserts of its channels, in their order: those that the track plays.
    std::vector<const PluginInsert*> channels;
};

std::vector<TrackPlugin> track_plugins(const ChainTrack& track);

}  // namespace tanrove
