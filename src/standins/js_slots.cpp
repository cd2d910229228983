// A JS line has 64 fields; those that the plug-in does not use are dashes.
#include "standins/js_slots.hpp"

#include <algorithm>
#include <utility>

#include "base/formatted_text.hpp"

namespace tanrove {

namespace {

constexpr std::ptrdiff_t js_fields = 64;
constexpr double greatest_adjustment = 150;  // dB; the slider's upper end
// The slider counts 6 where the gain doubles, which is 6.0206 dB.
constexpr double slider_step = 6;
constexpr double doubled_db = 6.020599913279624;

}  // namespace

FxSlot js_slot(std::string path, std::string title, std::string values, std::uint32_t guid_seed) {
    FxSlot slot;
    slot.form = SlotForm::js;
    slot.name = std::move(path);
    slot.title = std::move(title);
    slot.parameters = std::move(values);
    const auto used = std::ranges::count(slot.parameters, ' ') + 1;
    for (auto field = used; field < js_fields; ++field) slot.parameters += " -";
    slot.guid_seed = guid_seed;
    return slot;
}

FxSlot polarity_slot(const std::string& owner, std::string preset_name, std::uint32_t guid_seed) {
    FxSlot slot = js_slot("IX/StereoPhaseInvert", owner + " polarity (Channel Polarity Control)",
                          "3", guid_seed);
    slot.preset_name = std::move(preset_name);
    return slot;
}

FxSlot volume_adjustment(std::string title, double gain_db, std::uint32_t guid_seed) {
    return js_slot("utility/volume", std::move(title),
                   formatted("%.6f %.0f", slider_step * gain_db / doubled_db, greatest_adjustment),
                   guid_seed);
}

}  // namespace tanrove
