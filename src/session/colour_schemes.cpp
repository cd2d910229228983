// The colour settings 0x20a2 mostly begin with a block at offset 9. With E its end, counted from
// the 'Z' of the settings:
//
//   E      u8 scheme of the tracks
//   E + 2  u8 scheme of the clips
//
// Without such a block, or where it fills the settings, they stand at 36 and 38.
#include "session/colour_schemes.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t colour_settings_type = 0x20a2;
constexpr std::uint32_t least_size_with_tracks = 30;
constexpr std::uint32_t least_size_with_clips = 32;
constexpr std::size_t child_at = 9;
constexpr std::size_t fixed_track_at = 36;
constexpr std::size_t clip_behind_track = 2;

}  // namespace

ColourSchemes readColourSchemes(const BlockIndex& index) {
    for (const Block& settings : index.of_type(colour_settings_type).all()) {
        if (settings.size < least_size_with_tracks) continue;
        const Block* child = index.at(settings.at + child_at);
        const bool has_child = child != nullptr && child->end() <= settings.end();
        const auto scheme = [&](std::size_t behind_track) -> std::int32_t {
            const std::size_t fixed = settings.at + fixed_track_at + behind_track;
            const std::size_t moved = has_child ? child->end() + behind_track : fixed;
            return index.image().u8(moved < settings.end() ? moved : fixed);
        };
        ColourSchemes schemes;
        schemes.track = scheme(0);
        if (settings.size >= least_size_with_clips) schemes.clip = scheme(clip_behind_track);
        return schemes;
    }
    return {};
}

}  // namespace tanrove
