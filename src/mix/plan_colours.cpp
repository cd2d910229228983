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

/// Colours the video tracks, and the master where it becomes a track. Both have sentences of their
/// own in the account: its counts of tracks and clips leave them out.
void colour_others(const ColouredPlans& plans, const ColourInput& input, const ColourCoding& coding,
                   const ChosenColours& chosen, std::size_t list_place, ColourTallies& tallies) {
    ColourTallies apart = {.schemes = tallies.schemes, .theme = tallies.theme};
    ClipColouring clips(input.markers, apart);
    const auto shade_named = [&](const std::string& name, TrackPlan& plan) {
        plan.session_name = name;
        return chosen.shade_of(plan, ++list_place, coding, apart);
    };
    for (VideoTrackPlan& video : plans.video.tracks) {
        TrackPlan plan;
        const TrackShade shade = shade_named(video.name, plan);
        CodedTrack coded;
        const auto scheme = input.schemes.clip;
        if (colours_tracks(scheme)) coded = coding.of(*scheme, plan, list_place);
        clips.colour_video(video.items, shade, coded);
        if (shade.colour != 0 && !input.no_track_colours) video.colour = shade.colour;
        if (!input.no_clip_colours) continue;
        for (VideoItem& item : video.items) item.colour.reset();
    }
    if (plans.master.wants_own_track) {
        TrackPlan plan;
        const TrackShade shade = shade_named(plans.master.name, plan);
        if (shade.colour != 0 && !input.no_track_colours) plans.master.colour = shade.colour;
    }
    tallies.video_clips_own = apart.video_clips_own;
    tallies.video_clips_coded = apart.video_clips_coded;
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
    colour_others(plans, input, coding, chosen, list_place, tallies);
    tallies.coloured_rows_left =
        std::max(0, input.coloured_placements - clips.coloured_placements());
}

}  // namespace tanrove
