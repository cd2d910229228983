// The first plug-in of an FX chain that REAPER has saved, as text: how REAPER names it, and what
// the header of its settings says. A chain is what a user sends along to teach us a plug-in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tanrove {

/// A chain past this is cut there; no settings of one plug-in come near it.
constexpr std::size_t max_chain_file_bytes = std::size_t{64} << 20;
/// Settings past this are damage.
constexpr std::uint32_t max_settings_bytes = 0x1000000;

/// What stands in front of a VST's settings.
struct SettingsHeader {
    std::uint32_t pins_in = 0;
    std::uint32_t pins_out = 0;
    std::uint32_t settings_bytes = 0;
    std::uint32_t tail_word = 0;
    bool is_fabfilter_state = false;  ///< the settings behind it are framed as that maker's
};

/// A plug-in as its line in the chain names it.
struct ChainPlugin {
    bool is_clap = false;
    std::string fx_name;
    std::string file;  ///< empty for a CLAP
    std::string ident;
    std::uint32_t magic = 0;      ///< the header's second word
    std::size_t state_bytes = 0;  ///< of header, settings and tail, as far as they were read
    std::optional<SettingsHeader> header = {};  ///< nullopt: its pins cannot be told
};

/// How a chain is not what we hoped for.
enum class ChainFault { none, no_plugin, unreadable_line };

struct ReadChain {
    ChainFault fault = ChainFault::none;
    ChainPlugin plugin;
};

/// The first VST or CLAP of the chain.
ReadChain read_chain(std::string_view text);

/// True for a word that every header has.
bool is_settings_magic(std::uint32_t word);

}  // namespace tanrove
