// The lists that follow the notes of a stream: controllers and SysEx, found and tested but not yet
// read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/byte_view.hpp"

namespace tanrove {

/// Low byte of a controller's kind. Of a continuous controller the high byte is its number.
enum class MidiControllerType : std::uint8_t { pitch_bend = 1, continuous = 2, aftertouch = 4 };

/// The type of a controller kind, and the number that belongs to it.
inline MidiControllerType controller_type(std::uint16_t kind) {
    return static_cast<MidiControllerType>(kind & 0xff);
}
inline std::uint8_t controller_number(std::uint16_t kind) {
    return static_cast<std::uint8_t>(kind >> 8);
}

// From a SysEx event to its data, and where their length stands.
constexpr std::size_t sysex_length_at = 15;
constexpr std::size_t sysex_data_at = 19;

constexpr std::size_t controller_event_bytes = 12;

/// A list that keeps its layout. `kind` is a controller list's.
struct MidiEventList {
    std::size_t events_at = 0;
    std::size_t count = 0;
    std::size_t end = 0;
    std::uint16_t kind = 0;
};

/// Finds the lists of one image. All that are tested take no more steps than the image could hold
/// events: lists do not overlap, but lies about them can.
class MidiEventLists {
public:
    explicit MidiEventLists(ByteView image);

    /// The list that begins at `at`; nullopt where none does, or one test fails.
    std::optional<MidiEventList> sysex_list(std::size_t at);
    std::optional<MidiEventList> controller_list(std::size_t at) const;

private:
    std::optional<std::size_t> sysex_event_end(std::size_t at, std::size_t end) const;

    ByteView image_;
    std::size_t events_left_ = 0;
};

}  // namespace tanrove
