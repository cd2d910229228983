// The processor that Avid's Channel Strip and the Clip Effects of a clip share, in real units: its
// blocks stand in the order in which they play.
#pragma once

#include <array>

namespace tanrove {

struct StripBand {
    bool on = true;
    bool is_shelf = false;  ///< the outer bands only
    double gain_db = 0;
    double frequency = 1000;  ///< Hz
    double q = 1;
};

enum class StripFilterType { high_pass = 0, low_pass = 1, band_pass = 2, notch = 3 };

struct StripFilter {
    bool on = false;
    StripFilterType type = StripFilterType::high_pass;
    double frequency = 1000;  ///< Hz
    double q = 1;
    bool is_steep = false;  ///< 24 dB an octave, else 12
};

/// What both halves of the dynamics listen to.
struct StripDetector {
    bool averages = true;
    bool filter_on = true;
    StripFilterType filter = StripFilterType::high_pass;
    double frequency = 20;  ///< Hz
    int source = 0;         ///< 0 itself, 1 key, 2 all channels linked
};

struct StripExpander {
    bool on = true;
    double ratio = 1;
    double threshold_db = -80;
    double attack_ms = 0;
    double release_ms = 200;
    double hold_ms = 1;
    double knee_db = 0;
    double depth_db = -36;
    double hysteresis_db = 0;
    bool past_table = false;  ///< the ratio lies behind what was measured
};

struct StripCompressor {
    bool on = true;
    double ratio = 1;
    double threshold_db = -24;
    double attack_ms = 0;
    double release_ms = 200;
    double knee_db = 0;
    double makeup_db = 0;
    double depth_db = -36;
    bool past_table = false;
};

struct ChannelStripSettings {
    bool is_clip = false;  ///< Clip Effects
    bool inverts = false;
    double input_trim_db = 0;
    bool eq_on = true;
    std::array<StripBand, 4> bands;  ///< Low, Low-Mid, High-Mid, High
    bool filters_on = true;
    std::array<StripFilter, 2> filters;
    bool dynamics_on = true;
    StripDetector detector;
    StripExpander expander;
    StripCompressor compressor;
    double fader_db = 0;         ///< of a Channel Strip; 0 where it is off
    bool fader_is_lost = false;  ///< of a clip: its scale is not known
    bool other_order = false;    ///< another order than EQ, filters, dynamics
    bool other_ranges = false;   ///< EQ or Dynamics Range moved
};

}  // namespace tanrove
