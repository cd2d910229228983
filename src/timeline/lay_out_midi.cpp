// Places the clips, then makes what they play.
#include "timeline/lay_out_midi.hpp"

#include <utility>

namespace tanrove {

std::vector<MidiTrack> lay_out_midi(const MidiPlacingInput& placing, const MidiMaterial& material,
                                    const TempoClock& clock, const MidiEventOptions& options,
                                    MidiTallies& tallies) {
    tallies.truncation_wanted = options.truncate_midi_to_clip;
    MidiItemMaker maker(material, clock, options, tallies);
    std::vector<MidiTrack> tracks;
    for (PlacedMidiTrack& placed : place_midi_clips(placing, clock, tallies)) {
        MidiTrack track{std::move(placed.name), placed.tick_based, {}};
        track.items.reserve(placed.clips.size());
        for (const PlacedMidiClip& clip : placed.clips) track.items.push_back(maker.item(clip));
        tracks.push_back(std::move(track));
    }
    return tracks;
}

}  // namespace tanrove
