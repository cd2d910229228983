// The pitch shift of a clip stands in its region 0x2629, behind the 0x2628 that names it, in 9
// bytes: i32 semitones, f32 cents, and one more. They end 23 bytes behind the child in the long
// form that sessions of 2018 and later have, 16 bytes behind it in the short form, and no later
// than the region.
#include "session/pitch_shifts.hpp"

#include <algorithm>
#include <cmath>

#include "session/block_types.hpp"
#include "session/clip_names.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t least_size = 40;
constexpr std::size_t short_form_end = 16;
constexpr std::size_t long_form_end = 23;
constexpr std::size_t semitones_before_end = 9;
constexpr std::size_t cents_before_end = 5;
constexpr double max_shift = 48.0;
constexpr double cents_per_semitone = 100.0;

struct StoredPitch {
    double semitones = 0;
    double cents = 0;

    bool has_cents() const { return std::abs(cents) < cents_per_semitone; }
};

StoredPitch pitch_in_front_of(ByteView image, std::size_t end) {
    return {static_cast<double>(image.i32(end - semitones_before_end)),
            static_cast<double>(image.f32(end - cents_before_end))};
}

/// The shift in semitones; 0 where there is none.
double read_shift(ByteView image, const Block& region, const Block& name) {
    const auto end = [&](std::size_t behind) {
        return std::min(name.end() + behind, region.end());
    };
    const StoredPitch in_short_form = pitch_in_front_of(image, end(short_form_end));
    const double cents = in_short_form.has_cents() ? in_short_form.cents : 0;
    const double shift = in_short_form.semitones + cents / cents_per_semitone;
    if (std::abs(shift) <= max_shift) return shift;
    const StoredPitch in_long_form = pitch_in_front_of(image, end(long_form_end));
    if (std::abs(in_long_form.semitones) > max_shift || !in_long_form.has_cents()) return 0;
    const double long_shift = in_long_form.semitones + in_long_form.cents / cents_per_semitone;
    return std::abs(long_shift) <= max_shift ? long_shift : 0;
}

}  // namespace

PitchShifts readPitchShifts(const BlockIndex& index) {
    const ByteView image = index.image();
    PitchShifts shifts;
    for (const Block& region : index.of_type(block_type::audio_region).all()) {
        if (region.size < least_size) continue;
        const Block* name_block = index.first_child(region, block_type::clip);
        if (name_block == nullptr) continue;
        const auto name = read_clip_name(image, *name_block);
        if (!name) continue;
        const double shift = read_shift(image, region, *name_block);
        if (shift != 0) shifts[std::string(*name)] = shift;
    }
    return shifts;
}

}  // namespace tanrove
