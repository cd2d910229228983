// The records of MIDI: streams, regions, playlists, track settings, outputs, real-time properties.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/midi_spec.hpp"
#include "support/track_spec.hpp"

namespace tanrove::builder {

Bytes note_list(const MidiStreamSpec& stream);
Bytes controller_list(const std::vector<ControllerSpec>& of_one_kind);
Bytes sysex_list(const std::vector<SysexSpec>& events);
Bytes midi_stream(const MidiStreamSpec& stream);
/// 0x2000 with all streams.
Bytes midi_streams_block(const std::vector<MidiStreamSpec>& streams);

struct MidiRegionSpec {
    std::string name = {};
    std::int64_t head = 0;  ///< ticks from the session's origin
    std::uint64_t length = 0;
    std::uint32_t stream = 0;
};

Bytes midi_region_list_block(const std::vector<MidiRegionSpec>& regions);
Bytes older_midi_region_list_block(const std::vector<MidiRegionSpec>& regions);

struct CompoundMidiSpec {
    std::uint32_t stream = 0;
    bool marked = false;  ///< holds the block that says that it is none
};

Bytes compound_midi_list_block(const std::vector<CompoundMidiSpec>& compounds);

/// 0x1057 of a track whose clips play regions from `first_region` on.
Bytes midi_playlist_block(const TrackSpec& track, std::uint32_t first_region);
/// The same with the kind right behind the placements.
Bytes short_midi_playlist_block(const TrackSpec& track, std::uint32_t first_region);
Bytes midi_playlists_block(const std::vector<Bytes>& playlists);

Bytes real_time_block(const RealTimeSpec& properties);
Bytes midi_settings_record(const MidiSettingsSpec& settings);
Bytes midi_outputs_block(const std::vector<MidiOutputSpec>& outputs);

/// Streams, regions and playlists of the tracks that play MIDI, and the outputs. The streams stand
/// in the reverse order of the regions that play them.
Bytes midi_blocks(const std::vector<TrackSpec>& tracks, const std::vector<MidiOutputSpec>& outputs);

}  // namespace tanrove::builder
