// FabFilter's two states: the program of the older format ("FabF"), and the plain list of the
// newer ("FFBS"), which the CLAP builds read and the VST3 builds keep in their two blocks.
#pragma once

#include "plugins/settings_case.hpp"

namespace tanrove {

/// A stored "FFBS" for a VST3 build. For other builds it goes as it is.
RuleAnswer translate_ffbs(const SettingsCase& insert_case);

/// A program made of the controls' values, under the name that the row gives it.
std::string fabfilter_program(const SettingsCase& insert_case);

/// Switches the MIDI trigger of a plug-in off where it is on: it would be met by the MIDI of its
/// track, which Pro Tools does not route to it. True if the state changed.
bool switch_midi_trigger_off(const SettingsCase& insert_case, std::string& state);

}  // namespace tanrove
