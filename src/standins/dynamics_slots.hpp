// REAPER's compressor and gate as slots of a chain: their parameters as the bytes of their states.
#pragma once

#include <cstdint>
#include <string>

#include "plugins/fx_slot.hpp"
#include "standins/stand_in.hpp"

namespace tanrove {

/// Channels 3/4: the key's where no wider track and no other key is in its way.
constexpr int usual_key_channel = 2;

/// The ranges of REAPER's plug-ins.
constexpr float filter_range_hz = 20000;
constexpr float greatest_attack_ms = 500;
constexpr float greatest_release_ms = 5000;
constexpr float greatest_hold_ms = 1000;
constexpr float greatest_knee_db = 24;
constexpr float ratio_steps = 99;

/// An expander as steep as this is a gate, and a depth as low as this is silence.
constexpr float true_gate_ratio_from = 50;
constexpr float no_depth_db = -100;

/// The linear gain of a level in dB, as a parameter holds it: always a number.
float parameter_gain(double db);

/// What a detector listens to.
struct DetectorInput {
    bool is_keyed = false;  ///< the key on further channels, else the track itself
    /// The first of the two channels of the key, from 0.
    int key_channel = usual_key_channel;
    float low_pass = 1;   ///< share of 20 kHz; 1: off
    float high_pass = 0;  ///< likewise; 0: off
};

/// Values from 0 to 1 as the plug-in's parameters count, if nothing else is said.
struct ReaCompSettings {
    float threshold = 1;  ///< linear
    float ratio = 0;      ///< 99 steps from 1:1
    float attack = 0;     ///< share of 500 ms
    float release = 0;    ///< share of 5 s
    float knee = 0;       ///< share of 24 dB
    float wet = 1;        ///< linear
    float rms_size = 0;   ///< averaging
    DetectorInput detector;
};

struct ReaGateSettings {
    float threshold = 1;   ///< linear
    float attack = 0;      ///< share of 500 ms
    float release = 0;     ///< share of 5 s
    float pre_open = 0;    ///< share of 250 ms
    float hold = 0;        ///< share of 1 s
    float hysteresis = 1;  ///< linear
    float floor = 0;       ///< linear
    float rms_size = 0;    ///< averaging
    DetectorInput detector;
};

FxSlot reacomp_slot(const ReaCompSettings& settings, const std::string& owner,
                    std::string preset_name, std::uint32_t guid_seed);

FxSlot reagate_slot(const ReaGateSettings& settings, const std::string& owner,
                    std::string preset_name, std::uint32_t guid_seed);

/// REAPER's Downward Expander; it has neither floor, hold nor detector filters.
struct ExpanderSettings {
    double threshold_db = 0;
    double ratio = 1;
    bool is_keyed = false;
    bool averages = false;  ///< the detector, else it takes peaks
    double attack_ms = 0;
    double release_ms = 0;
};

/// Whether the expander listens to the key: its detector is bound to channels 3/4. Notes a key that
/// it cannot reach.
bool expander_hears_key(const DetectorInput& detector, StandIn& stand_in);

FxSlot expander_slot(const ExpanderSettings& settings, const std::string& owner,
                     std::string preset_name, std::uint32_t guid_seed);

}  // namespace tanrove
