// The account's sentences about MIDI.
#include "report/account_midi.hpp"

#include "report/count_rows.hpp"
#include "report/name_lists.hpp"

namespace tanrove {

namespace {

constexpr CountRow<MidiTallies> content_rows[] = {
    {&MidiTallies::controllers, "  %d MIDI controller events (pitch bend, CC, aftertouch)\n"},
    {&MidiTallies::sysex, "  %d SysEx event(s)\n"},
    {&MidiTallies::sysex_outside,
     "      %d of them lie OUTSIDE their clip in Pro Tools and would not play\n"
     "      there. REAPER cannot store a muted SysEx event, so they are written\n"
     "      live rather than lost; delete them in the MIDI editor if unwanted.\n",
     qualifies_previous},
    {&MidiTallies::mismatched_regions,
     "  note: %d MIDI region(s) had controller data that did not\n"
     "        match their note chunk; it was left out\n"},
};

constexpr CountRow<MidiTallies> mute_rows[] = {
    {&MidiTallies::muted_tracks, "  %d MIDI track(s) muted in Pro Tools arrive muted\n"},
    {&MidiTallies::mute_lane_tracks, "  %d MIDI track(s) arrive with their mute automation\n"},
    {&MidiTallies::other_lanes,
     "  %d MIDI track automation lane(s) other than mute are NOT carried\n"},
};

constexpr CountRow<MidiTallies> event_rows[] = {
    {&MidiTallies::too_short_events,
     "  %d MIDI note event(s) kept but muted: notes too short to exist at\n"
     "      REAPER's resolution, which would retrigger the note beside them.\n"},
    {&MidiTallies::muted_events,
     "  %d MIDI event(s) kept but muted -- outside a Pro Tools clip\n"
     "      boundary, where Pro Tools does not play them\n"
     "      (--keep-inaudible-midi writes them unmuted)\n"},
    {&MidiTallies::unmuted_events,
     "  --keep-inaudible-midi: %d MIDI event(s) outside a Pro Tools clip\n"
     "      boundary were written UNMUTED. Pro Tools does not play them;\n"
     "      REAPER sounds any note that starts before an item and runs into it.\n"},
};

constexpr CountText truncated_notes =
    "  --truncate-midi-to-clip: %d note(s) run past a clip edge and are CUT\n"
    "      there. Pro Tools plays them in full. Each note keeps its whole\n"
    "      length in the item: drag the item edge out to hear it ring.\n";

constexpr CountText ringing_notes =
    "  %d note(s) run past a clip edge; those items were lengthened to let\n"
    "      them ring out, as Pro Tools plays them\n"
    "      (--truncate-midi-to-clip cuts them at the edge)\n";

constexpr CountRow<MidiTallies> cut_rows[] = {
    {&MidiTallies::tail_cuts,
     "  %d MIDI clip(s) cut where a later clip on the same track takes over,\n"
     "      as Pro Tools plays them. The notes past the cut are kept, muted:\n"
     "      drag the clip edge in REAPER to see them.\n"},
    {&MidiTallies::head_cuts,
     "  %d MIDI clip(s) start later, where the clip Pro Tools draws on top of\n"
     "      them ends. Their covered start is kept, muted.\n"},
    {&MidiTallies::covered_clips,
     "  %d MIDI clip(s) lie wholly under other clips on the same track, where\n"
     "      Pro Tools does not play them. They are kept whole, MUTED.\n"},
};

constexpr CountRow<MidiTallies> real_time_rows[] = {
    {&MidiTallies::real_time_tracks,
     "  MIDI Real-Time Properties APPLIED to the notes on %d track(s): transpose,\n"
     "      velocity and delay, so the track plays as Pro Tools played it.\n"},
    {&MidiTallies::transposed_past_range,
     "      %d note(s) transposed past the MIDI range are written MUTED, not lost.\n"},
    {&MidiTallies::unapplied_real_time_tracks,
     "  %d track(s) carry Real-Time quantize or duration, which are NOT applied:\n"
     "      their grid and amount are not decoded yet.\n"},
};

constexpr CountRow<MidiTallies> sample_based_rows[] = {
    {&MidiTallies::sample_based_clips,
     "  %d MIDI clip(s) sit on a SAMPLE-BASED track, so their position and\n"
     "      length are read in samples rather than ticks. Read as ticks they\n"
     "      land days into the project once the session has a tempo change.\n"},
    {&MidiTallies::sample_based_overlaps,
     "      %d of them overlap another clip. Pro Tools resolves an overlap by\n"
     "      comparing clip positions, and that comparison is not reliable in\n"
     "      this unit yet, so the clip keeps its full length and the overlap\n"
     "      SUMS rather than trimming. Trim the item edge in REAPER to match.\n",
     qualifies_previous},
};

}  // namespace

void print_midi_content(TextBuffer& out, const MidiTallies& tallies) {
    print_rows(out, tallies, content_rows);
    if (tallies.trimmed_clips <= 0 && tallies.incomplete_clips <= 0) return;
    out.print(
        "  WARNING: with all events of its MIDI clips the project would hold more\n"
        "      than 4 million: %d clip(s) arrive WITHOUT the events outside them,\n"
        "      which Pro Tools does not play, and %d clip(s) also without some or\n"
        "      all of those it does play.\n",
        tallies.trimmed_clips, tallies.incomplete_clips);
}

void print_midi_mutes(TextBuffer& out, const MidiTallies& tallies) {
    print_rows(out, tallies, mute_rows);
}

void print_midi_edges(TextBuffer& out, const MidiTallies& tallies) {
    print_rows(out, tallies, event_rows);
    if (!tallies.truncation_wanted) {
        print_count(out, tallies.notes_past_edge, ringing_notes);
    } else if (!print_count(out, tallies.notes_past_edge, truncated_notes)) {
        out.print("  --truncate-midi-to-clip: no note runs past a clip edge, so nothing is cut.\n");
    }
    print_rows(out, tallies, cut_rows);
}

void print_midi_faders(TextBuffer& out, const MidiTallies& tallies) {
    print_count(out, tallies.fader_tracks,
                "  %d MIDI/instrument track(s) carry their MIDI fader and pan as a CC 7\n"
                "      and a CC 10 event at the start of each clip -- what Pro Tools\n"
                "      sends when playback starts. A clip that already streams one of\n"
                "      those controllers keeps its stream instead.\n");
    print_count(out, tallies.unmatched_real_time_rows,
                "  WARNING: %d MIDI/instrument track(s) carry REAL-TIME Properties, and no\n"
                "      list of MIDI clips could be matched to them. Whatever plays on them\n"
                "      arrives without its transposition, velocity and delay.\n");
}

void print_midi_patches(TextBuffer& out, const MidiTallies& tallies) {
    if (tallies.patch_tracks.empty()) return;
    out.print(
        "  %d track(s) have a PATCH selected and send it as a program change\n"
        "      at the start of each clip:%s\n",
        count_of(tallies.patch_tracks), quoted_names(tallies.patch_tracks, no_cap).c_str());
}

void print_real_time_properties(TextBuffer& out, const MidiTallies& tallies) {
    print_rows(out, tallies, real_time_rows);
}

void print_sample_based_midi(TextBuffer& out, const MidiTallies& tallies) {
    print_rows(out, tallies, sample_based_rows);
}

void print_midi_clip_groups(TextBuffer& out, const MidiTallies& tallies) {
    if (tallies.clip_groups <= 0) return;
    out.print(
        "  WARNING: %d MIDI clip group(s) sit on MIDI tracks. MIDI clip groups are\n"
        "      not read yet, so the MIDI that they play is NOT in the project.\n"
        "      Check these tracks against Pro Tools:%s\n",
        tallies.clip_groups, quoted_names(tallies.clip_group_tracks, no_cap).c_str());
}

}  // namespace tanrove
