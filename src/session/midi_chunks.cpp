// The records of a stream stand inside a 0x2000 block, each opened by a text of a few letters. All
// positions in them are 8 bytes, ticks from the session's origin.
//
// Note list "MdNLB" opens a stream: u32 number of notes at 11, the first note's position at 15, 35
// bytes a note. The lists of its SysEx and its controllers follow.
#include "session/midi_chunks.hpp"

#include <algorithm>
#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::string_view record_mark = "Md";  // what all records begin with
constexpr std::string_view note_list_mark = "MdNLB";

constexpr std::size_t least_record = 17;
constexpr std::size_t note_count_at = 11;
constexpr std::size_t notes_at = 15;
constexpr std::size_t note_bytes = 35;
constexpr std::size_t value_at = 8;  // from a controller event

/// Walks the records of the whole image in one pass.
class ChunkWalk {
public:
    explicit ChunkWalk(const BlockIndex& index)
        : image_(index.image()),
          spans_(index.of_type(block_type::midi_streams).all()),
          lists_(image_) {}

    std::vector<MidiChunk> read() {
        std::size_t p = image_.find(record_mark, 0);
        while (p != ByteView::npos && image_.holds(p, least_record)) {
            p = image_.find(record_mark, take_record(p));
        }
        return std::move(chunks_);
    }

private:
    /// Reads what stands at `p`; returns where the walk goes on: behind a list that was read, else
    /// at the next byte.
    std::size_t take_record(std::size_t p) {
        if (image_.has(p, note_list_mark)) {
            is_open_ = lies_in_streams(p);
            return is_open_ ? open_chunk(p) : p + 1;
        }
        if (!is_open_) return p + 1;
        if (const auto list = lists_.sysex_list(p)) {
            take_sysex(*list);
            return list->end;
        }
        if (const auto list = lists_.controller_list(p)) {
            take_controllers(*list);
            return list->end;
        }
        return p + 1;
    }

    /// Returns the end of the notes, as far as their block reaches.
    std::size_t open_chunk(std::size_t p) {
        MidiChunk chunk;
        chunk.note_count = image_.u32(p + note_count_at);
        const std::size_t first = p + notes_at;
        if (chunk.note_count != 0 && image_.holds(first, position_width)) {
            chunk.origin = read_position(image_, first);
        }
        const std::size_t room = span_end_ > first ? (span_end_ - first) / note_bytes : 0;
        const std::size_t count = std::min<std::size_t>(chunk.note_count, room);
        chunks_.push_back(std::move(chunk));
        return first + count * note_bytes;
    }

    /// Asked for ascending positions only.
    bool lies_in_streams(std::size_t p) {
        for (; next_span_ < spans_.size() && spans_[next_span_].at < p; ++next_span_) {
            span_end_ = std::max(span_end_, spans_[next_span_].end());
        }
        return p < span_end_;
    }

    void take_sysex(const MidiEventList& list) {
        auto& sysex = chunks_.back().sysex;
        std::size_t at = list.events_at;
        for (std::size_t i = 0; i < list.count; ++i) {
            const auto data =
                image_.window(at + sysex_data_at, image_.u32(at + sysex_length_at)).span();
            sysex.push_back({read_position(image_, at), {data.begin(), data.end()}});
            at += sysex_data_at + data.size();
        }
    }

    void take_controllers(const MidiEventList& list) {
        auto& controllers = chunks_.back().controllers;
        for (std::size_t at = list.events_at; at < list.end; at += controller_event_bytes) {
            controllers.push_back(
                {list.kind, read_position(image_, at), image_.u32(at + value_at)});
        }
    }

    ByteView image_;
    std::span<const Block> spans_;
    std::size_t next_span_ = 0;
    std::size_t span_end_ = 0;  ///< the last end of the spans that begin before the position
    bool is_open_ = false;
    MidiEventLists lists_;
    std::vector<MidiChunk> chunks_;
};

}  // namespace

std::vector<MidiChunk> readMidiChunks(const BlockIndex& index) {
    return ChunkWalk(index).read();
}

}  // namespace tanrove
