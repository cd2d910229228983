// The program of an XML state inside the bank that its VST2 build expects.
#pragma once

#include <string>

namespace tanrove {

/// A document with one program and no bank gets a bank of a hundred programs, the first being its
/// own. Anything else comes back as it is.
std::string with_full_bank(std::string state);

}  // namespace tanrove
