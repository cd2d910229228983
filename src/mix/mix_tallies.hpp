// All that planning the mix counts: a group for each subject.
#pragma once

#include "mix/click_tracks.hpp"
#include "mix/colour_tallies.hpp"
#include "mix/folder_depths.hpp"
#include "mix/leave_out.hpp"
#include "mix/level_tallies.hpp"
#include "mix/master_fader.hpp"
#include "mix/plan_panners.hpp"
#include "mix/routing_tallies.hpp"
#include "mix/track_comments.hpp"
#include "mix/track_groups.hpp"
#include "mix/track_tallies.hpp"
#include "mix/video_plan.hpp"
#include "timeline/midi_tallies.hpp"

namespace tanrove {

struct MixTallies {
    TrackTallies tracks;
    ClickTallies click;
    LeaveOutTallies leave_out;
    CommentTallies comments;
    GroupTallies groups;
    FolderTallies folders;
    LevelTallies levels;
    SoloTallies solos;
    ViewTallies views;
    MidiTallies midi;
    MasterTallies master;
    VideoTallies video;
    RoutingTallies routing;
    PannerTallies panners;
    ColourTallies colours;
};

}  // namespace tanrove
