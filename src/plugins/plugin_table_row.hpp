// The plug-in of REAPER that stands in for an AAX plug-in, as the project's line names it, and what
// the re-framing of its settings has to know of it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace tanrove {

/// Pins that a plug-in can have on a side.
constexpr std::int32_t max_pins = 64;
constexpr std::int32_t default_pins = 2;
/// Input pins of a plug-in whose key input is in use.
constexpr std::int32_t keyed_pins_in = 4;

/// The program name with which one maker's settings are framed.
constexpr const char* default_program_name = "Default Setting";

struct PluginTableRow {
    std::string code;         ///< the insert key that it answers to
    std::string productName;  ///< as people know it
    std::string fxName;       ///< "VST3: Product (Maker)", "CLAP: ...", "JS: ..."
    std::string file;         ///< the plug-in's file
    std::string ident;        ///< empty: no build is known, only the name
    std::int32_t pinsIn = default_pins;
    std::int32_t pinsOut = default_pins;
    std::int32_t tailWord = 0;   ///< the last word of the settings' header
    std::uint32_t minChunk = 0;  ///< shorter settings are not carried; 0: any length is
    std::string headerTemplate;  ///< bytes in front of the settings
    std::string trailer;         ///< bytes behind them
    std::uint32_t trailerFlag = 0;
    std::string fabName;           ///< the program name of that maker's frame; empty: another's
    std::uint32_t stateForm = 0;   ///< 1: a plain list of values
    std::uint32_t paramCount = 0;  ///< of that list
    std::uint32_t paramPad = 0;    ///< zero bytes in front of it
    bool named_by_user = false;    ///< the names are the user's words, not the plug-in's own
};

/// True for a row that tells more than a name.
inline bool has_build(const PluginTableRow* row) {
    return row != nullptr && !row->ident.empty();
}

using RowsByKey = std::map<std::string, PluginTableRow, std::less<>>;

/// The row for an insert key; null where there is none.
inline const PluginTableRow* row_in(const RowsByKey& rows, std::string_view key) {
    const auto row = rows.find(key);
    return row == rows.end() ? nullptr : &row->second;
}

/// The program name for this code; empty for all other makers.
inline std::string program_name_for(const std::string& code) {
    return code.starts_with("FabF") ? default_program_name : "";
}

}  // namespace tanrove
