// Streams: each 0x2000 holds note lists that begin with "MdNLB": u32 note count at 11, 8-byte
// origin at 15; notes from 15, 35 bytes each: 8-byte place at 0, 8-byte length at 9. Regions:
// 0x2002 > 0x2001 > 0x1007 (0x2634 > 0x2633 > 0x2628 since Pro Tools 10): counted name at 9,
// three-point header behind it; the u32 behind the block is the stream's number. Compound clips:
// 0x262c > 0x262b > 0x2628 without a 0x2523, the stream's number 4 bytes behind the block.
// Clips on tracks: 0x1058 > 0x1057 (counted name at 9) > 0x1056 > 0x104f as on audio tracks.
#include "ptformat/midi_lists.hpp"

#include <algorithm>
#include <map>
#include <string>

#include "base/session_numbers.hpp"

namespace tanrove::ptformat {

namespace {

using Region = PTFFormat::Region;
using Track = PTFFormat::Track;

constexpr std::string_view note_list_marker = "MdNLB";
constexpr std::size_t note_count_at = 11;
constexpr std::size_t notes_at = 15;
constexpr std::size_t note_bytes = 35;
constexpr std::size_t note_length_at = 9;

constexpr std::size_t name_at = 9;
constexpr std::size_t strip_name_at = 11;
constexpr std::size_t stream_behind_compound = 4;

constexpr std::size_t placed_region_at = 11;
constexpr std::size_t placed_position_at = 16;
constexpr std::size_t placed_end = placed_position_at + 8;

struct Stream {
    std::uint64_t origin = 0;
    std::uint64_t end = 0;  ///< greatest place plus length, from the origin
};

/// Reads the note list whose marker stands at `at`; gives the position behind its last note.
std::size_t read_stream(const Container& session, std::size_t at, std::size_t limit,
                        std::vector<Stream>& streams) {
    std::size_t note = at + notes_at;
    if (note > limit || limit - note < 5) return at + note_list_marker.size();
    Stream stream{.origin = session.position(note)};
    const std::size_t count =
        std::min(std::size_t{session.u32(at + note_count_at)}, (limit - note) / note_bytes);
    for (std::size_t i = 0; i < count; ++i, note += note_bytes) {
        const std::uint64_t place = session.position(note);
        const std::uint64_t length = session.position(note + note_length_at);
        if (place >= stream.origin)
            stream.end = std::max(stream.end, place - stream.origin + length);
    }
    streams.push_back(stream);
    return note;
}

std::vector<Stream> read_streams(const Container& session) {
    std::vector<Stream> streams;
    for (const ChainBlock& list : session.top_level()) {
        if (list.content_type != 0x2000) continue;
        const ByteView before_end = session.image().window(0, list.end());
        for (std::size_t at = before_end.find(note_list_marker, list.payload());
             at != ByteView::npos; at = before_end.find(note_list_marker, at)) {
            at = read_stream(session, at, list.end(), streams);
        }
    }
    return streams;
}

void add_region(Region region, std::vector<Region>& regions) {
    if (regions.size() == max_regions) return;
    region.index = static_cast<std::uint16_t>(regions.size());
    region.start = static_cast<std::int64_t>(tick_origin);
    regions.push_back(std::move(region));
}

void add_plain_regions(const Container& session, const ChainBlock& list,
                       const std::vector<Stream>& streams, std::vector<Region>& regions) {
    for (const ChainBlock& entry : session.children(list, {0x2001, 0x2633})) {
        for (const ChainBlock& clip : session.children(entry, {0x1007, 0x2628})) {
            const std::size_t stream = session.u32(clip.end());
            if (stream >= streams.size() || clip.end() - clip.payload() < 4) continue;
            const std::size_t span_at = clip.at + name_at + 4 + session.u32(clip.at + name_at);
            const ClipSpan span = session.clip_span(span_at, clip.end());
            Region region;
            region.name = session.text(clip.at + name_at, max_name_bytes, clip.end());
            region.source_offset = static_cast<std::int64_t>(streams[stream].origin) -
                                   static_cast<std::int64_t>(span.source_offset);
            region.length = static_cast<std::int64_t>(span.length);
            add_region(std::move(region), regions);
        }
    }
}

void add_compound_regions(const Container& session, const ChainBlock& list,
                          const std::vector<Stream>& streams, const std::string& name,
                          std::vector<Region>& regions) {
    for (const ChainBlock& entry : session.children(list, {0x262b})) {
        for (const ChainBlock& clip : session.children(entry, {0x2628})) {
            if (!session.children(clip, {0x2523}).empty()) continue;
            const std::size_t stream = session.u32(clip.end() + stream_behind_compound);
            if (stream >= streams.size()) continue;
            Region region;
            region.name = name;
            region.length = static_cast<std::int64_t>(streams[stream].end);
            add_region(std::move(region), regions);
        }
    }
}

/// For each strip in the order of the strip rows: is it a MIDI or an instrument track. A plain row
/// inside a 0x261d is no strip of its own.
std::vector<bool> midi_strips(const Container& session) {
    std::vector<bool> is_midi;
    std::size_t nesting_end = 0;
    for (const ChainBlock& row : session.scan({0x261b, 0x261d, 0x261f, 0x2620, 0x2621, 0x2623})) {
        if (row.content_type == 0x261d) {
            nesting_end = std::max(nesting_end, row.end());
        } else if (row.content_type != 0x261b || row.at >= nesting_end) {
            is_midi.push_back(row.is_one_of({0x2620, 0x2621}));
        }
    }
    return is_midi;
}

/// Track numbers of the MIDI tracks by their names; the first of a name stands.
std::map<std::string, std::uint16_t> midi_track_numbers(const Container& session) {
    std::map<std::string, std::uint16_t> numbers;
    const std::vector<bool> is_midi = midi_strips(session);
    std::size_t strip = 0;
    std::uint16_t number = 0;
    for (const ChainBlock& list : session.top_level()) {
        if (list.content_type != 0x2519) continue;
        for (const ChainBlock& entry : session.children(list, {0x251a})) {
            if (strip >= is_midi.size() || number == 0xffff) return numbers;
            if (!is_midi[strip++]) continue;
            numbers.emplace(session.text(entry.at + strip_name_at, max_name_bytes, entry.end()),
                            number++);
        }
    }
    return numbers;
}

/// Appends a copy of `row` for each clip of the playlist whose region exists.
void add_clips(const Container& session, const ChainBlock& playlist, Track row,
               std::size_t region_count, std::vector<Track>& rows) {
    for (const ChainBlock& entry : session.children(playlist, {0x1056})) {
        for (const ChainBlock& clip : session.children(entry, {0x104f})) {
            row.region_index = session.u32(clip.at + placed_region_at);
            if (clip.end() < clip.at + placed_end) continue;
            if (row.region_index >= static_cast<std::int64_t>(region_count)) continue;
            const std::uint64_t place = session.position(clip.at + placed_position_at);
            row.start = static_cast<std::int64_t>(place < tick_origin ? tick_origin - place
                                                                      : place - tick_origin);
            rows.push_back(row);
        }
    }
}

}  // namespace

std::vector<Region> read_midi_regions(const Container& session) {
    const std::vector<Stream> streams = read_streams(session);
    std::vector<Region> regions;
    for (const ChainBlock& list : session.top_level()) {
        if (list.is_one_of({0x2002, 0x2634})) add_plain_regions(session, list, streams, regions);
    }
    const std::string last_name = regions.empty() ? std::string() : regions.back().name;
    for (const ChainBlock& list : session.top_level()) {
        if (list.content_type != 0x262c) continue;
        add_compound_regions(session, list, streams, last_name, regions);
    }
    return regions;
}

std::vector<Track> read_midi_tracks(const Container& session, const std::vector<Region>& regions,
                                    TrackNames& names) {
    std::vector<Track> rows;
    if (regions.empty()) return rows;
    const auto numbers = midi_track_numbers(session);
    for (const ChainBlock& list : session.top_level()) {
        if (list.content_type != 0x1058) continue;
        std::uint16_t running = 0;
        for (const ChainBlock& playlist : session.children(list, {0x1057})) {
            Track row;
            const std::string& name = names.emplace_back(
                session.text(playlist.at + name_at, max_name_bytes, playlist.end()));
            row.name = name;
            const auto known = numbers.find(name);
            row.index = known == numbers.end() ? running : known->second;
            add_clips(session, playlist, row, regions.size(), rows);
            if (running < 0xffff) ++running;
        }
    }
    return rows;
}

}  // namespace tanrove::ptformat
