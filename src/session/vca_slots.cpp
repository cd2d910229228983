// The record of a VCA master, a 0x2514 inside its strip row 0x261f: u32 fader at offset 9.
#include "session/vca_slots.hpp"

#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t largest_other_record = 12;
constexpr std::size_t fader_at = 9;

}  // namespace

VcaSlots readVcaSlots(const BlockIndex& index, const std::vector<StripRow>& rows) {
    std::vector<Block> vca_rows;
    std::vector<std::size_t> row_indexes;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].type != StripRowType::vca) continue;
        const auto size = static_cast<std::uint32_t>(rows[i].end - rows[i].start - block_size_base);
        vca_rows.push_back({rows[i].start, size, static_cast<std::uint16_t>(rows[i].type)});
        row_indexes.push_back(i);
    }
    std::vector<std::size_t> records;
    for (const Block& record : index.of_type(block_type::vca_slot).all()) {
        if (record.size > largest_other_record) records.push_back(record.at);
    }
    const auto holders = smallest_enclosing(vca_rows, records);
    VcaSlots slots;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (holders[i] == nullptr) continue;
        const auto place = static_cast<std::size_t>(holders[i] - vca_rows.data());
        slots[row_indexes[place]] = index.image().u32(records[i] + fader_at);
    }
    return slots;
}

}  // namespace tanrove
