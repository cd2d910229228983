// A strip row is a block of one of six content types, alone or (audio tracks) inside a 0x261c. Its
// offsets that count:
//
//   9   0x102d, the strip's attributes; inside it
//         9   0x2619, the strip's name: u32 count n of 1 to 255 at its offset 9, text at 13;
//             at 20 + n the identity marker, and behind it the strip's u64 identity
//   ..  the active mark 0x2627; the byte in front of its 'Z' is 0 on an inactive track
//
// A master fader (0x261d) holds a 0x261b, which is no row. The 0x2619 keeps the name under which
// the strip was made. The name that it has now stands in its entry of the strip table, which has
// the same identity. Entries of strips without one stand in the order of the rows, once or twice
// over. A Basic folder has an entry and, in most sessions, no row.
#include "session/strip_rows.hpp"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"
#include "session/strip_table.hpp"

namespace tanrove {

namespace {

constexpr auto master_type = static_cast<std::uint16_t>(StripRowType::master);
constexpr auto audio_type = static_cast<std::uint16_t>(StripRowType::audio_or_aux);
constexpr std::array<std::uint16_t, 6> row_types = {
    block_type::audio_row, block_type::master_row,     block_type::vca_row,
    block_type::midi_row,  block_type::instrument_row, block_type::video_row};

constexpr std::size_t original_name_at = 9;
constexpr std::size_t text_at = 4;  // behind its count
constexpr std::size_t marker_behind_name = 7;

/// Content type of the active mark as it stands in the bytes.
constexpr std::string_view active_mark_type("\x27\x26", 2);

/// The identity behind the name; 0 for none.
std::uint64_t identity_in(ByteView image, const Block& name) {
    const std::size_t count_at = name.at + original_name_at;
    const std::size_t marker_at = count_at + text_at + image.u32(count_at) + marker_behind_name;
    const std::size_t identity_at = marker_at + identity_marker.size();
    if (identity_at + sizeof(std::uint64_t) > name.end()) return 0;
    return image.has(marker_at, identity_marker) ? image.u64(identity_at) : 0;
}

/// The active marks. Their size word is not looked at: the byte in front of a mark says what it
/// says whatever the mark holds.
class ActiveMarks {
public:
    explicit ActiveMarks(ByteView image) : image_(image) {}

    /// Asked for rows in the order of their starts, so that no byte is searched twice.
    bool is_active(const StripRow& row) {
        if (mark_ <= row.start) find_behind(row.start, row.end);
        return mark_ == none || mark_ + block_payload_at > row.end || image_.u8(mark_ - 1) != 0;
    }

private:
    static constexpr std::size_t none = 0;

    /// The first mark behind `start` that ends before `end`.
    void find_behind(std::size_t start, std::size_t end) {
        mark_ = none;
        searched_ = std::max(searched_, start + 1);
        const ByteView up_to_end = image_.window(0, end);
        while (mark_ == none && searched_ + block_payload_at <= end) {
            const std::size_t hit = up_to_end.find(active_mark_type, searched_ + block_content_at);
            if (hit == ByteView::npos) {
                searched_ = end - block_payload_at + 1;
                return;
            }
            const std::size_t p = hit - block_content_at;
            searched_ = p + 1;
            if (image_.u8(p) == block_marker && image_.u8(p + block_high_type_at) == 0) mark_ = p;
        }
    }

    ByteView image_;
    std::size_t mark_ = none;   ///< the first behind the row asked for last, if it was found
    std::size_t searched_ = 0;  ///< no further mark begins in front of this
};

/// For each block the smallest block of `outer_type` that holds its start; nullptr for none.
std::vector<const Block*> holders(const BlockIndex& index, std::uint16_t outer_type,
                                  std::span<const Block> blocks) {
    std::vector<std::size_t> starts;
    starts.reserve(blocks.size());
    for (const Block& block : blocks) starts.push_back(block.at);
    return smallest_enclosing(index.of_type(outer_type).all(), starts);
}

/// The blocks that are rows: all of the row types but the 0x261b inside a master fader.
std::vector<Block> row_blocks(const BlockIndex& index) {
    const auto candidates = index.of_types(row_types);
    const auto masters = holders(index, master_type, candidates);
    std::vector<Block> rows;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (candidates[i].content_type == audio_type && masters[i] != nullptr) continue;
        if (rows.size() == max_strip_rows) break;
        rows.push_back(candidates[i]);
    }
    return rows;
}

/// Gives each row the first name block that lies in it and in no row inside it: rows within rows do
/// not share a name, which would be copied once for each of them.
void read_original_names(const BlockIndex& index, std::span<const Block> blocks,
                         std::vector<StripRow>& rows) {
    const auto names = index.of_type(block_type::strip_name).all();
    std::vector<std::size_t> starts;
    starts.reserve(names.size());
    for (const Block& name : names) starts.push_back(name.at);
    const auto innermost = smallest_enclosing(blocks, starts);
    std::vector<bool> is_named(blocks.size(), false);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (innermost[i] == nullptr) continue;
        const auto row = static_cast<std::size_t>(innermost[i] - blocks.data());
        if (is_named[row]) continue;
        is_named[row] = true;
        rows[row].original_name =
            read_name(index.image(), names[i].at + original_name_at, names[i].end()).value_or("");
        rows[row].current_name = rows[row].original_name;
        rows[row].identity = identity_in(index.image(), names[i]);
    }
}

