// The palettes as measured, place by place.
#include "mix/colour_tables.hpp"

namespace tanrove {

constexpr std::array<std::uint32_t, 3 * palette_columns> track_palette = {
    0xfc002c, 0xfc0056, 0xfc0088, 0xfc00bf, 0xc000be, 0x8800bd, 0x5400bd, 0x0d00bc,
    0x0d1ebd, 0x0e52bd, 0x1189be, 0x14c5c0, 0x11c589, 0x10c657, 0x0fc62e, 0x0ec61c,
    0x54c61e, 0x88c420, 0xc1c323, 0xfdc127, 0xfc8421, 0xfc4a1c, 0xfc0019,

    0xa3001e, 0xa30037, 0xa30055, 0xa40074, 0x89007c, 0x66007b, 0x46007a, 0x0b007a,
    0x0b127a, 0x0c317a, 0x0d517b, 0x108089, 0x0e8066, 0x0d8048, 0x0c802d, 0x0c8018,
    0x338015, 0x517f16, 0x7e8c1a, 0xa48d1d, 0xa46919, 0xa34616, 0xa32314,

    0x5f0014, 0x5f0021, 0x5f0031, 0x5f0041, 0x57004b, 0x420047, 0x310047, 0x0b0047,
    0x0b0c47, 0x0b1c47, 0x0c2c47, 0x0f4d57, 0x0c4a42, 0x0c4a32, 0x0c4a23, 0x0b4b15,
    0x1d4a0f, 0x2c4a0f, 0x4c5914, 0x5f5916, 0x5f4714, 0x5f3513, 0x5f2211,
};

constexpr std::array<std::uint32_t, palette_row_places> clip_palette = {
    0xecb4be, 0, 0xecb4d2, 0, 0xdbb1da, 0, 0xc3b0da, 0, 0xabb1e4, 0, 0xadd3e4, 0,
    0xade7d3, 0, 0xace6b5, 0, 0xc3e7b1, 0, 0xe5e6b3, 0, 0xfad3b3, 0, 0xf9a8b1, 0,
};

constexpr std::array<MeasuredShade, 2> low_row = {{{1, 0xecb4be}, {3, 0xecb4d2}}};

constexpr std::array<MeasuredShade, 4> dark_shades = {
    {{1, 0x5a242f}, {3, 0x592541}, {7, 0x382651}, {11, 0x254551}}};

constexpr std::array<ThemePair, 10> dark_pairs = {{{0x90c0d7, 0x243a44},
                                                   {0xa5cce9, 0x233c4d},
                                                   {0xc99191, 0x412525},
                                                   {0xd3c990, 0x433d24},
                                                   {0x93caae, 0x244133},
                                                   {0x9b8bd4, 0x2c2445},
                                                   {0xa6dab4, 0x25492f},
                                                   {0xb08bd4, 0x342443},
                                                   {0xa7cb90, 0x2e4123},
                                                   {0xd8a5a2, 0x482623}}};

constexpr std::array<MeasuredTint, 10> clip_tints = {{{93, 0x90c0d7},
                                                      {87, 0xa7cb90},
                                                      {75, 0xb08bd4},
                                                      {57, 0xd8a5a2},
                                                      {90, 0x93caae},
                                                      {84, 0xd3c990},
                                                      {73, 0x9b8bd4},
                                                      {81, 0xc99191},
                                                      {65, 0xa6dab4},
                                                      {69, 0xa5cce9}}};

constexpr std::array<std::int32_t, 16> row_cycle = {93, 87, 75, 57, 90, 84, 73, 78,
                                                    94, 81, 51, 65, 54, 69, 60, 66};

}  // namespace tanrove
