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

/// What one project gets. Every clip holds its whole stream, and any number of clips may play one:
/// a take that is cut into pieces grows with the square of its length, and a small hostile session
/// could fill the disk.
struct MidiLimits {
    /// Some two hours of a thousand events a second. A clip that would pass it arrives without what
    /// lies outside it, which is muted in any case.
    std::size_t events = 4'000'000;
    std::size_t audible_events = 8'000'000;     ///< what passes it is left out
    std::size_t searched_events = 200'000'000;  ///< looked through for what lies inside a clip
};

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

struct ClipTime;

/// Makes the items of one project, and keeps count of how large it becomes.
class MidiItemMaker {
public:
    MidiItemMaker(const MidiMaterial& material, const TempoClock& clock,
                  const MidiEventOptions& options, MidiTallies& tallies,
                  const MidiLimits& limits = {});

    MidiItem item(const PlacedMidiClip& clip);

private:
    struct Source;

    Source source_of(const Region& region);
    std::size_t events_of(const Source& source) const;
    ClipTime time_of(const PlacedMidiClip& clip) const;
    std::int64_t fill(MidiItem& item, const PlacedMidiClip& clip, const ClipTime& time);
    void set_source_offset(MidiItem& item, const PlacedMidiClip& clip, std::int64_t lead);
    double just_behind(double seconds) const;
    double tempo_at(double seconds) const { return clock_.bpm_at(just_behind(seconds)); }

    MidiMaterial material_;
    const TempoClock& clock_;
    MidiEventOptions options_;
    MidiTallies& tallies_;
    MidiLimits limits_;
    std::size_t events_written_ = 0;
    std::size_t events_searched_ = 0;
    std::vector<std::size_t> chunk_events_;  ///< what each chunk counts as
    std::vector<bool> told_regions_;         ///< whose mismatch is counted
};

}  // namespace tanrove
