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
#include "session/midi_event_lists.hpp"

#include <string_view>

namespace tanrove {

namespace {

constexpr std::string_view sysex_mark = "MdES";
constexpr std::string_view event_list_mark = "MdTEL";
constexpr std::string_view controller_mark = "MdCDS";
constexpr std::string_view kind_mark = "Mdss";
constexpr std::string_view controller_events_mark = "MdCD";

constexpr std::size_t count_width = 4;

constexpr std::size_t event_list_at = 10;
constexpr std::size_t list_length_at = 17;
constexpr std::size_t sysex_count_at = 21;
constexpr std::size_t sysex_events_at = 25;
constexpr std::size_t one_at = 8;
constexpr std::size_t padded_length_at = 10;
constexpr std::uint64_t length_padding = 5;

constexpr std::size_t kind_mark_at = 11;
constexpr std::size_t kind_length_at = 17;
constexpr std::size_t kind_at = 21;
constexpr std::uint32_t least_kind_length = 2;
constexpr std::size_t controller_length_at = 6;
constexpr std::size_t controller_count_at = 10;
constexpr std::size_t controller_events_at = 14;

bool is_known_kind(std::uint16_t kind) {
    switch (controller_type(kind)) {
        case MidiControllerType::pitch_bend:
        case MidiControllerType::continuous:
        case MidiControllerType::aftertouch:
            return true;
    }
    return false;
}

}  // namespace

MidiEventLists::MidiEventLists(ByteView image)
    : image_(image), events_left_(image.size() / sysex_data_at) {}

std::optional<MidiEventList> MidiEventLists::sysex_list(std::size_t at) {
    if (!image_.has(at, sysex_mark)) return std::nullopt;
    if (!image_.has(at + event_list_at, event_list_mark)) return std::nullopt;
    const std::size_t length = image_.u32(at + list_length_at);
    const std::size_t list_at = at + sysex_count_at;
    if (length < count_width || !image_.holds(list_at, length)) return std::nullopt;
    const std::size_t end = list_at + length;
    const std::size_t count = image_.u32(list_at);
    if (count > (length - count_width) / sysex_data_at) return std::nullopt;
    std::size_t event_at = at + sysex_events_at;
    for (std::size_t i = 0; i < count; ++i, --events_left_) {
        if (events_left_ == 0) return std::nullopt;
        const auto next = sysex_event_end(event_at, end);
        if (!next) return std::nullopt;
        event_at = *next;
    }
    if (event_at != end) return std::nullopt;
    return MidiEventList{at + sysex_events_at, count, end, 0};
}

std::optional<std::size_t> MidiEventLists::sysex_event_end(std::size_t at, std::size_t end) const {
    if (end - at < sysex_data_at || image_.u8(at + one_at) != 1) return std::nullopt;
    const std::uint64_t length = image_.u32(at + sysex_length_at);
    if (image_.u32(at + padded_length_at) != length + length_padding) return std::nullopt;
    if (length > end - at - sysex_data_at) return std::nullopt;
    return at + sysex_data_at + static_cast<std::size_t>(length);
}

std::optional<MidiEventList> MidiEventLists::controller_list(std::size_t at) const {
    if (!image_.has(at, controller_mark)) return std::nullopt;
    if (!image_.has(at + kind_mark_at, kind_mark)) return std::nullopt;
    const std::size_t kind_length = image_.u32(at + kind_length_at);
    const std::uint16_t kind = image_.u16(at + kind_at);
    if (kind_length < least_kind_length || !is_known_kind(kind)) return std::nullopt;
    const std::size_t d = at + kind_at + kind_length;
    if (!image_.has(d, controller_events_mark)) return std::nullopt;
    const std::uint64_t count = image_.u32(d + controller_count_at);
    const std::size_t first = d + controller_events_at;
    if (!image_.holds(first, count * controller_event_bytes)) return std::nullopt;
    const std::uint64_t length = image_.u32(d + controller_length_at);
    if (length != count * controller_event_bytes + count_width) return std::nullopt;
    return MidiEventList{first, count, first + count * controller_event_bytes, kind};
}

}  // namespace tanrove
