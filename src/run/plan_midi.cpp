// Hands the MIDI records to the timeline.
#include "run/plan_midi.hpp"

#include <utility>

#include "timeline/lay_out_midi.hpp"

namespace tanrove {

namespace {

void count_what_stays_behind(const MidiRecords& midi, MidiTallies& tallies) {
    tallies.other_lanes = static_cast<int>(midi.other_lanes);
    for (const auto& [track, groups] : midi.clip_groups) {
        tallies.clip_groups += groups;
        tallies.clip_group_tracks.push_back(track);
    }
}

}  // namespace

MidiMixInput plan_midi(MidiRecords midi, const ClipRecords& clips, const TimeRecords& time,
                       double rate_hz, const RunOptions& options, MidiTallies& tallies) {
    const TempoClock clock(time.tempo_map, time.tempo_bpm);
    const MidiPlacingInput placing{
        .tracks = clips.lists.midi_track_rows,
        .placements = clips.lists.midi_placements,
        .regions = clips.lists.midi_regions,
        .playlists = midi.playlists,
        .rows = midi.playlist_rows,
        .rate_hz = rate_hz,
    };
    const MidiMaterial material{
        .regions = clips.lists.midi_regions,
        .streams = clips.lists.midi_streams,
        .chunks = midi.chunks,
        .session_tempo = time.tempo_bpm,
        .rate_hz = rate_hz,
    };
    const MidiEventOptions events{.keep_inaudible_midi = options.keep_inaudible_midi,
                                  .truncate_midi_to_clip = options.truncate_midi_to_clip};
    count_what_stays_behind(midi, tallies);
    return {.tracks = lay_out_midi(placing, material, clock, events, tallies),
            .settings = std::move(midi.settings),
            .real_time = std::move(midi.real_time)};
}

}  // namespace tanrove
