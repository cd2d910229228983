// From the timeline's channels to the ordered list of tracks that are written.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "mix/track_plan.hpp"
#include "mix/track_tallies.hpp"
#include "session/session_lists.hpp"
#include "session/strip_rows.hpp"
#include "session/strip_table.hpp"
#include "session/track_name_set.hpp"
#include "timeline/timeline_track.hpp"

namespace tanrove {

struct AssemblyInput {
    std::vector<TimelineTrack> channels;       ///< what the timeline made; its clips move on
    std::vector<TrackTableRow> track_rows;     ///< the current names, one row a channel
    StripRows strips;                          ///< the mixer's strips, in mixer order
    std::vector<StripTableEntry> strip_table;  ///< the strips in edit-window order
    TrackNameSet inactive_names;               ///< beside the rows that are marked themselves
    TrackNameSet voice_off_names;
    std::map<std::string, double> vca_fader_db;  ///< the VCA masters that become tracks
    bool keep_alt_takes = true;  ///< alternate playlists become lanes; else they are set aside
};

/// The tracks in edit-window order, each with its clips and lanes, channel count, timebase and
/// mute as far as the tables say. No channel is lost: what matches no strip stands at the end.
std::vector<TrackPlan> assemble_tracks(AssemblyInput input, TrackTallies& tallies);

/// Counts the tracks that are silent, empty or alternates: to be called when it is settled which
/// ones are written. `folders` are names of folder tracks, on which nothing can lie.
void count_tracks(const std::vector<TrackPlan>& plans, const std::vector<StripRow>& rows,
                  const TrackNameSet& folders, TrackTallies& tallies);

}  // namespace tanrove
