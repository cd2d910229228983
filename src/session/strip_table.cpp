// The strip table 0x2519 holds one 0x251a a strip, in edit-window order, the whole list twice. An
// entry, n being the bytes of its name and E the position behind it:
//
//   9       u16 strip type, 11 a folder
//   11      u32 n, 0 to 255 (a strip may be nameless), text at 15
//   E       u8 width
//   E + 6   the identity marker, u64 identity at E + 10
//   E + 53  u8 flag, long form only
//
// An entry ends at 79 + n since 2022 and anywhere behind the identity before: mostly at 69 + n. The
// short forms have no flag, and their width is a code.
#include "session/strip_table.hpp"

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::string_view entry_type("\x1a\x25", 2);  // as it stands in the bytes

constexpr std::size_t type_at = 9;
constexpr std::size_t name_length_at = 11;
constexpr std::size_t name_at = 15;
constexpr std::size_t marker_behind_name = 6;
constexpr std::size_t identity_behind_name = 10;
constexpr std::size_t flag_behind_name = 53;

// Both count the bytes of an entry without those of its name.
constexpr std::size_t long_form_bytes = 79;
constexpr std::size_t least_bytes = name_at + identity_behind_name + sizeof(std::uint64_t);

/// The next entry of the table: a 'Z' with the content type, whatever stands between.
std::optional<std::size_t> find_entry(ByteView image, std::size_t from, std::size_t table_end) {
    auto hit = image.find(entry_type, from + block_content_at);
    for (; hit != ByteView::npos && hit + entry_type.size() <= table_end;
         hit = image.find(entry_type, hit + 1)) {
        if (image.u8(hit - block_content_at) == block_marker) return hit - block_content_at;
    }
    return std::nullopt;
}

/// The identity of the entry whose name ends at `behind_name`; 0 for none.
std::uint64_t identity_behind(ByteView image, std::size_t behind_name) {
    const bool is_marked = image.has(behind_name + marker_behind_name, identity_marker);
    return is_marked ? image.u64(behind_name + identity_behind_name) : 0;
}

std::optional<StripTableEntry> read_entry(ByteView image, std::size_t at, std::size_t end) {
    const auto name = readCountedText(image, at + name_length_at, max_name_bytes, end);
    if (!name) return std::nullopt;
    const std::size_t fixed_bytes = end - at - name->size();
    if (fixed_bytes < least_bytes) return std::nullopt;
    const bool is_long = fixed_bytes >= long_form_bytes;
    const std::size_t behind_name = at + name_at + name->size();
    StripTableEntry entry;
    entry.name = *name;
    entry.type = image.u16(at + type_at);
    entry.width = image.u8(behind_name);
    entry.width_is_code = !is_long;
    entry.flag = entry.type == strip_table_folder_type ||
                 (is_long && image.u8(behind_name + flag_behind_name) == 1);
    entry.identity = identity_behind(image, behind_name);
    return entry;
}

/// Strips may be nameless or share a name; where both entries have an identity, it tells them
/// apart.
bool is_same_strip(const StripTableEntry& a, const StripTableEntry& b) {
    if (a.identity != 0 && b.identity != 0 && a.identity != b.identity) return false;
    return a.name == b.name && a.type == b.type;
}

}  // namespace

std::vector<StripTableRecord> read_strip_table_records(const BlockIndex& index) {
    const ByteView image = index.image();
    std::vector<StripTableRecord> records;
    for (const Block& entry : index.of_type(block_type::strip_table_entry).all()) {
        StripTableRecord& record = records.emplace_back();
        record.type = image.u16(entry.at + type_at);
        const auto name = read_name(image, entry.at + name_length_at, entry.end());
        if (!name) continue;
        record.name = *name;
        const std::size_t behind_name = entry.at + name_at + name->size();
        if (behind_name + identity_behind_name + sizeof(std::uint64_t) > entry.end()) continue;
        record.identity = identity_behind(image, behind_name);
    }
    return records;
}

std::vector<StripTableEntry> readStripTable(const BlockIndex& index) {
    const auto tables = index.of_type(block_type::strip_table).all();
    if (tables.empty()) return {};
    const ByteView image = index.image();
    const Block& table = tables.front();
    std::vector<StripTableEntry> entries;
    std::size_t from = table.payload();
    while (const auto at = find_entry(image, from, table.end())) {
        const std::size_t end = *at + block_size_base + image.u32(*at + block_size_at);
        if (end > table.end()) return {};
        auto entry = read_entry(image, *at, end);
        if (!entry) return {};
        if (!entries.empty() && is_same_strip(*entry, entries.front())) break;  // the second copy
        entries.push_back(std::move(*entry));
        from = end;
    }
    return entries;
}

}  // namespace tanrove
