// The stand-ins of Pro Tools' own plug-ins: any bits as the values of their controls. The first
// bytes choose the plug-in and its track.
#include <bit>
#include <cmath>
#include <string>
#include <vector>

#include "base/byte_view.hpp"
#include "fuzz/promise.hpp"
#include "plugins/state_frames.hpp"
#include "standins/channel_strip_slots.hpp"
#include "standins/dyn3_slots.hpp"
#include "standins/eq3_controls.hpp"
#include "standins/eq3_slots.hpp"
#include "standins/read_channel_strip_settings.hpp"

namespace tanrove {
namespace {

constexpr std::size_t choice_bytes = 3;
constexpr const char* strip_controls[] = {
    "Input Trim",     "EQ Low Gain",  "EQ Low Frequency", "EQ Low Q",        "EQ Low Type",
    "EQ High Gain",   "EQ High Type", "Filter 1 Type",    "Filter 1 Q",      "Filter 1 Frequency",
    "Exp Ratio",      "Exp Depth",    "Exp Threshold",    "Exp Hold Time",   "Exp Hysteresis",
    "Cmp Ratio",      "Cmp Knee",     "Cmp Threshold",    "Cmp Attack Time", "Cmp Gain Makeup",
    "Sc Filter Type", "Sc Source",    "Fader Volume"};

std::vector<float> controls_of(ByteView values, std::size_t count) {
    std::vector<float> controls;
    for (std::size_t i = 0; i < count; ++i) controls.push_back(values.f32(4 * i));
    return controls;
}

StandIn strip_of(ByteView values, bool is_clip, const StandInTrack& track) {
    std::map<std::string, double> stored;
    ClipEffectsRecord record;
    std::size_t at = 0;
    for (const char* control : strip_controls) {
        stored[control] = values.f32(at);
        record.parameters.push_back({control, values.u32(at)});
        at += 4;
    }
    const auto strip = is_clip ? read_clip_effects(record) : read_channel_strip(stored);
    return strip_stand_in(strip, track, SlotNumbers(0));
}

StandIn chosen_stand_in(ByteView choice, ByteView values) {
    constexpr double rates[] = {44100, 48000, 96000, 192000};
    StandInTrack track{.width = 1 + choice.u8(1) % 8, .rate_hz = rates[choice.u8(2) % 4]};
    if (choice.u8(2) >= 128) track.key_channel = 2 + choice.u8(1) % 6;
    StandInMaker maker{ByteView()};
    PluginInsert insert;
    switch (choice.u8(0) % 6) {
        case 0:
            insert.controlValues = controls_of(values, seven_band_controls);
            return make_eq3(maker, insert, track);
        case 1:
            insert.controlValues = controls_of(values, one_band_controls);
            return make_eq3(maker, insert, track);
        case 2:
            insert.controlValues = controls_of(values, compressor_controls);
            return make_dyn3_compressor(maker, insert, track);
        case 3:
            insert.controlValues = controls_of(values, gate_controls);
            return make_dyn3_gate(maker, insert, track);
        default:
            return strip_of(values, choice.u8(0) % 6 == 5, track);
    }
}

/// True if all parameters of a compressor or gate, or all values of an EQ, are numbers.
bool is_all_numbers(const FxSlot& slot) {
    const auto is_number = [&](std::size_t at, std::size_t width) {
        const std::uint64_t low = little_word(slot.state, at);
        if (width == 4) return std::isfinite(std::bit_cast<float>(static_cast<std::uint32_t>(low)));
        const std::uint64_t high = little_word(slot.state, at + 4);
        return std::isfinite(std::bit_cast<double>(high << 32 | low));
    };
    bool all = true;
    if (slot.file == "reaeq.dll") {
        for (std::size_t at = 8; at + 33 < slot.state.size(); at += 33) {
            for (const std::size_t value : {8U, 16U, 24U}) {
                if (at + 64 <= slot.state.size()) all = all && is_number(at + value, 8);
            }
        }
        return all && is_number(slot.state.size() - 24, 8);
    }
    for (std::size_t at = 8; at < slot.state.size(); at += 4) all = all && is_number(at, 4);
    return all;
}

}  // namespace
}  // namespace tanrove

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    if (size <= choice_bytes) return 0;
    const StandIn made = chosen_stand_in(input_view(data, choice_bytes),
                                         input_view(data + choice_bytes, size - choice_bytes));
    constexpr std::size_t most_slots = 10;
    promise(!made.slots.empty() && made.slots.size() <= most_slots, "a stand-in is a few slots");
    for (const FxSlot& slot : made.slots) {
        if (slot.form == SlotForm::js) {
            promise(slot.parameters.find('n') == std::string::npos, "sliders stand on numbers");
        } else {
            promise(is_all_numbers(slot), "states hold numbers");
        }
    }
    return 0;
}
