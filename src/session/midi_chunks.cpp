// The records of a stream stand inside a 0x2000 block, each opened by a text of a few letters. All
// positions in them are 8 bytes, ticks from the session's origin.
//
// Note list "MdNLB" opens a stream: u32 number of notes at 11, the first note's position at 15.
//
// System exclusive list, from its "MdES":
//   10  "MdTEL", u16 version
//   17  u32 length of what follows, which ends at E = 21 + length
//   21  u32 number of events; 0 with E = 25 is the empty list that nearly all streams have
//   25  the events: 8 bytes position; u8 1; u8; u32 L + 5; u8; u32 L; L bytes of data
//
// Controller list, one a kind, from its "MdCDS":
//   11  "Mdss", u16 version, u32 n, the bytes that follow this number
//   21  u16 kind, in n bytes
//   D   "MdCD" at 21 + n; from there u32 length at 6, which is 12 * c + 4; u32 number of events c
//       at 10; at 14 the events: 8 bytes position, u32 value
#include "session/midi_chunks.hpp"

#include <algorithm>
#include <optional>
#include <string_view>

namespace tanrove {

namespace {

constexpr std::uint16_t streams_type = 0x2000;
constexpr std::string_view record_mark = "Md";  // what all records begin with
constexpr std::string_view note_list_mark = "MdNLB";
constexpr std::string_view sysex_mark = "MdES";
constexpr std::string_view event_list_mark = "MdTEL";
constexpr std::string_view controller_mark = "MdCDS";
constexpr std::string_view kind_mark = "Mdss";
constexpr std::string_view controller_events_mark = "MdCD";

constexpr std::size_t least_record = 17;
constexpr std::size_t count_width = 4;

constexpr std::size_t note_count_at = 11;
constexpr std::size_t origin_at = 15;

constexpr std::size_t event_list_at = 10;
constexpr std::size_t sysex_length_at = 17;
constexpr std::size_t sysex_count_at = 21;
constexpr std::size_t sysex_events_at = 25;
constexpr std::size_t one_at = 8;
constexpr std::size_t padded_length_at = 10;
constexpr std::size_t data_length_at = 15;
constexpr std::size_t data_at = 19;
constexpr std::uint64_t length_padding = 5;

constexpr std::size_t kind_mark_at = 11;
constexpr std::size_t kind_length_at = 17;
constexpr std::size_t kind_at = 21;
constexpr std::uint32_t least_kind_length = 2;
constexpr std::size_t controller_length_at = 6;
constexpr std::size_t controller_count_at = 10;
constexpr std::size_t controller_events_at = 14;
constexpr std::size_t controller_bytes = 12;
constexpr std::size_t value_at = 8;

bool is_known_kind(std::uint16_t kind) {
    switch (controller_type(kind)) {
        case MidiControllerType::pitch_bend:
        case MidiControllerType::continuous:
        case MidiControllerType::aftertouch:
            return true;
    }
    return false;
}

/// Walks the records of the whole image in one pass.
class ChunkWalk {
public:
    explicit ChunkWalk(const BlockIndex& index)
        : image_(index.image()),
          spans_(index.of_type(streams_type).all()),
          events_left_(image_.size() / data_at) {}

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
        std::optional<std::size_t> end;
        if (image_.has(p, note_list_mark)) {
            open_chunk(p);
        } else if (is_open_ && image_.has(p, sysex_mark)) {
            end = read_sysex_list(p);
        } else if (is_open_ && image_.has(p, controller_mark)) {
            end = read_controller_list(p);
        }
        return end.value_or(p + 1);
    }

    void open_chunk(std::size_t p) {
        is_open_ = lies_in_streams(p);
        if (!is_open_) return;
        MidiChunk chunk;
        chunk.note_count = image_.u32(p + note_count_at);
        if (chunk.note_count != 0 && image_.holds(p + origin_at, position_width)) {
            chunk.origin = read_position(image_, p + origin_at);
        }
        chunks_.push_back(std::move(chunk));
    }

