// A hardware insert 0x2612 holds an output name 0x260e. In some sessions the name's count stands at
// offset 42 of that, ASCII only; else it is found as every output's name is. Of inserts that share
// one output name the first counts: the others are chance matches inside it.
#include "session/hardware_inserts.hpp"

#include <set>

#include "session/block_types.hpp"
#include "session/enclosing_blocks.hpp"
#include "session/first_enclosing.hpp"
#include "session/output_names.hpp"

namespace tanrove {

namespace {

constexpr std::size_t name_at = 42;
constexpr std::size_t min_bytes = 45;  // a shorter child has no name at its fixed place
constexpr std::size_t max_insert_name_bytes = 128;

std::optional<std::string> insert_name(ByteView image, const Block* output) {
    if (output == nullptr) return std::nullopt;
    if (output->end() - output->at > min_bytes) {
        const auto name =
            readCountedText(image, output->at + name_at, max_insert_name_bytes, output->end());
        if (name && !name->empty() && is_ascii_text(*name)) return std::string(*name);
    }
    auto name = read_output_name(image, *output);
    if (!name || name->name.empty()) return std::nullopt;
    return std::move(name->name);
}

}  // namespace

std::vector<HardwareInsert> readHardwareInserts(const BlockIndex& index,
                                                const std::vector<StripRow>& rows) {
    std::vector<BlockSpan> spans;
    spans.reserve(rows.size());
    for (const StripRow& row : rows) spans.push_back({row.start, row.end});
    const auto blocks = index.of_type(block_type::hardware_insert).all();
    const auto holders = first_enclosing(spans, starts_of(blocks));

    std::vector<HardwareInsert> inserts;
    std::set<const Block*> outputs;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const Block* output = index.first_child(blocks[i], block_type::path_reference);
        if (output != nullptr && !outputs.insert(output).second) continue;
        HardwareInsert insert{"<unnamed>", "<unknown track>", std::nullopt};
        if (auto name = insert_name(index.image(), output)) insert.name = std::move(*name);
        if (holders[i] != no_span) {
            insert.track = shown_name(rows[holders[i]]);
            insert.strip_row = holders[i];
        }
        inserts.push_back(std::move(insert));
    }
    return inserts;
}

}  // namespace tanrove
