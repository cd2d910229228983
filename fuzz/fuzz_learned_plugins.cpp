// Chains and the table of learned plug-ins, read from any text; what a chain teaches can be read
// again.
#include "fuzz/promise.hpp"
#include "plugins/learned_plugins.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tanrove;
    const std::string_view text = input_view(data, size).text(0, size).value_or("");
    const auto table = read_learned_plugins(text);
    promise(table.rows.size() <= size / 8, "a code has eight characters");
    for (const auto& [code, row] : table.rows) {
        promise(code.size() == 8 || code.size() == 12, "a code or one with a part of its own");
        promise(!row.ident.empty() && !row.fxName.empty(), "rows name a build");
        promise(row.pinsIn >= 0 && row.pinsIn <= max_pins, "pins in");
        promise(row.pinsOut >= 0 && row.pinsOut <= max_pins, "pins out");
    }
    const ReadChain chain = read_chain(text);
    if (chain.fault != ChainFault::none) return 0;
    const std::string line = learned_line("MakePrd1", chain.plugin);
    promise(line.find('\n') == line.size() - 1, "one line");
    if (line.size() > max_learned_line_bytes) return 0;
    const auto taught = read_learned_plugins(line);
    promise(taught.rows.size() <= 1, "one row");
    if (taught.rows.empty() || !chain.plugin.header) return 0;
    const PluginTableRow& row = taught.rows.at("MakePrd1");
    promise(row.pinsOut == static_cast<std::int32_t>(chain.plugin.header->pins_out), "its pins");
    return 0;
}
