// A strip row is a block of one of six content types, alone or (audio tracks) inside a 0x261c. Its
// offsets that count:
//
//   9   0x102d, the strip's attributes; inside it
//         9   0x2619, the strip's name: u32 count of 1 to 80 at its offset 9, text at 13
//   ..  the active mark 0x2627; the byte in front of its 'Z' is 0 on an inactive track
//
// A master fader (0x261d) holds a 0x261b, which is no row. The 0x2619 keeps the name under which
// the strip was made. The name that it has now stands in its 0x251a record: u32 count of 1 to 80 at
// offset 11, text at 15; these records stand in the order of the rows, once or twice over. A Basic
// folder, type 11 at offset 9, has a record and no row.
#include "session/strip_rows.hpp"

#include <algorithm>
#include <array>

#include "session/enclosing_blocks.hpp"
#include "session/strip_table.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t strip_name_type = 0x2619;
constexpr std::uint16_t strip_identity_type = 0x261c;
constexpr std::uint16_t strip_table_entry_type = 0x251a;
constexpr auto master_type = static_cast<std::uint16_t>(StripRowType::master);
constexpr auto audio_type = static_cast<std::uint16_t>(StripRowType::audio_or_aux);
constexpr std::array<std::uint16_t, 6> row_types = {0x261b, 0x261d, 0x261f, 0x2620, 0x2621, 0x2623};

constexpr std::size_t original_name_at = 9;
constexpr std::size_t table_type_at = 9;
constexpr std::size_t current_name_at = 11;
constexpr std::size_t max_name_bytes = 80;

/// Content type of the active mark as it stands in the bytes.
constexpr std::string_view active_mark_type("\x27\x26", 2);

/// A name inside its block; empty where it breaks a limit.
std::string name_in(ByteView image, const Block& block, std::size_t offset) {
    const auto name = readCountedText(image, block.at + offset, max_name_bytes, block.end());
    return name && is_session_text(*name) ? std::string(*name) : std::string();
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
    const auto names = index.of_type(strip_name_type).all();
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
        rows[row].original_name = name_in(index.image(), names[i], original_name_at);
        rows[row].current_name = rows[row].original_name;
    }
}

/// The records of the strip table where it has one or two for each row; else those that are no
/// Basic folder's.
std::vector<Block> table_entries(const BlockIndex& index, std::size_t row_count) {
    const auto all = index.of_type(strip_table_entry_type).all();
    std::vector<Block> entries(all.begin(), all.end());
    if (entries.size() == row_count || entries.size() == 2 * row_count) return entries;
    std::erase_if(entries, [&](const Block& entry) {
        return index.image().u16(entry.at + table_type_at) == strip_table_folder_type;
    });
    return entries;
}

/// Gives the rows the names of the strip table, where the table has one or two for each row.
bool bind_current_names(const BlockIndex& index, std::vector<StripRow>& rows) {
    const auto entries = table_entries(index, rows.size());
    if (entries.size() != rows.size() && entries.size() != 2 * rows.size()) return false;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        auto name = name_in(index.image(), entries[i], current_name_at);
        if (!name.empty()) rows[i].current_name = std::move(name);
    }
    return true;
}

}  // namespace

StripRows readStripRows(const BlockIndex& index) {
    const auto blocks = row_blocks(index);
    const auto identities = holders(index, strip_identity_type, blocks);
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
    result.bound = bind_current_names(index, result.rows);
    return result;
}

}  // namespace tanrove
