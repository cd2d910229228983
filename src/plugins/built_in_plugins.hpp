// What we know of plug-ins by heart: those whose REAPER build has a settled name, those that exist
// for Pro Tools only, and controls with steps. What REAPER's own lists tell is never repeated here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugins/plugin_table_row.hpp"

namespace tanrove {

/// A plug-in that no other host can load.
struct AaxOnlyPlugin {
    std::string code;
    std::string description;
    bool passes_no_sound = false;  ///< a meter, say: the mix is the same without it
};

/// A control whose values are steps.
struct SteppedParameter {
    std::string code;
    std::uint32_t index = 0;
    std::uint32_t step_count = 0;
};

struct BuiltInPlugins {
    RowsByKey rows;
    std::vector<AaxOnlyPlugin> aax_only;
    std::vector<SteppedParameter> stepped;
};

/// Kontakt as Pro Tools names it. Its VST2 has the same number in every version up to 6.
constexpr const char* kontakt_code = "NiInNi$D";
constexpr std::uint32_t kontakt_vst2_id = 0x4e692444;

BuiltInPlugins built_in_plugins();

}  // namespace tanrove
