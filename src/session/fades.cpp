// Fade records. Offsets from the block's 'Z'; `End` is the block's end.
//   14      u8: low nibble w1, high nibble w2, at most 4 each
//   17      w1 bytes: samples in front of the fade's centre; then w2 bytes: samples of the whole
//   Q       behind both; u8 kind: 1 crossfade, 2 fade-out, 3 fade-in
//   Q + 1   u8 curve family
//   Q + 6   u8 and Q + 9 u8: both 1 where the two sides are linked
//   Q + 7   i16 and Q + 10 i16: the handle pair
// A side's shape is a u8 type and an i16 setting behind it. It stands at Q + 6 in a fade-in, at
// Q + 12 in a fade-out, and in a crossfade at Q + 12 for the outgoing and at Q + 19 for the
// incoming clip.
#include "session/fades.hpp"

#include <string_view>

namespace tanrove {

namespace {

constexpr std::string_view fade_type_bytes = "\x2f\x26";
constexpr std::size_t widths_at = 14;
constexpr std::size_t max_width = 4;
constexpr std::size_t numbers_at = 17;

// From Q. The last field of each group ends where its `_end` says, and may end with the block.
constexpr std::size_t slope_at = 1;
constexpr std::size_t short_form_end = 10;
constexpr std::size_t first_link_at = 6;
constexpr std::size_t second_link_at = 9;
constexpr std::size_t x_at = 7;
constexpr std::size_t y_at = 10;
constexpr std::size_t handles_end = 12;
constexpr std::size_t fade_in_shape_at = 6;
constexpr std::size_t out_shape_at = 12;
constexpr std::size_t crossfade_in_shape_at = 19;
constexpr std::size_t setting_behind_type = 1;
constexpr std::size_t shape_width = 3;

FadeKind fade_kind(std::uint8_t stored) {
    return stored <= 3 ? FadeKind{stored} : FadeKind::unusable;
}

void read_in_shape(ByteView image, std::size_t at, FadeRecord& fade) {
    fade.in_type = image.u8(at);
    fade.in_setting = image.i16(at + setting_behind_type);
    fade.has_shapes = true;
}

void read_out_shape(ByteView image, std::size_t at, FadeRecord& fade) {
    fade.out_type = image.u8(at);
    fade.out_setting = image.i16(at + setting_behind_type);
    fade.has_shapes = true;
}

/// The fields behind the kind, as far as the block holds them.
void read_shape(ByteView image, std::size_t q, std::size_t end, FadeRecord& fade) {
    const auto holds = [&](std::size_t from_q) { return q + from_q <= end; };
    fade.slope = image.u8(q + slope_at);
    fade.linked = image.u8(q + first_link_at) == 1 && image.u8(q + second_link_at) == 1;
    if (holds(handles_end)) {
        fade.x = image.i16(q + x_at);
        fade.y = image.i16(q + y_at);
        fade.has_handles = true;
    }
    if (fade.kind == FadeKind::fade_in && holds(fade_in_shape_at + shape_width)) {
        read_in_shape(image, q + fade_in_shape_at, fade);
    } else if (fade.kind == FadeKind::fade_out && holds(out_shape_at + shape_width)) {
        read_out_shape(image, q + out_shape_at, fade);
    } else if (fade.kind == FadeKind::crossfade && holds(crossfade_in_shape_at + shape_width)) {
        read_in_shape(image, q + crossfade_in_shape_at, fade);
        read_out_shape(image, q + out_shape_at, fade);
    }
}

/// Two widths that no number has are a chance match of the type's bytes.
bool has_widths(ByteView image, std::size_t z) {
    const std::uint8_t widths = image.u8(z + widths_at);
    return (widths & 0x0f) <= max_width && widths >> 4 <= max_width;
}

std::uint64_t narrow_number(ByteView image, std::size_t at, std::size_t width) {
    return width == 0 ? 0 : readWide(image, at, width);
}

FadeRecord read_fade(ByteView image, std::size_t z, std::size_t end) {
    FadeRecord fade;
    const std::size_t first_width = image.u8(z + widths_at) & 0x0f;
    const std::size_t second_width = image.u8(z + widths_at) >> 4;
    const std::size_t second_at = z + numbers_at + first_width;
    const std::size_t q = second_at + second_width;
    const auto pre = narrow_number(image, z + numbers_at, first_width);
    const auto length = narrow_number(image, second_at, second_width);
    fade.pre = static_cast<double>(pre);
    fade.length = static_cast<double>(length);
    fade.kind = fade_kind(image.u8(q));
    if (q + short_form_end < end) read_shape(image, q, end, fade);
    if (length < pre) fade.kind = FadeKind::unusable;
    return fade;
}

}  // namespace

// Fades are numbered through all of their blocks, so they are sought by the bytes of their type
// alone: a block whose type's high byte is not zero still counts.
std::vector<FadeRecord> readFades(const BlockIndex& index) {
    const ByteView image = index.image();
    std::vector<FadeRecord> fades;
    for (std::size_t at = image.find(fade_type_bytes, block_content_at); at != ByteView::npos;
         at = image.find(fade_type_bytes, at + 1)) {
        const std::size_t z = at - block_content_at;
        const std::size_t size = image.u32(z + block_size_at);
        if (image.u8(z) != block_marker || size == 0 || !image.holds(at, size)) continue;
        if (has_widths(image, z)) fades.push_back(read_fade(image, z, at + size));
    }
    return fades;
}

}  // namespace tanrove
