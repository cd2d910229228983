// The first 0x2036 of a MIDI track's row holds, from its 'Z':
//
//   9   i8 volume, below 0 none
//   17  i8 pan, below 0 none
//   21  i32 output, the number of a MIDI output, counted from 1; 0 none
//   25  i8 patch, below 0 none
//   43  u8 1: the track plays an instrument track
//   64  the marker '*', 0, 0, 0
//   68  8 bytes identity: of the instrument, on its own track and on each MIDI track that plays it
#include "session/midi_track_settings.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t volume_at = 9;
constexpr std::size_t pan_at = 17;
constexpr std::size_t output_at = 21;
constexpr std::size_t patch_at = 25;
constexpr std::size_t plays_instrument_at = 43;
constexpr std::size_t marker_at = 64;
constexpr std::size_t identity_at = 68;

constexpr std::uint32_t least_size = 16;             // with volume and pan
constexpr std::uint32_t least_size_with_patch = 19;  // the patch inside the block
constexpr std::uint32_t least_size_with_identity = 69;
constexpr std::uint8_t highest_value = 127;
constexpr std::uint8_t marker_byte = '*';

std::int32_t value_at(ByteView image, std::size_t at) {
    const std::uint8_t value = image.u8(at);
    return value <= highest_value ? value : midi_value_unset;
}

}  // namespace

MidiTrackSettings read_midi_settings(ByteView image, const Block& block) {
    MidiTrackSettings settings;
    if (block.size < least_size) return settings;
    settings.volume = value_at(image, block.at + volume_at);
    settings.pan = value_at(image, block.at + pan_at);
    if (block.size < least_midi_settings_with_output) return settings;
    settings.output = image.i32(block.at + output_at);
    if (block.size < least_size_with_patch) return settings;
    settings.patch = value_at(image, block.at + patch_at);
    if (block.size < least_size_with_identity) return settings;
    settings.plays_instrument = image.u8(block.at + plays_instrument_at) == 1;
    if (image.u8(block.at + marker_at) == marker_byte) {
        settings.instrument = image.u64(block.at + identity_at);
    }
    return settings;
}

std::vector<MidiTrackSettings> readMidiSettings(const BlockIndex& index,
                                                std::span<const StripRow> rows) {
    const BlockList& blocks = index.of_type(block_type::midi_track_settings);
    std::vector<MidiTrackSettings> list(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!plays_midi(rows[i].type)) continue;
        const Block* block = blocks.first_inside(rows[i].start + block_payload_at, rows[i].end);
        if (block != nullptr) list[i] = read_midi_settings(index.image(), *block);
    }
    return list;
}

}  // namespace tanrove
