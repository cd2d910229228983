// The steps of the timeline, in the one order in which they give what Pro Tools plays: place the
// clips, measure warped slices, bind fades, stretch and loop, cover, end loops, lay out clip
// groups, give gain.
#include "timeline/lay_out_timeline.hpp"

#include "timeline/bind_fades.hpp"
#include "timeline/clip_gain_plan.hpp"
#include "timeline/cover_clips.hpp"
#include "timeline/lay_out_groups.hpp"
#include "timeline/track_pairing.hpp"

namespace tanrove {

namespace {

void bind_all_fades(std::vector<TimelineTrack>& tracks, const TimelineInput& input,
                    FadeTallies& tallies) {
    tallies.plain_fades = input.plain_fades;
    if (input.no_fades || !edit_lists_match_records(input)) return;
    const TempoClock clock(input.tempo_map, input.default_tempo);
    const FadeBinding binding{.fades = input.fades,
                              .rate_hz = input.rate_hz,
                              .clock = clock,
                              .form = input.plain_fades ? FadeForm::plain : FadeForm::exact};
    for (TimelineTrack& track : tracks) {
        if (track.record) bind_fades(track, input.edit_lists[*track.record], binding, tallies);
    }
}

}  // namespace

std::vector<TimelineTrack> lay_out_timeline(const TimelineInput& input, TimelineTallies& tallies) {
    std::vector<TimelineTrack> tracks = place_clips(input, tallies);
    bind_all_fades(tracks, input, tallies.fades);
    cover_clips(tracks, input.rate_hz, tallies.covering);
    lay_out_groups(tracks, input, tallies.clip_groups, tallies.fades);
    if (input.gains != nullptr) give_clip_gain(tracks, *input.gains, tallies.gain);
    return tracks;
}

}  // namespace tanrove
