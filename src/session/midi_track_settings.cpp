// The first 0x2036 of a MIDI track's row holds, from its 'Z':
//
//   9   i8 volume, below 0 none
//   17  i8 pan, below 0 none
//   21  i32 output, the number of a MIDI output, counted from 1
//   25  i8 patch, below 0 none
#include "session/midi_track_settings.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t settings_type = 0x2036;
constexpr std::size_t volume_at = 9;
constexpr std::size_t pan_at = 17;
constexpr std::size_t patch_at = 25;

constexpr std::uint32_t least_size = 16;             // with volume and pan
constexpr std::uint32_t least_size_with_patch = 19;  // the patch inside the block
constexpr std::uint8_t highest_value = 127;

std::int32_t value_at(ByteView image, std::size_t at) {
    const std::uint8_t value = image.u8(at);
    return value <= highest_value ? value : midi_value_unset;
}

}  // namespace

std::vector<MidiTrackSettings> readMidiSettings(const BlockIndex& index,
                                                std::span<const StripRow> rows) {
    const ByteView image = index.image();
    const BlockList& blocks = index.of_type(settings_type);
    std::vector<MidiTrackSettings> list(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!plays_midi(rows[i].type)) continue;
        const Block* block = blocks.first_inside(rows[i].start + block_payload_at, rows[i].end);
        if (block == nullptr || block->size < least_size) continue;
        list[i].volume = value_at(image, block->at + volume_at);
        list[i].pan = value_at(image, block->at + pan_at);
        if (block->size < least_size_with_patch) continue;
        list[i].patch = value_at(image, block->at + patch_at);
    }
    return list;
}

}  // namespace tanrove
