// What the session's clip lists say: regions, the tracks they lie on, and the entries between them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "session/block_index.hpp"
#include "session/block_tree.hpp"
#include "session/midi_streams.hpp"

namespace tanrove {

/// An audio file of the session, copied from the library's list.
struct AudioFileEntry {
    std::string name;
    std::uint16_t index = 0;
};

/// Longest names that are kept, in bytes; longer ones are cut. Pro Tools itself lets nobody type
/// more, and every clip's item bears its region's name: a count that lies would otherwise make a
/// session of a megabyte fill the memory.
constexpr std::size_t max_region_name = 255;
constexpr std::size_t max_track_name = 255;

/// The number of no region. Clips lie only on regions of lesser numbers, and no more are read.
constexpr std::uint32_t no_region = 65535;

/// A clip: a named stretch of one file or of one MIDI stream. Positions as stored, samples or
/// ticks.
struct Region {
    std::uint16_t index = 0;  ///< running number in its list, below `no_region`
    std::string name;
    std::int64_t start = 0;
    std::int64_t source_offset = 0;
    std::int64_t length = 0;
    std::int32_t file = -1;  ///< place in the list of audio files; -1 for none or a MIDI region
    std::uint16_t file_channel = 0;  ///< the channel of the file that it plays
    std::int64_t file_position = 0;
    std::int64_t file_length = 0;
    std::int32_t midi_stream = -1;  ///< index into the MIDI streams, -1 for an audio region
};

/// One clip on a track. A session has many more of these than of regions and tracks, so the row
/// names both by number and copies neither.
struct ClipTrack {
    std::int64_t start = 0;  ///< the stored position: 56 bits, samples or ticks with their origin
    std::uint32_t region_index = no_region;  ///< place in the regions, on MIDI tracks in theirs
    std::uint16_t index = 0;     ///< track id; dense from 0 over the tracks that have clips
    bool is_clip_group = false;  ///< `region_index` is a clip group's and leads to no region
    bool kept = false;           ///< the placement's kept byte
};

/// One track of a list. For audio it is one channel of the session's track list (0x1015), in the
/// list's order, under the name that its track has there. The ids of `SessionLists::tracks` are
/// dense; the channels on which no clip lies are numbered on behind the greatest of them, so that
/// an id names one channel.
struct TrackTableRow {
    std::uint16_t id = 0;
    std::string name;
    /// The running number of the channel's playlist among those of its list; nothing where the
    /// tracks come from no track list.
    std::optional<std::uint16_t> playlist = {};
    std::size_t entry = 0;  ///< place of its track in the list: legs of one track share it
};

struct SessionLists {
    std::vector<Region> regions;
    std::vector<Region> midi_regions;
    std::vector<ClipTrack> placements;  ///< of clips on audio tracks, sorted by track id
    std::vector<ClipTrack> midi_placements;
    std::vector<TrackTableRow> midi_track_rows;  ///< the MIDI and instrument tracks by their ids
    std::vector<MidiStream> midi_streams;        ///< what `midi_stream` of a region counts
    std::size_t unnumbered_clips = 0;  ///< placements of regions past the last number, left out
};

/// The tree of the session's lists, as deep as their records lie: made once for all who read them.
BlockTree parse_list_tree(ByteView image);

/// The regions and the clips on audio tracks, sorted by track id, and the track list with the same
/// ids, from the tree of lists. `files` are the session's audio files, which the regions name by
/// their place. The lists of clips hold no row for a track without any. False for an image that has
/// no lists to read (too short, or big-endian): the library's own lists then take their place.
bool readSessionLists(const BlockIndex& index, std::span<const BlockNode> tree,
                      std::span<const AudioFileEntry> files, SessionLists& lists,
                      std::vector<TrackTableRow>& track_rows);

}  // namespace tanrove
