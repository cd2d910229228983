// The colours of clips follow those of their tracks, so each track is settled before its clips; and
// what is switched off is left out last, when everything has been counted.
#include "mix/plan_colours.hpp"

#include <algorithm>

#include "mix/track_colours.hpp"

namespace tanrove {

namespace {

void leave_clips_uncoloured(TrackPlan& plan) {
    for (ClipItem& clip : plan.clips) clip.colour.reset();
    for (LanePlan& lane : plan.lanes) {
        for (ClipItem& clip : lane.clips) clip.colour.reset();
    }
    for (MidiItem& item : plan.midi_items) item.colour.reset();
}

}  // namespace

void plan_colours(const ColouredPlans& plans, const ColourInput& input, const ColourCoding& coding,
                  const TrackGroups& groups, ColourTallies& tallies) {
    tallies.schemes = input.schemes;
    tallies.theme = input.theme;
    tallies.track_colours_off = input.no_track_colours;
    tallies.clip_colours_off = input.no_clip_colours;
    const auto scheme = input.schemes;
    if (scheme.track == by_group) tallies.groups_without_slot = groups.without_slot;

    const ChosenColours chosen(input.track_colours);
    ClipColouring clips(input.markers, tallies);
    std::size_t list_place = 0;
    for (auto* list : {&plans.tracks, &plans.strip_tracks}) {
        for (TrackPlan& plan : *list) {
            ++list_place;
            const TrackShade shade = chosen.shade_of(plan, list_place, coding, tallies);
            CodedTrack coded;
            if (colours_tracks(scheme.clip)) coded = coding.of(*scheme.clip, plan, list_place);
            clips.colour(plan, shade, coded);
            if (shade.colour != 0 && !input.no_track_colours) plan.colour = shade.colour;
            if (input.no_clip_colours) leave_clips_uncoloured(plan);
        }
    }
    for (VideoTrackPlan& video : plans.video.tracks) {
        TrackPlan plan;
        plan.session_name = video.name;
        const TrackShade shade = chosen.shade_of(plan, ++list_place, coding, tallies);
        CodedTrack coded;
        if (colours_tracks(scheme.clip)) coded = coding.of(*scheme.clip, plan, list_place);
        clips.colour_video(video.items, shade, coded);
        if (shade.colour != 0 && !input.no_track_colours) video.colour = shade.colour;
        if (!input.no_clip_colours) continue;
        for (VideoItem& item : video.items) item.colour.reset();
    }
    if (plans.master.wants_own_track) {
        TrackPlan master;
        master.session_name = plans.master.name;
        const TrackShade shade = chosen.shade_of(master, list_place + 1, coding, tallies);
        if (shade.colour != 0 && !input.no_track_colours) plans.master.colour = shade.colour;
    }
    tallies.coloured_rows_left =
        std::max(0, input.coloured_placements - clips.coloured_placements());
}

}  // namespace tanrove
