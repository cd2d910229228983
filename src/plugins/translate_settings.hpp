// From the settings that Pro Tools stored to those that REAPER's build of the plug-in loads. For
// many makers the inner state is the same and only its frame differs: no parameter is interpreted
// where it can be avoided. A wrong frame loads wrong settings without a word, so a state that no
// rule claims is refused.
#pragma once

#include <span>
#include <string>

#include "base/byte_view.hpp"
#include "plugins/built_in_plugins.hpp"
#include "plugins/plugin_insert.hpp"
#include "plugins/plugin_table_row.hpp"

namespace tanrove {

/// What the translation follows besides the insert and its row.
struct TranslationInput {
    bool track_has_midi = false;
    bool keep_plugin_midi = false;  ///< a MIDI trigger stays as the session saved it
    bool kontakt_state = true;      ///< off: Kontakt is left at its defaults
    /// The row is a VST2 build taken by preference: only states that it is known to load.
    bool is_preferred_vst2 = false;
    std::span<const SteppedParameter> stepped = {};  ///< of plain lists of values
};

struct TranslatedSettings {
    std::string state;               ///< the bytes behind the header; empty: not carried
    bool midi_switched_off = false;  ///< its MIDI trigger was on, and would have met the MIDI
};

/// The settings of one insert for the build in `row`. Never reads past the insert's chunk limit.
TranslatedSettings translate_settings(const PluginInsert& insert, const PluginTableRow& row,
                                      ByteView image, const TranslationInput& input);

}  // namespace tanrove
