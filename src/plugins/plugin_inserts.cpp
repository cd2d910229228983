// A settings block 0x1038:
//
//   9    u8 channels of the insert
//   13   u32 bytes of the state from offset 17 on; zeros fill the block behind it
//   17   the state, mostly chunks: see elck_chunks
//   25   8 bytes, the plug-in's code
//   33   text
//
// It stands in a strip row 0x261b, or 0x2621 on an instrument track, whose 0x2627 has eleven places
// 0x2626 for inserts. A place holds a hardware insert 0x2612 or the slot 0x2616 of a plug-in, and
// that 0x2615 > 0x2613 > 0x1038; a slot 0x2618 is made alike. The byte behind the settings is 0 on
// an inactive insert. Behind them follow in the slot, of some inserts, a 0x260e, whose u16 at
// offset 9 is the key input (0xffff none), and the record 0x2614: u32 number of automated controls
// at 9, their lanes, and in front of it a byte that is 1 on a bypassed insert. What stands behind
// the slot is another insert's.
#include "plugins/plugin_inserts.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <iterator>
#include <map>
#include <queue>

#include "plugins/container_kinds.hpp"
#include "plugins/control_values.hpp"
#include "plugins/elck_chunks.hpp"
#include "plugins/plugin_lanes.hpp"
#include "plugins/state_scoring.hpp"
#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"

