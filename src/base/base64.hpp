// Base64 as project files hold it: the standard alphabet with padding, no line breaks.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tanrove {

/// The base64 text of these bytes; empty for none.
std::string base64(std::span<const std::uint8_t> bytes);

}  // namespace tanrove
