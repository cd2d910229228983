// How channels are counted, and how REAPER writes those that a receive brings.
#pragma once

namespace tanrove {

constexpr int stereo_channels = 2;

/// The code of a receive that brings so many channels, in pairs above ten bits; the first pair
/// alone is 0.
constexpr int receive_width_code(int channels) {
    constexpr int a_pair = 1024;
    return channels > stereo_channels ? channels / stereo_channels * a_pair : 0;
}

}  // namespace tanrove