namespace tanrove {

namespace {

constexpr std::array<std::uint16_t, 2> slot_types = {block_type::plugin_slot,
                                                     block_type::other_plugin_slot};

constexpr std::size_t channels_at = 9;
constexpr std::size_t state_bytes_at = 13;
constexpr std::size_t state_at = 17;
constexpr std::size_t min_sized_block = 26;  // a shorter one does not say how long its state is
constexpr std::size_t max_product_text = 64;
constexpr std::uint16_t no_key_input = 0xffff;

constexpr std::size_t bytes_behind_preset_tag = 16;
constexpr std::size_t preset_tag_bytes = 4;
constexpr std::size_t max_preset_name = 60;
constexpr std::size_t min_preset_name = 2;

/// The settings blocks that a record can stand for.
std::vector<Block> settings_blocks(const BlockIndex& index) {
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> open_ends;
    std::vector<Block> blocks;
    std::size_t blocks_left = index.image().size() / settings_text_at;
    for (const Block& block : index.of_type(block_type::plugin_settings).all()) {
        if (blocks_left == 0) break;
        if (!index.image().holds(block.at, settings_text_at)) break;
        while (!open_ends.empty() && open_ends.top() <= block.at) open_ends.pop();
        if (open_ends.size() > max_nested_settings) continue;
        open_ends.push(block.end());
        blocks.push_back(block);
        --blocks_left;
    }
    return blocks;
}

/// Where the state ends: where the block says, if nothing but zeros stands behind that.
std::size_t chunk_limit(ByteView image, const Block& block) {
    if (block.end() - block.at < min_sized_block) return block.end();
    const std::size_t limit = block.at + state_at + image.u32(block.at + state_bytes_at);
    if (limit < block.at + settings_text_at || limit >= block.end()) return block.end();
    const auto rest = image.window(limit, block.end() - limit).span();
    const bool is_padding =
        std::all_of(rest.begin(), rest.end(), [](std::uint8_t byte) { return byte == 0; });
    return is_padding ? limit : block.end();
}

std::string code_at(ByteView image, std::size_t at) {
    std::string code;
    for (std::size_t i = 0; i < settings_code_bytes; ++i) {
        const std::uint8_t byte = image.u8(at + i);
        code += is_printable(byte) ? static_cast<char>(byte) : '.';
    }
    return code;
}

std::string printable_text(ByteView bytes, std::size_t at, std::size_t most) {
    const auto text = bytes.text(at, printable_length(bytes, at, most));
    return std::string(text.value_or(std::string_view()));
}

/// The preset's name behind the first preset tag: the text behind the next zeros, or else the one
/// right behind the tag.
std::string preset_name(const StateSpan& span) {
    const ByteView bytes = span.bytes();
    std::size_t tag = span.start;
    for (;; ++tag) {
        if (!span.holds(tag, bytes_behind_preset_tag + 1)) return {};
        if (bytes.has(tag, "FFPr") || bytes.has(tag, "ikdt")) break;
    }
    std::size_t at = bytes.find(std::string_view("\0\0", 2), tag);
    while (at < bytes.size() && bytes.u8(at) == 0) ++at;
    std::string name = printable_text(bytes, at, max_preset_name);
    if (name.size() < min_preset_name) {
        name = printable_text(bytes, tag + preset_tag_bytes, max_preset_name);
    }
    return name.size() < min_preset_name ? std::string() : name;
}

void take_elck_state(const StateSpan& span, PluginInsert& insert) {
    const auto state = find_elck_state(span.image, span.start, span.limit);
    if (!state) return;
    insert.elckOffset = state->offset;
    insert.elckSize = state->size;
    insert.elckHow = elck_how;
    insert.elckChunkCount = state->chunk_count;
}

/// The values of a sound map with as many controls as a plug-in of Pro Tools' own has that stores
/// nothing else: its names tell the records apart where a list is read in one spacing.
ControlList read_mapped_controls(const StateSpan& span) {
    constexpr std::size_t control_counts[] = {38, 8, 14, 15};
    constexpr double greatest_value = 1e30;
    ControlList list;
    const ElckControls map = read_elck_controls(span.image, span.start, span.limit);
    if (std::ranges::count(control_counts, map.controls.size()) == 0) return list;
    for (const ElckControl& control : map.controls) {
        if (!(std::fabs(control.value) <= greatest_value)) return {};
        list.values.push_back(static_cast<float>(control.value));
    }
    list.at = map.at;
    return list;
}

/// Finds the state: by its tag, as a list of control values, or by its likeliest place.
void find_state(const StateSpan& span, PluginInsert& insert) {
    find_tagged_container(span, insert);
    if (insert.containerKind != ContainerKind::none) return;
    ControlList list = read_mapped_controls(span);
    if (list.values.empty()) list = read_control_list(span);
    if (!list.values.empty()) {
        insert.containerKind = ContainerKind::control_values;
        insert.chunkOffset = list.at;
        insert.controlValues = std::move(list.values);
        take_elck_state(span, insert);
        return;
    }
    if (const auto scored = score_state(span)) {
        insert.containerKind = ContainerKind::scored;
        insert.chunkOffset = scored->at;
        insert.chunkSize = chunk_bytes(scored->size);
        insert.how = scored->how;
        insert.copies = scored->copies;
    }
}

/// The first block of the type behind the state, in the insert's slot.
const Block* first_behind(const BlockIndex& index, std::uint16_t type, const PluginInsert& insert) {
    const std::uint64_t end = std::min<std::uint64_t>(insert.slot_end, index.image().size());
    return index.of_type(type).first_inside(insert.chunkLimit, end);
}

/// What stands around the settings block: key input, slot record and the two switches.
void read_slot(const BlockIndex& index, const StateSpan& span, PluginInsert& insert) {
    const ByteView image = index.image();
    if (const Block* key = first_behind(index, block_type::path_reference, insert)) {
        const std::uint16_t input = image.u16(key->payload());
        if (input < no_key_input && image.holds(key->payload(), 2)) insert.keyInput = input;
    }
    if (const Block* record = first_behind(index, block_type::slot_record, insert)) {
        insert.slotWord = image.u32(record->payload());
        insert.bypassed = image.u8(record->at - 1) == 1;
    }
    insert.inactive = image.holds(span.block_end, 1) && image.u8(span.block_end) == 0;
}

/// `slot` may be nullptr.
PluginInsert read_insert(const BlockIndex& index, const Block& block, const Block* slot) {
    const ByteView image = index.image();
    const StateSpan span{image, block.at, chunk_limit(image, block), block.end()};
    PluginInsert insert;
    insert.blockStart = span.start;
    insert.chunkLimit = span.limit;
    if (slot != nullptr) insert.slot_end = slot->end();
    insert.channels = image.u8(block.at + channels_at);
    insert.code = code_at(image, block.at + settings_code_at);
    insert.productText = printable_text(image, block.at + settings_text_at, max_product_text);
    find_state(span, insert);
    insert.presetName = preset_name(span);
    read_slot(index, span, insert);
    return insert;
}

/// Gives the inserts the strip rows that hold them.
void find_hosts(const BlockIndex& index, std::vector<PluginInsert>& inserts) {
    std::vector<std::size_t> starts;
    starts.reserve(inserts.size());
    for (const PluginInsert& insert : inserts) starts.push_back(insert.blockStart);
    const auto rows = smallest_enclosing(index.of_type(block_type::audio_row).all(), starts);
    const auto instrument_rows =
        smallest_enclosing(index.of_type(block_type::instrument_row).all(), starts);
    for (std::size_t i = 0; i < inserts.size(); ++i) {
        const Block* host = rows[i] != nullptr ? rows[i] : instrument_rows[i];
        if (host == nullptr) continue;
        inserts[i].hostStart = host->at;
        inserts[i].hostEnd = host->end();
    }
}

}  // namespace

std::vector<PluginInsert> read_plugin_inserts(const BlockIndex& index) {
    const auto blocks = settings_blocks(index);
    const auto slots = index.of_types(slot_types);
    const auto slot_of = smallest_enclosing(slots, starts_of(blocks));

    std::vector<PluginInsert> inserts;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        inserts.push_back(read_insert(index, blocks[i], slot_of[i]));
    }
    find_hosts(index, inserts);
    read_plugin_lanes(index, inserts);
    return inserts;
}

std::vector<std::optional<std::size_t>> strip_rows_of(const std::vector<PluginInsert>& inserts,
                                                      const std::vector<StripRow>& rows) {
    std::map<std::uint64_t, std::size_t> row_at;
    for (std::size_t i = 0; i < rows.size(); ++i) row_at.try_emplace(rows[i].start, i);
    std::vector<std::optional<std::size_t>> strip_rows(inserts.size());
    for (std::size_t i = 0; i < inserts.size(); ++i) {
        const auto behind = row_at.upper_bound(inserts[i].hostStart);
        if (inserts[i].hostEnd == 0 || behind == row_at.begin()) continue;
        const std::size_t row = std::prev(behind)->second;
        if (inserts[i].hostEnd <= rows[row].end) strip_rows[i] = row;
    }
    return strip_rows;
}

}  // namespace tanrove
