// A name record 0x1017:
//
//   10   u32 count of 1 to 60, the name; at 11 in some sessions
//   ..   three words of four characters, each stored backwards: maker, product, build
//
// Inserts name a plug-in by maker and product, which are the first two words or, where four bytes
// of another kind stand in front, the last two. Both readings are entered, the first one of every
// record ahead of the second one of any: so product and build of one plug-in never hide maker and
// product of another. A record whose name or code is no text may hold a further text in front of
// both.
#include "plugins/plugin_names.hpp"

#include <map>
#include <optional>
#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_places[] = {10, 11};
constexpr std::size_t count_bytes = 4;
constexpr std::uint32_t min_record_size = 14;
constexpr std::uint32_t max_record_size = 4000;
constexpr std::size_t max_name_bytes = 60;
constexpr std::size_t word_bytes = 4;
constexpr std::size_t code_bytes = 8;

/// The two words at `at`, turned round; nullopt where they are no text.
std::optional<std::string> code_at(ByteView record, std::size_t at) {
    const auto stored = record.text(at, code_bytes);
    if (!stored || !is_ascii_text(*stored)) return std::nullopt;
    const auto first = stored->substr(0, word_bytes);
    const auto second = stored->substr(word_bytes);
    return std::string(first.rbegin(), first.rend()) + std::string(second.rbegin(), second.rend());
}

struct NameRow {
    std::string_view name;
    std::string code;
    std::optional<std::string> later_code;  ///< of the second and third word, behind a first
};

/// The row whose name has its count at `at`.
std::optional<NameRow> row_at(ByteView record, std::size_t at) {
    const auto name = readCountedText(record, at, max_name_bytes, record.size());
    if (!name || name->empty() || !is_session_text(*name)) return std::nullopt;
    const std::size_t words = at + count_bytes + name->size();
    const auto code = code_at(record, words);
    const auto later_code = code_at(record, words + word_bytes);
    if (code) return NameRow{*name, *code, later_code};
    if (later_code) return NameRow{*name, *later_code, {}};
    return std::nullopt;
}

std::optional<NameRow> read_row(ByteView record) {
    for (const std::size_t at : name_places) {
        if (auto row = row_at(record, at)) return row;
        const std::size_t text_in_front = record.u32(at);
        if (text_in_front == 0 || text_in_front > max_name_bytes) continue;
        if (auto row = row_at(record, at + count_bytes + text_in_front)) return row;
    }
    return std::nullopt;
}

}  // namespace

NamesByCode read_plugin_names(const BlockIndex& index) {
    std::map<std::string, std::string> names;
    std::vector<NameRow> rows_with_later_code;
    for (const Block& block : index.of_type(block_type::plugin_name).all()) {
        if (block.size < min_record_size || block.size > max_record_size) continue;
        auto row = read_row(index.image().window(block.at, block.end() - block.at));
        if (!row) continue;
        names.emplace(row->code, row->name);
        if (row->later_code) rows_with_later_code.push_back(std::move(*row));
    }
    for (const NameRow& row : rows_with_later_code) names.emplace(*row.later_code, row.name);
    return {names.begin(), names.end()};
}

}  // namespace tanrove
