// All that one run counted: the sum of the groups that the stages fill. `tallies = {}` resets it.
#pragma once

#include "chains/chain_tallies.hpp"
#include "mix/frozen_plan.hpp"
#include "mix/mix_tallies.hpp"
#include "plugins/match_plugins.hpp"
#include "project/media_search.hpp"
#include "project/project_head.hpp"
#include "project/track_block.hpp"
#include "report/account_not_carried.hpp"
#include "session/track_table.hpp"
#include "timeline/take_envelope.hpp"
#include "timeline/timeline_tallies.hpp"

namespace tanrove {

struct RunTallies {
    SessionTrackTable track_table = {};
    TimelineTallies timeline;
    MixTallies mix;
    FrozenTallies frozen;
    ChainTallies chains;
    ClipEffectsTallies clip_effects;
    IdentityFindings builds;
    HeadTallies head;
    WrittenTallies written;
    std::vector<TrackFacts> track_facts;  ///< of the tracks with lists of clips, then the others
    int bare_strip_tracks = 0;            ///< of those: made for a strip without a list of clips
    TakeTallies takes;
    NotCarriedTallies not_carried;
    MediaTallies media;
};

}  // namespace tanrove
