// Header and tail are those that REAPER writes for its own plug-ins.
#include "standins/stock_slots.hpp"

#include <utility>

#include "plugins/vst_blocks.hpp"

namespace tanrove {

FxSlot stock_slot(const StockPlugin& plugin, std::string state, const std::string& owner,
                  std::string preset_name, std::uint32_t guid_seed) {
    FxSlot slot;
    slot.form = SlotForm::stock_vst;
    slot.name = plugin.name;
    slot.file = plugin.file;
    slot.ident = plugin.ident;
    slot.title = owner + " (" + std::string(plugin.short_name) + ")";
    slot.header = vst_header({.id = plugin.id,
                              .pins_in = plugin.pins_in,
                              .pins_out = plugin.pins_out,
                              .state_bytes = state.size(),
                              .tail_word = stock_tail_word,
                              .is_own_chunk = plugin.is_own_chunk});
    slot.state = std::move(state);
    slot.tail = stock_block_tail;
    slot.preset_name = std::move(preset_name);
    slot.guid_seed = guid_seed;
    return slot;
}

}  // namespace tanrove
