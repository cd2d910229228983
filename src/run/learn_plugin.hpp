// `--learn`: takes a plug-in from a chain that the user saved in REAPER into the table of learned
// plug-ins, beside the program or, where nothing can be written there, in the user's own folder.
#pragma once

#include <cstdint>
#include <string>

namespace tanrove {

/// Appends the first plug-in of the chain under this AAX signature and tells what it took. 0, or 1
/// if nothing was appended; the console tells why.
std::int32_t learn_plugin(const std::string& program_path, const std::string& chain_path,
                          const std::string& signature);

}  // namespace tanrove
