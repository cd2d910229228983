// The mixer's records: I/O paths, and what a strip row holds behind its active mark: channels with
// their outputs and lanes, sends, the input, and the mixer of a MIDI track.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/byte_writer.hpp"
#include "support/track_spec.hpp"

namespace tanrove::builder {

struct IoPathSpec {
    std::string name;
    std::uint8_t type = 0;  ///< 0 input, 1 and 6 hardware output, 2 bus, 3 insert
    std::vector<std::uint16_t> channels = {1, 2};
    std::optional<std::uint16_t> parent = {};     ///< place among the paths
    bool mapped = false;                          ///< a bus that plays to the hardware
    std::uint64_t identity = 0;                   ///< 0: by the name
    std::string hardware = {};                    ///< name of the path that a mapped bus plays to
    std::optional<std::uint8_t> width_code = {};  ///< nothing: by the channels
};

/// The identity of the path with this name.
std::uint64_t path_identity(const std::string& name);

/// 0x1021 as real sessions have it: the count of channels right behind the name.
Bytes io_path_record(const IoPathSpec& path);
/// The same with four bytes in front of the count and `gap` bytes in front of the identity.
Bytes io_path_record_later_count(const IoPathSpec& path, std::size_t gap);
/// 0x1022: all paths, or those that a session with a path table of its own has here.
Bytes io_paths_block(const std::vector<IoPathSpec>& paths, bool has_path_table = false);
/// 0x2602, which stands in the path table.
Bytes own_path_record(const IoPathSpec& path, std::uint64_t parent_identity = 0);
/// 0x2603: the buses among the paths. Empty if there is none.
Bytes path_table_block(const std::vector<IoPathSpec>& paths);

struct ChannelSpec {
    int fader_tenths = 0;  ///< of a dB
    bool muted = false;
    int pan = 0;
    int pan_right = 0;
    std::uint8_t link = 1;
    std::size_t payload_bytes = 279;
    std::vector<StoredPannerSpec> panners = {};  ///< in place of the pans
};

/// 0x1029.
Bytes channel_record(const ChannelSpec& channel);

/// The number under which the session knows the output of this name; plug-ins name keys by it.
std::uint16_t output_id(const std::string& name);

/// 0x260e; an empty name is an output that leads nowhere.
Bytes output_name_record(const std::string& name, std::uint16_t id = 2);

/// 0x260a.
Bytes lane_record(const LaneSpec& lane, bool in_ticks = false);
/// 0x260c with these lanes in it.
Bytes lane_group(const std::vector<Bytes>& lanes);

/// 0x260d: a channel record, its output (none for an empty one), and lanes as they stand. `shape`
/// is the byte behind the record, 1 in real sessions.
Bytes send_channel(const Bytes& record, const Bytes& output, const Bytes& lanes,
                   std::uint8_t shape = 1);

/// The input as it stands in a row.
Bytes input_mark(const std::string& path_name, std::uint8_t path_type);

/// 0x2612 whose name stands where every output's does, or at the fixed place 42.
Bytes hardware_insert(const std::string& name);
Bytes hardware_insert_fixed_place(const std::string& name);

/// 0x2611 of a MIDI track, with its settings and its mute lane.
Bytes midi_mixer(const TrackSpec& track);

/// Everything a strip row holds of the mixer.
Bytes mixer_part(const TrackSpec& track);

}  // namespace tanrove::builder
