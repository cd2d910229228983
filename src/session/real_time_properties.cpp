// Each MIDI playlist 0x1057, its name at 9, ends with the properties 0x2502 of its track; they
// follow each other as the MIDI and instrument tracks do in the mixer, but for those of alternate
// playlists between them. A last one, in a 0x2505 at the session's end, holds the defaults and
// belongs to no track. From the 'Z':
//
//   11  u8 1: quantize on
//   13  0x103d, the quantize grid, of size G at 16, mostly 59; u8 swing at 54, inside it
//
// What follows moves with the grid's end. From the 'Z' plus G - 59, or from the 'Z' itself where
// there is no grid or none that could be:
//
//   89  u8 1: duration on
//   133 u8 1: delay on, u8 not 0: early
//   136 u32 delay in thousandths of a tick
//   148 u8 1: velocity on, u8 scale
//   151 i8 velocity offset
//   156 u8 1: transpose on, u8 duration, i8 octaves, i8 semitones
#include "session/real_time_properties.hpp"

#include <map>
#include <string_view>

#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"

namespace tanrove {

namespace {

constexpr std::size_t playlist_name_at = 9;

constexpr std::uint32_t least_size = 153;
constexpr std::size_t grid_at = 13;
constexpr std::size_t ordinary_grid_size = 59;
constexpr std::size_t bytes_behind_grid_size = 101;  // the whole record less the grid's size

constexpr std::size_t quantize_on_at = 11;
constexpr std::size_t swing_at = 54;
constexpr std::size_t duration_on_at = 89;
constexpr std::size_t delay_on_at = 133;
constexpr std::size_t delay_is_early_at = 134;
constexpr std::size_t delay_at = 136;
constexpr std::uint32_t delay_units_per_tick = 1000;
constexpr std::size_t velocity_on_at = 148;
constexpr std::size_t velocity_scale_at = 149;
constexpr std::size_t velocity_offset_at = 151;
constexpr std::size_t transpose_on_at = 156;
constexpr std::size_t duration_value_at = 157;
constexpr std::size_t octaves_at = 158;
constexpr std::size_t semitones_at = 159;

/// How far the grid moves what follows it.
std::size_t shift_of_grid(const BlockIndex& index, const Block& block) {
    const Block* grid = index.at(block.at + grid_at);
    if (grid == nullptr || grid->content_type != block_type::real_time_grid) return 0;
    const std::size_t size = grid->size;
    if (size < ordinary_grid_size) return 0;
    const std::size_t room = block_size_base + std::size_t{block.size};
    if (room < bytes_behind_grid_size || size > room - bytes_behind_grid_size) return 0;
    return size - ordinary_grid_size;
}

RealTimeProperties read_properties(const BlockIndex& index, const Block& block) {
    const ByteView image = index.image();
    const std::size_t base = block.at + shift_of_grid(index, block);
    const auto is_on = [&](std::size_t at) { return image.u8(at) == 1; };
    const auto signed_at = [&](std::size_t at) {
        return std::int32_t{static_cast<std::int8_t>(image.u8(at))};
    };
    const auto delay = static_cast<std::int32_t>(image.u32(base + delay_at) / delay_units_per_tick);
    return {
        .quantize_on = is_on(block.at + quantize_on_at),
        .duration_on = is_on(base + duration_on_at),
        .delay_on = is_on(base + delay_on_at),
        .velocity_on = is_on(base + velocity_on_at),
        .transpose_on = is_on(base + transpose_on_at),
        .swing = image.u8(block.at + swing_at),
        .delay_ticks = image.u8(base + delay_is_early_at) != 0 ? -delay : delay,
        .velocity_scale = image.u8(base + velocity_scale_at),
        .velocity_offset = signed_at(base + velocity_offset_at),
        .duration_value = image.u8(base + duration_value_at),
        .transpose_octaves = signed_at(base + octaves_at),
        .transpose_semitones = signed_at(base + semitones_at),
    };
}

/// The MIDI and instrument rows by the names that one of them alone bears: the current names, and
/// the original ones that are nobody's current name.
class RowsByName {
public:
    explicit RowsByName(std::span<const StripRow> rows) {
        std::map<std::string_view, std::size_t> original;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (!plays_midi(rows[i].type)) continue;
            add(rows_, rows[i].current_name, i);
            add(original, rows[i].original_name, i);
        }
        rows_.merge(original);
    }

    std::size_t find(std::string_view name) const {
        const auto found = rows_.find(name);
        return found == rows_.end() ? no_row : found->second;
    }

    static constexpr std::size_t no_row = static_cast<std::size_t>(-1);

private:
    static void add(std::map<std::string_view, std::size_t>& names, std::string_view name,
                    std::size_t row) {
        const auto [place, is_new] = names.emplace(name, row);
        if (!is_new) place->second = no_row;
    }

    std::map<std::string_view, std::size_t> rows_;
};

/// The properties of tracks, in order: all but the defaults and what is too short.
std::vector<Block> properties_of_tracks(const BlockIndex& index) {
    const auto all = index.of_type(block_type::real_time_properties).all();
    const auto holders =
        smallest_enclosing(index.of_type(block_type::real_time_defaults).all(), starts_of(all));
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (holders[i] == nullptr && all[i].size >= least_size) blocks.push_back(all[i]);
    }
    return blocks;
}

/// For each properties block the row that its playlist names, or `RowsByName::no_row`.
std::vector<std::size_t> named_rows(const BlockIndex& index, std::span<const Block> blocks,
                                    std::span<const StripRow> rows) {
    const RowsByName by_name(rows);
    std::vector<std::size_t> named;
    named.reserve(blocks.size());
    for (const Block* playlist :
         smallest_enclosing(index.of_type(block_type::midi_playlist).all(), starts_of(blocks))) {
        const auto name = playlist == nullptr
                              ? std::nullopt
                              : readCountedText(index.image(), playlist->at + playlist_name_at,
                                                max_name_bytes, playlist->end());
        named.push_back(name ? by_name.find(*name) : RowsByName::no_row);
    }
    return named;
}

}  // namespace

std::vector<RealTimeProperties> readRealTimeProperties(const BlockIndex& index,
                                                       std::span<const StripRow> rows) {
    const auto blocks = properties_of_tracks(index);
    const auto named = named_rows(index, blocks, rows);

    std::vector<RealTimeProperties> list(rows.size());
    std::vector<bool> is_taken(rows.size(), false);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (named[i] == RowsByName::no_row || is_taken[named[i]]) continue;
        is_taken[named[i]] = true;
        list[named[i]] = read_properties(index, blocks[i]);
    }
    std::size_t row = 0;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (named[i] != RowsByName::no_row) continue;
        while (row < rows.size() && (!plays_midi(rows[row].type) || is_taken[row])) ++row;
        if (row == rows.size()) break;
        list[row++] = read_properties(index, blocks[i]);
    }
    return list;
}

}  // namespace tanrove