    /// Asked for ascending positions only.
    bool lies_in_streams(std::size_t p) {
        for (; next_span_ < spans_.size() && spans_[next_span_].at < p; ++next_span_) {
            span_end_ = std::max(span_end_, spans_[next_span_].end());
        }
        return p < span_end_;
    }

    std::optional<std::size_t> read_sysex_list(std::size_t p) {
        if (!image_.has(p + event_list_at, event_list_mark)) return std::nullopt;
        const std::size_t length = image_.u32(p + sysex_length_at);
        const std::size_t list_at = p + sysex_count_at;
        if (length < count_width || !image_.holds(list_at, length)) return std::nullopt;
        const std::size_t end = list_at + length;
        const std::size_t count = image_.u32(list_at);
        if (count > (length - count_width) / data_at) return std::nullopt;
        auto events = read_sysex_events(p + sysex_events_at, count, end);
        if (!events) return std::nullopt;
        auto& sysex = chunks_.back().sysex;
        std::move(events->begin(), events->end(), std::back_inserter(sysex));
        return end;
    }

    /// `count` events that run from `at` exactly to `end`. All lists together take no more steps
    /// than the image could hold events: lists do not overlap, but lies about them can.
    std::optional<std::vector<MidiSysex>> read_sysex_events(std::size_t at, std::size_t count,
                                                            std::size_t end) {
        const std::size_t first = at;
        for (std::size_t i = 0; i < count; ++i, --events_left_) {
            if (events_left_ == 0) return std::nullopt;
            const auto next = sysex_event_end(at, end);
            if (!next) return std::nullopt;
            at = *next;
        }
        if (at != end) return std::nullopt;
        std::vector<MidiSysex> events(count);
        at = first;
        for (MidiSysex& event : events) {
            const auto data = image_.window(at + data_at, image_.u32(at + data_length_at)).span();
            event.position = read_position(image_, at);
            event.data.assign(data.begin(), data.end());
            at += data_at + data.size();
        }
        return events;
    }

    std::optional<std::size_t> sysex_event_end(std::size_t at, std::size_t end) const {
        if (end - at < data_at || image_.u8(at + one_at) != 1) return std::nullopt;
        const std::uint64_t length = image_.u32(at + data_length_at);
        if (image_.u32(at + padded_length_at) != length + length_padding) return std::nullopt;
        if (length > end - at - data_at) return std::nullopt;
        return at + data_at + static_cast<std::size_t>(length);
    }

    std::optional<std::size_t> read_controller_list(std::size_t p) {
        if (!image_.has(p + kind_mark_at, kind_mark)) return std::nullopt;
        const std::size_t kind_length = image_.u32(p + kind_length_at);
        const std::uint16_t kind = image_.u16(p + kind_at);
        if (kind_length < least_kind_length || !is_known_kind(kind)) return std::nullopt;
        const std::size_t d = p + kind_at + kind_length;
        if (!image_.has(d, controller_events_mark)) return std::nullopt;
        const std::uint64_t count = image_.u32(d + controller_count_at);
        const std::size_t first = d + controller_events_at;
        if (!image_.holds(first, count * controller_bytes)) return std::nullopt;
        const std::uint64_t length = image_.u32(d + controller_length_at);
        if (length != count * controller_bytes + count_width) return std::nullopt;

        auto& controllers = chunks_.back().controllers;
        const std::size_t end = first + count * controller_bytes;
        for (std::size_t at = first; at < end; at += controller_bytes) {
            controllers.push_back({kind, read_position(image_, at), image_.u32(at + value_at)});
        }
        return end;
    }

    ByteView image_;
    std::span<const Block> spans_;
    std::size_t next_span_ = 0;
    std::size_t span_end_ = 0;  ///< the last end of the spans that begin before the position
    std::size_t events_left_ = 0;
    bool is_open_ = false;
    std::vector<MidiChunk> chunks_;
};

}  // namespace

std::vector<MidiChunk> readMidiChunks(const BlockIndex& index) {
    return ChunkWalk(index).read();
}

}  // namespace tanrove
