// The steps of the timeline, in the one order in which they give what Pro Tools plays: place clips
// and clip groups, measure warped slices, bind fades, stretch, loop and end loops, cover, lay out
// what the groups play, give gain.
#include "timeline/lay_out_timeline.hpp"

#include <cstdint>
#include <set>
#include <span>

#include "timeline/bind_fades.hpp"
#include "timeline/clip_gain_plan.hpp"
#include "timeline/cover_clips.hpp"
#include "timeline/infer_stretch.hpp"
#include "timeline/lay_out_clip_groups.hpp"
#include "timeline/loop_clips.hpp"
#include "timeline/place_clips.hpp"
#include "timeline/track_pairing.hpp"
#include "timeline/warp_clips.hpp"

namespace tanrove {

namespace {

void bind_all_fades(std::vector<TimelineTrack>& tracks, const TimelineInput& input,
                    const WarpSlicer& slicer, FadeTallies& tallies) {
    tallies.plain_fades = input.plain_fades;
    if (input.no_fades || !edit_lists_match_records(input)) return;
    const FadeBinding binding{.fades = input.fades,
                              .rate_hz = input.rate_hz,
                              .clock = slicer.clock(),
                              .form = input.plain_fades ? FadeForm::plain : FadeForm::exact,
                              .warps = slicer,
                              .no_stretch = input.no_stretch};
    for (TimelineTrack& track : tracks) {
        if (track.record) bind_fades(track, input.edit_lists[*track.record], binding, tallies);
    }
}

void stretch_clips(std::vector<TimelineTrack>& tracks, const TimelineInput& input,
                   const WarpSlicer& slicer, const WarpOneClip& warp, StretchTallies& tallies) {
    if (input.pitch_shifts != nullptr) shift_pitch(tracks, *input.pitch_shifts, tallies);
    if (input.no_stretch || slicer.empty()) return;
    warp_clips(tracks, warp);
    for (TimelineTrack& track : tracks) infer_stretch(track, slicer, tallies);
}

void write_loop_passes(std::vector<TimelineTrack>& tracks, ClipLooper& looper, double rate_hz,
                       LoopTallies& tallies) {
    for (TimelineTrack& track : tracks) looper.write_passes(track, rate_hz, tallies);
    looper.list_unmatched(tallies);
}

/// What the clips are before crossfades draw them out and others cover them.
void keep_places(std::vector<TimelineTrack>& tracks, bool no_stretch) {
    for (TimelineTrack& track : tracks) {
        for (ClipItem& clip : track.clips) {
            const bool is_warped = clip.stretch->warped_length > 0 && !no_stretch;
            clip.placed_start = clip.start;
            clip.placed_length = is_warped ? clip.stretch->warped_length : clip.length;
        }
    }
}

// As many as REAPER gives a track.
constexpr std::uint16_t max_file_channels = 64;

/// Tells the clips of files with several channels which of them they play. Where the session uses
/// no channel but the first, the file need not have another.
void choose_file_channels(std::vector<TimelineTrack>& tracks, std::span<const Region> regions) {
    std::set<std::int32_t> files;
    for (const Region& region : regions) {
        if (region.file >= 0 && region.file_channel > 0) files.insert(region.file);
    }
    if (files.empty()) return;
    for (TimelineTrack& track : tracks) {
        for (ClipItem& clip : track.clips) {
            if (clip.region >= regions.size()) continue;
            const Region& region = regions[clip.region];
            if (!files.contains(region.file) || region.file_channel >= max_file_channels) continue;
            clip.file_channel = region.file_channel;
        }
    }
}

}  // namespace

std::vector<TimelineTrack> lay_out_timeline(const TimelineInput& input, TimelineTallies& tallies) {
    std::vector<TimelineTrack> tracks = place_clips(input, tallies);
    const TempoClock clock(input.tempo_map, input.default_tempo);
    const WarpMaps no_maps;
    // Unstretched clips keep their length, but their fades lie where the stretched ones end.
    const WarpSlicer slicer(input.warp_maps != nullptr ? *input.warp_maps : no_maps, clock,
                            input.default_tempo, input.rate_hz);
    const WarpOneClip warp = clip_warper(slicer, input.tempo_map, tallies.stretch);
    ClipLooper looper(input.loops);
    GroupLayout groups(input, slicer, looper, tallies);
    groups.place(tracks);
    measure_warped_clips(tracks, slicer);
    keep_places(tracks, input.no_stretch);
    bind_all_fades(tracks, input, slicer, tallies.fades);
    stretch_clips(tracks, input, slicer, warp, tallies.stretch);
    write_loop_passes(tracks, looper, input.rate_hz, tallies.loops);
    for (TimelineTrack& track : tracks) looper.end_loops(track, tallies.loops);
    cover_clips(tracks, input.rate_hz, tallies.covering);
    groups.lay_out(tracks, input.no_stretch ? nullptr : &warp, tallies.stretch);
    choose_file_channels(tracks, input.regions);
    if (input.gains != nullptr)
        give_clip_gain(tracks, *input.gains, input.clip_groups, tallies.gain);
    return tracks;
}

}  // namespace tanrove
