// The mix's whole road: from the timeline's channels and the mixer's records to the tracks as they
// are written.
#pragma once

#include <optional>
#include <vector>

#include "mix/assemble_tracks.hpp"
#include "mix/attach_midi.hpp"
#include "mix/click_tracks.hpp"
#include "mix/leave_out.hpp"
#include "mix/master_fader.hpp"
#include "mix/mix_tallies.hpp"
#include "mix/plan_colours.hpp"
#include "mix/plan_panners.hpp"
#include "mix/strip_routes.hpp"
#include "mix/track_comments.hpp"
#include "mix/track_plan.hpp"
#include "mix/video_plan.hpp"
#include "session/folder_table.hpp"
#include "session/groups.hpp"
#include "session/strips.hpp"
#include "session/tempo_map.hpp"
#include "session/track_displays.hpp"
#include "session/vca_slots.hpp"

namespace tanrove {

/// What the mix is planned from.
struct MixInput {
    AssemblyInput assembly;
    std::vector<GroupRecord> groups;
    VcaSlots vca_slots;
    std::optional<FolderTable> folder_table;
    MidiMixInput midi;
    ClickInput click;
    LeaveOutOptions leave_out;
    CommentPlace comment_place = CommentPlace::project_notes;
    std::vector<Strip> strips;           ///< the mixer, with its lanes
    std::vector<TrackDisplay> displays;  ///< one a row of `assembly.strips`
    RoutingRecords routing;
    MasterInput master;
    VideoInput video;
    TempoMap tempo_map;  ///< empty where the session keeps one tempo
    double tempo_bpm = default_tempo_bpm;
    double rate_hz = 48000;  ///< above 0
    ColourInput colours;
};

struct MixPlan {
    std::vector<TrackPlan> tracks;  ///< in the order of the edit window; indices are final
    std::vector<std::optional<std::size_t>> strip_rows;  ///< in step: the row that each is of
    /// Strips that have a fader and no track: written behind the others.
    std::vector<TrackPlan> strip_tracks;
    MasterPlan master;
    VideoPlan video;
    std::vector<TrackComment> comments;   ///< for the project's notes
    std::vector<PannerTry> panner_tries;  ///< for the developer
    bool has_solo_track = false;  ///< an empty soloed track stands last and silences the others
};

MixPlan plan_mix(MixInput input, MixTallies& tallies);

}  // namespace tanrove
