// The colour settings 0x20a2 mostly begin with a block at offset 9. With E its end, counted from
// the 'Z' of the settings:
//
//   E      u8 scheme of the tracks
//   E + 2  u8 scheme of the clips
//
// Without such a block, or where the settings end in front of the second, they stand at 36 and 38.
#include "session/colour_schemes.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t least_size_with_tracks = 30;
constexpr std::uint32_t least_size_with_clips = 32;
constexpr std::size_t child_at = 9;
constexpr std::size_t fixed_track_at = 36;
constexpr std::size_t clip_behind_track = 2;

}  // namespace

ColourSchemes readColourSchemes(const BlockIndex& index) {
    for (const Block& settings : index.of_type(block_type::colour_settings).all()) {
        if (settings.size < least_size_with_tracks) continue;
        const Block* child = index.at(settings.at + child_at);
        const bool follow_child =
            child != nullptr && child->end() + clip_behind_track < settings.end();
        const std::size_t at = follow_child ? child->end() : settings.at + fixed_track_at;
        ColourSchemes schemes;
        schemes.track = index.image().u8(at);
        if (settings.size >= least_size_with_clips) {
            schemes.clip = index.image().u8(at + clip_behind_track);
        }
        return schemes;
    }
    return {};
}

}  // namespace tanrove
