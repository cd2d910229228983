// Pins of a build: the first are the track's channels, 3 and 4 those of the key.
#include "chains/plugin_slot.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "plugins/vst_blocks.hpp"

namespace tanrove {

namespace {

constexpr std::string_view without_settings_preset = "** Pro Tools settings not transferred **";
constexpr std::string_view aax_only_preset = "** Pro Tools only - no VST exists - replace me here";
constexpr std::string_view bank_preset = "Program 0";
constexpr std::size_t shortest_bank = 44;
constexpr std::size_t first_key_pin = 2;
constexpr std::size_t key_pins = 2;
constexpr int wide_from = 3;

// These take a mono track on both of their inputs unless the second is open.
constexpr std::array<std::string_view, 2> mono_input_codes = {"Lin6Helx", "Lin66SAX"};

bool is_bank(std::string_view state) {
    return state.size() > shortest_bank && state.starts_with("<?xml") &&
           state.find("<Bank>") != std::string_view::npos;
}

std::uint64_t input_mask(std::size_t pin, const PluginInsert& insert, const SlotPins& pins) {
    const bool is_mono = pins.track_width == 1;
    if (pin == 1 && is_mono && std::ranges::count(mono_input_codes, insert.code) > 0) return 0;
    if (pin < first_key_pin || pin >= first_key_pin + key_pins) return channel_mask(pin);
    const bool is_wide = pins.track_width >= wide_from;
    // What another plug-in's key plays there is none of its business.
    if (insert.keyInput < 0) return is_wide ? channel_mask(pin) : 0;
    // A key that is not wired is silent: on a wide track these are the centre and the bass.
    if (!pins.key_channel) return is_wide ? 0 : channel_mask(pin);
    return channel_mask(static_cast<std::size_t>(*pins.key_channel) + pin - first_key_pin);
}

VstHeader header_of(const PluginInsert& insert, const PluginTableRow& row, const SlotPins& pins) {
    VstHeader header;
    header.id = ident_number(row.ident);
    for (std::size_t i = 0; i < static_cast<std::size_t>(row.pinsIn); ++i) {
        header.pins_in.push_back(input_mask(i, insert, pins));
    }
    for (std::size_t i = 0; i < static_cast<std::size_t>(row.pinsOut); ++i) {
        header.pins_out.push_back(channel_mask(i));
    }
    header.tail_word = static_cast<std::uint32_t>(row.tailWord);
    return header;
}

}  // namespace

FxSlot plugin_slot(const PluginInsert& insert, const PluginTableRow& row, std::string state,
                   const SlotPins& pins) {
    FxSlot slot;
    slot.form = row.fxName.starts_with("CLAP") ? SlotForm::clap : SlotForm::vst;
    slot.name = row.fxName;
    slot.file = row.file;
    slot.ident = row.ident;
    const bool has_bank = is_bank(state);
    if (state.empty()) {
        slot.preset_name = without_settings_preset;
    } else if (has_bank) {
        slot.preset_name = bank_preset;
    }
    VstHeader header = header_of(insert, row, pins);
    header.state_bytes = state.size();
    slot.header = vst_header(header);
    slot.tail = vst_tail(has_bank ? bank_preset : "");
    slot.state = std::move(state);
    slot.guid_seed = static_cast<std::uint32_t>(insert.blockStart);
    return slot;
}

FxSlot aax_only_slot(const PluginInsert& insert, const std::string& display_name, int track_width) {
    const PlaceholderIdentity identity = placeholder_identity(insert.code);
    VstHeader header;
    header.id = identity.id;
    for (int i = 0; i < std::max(track_width, 1); ++i) {
        header.pins_in.push_back(channel_mask(static_cast<std::size_t>(i)));
    }
    header.pins_out = header.pins_in;
    FxSlot slot;
    slot.name = "VST3: " + display_name;
    slot.ident = identity.ident;
    slot.header = vst_header(header);
    slot.tail = vst_tail("");
    slot.preset_name = aax_only_preset;
    slot.is_placeholder = true;
    slot.bypassed = true;
    slot.guid_seed = static_cast<std::uint32_t>(insert.blockStart);
    return slot;
}

}  // namespace tanrove
