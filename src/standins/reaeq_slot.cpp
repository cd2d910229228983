// The state: u32 33, u32 sections, of each u32 type, u32 enabled, f64 frequency in Hz, f64 linear
// gain, f64 width, u8 1; then u32 1, u32 1, f64 output gain, and the window's state.
#include "standins/reaeq_slot.hpp"

#include <utility>

#include "base/steady_math.hpp"
#include "eqfit/reaeq_width.hpp"
#include "plugins/state_frames.hpp"
#include "standins/stock_slots.hpp"

namespace tanrove {

namespace {

constexpr std::size_t state_version = 33;
constexpr std::size_t window_bytes = 12;
constexpr std::uint32_t window_state = 0x00010002;

const StockPlugin reaeq = {
    .name = "VST: ReaEQ (Cockos)",
    .short_name = "ReaEQ",
    .file = "reaeq.dll",
    .ident = "1919247729<56535472656571726561657100000000>",
    .id = 0x72656571,
    .pins_in = {1, 2},
    .pins_out = {1, 2},
};

void add_section(StateBytes& state, const EqSection& section, double rate_hz) {
    state.little(static_cast<std::uint32_t>(section.type)).little(section.enabled ? 1 : 0);
    state.wide_real(section.frequency);
    state.wide_real(has_gain(section.type) ? steady_gain(section.gain) : 1);
    const double width = section.width > 0 ? section.width : reaeq_width(section, rate_hz);
    state.wide_real(width).text("\1");
}

}  // namespace

FxSlot reaeq_slot(const ReaEqSettings& settings, const std::string& owner, std::string preset_name,
                  std::uint32_t guid_seed) {
    StateBytes state;
    state.little(state_version).little(settings.sections.size());
    for (const EqSection& section : settings.sections) {
        add_section(state, section, settings.rate_hz);
    }
    state.little(1).little(1).wide_real(steady_gain(settings.output_gain_db));
    state.zeros(window_bytes).little(window_state);
    return stock_slot(reaeq, state.take(), owner, std::move(preset_name), guid_seed);
}

}  // namespace tanrove