/// Gives a row the name that its strip has now, if it can be read.
void rename(StripRow& row, const StripTableRecord& entry) {
    if (!entry.name.empty()) row.current_name = entry.name;
}

/// Joins rows and entries that have the same identity and takes both away from what is left to
/// join. Where two rows share an identity it tells neither.
void bind_by_identity(std::vector<StripRow*>& rows, std::vector<StripTableRecord>& entries) {
    std::unordered_map<std::uint64_t, const StripTableRecord*> entry_of;
    for (const StripTableRecord& entry : entries) entry_of.try_emplace(entry.identity, &entry);
    entry_of.erase(0);
    std::unordered_set<std::uint64_t> seen;
    std::unordered_set<std::uint64_t> shared;
    for (const StripRow* row : rows) {
        if (!seen.insert(row->identity).second) shared.insert(row->identity);
    }
    std::unordered_set<std::uint64_t> joined;
    std::erase_if(rows, [&](StripRow* row) {
        const auto entry = entry_of.find(row->identity);
        if (entry == entry_of.end() || shared.contains(row->identity)) return false;
        rename(*row, *entry->second);
        return joined.insert(row->identity).second;
    });
    std::erase_if(entries, [&](const auto& entry) { return joined.contains(entry.identity); });
}

/// True if there is an entry for each row, once or twice over.
bool fits_rows(std::span<const StripTableRecord> entries, std::size_t row_count) {
    if (entries.size() != 2 * row_count) return entries.size() == row_count;
    return std::ranges::equal(entries.first(row_count), entries.last(row_count), {},
                              &StripTableRecord::name, &StripTableRecord::name);
}

/// Joins rows and entries in their order, if either all entries fit the rows or those that are no
/// Basic folder's.
bool bind_in_order(const std::vector<StripRow*>& rows, std::vector<StripTableRecord> entries) {
    if (!fits_rows(entries, rows.size())) {
        std::erase_if(entries,
                      [](const auto& entry) { return entry.type == strip_table_folder_type; });
        if (!fits_rows(entries, rows.size())) return false;
    }
    for (std::size_t i = 0; i < rows.size(); ++i) rename(*rows[i], entries[i]);
    return true;
}

/// Gives the rows the names of the strip table. A row that has no entry keeps its own.
void bind_current_names(const BlockIndex& index, StripRows& strips) {
    auto entries = read_strip_table_records(index);
    std::vector<StripRow*> unbound;
    unbound.reserve(strips.rows.size());
    for (StripRow& row : strips.rows) unbound.push_back(&row);
    bind_by_identity(unbound, entries);
    strips.some_bound = unbound.size() < strips.rows.size();
    strips.bound = strips.some_bound && unbound.empty();
    if (!strips.bound) strips.bound = bind_in_order(unbound, std::move(entries));
}

}  // namespace

StripRows readStripRows(const BlockIndex& index) {
    const auto blocks = row_blocks(index);
    const auto identities = holders(index, block_type::strip_identity, blocks);
    ActiveMarks marks(index.image());
    StripRows result;
    result.rows.reserve(blocks.size());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        StripRow row;
        row.start = blocks[i].at;
        row.end = blocks[i].end();
        row.type = static_cast<StripRowType>(blocks[i].content_type);
        row.active = marks.is_active(row);
        row.is_aux = row.type == StripRowType::audio_or_aux && identities[i] == nullptr;
        result.rows.push_back(std::move(row));
    }
    read_original_names(index, blocks, result.rows);
    bind_current_names(index, result);
    return result;
}

}  // namespace tanrove
