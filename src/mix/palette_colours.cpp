// Each shade is the measured one where there is one, and else made from the measured ones by the
// rule that comes closest to them.
#include "mix/palette_colours.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "mix/colour_tables.hpp"

namespace tanrove {

namespace {

constexpr std::int32_t first_picked = palette_row_places + 1;
constexpr std::int32_t last_picked = 95;
constexpr std::int32_t last_auto_assigned = 47;

constexpr int channel_bits = 8;
constexpr std::uint32_t channel_mask = 0xff;
constexpr std::uint32_t all_channels = 0xffffff;
constexpr std::uint32_t full = 255;

constexpr std::uint32_t joined(std::uint32_t blue, std::uint32_t green, std::uint32_t red) {
    return blue << 2 * channel_bits | green << channel_bits | red;
}

/// The colour with each of its channels changed.
template <class Change>
std::uint32_t each_channel(std::uint32_t colour, Change change) {
    return joined(change(colour >> 2 * channel_bits & channel_mask),
                  change(colour >> channel_bits & channel_mask), change(colour & channel_mask));
}

constexpr std::uint32_t exchanged(std::uint32_t colour) {
    return joined(colour & channel_mask, colour >> channel_bits & channel_mask,
                  colour >> 2 * channel_bits & channel_mask);
}

std::uint32_t lighter(std::uint32_t colour) {
    return each_channel(colour, [](std::uint32_t c) { return c + (full - c) * 2 / 5; });
}

std::uint32_t nearest_level(double value) {
    return static_cast<std::uint32_t>(
        std::clamp(std::round(value), 0.0, static_cast<double>(full)));
}

/// Each channel times `factor` plus `offset`, to the nearest that there is.
std::uint32_t scaled(std::uint32_t colour, double factor, double offset) {
    return each_channel(colour, [=](std::uint32_t c) {
        return nearest_level(static_cast<double>(c) * factor + offset);
    });
}

std::uint32_t strongest_channel(std::uint32_t colour) {
    return std::max({colour >> 2 * channel_bits & channel_mask,
                     colour >> channel_bits & channel_mask, colour & channel_mask, 1U});
}

/// The hue of the colour, pale: fitted to the tints that were measured.
std::uint32_t tinted(std::uint32_t colour) {
    const auto strongest = static_cast<double>(strongest_channel(colour));
    return each_channel(colour, [=](std::uint32_t c) {
        return nearest_level(110 + 71 * static_cast<double>(c) / strongest + 0.31 * strongest);
    });
}

std::uint32_t invented(std::int32_t index) {
    const std::uint64_t a = static_cast<std::uint64_t>(std::abs(std::int64_t{index}));
    const auto channel = [a](std::uint64_t step) {
        return static_cast<std::uint32_t>(a * step % 200 + 40);
    };
    return joined(channel(211), channel(149), channel(73));
}

template <class Shades>
const MeasuredShade* shade_of(const Shades& shades, std::int32_t place) {
    const auto found = std::ranges::find(shades, place, &MeasuredShade::place);
    return found == shades.end() ? nullptr : &*found;
}

/// Place in its row, from 0; `index` from 1.
std::size_t column_of(std::int32_t index) {
    return static_cast<std::size_t>((index - 1) % palette_row_places);
}

}  // namespace

std::uint32_t trackColour(std::int32_t index, ColourQuality& quality) {
    const bool is_drawn = index % palette_row_places != 0;
    if (index >= first_picked && index <= last_picked && is_drawn) {
        const auto row = static_cast<std::size_t>(index / palette_row_places - 1);
        quality = ColourQuality::measured;
        return colour_is_set | track_palette[palette_columns * row + column_of(index)];
    }
    if (index >= 1 && index < palette_row_places) {
        const MeasuredShade* shade = shade_of(low_row, index);
        quality = shade != nullptr ? ColourQuality::measured : ColourQuality::tinted;
        if (shade != nullptr) return colour_is_set | shade->colour;
        return colour_is_set | lighter(track_palette[column_of(index)]);
    }
    quality = ColourQuality::invented;
    return colour_is_set | invented(index);
}

std::optional<std::uint32_t> clipColour(std::int32_t index, ColourQuality& quality) {
    if (!is_auto_assigned(index)) return trackColour(index, quality);
    const std::uint32_t body = clip_palette[column_of(index)];
    if (body == 0 && index >= palette_row_places) return trackColour(index, quality);
    quality = body != 0 ? ColourQuality::measured : ColourQuality::not_measured;
    return body != 0 ? std::optional(colour_is_set | body) : std::nullopt;
}

ClipTint clip_tint(std::int32_t place) {
    const auto known = std::ranges::find(clip_tints, place, &MeasuredTint::place);
    if (known != clip_tints.end()) return {colour_is_set | exchanged(known->rgb), true};
    ColourQuality quality = ColourQuality::measured;
    return {colour_is_set | tinted(trackColour(place, quality) & all_channels), false};
}

DarkColour darkClipColour(std::uint32_t colour) {
    const std::uint32_t rgb = exchanged(colour);
    const auto pair = std::ranges::find(dark_pairs, rgb, &ThemePair::classic_rgb);
    if (pair != dark_pairs.end()) return {colour_is_set | exchanged(pair->dark_rgb), true};
    return {colour_is_set | scaled(colour & all_channels, 0.487, -35), false};
}

bool is_auto_assigned(std::int32_t index) {
    return index >= 1 && index <= last_auto_assigned;
}

std::optional<DarkColour> darkIndexColour(std::int32_t index) {
    const std::size_t column = column_of(index);
    if (column >= palette_columns) return std::nullopt;
    const MeasuredShade* shade = shade_of(dark_shades, static_cast<std::int32_t>(column) + 1);
    if (shade != nullptr) return DarkColour{colour_is_set | shade->colour, true};
    return DarkColour{colour_is_set | scaled(track_palette[column], 0.22, 36), false};
}

std::int32_t rowIndex(std::int64_t row) {
    return row_cycle[static_cast<std::uint64_t>(row - 1) % row_cycle.size()];
}

}  // namespace tanrove
