// What bringing the MIDI of a session over counts for the account.
#pragma once

#include <string>
#include <vector>

namespace tanrove {

struct MidiTallies {
    int controllers = 0;         ///< events written: pitch bend, controllers, aftertouch
    int sysex = 0;               ///< messages written
    int sysex_outside = 0;       ///< of `sysex`: outside their clip, and yet live
    int mismatched_regions = 0;  ///< whose controllers belong to other notes, left out
    int trimmed_clips = 0;       ///< without what lies outside: the project would be too large
    int incomplete_clips = 0;    ///< likewise without some or all of what lies inside

    int muted_tracks = 0;
    int mute_lane_tracks = 0;  ///< their mute is automated
    int other_lanes = 0;       ///< automation of MIDI tracks that is not their mute's

    int too_short_events = 0;        ///< of notes without length at REAPER's resolution
    int muted_events = 0;            ///< outside their clip
    int unmuted_events = 0;          ///< outside their clip, and live because the run asked
    bool truncation_wanted = false;  ///< the run was told to end items at their clips
    int notes_past_edge = 0;         ///< that sound past their clip's end
    int tail_cuts = 0;               ///< clips that end where a later one takes over
    int head_cuts = 0;               ///< clips that start where an earlier one ends
    int covered_clips = 0;           ///< nothing of them is left between others: kept, muted
    int offsets_at_other_tempo = 0;  ///< source offsets that differ with the tempo there; not told
    int sample_based_clips = 0;      ///< placed in samples
    int sample_based_overlaps = 0;   ///< of them: not cut where another clip overlaps
    int fader_tracks = 0;            ///< send their MIDI fader or pan
    std::vector<std::string> patch_tracks;  ///< send a program change

    int real_time_tracks = 0;            ///< with transpose, velocity or delay in their notes
    int transposed_past_range = 0;       ///< notes
    int unapplied_real_time_tracks = 0;  ///< with quantize or duration
    int unmatched_real_time_rows = 0;    ///< with any, and no list of MIDI clips for them

    int clip_groups = 0;
    std::vector<std::string> clip_group_tracks;
};

}  // namespace tanrove
