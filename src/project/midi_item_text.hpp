// The text of one MIDI `<ITEM`, its events inline.
#pragma once

#include "base/text_sink.hpp"
#include "session/midi_track_settings.hpp"
#include "timeline/midi_item.hpp"

namespace tanrove {

/// Writes a MIDI item. `settings` is what its track sends at the start of each, as far as the item
/// does not stream it. Every number must be finite.
void write_midi_item(TextSink& out, const MidiItem& item, const MidiTrackSettings& settings);

}  // namespace tanrove
