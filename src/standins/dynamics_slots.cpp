// Both states are two words of a magic number and 21 floats, REAPER's list of their parameters.
// Pins 3 and 4 are the detector's: they are connected to the channels of the key.
#include "standins/dynamics_slots.hpp"

#include <algorithm>
#include <array>
#include <utility>

#include "base/formatted_text.hpp"
#include "base/steady_math.hpp"
#include "plugins/state_frames.hpp"
#include "plugins/vst_blocks.hpp"
#include "standins/js_slots.hpp"
#include "standins/stock_slots.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t first_magic = 0xdeadbeef;
constexpr std::uint32_t second_magic = 0xdeadf00d;
constexpr std::size_t parameter_count = 21;
using Parameters = std::array<float, parameter_count>;

constexpr float key_input = 0.0018450184725224972F;  // the detector's second pair of inputs
constexpr float least_level = 3.1622776e-08F;        // -150 dB
constexpr float usual_preview = 0.54330707F;
constexpr float usual_auto_release = 0.25F;

StockPlugin dynamics_plugin(const DetectorInput& detector) {
    const auto key = static_cast<std::size_t>(detector.key_channel);
    StockPlugin plugin;
    plugin.pins_in = {channel_mask(0), channel_mask(1), channel_mask(key), channel_mask(key + 1)};
    plugin.pins_out = {channel_mask(0), channel_mask(1)};
    plugin.is_own_chunk = false;
    return plugin;
}

std::string state_of(const Parameters& parameters) {
    StateBytes state;
    state.little(first_magic).little(second_magic);
    for (const float parameter : parameters) state.real(parameter);
    return state.take();
}

}  // namespace

float parameter_gain(double db) {
    constexpr double greatest_db = 700;
    return static_cast<float>(steady_gain(std::min(db, greatest_db)));
}

FxSlot reacomp_slot(const ReaCompSettings& settings, const std::string& owner,
                    std::string preset_name, std::uint32_t guid_seed) {
    StockPlugin plugin = dynamics_plugin(settings.detector);
    plugin.name = "VST: ReaComp (Cockos)";
    plugin.short_name = "ReaComp";
    plugin.file = "reacomp.dll";
    plugin.ident = "1919247213<5653547265636D726561636F6D700000>";
    plugin.id = 0x7265636d;
    Parameters p = {};
    p[0] = settings.threshold;
    p[1] = settings.ratio;
    p[2] = settings.attack;
    p[3] = settings.release;
    p[6] = settings.detector.low_pass;
    p[7] = settings.detector.high_pass;
    p[8] = settings.detector.is_keyed ? key_input : 0;
    p[10] = least_level;
    p[11] = settings.wet;
    p[13] = settings.rms_size;
    p[14] = settings.knee;
    p[17] = usual_auto_release;
    return stock_slot(plugin, state_of(p), owner, std::move(preset_name), guid_seed);
}

FxSlot reagate_slot(const ReaGateSettings& settings, const std::string& owner,
                    std::string preset_name, std::uint32_t guid_seed) {
    StockPlugin plugin = dynamics_plugin(settings.detector);
    plugin.name = "VST: ReaGate (Cockos)";
    plugin.short_name = "ReaGate";
    plugin.file = "reagate.dll";
    plugin.ident = "1919248244<56535472656774726561676174650000>";
    plugin.id = 0x72656774;
    Parameters p = {};
    p[0] = settings.threshold;
    p[1] = settings.attack;
    p[2] = settings.release;
    p[3] = settings.pre_open;
    p[4] = settings.hold;
    p[5] = settings.detector.low_pass;
    p[6] = settings.detector.high_pass;
    p[7] = settings.detector.is_keyed ? key_input : 0;
    p[9] = settings.floor;
    p[10] = 1 - settings.floor;
    p[11] = least_level;
    p[12] = settings.hysteresis;
    p[14] = settings.rms_size;
    p[16] = usual_preview;
    return stock_slot(plugin, state_of(p), owner, std::move(preset_name), guid_seed);
}

bool expander_hears_key(const DetectorInput& detector, StandIn& stand_in) {
    if (!detector.is_keyed || detector.key_channel == usual_key_channel) return detector.is_keyed;
    stand_in.is_keyed = false;
    stand_in.note(
        "expander key not carried: REAPER's Downward Expander listens to channels 3/4 only, and "
        "the key plays on others; it detects on its own signal");
    return false;
}

FxSlot expander_slot(const ExpanderSettings& settings, const std::string& owner,
                     std::string preset_name, std::uint32_t guid_seed) {
    constexpr int averaging_detector = 3;
    constexpr int peak_detector = 2;
    FxSlot slot = js_slot(
        "sstillwell/expander", owner + " (Downward Expander)",
        formatted("%.3f %.4f 0 %d %d %.4f %.4f", settings.threshold_db, settings.ratio,
                  settings.is_keyed ? 1 : 0, settings.averages ? averaging_detector : peak_detector,
                  settings.attack_ms, settings.release_ms),
        guid_seed);
    slot.preset_name = std::move(preset_name);
    return slot;
}

}  // namespace tanrove
