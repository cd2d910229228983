// One top-level block 0x2000 holds all streams of a session, as records that a text of a few
// letters opens. Lists of other events stand between the note lists, and are stepped over: a SysEx
// message may hold any text. From the "MdNLB" of a note list:
//
//   5   u16 version, u32 bytes that follow
//   11  u32 number of notes
//   15  the notes, 35 bytes each; the first one's position is the stream's origin
//
// From a note:
//
//   0   8 bytes position: ticks from the session's origin (of a clip on a sample-based track
//       samples, from the same number)
//   8   u8 key
//   9   5 bytes length
//   17  u8 velocity
#include "session/midi_streams.hpp"

#include <algorithm>
#include <string_view>

#include "session/block_types.hpp"
#include "session/midi_event_lists.hpp"

namespace tanrove {

namespace {

constexpr std::string_view record_mark = "Md";  // what all records begin with
constexpr std::string_view note_list_mark = "MdNLB";
constexpr std::size_t note_count_at = 11;
constexpr std::size_t notes_at = 15;
constexpr std::size_t note_bytes = 35;

constexpr std::size_t key_at = 8;
constexpr std::size_t length_at = 9;
constexpr std::size_t length_width = 5;
constexpr std::size_t velocity_at = 17;

MidiEvent read_note(ByteView image, std::size_t at, std::uint64_t origin) {
    const auto position = static_cast<std::int64_t>(read_position(image, at));
    return {.position = position - static_cast<std::int64_t>(origin),
            .length = static_cast<std::int64_t>(readWide(image, at + length_at, length_width)),
            .note = image.u8(at + key_at),
            .velocity = image.u8(at + velocity_at)};
}

/// The stream whose `count` notes begin at `at`.
MidiStream read_stream(ByteView image, std::size_t at, std::size_t count) {
    MidiStream stream;
    if (count == 0) return stream;
    stream.origin = read_position(image, at);
    stream.events.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        stream.events.push_back(read_note(image, at + i * note_bytes, stream.origin));
        const MidiEvent& note = stream.events.back();
        stream.end = std::max(stream.end, note.position + note.length);
    }
    return stream;
}

/// The streams of one block, `body` being the image up to the block's end.
void read_block(ByteView body, std::size_t from, MidiEventLists& lists,
                std::vector<MidiStream>& streams) {
    bool is_open = false;  // lists belong to the stream in front of them
    std::size_t at = body.find(record_mark, from);
    while (at != ByteView::npos && body.holds(at, notes_at)) {
        std::size_t next = at + 1;
        if (body.has(at, note_list_mark)) {
            const std::size_t first = at + notes_at;
            const std::size_t room = (body.size() - first) / note_bytes;
            const std::size_t count = std::min<std::size_t>(body.u32(at + note_count_at), room);
            streams.push_back(read_stream(body, first, count));
            next = first + count * note_bytes;
            is_open = true;
        } else if (is_open) {
            auto list = lists.sysex_list(at);
            if (!list) list = lists.controller_list(at);
            if (list) next = list->end;
        }
        at = body.find(record_mark, next);
    }
}

}  // namespace

std::vector<MidiStream> read_midi_streams(ByteView image, std::span<const BlockNode> tree) {
    std::vector<MidiStream> streams;
    MidiEventLists lists(image);
    for (const BlockNode& node : tree) {
        if (node.contentType != block_type::midi_streams) continue;
        read_block(image.window(0, node.offset + node.size), node.offset, lists, streams);
    }
    return streams;
}

}  // namespace tanrove
