// States that are chains of tagged sections, each with its length: found by their tags, cut to the
// sections that the build loads.
#pragma once

#include "plugins/settings_case.hpp"

namespace tanrove {

/// The amplifier modeller whose chain begins with "6SMC" and "DHSH".
RuleAnswer translate_session_chain(const SettingsCase& insert_case);

/// Rows that give a head and a trailer for a chain of "...CP" sections.
RuleAnswer translate_preset_chain(const SettingsCase& insert_case);

}  // namespace tanrove
