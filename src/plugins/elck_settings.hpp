// Settings that are a chain of sub-chunks: a map of the controls, and behind it what the plug-in
// itself keeps.
#pragma once

#include "plugins/settings_case.hpp"

namespace tanrove {

/// The state of a plug-in whose chain holds several chunks of its own; empty where the chain is not
/// of the one known shape.
std::string translate_chunk_chain(const SettingsCase& insert_case);

}  // namespace tanrove
