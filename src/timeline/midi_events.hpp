// What a placed MIDI clip plays: the notes, controllers and system exclusive messages of its
// stream, at REAPER's resolution. Pro Tools plays a stream only inside the clip; what lies outside
// is kept, muted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "session/midi_chunks.hpp"
#include "session/session_lists.hpp"
#include "session/tempo_map.hpp"
#include "timeline/midi_item.hpp"
#include "timeline/midi_tallies.hpp"
#include "timeline/place_midi_clips.hpp"

namespace tanrove {

/// Events that one project gets, some two hours of a thousand a second. Any number of clips may
/// play one region: a small session that places a long one over and over would otherwise fill the
/// disk. A clip that would pass the limit arrives without its events.
constexpr std::size_t max_midi_events = 4'000'000;

/// A message counts as one event more for each of these.
constexpr std::size_t sysex_bytes_per_event = 16;

struct MidiEventOptions {
    bool keep_inaudible_midi = false;    ///< what lies outside its clip is not muted
    bool truncate_midi_to_clip = false;  ///< items end at their clips, whatever still sounds
};

/// The records that the clips play; views on lists that outlive their use.
struct MidiMaterial {
    std::span<const Region> regions;
    std::span<const MidiStream> streams;
    std::span<const MidiChunk> chunks;  ///< one a stream
    double session_tempo = default_tempo_bpm;
    double rate_hz = 48000;
};

/// Makes the items of one project, and keeps count of how large it becomes.
class MidiItemMaker {
public:
    MidiItemMaker(const MidiMaterial& material, const TempoClock& clock,
                  const MidiEventOptions& options, MidiTallies& tallies,
                  std::size_t event_limit = max_midi_events);

    MidiItem item(const PlacedMidiClip& clip);

private:
    struct Source;

    Source source_of(const Region& region);
    bool takes(const Source& source);
    void set_source_offset(MidiItem& item, const PlacedMidiClip& clip, std::int64_t lead);
    double tempo_at(double seconds) const;

    const MidiMaterial& material_;
    const TempoClock& clock_;
    const MidiEventOptions& options_;
    MidiTallies& tallies_;
    std::size_t events_left_;
    std::vector<std::size_t> chunk_events_;  ///< what each chunk counts as
    std::vector<bool> told_regions_;         ///< whose mismatch is counted
};

}  // namespace tanrove
