// All that planning the mix counts: a group for each subject.
#pragma once

#include "mix/folder_depths.hpp"
#include "mix/level_tallies.hpp"
#include "mix/master_fader.hpp"
#include "mix/routing_tallies.hpp"
#include "mix/track_groups.hpp"
#include "mix/track_tallies.hpp"
#include "timeline/midi_tallies.hpp"

namespace tanrove {

struct MixTallies {
    TrackTallies tracks;
    GroupTallies groups;
    FolderTallies folders;
    LevelTallies levels;
    SoloTallies solos;
    ViewTallies views;
    MidiTallies midi;
    MasterTallies master;
    RoutingTallies routing;
};

}  // namespace tanrove
