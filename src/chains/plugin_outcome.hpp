// What became of one insert, for the account, the report and the usage summary: decided where the
// slot is, read by all three, so that they cannot disagree.
#pragma once

#include <string>

#include "plugins/insert_fate.hpp"

namespace tanrove {

struct PluginOutcome {
    std::string track;  ///< as Pro Tools shows it
    std::string key;
    int slot = 0;  ///< place on its strip, from 1
    std::string display_name;
    OutcomeKind kind = OutcomeKind::not_recognized;
    std::string reason;  ///< empty for a plug-in that arrives as it was
    bool not_installed = false;
    bool without_settings = false;  ///< none of its settings are in the project
    int automation_points = 0;
    std::string format = "none";
    std::string maker;
    bool named_by_user = false;  ///< `display_name` is the user's words, not the plug-in's own
    bool bypassed = false;
    bool inactive = false;
    bool passes_no_sound = false;  ///< a meter, say: the mix is the same without it

    /// Whether the mix would sound otherwise without it.
    bool processed_audio() const { return !bypassed && !inactive && !passes_no_sound; }
};

}  // namespace tanrove
