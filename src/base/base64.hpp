// Base64 as project files hold it: the standard alphabet with padding, line by line.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tanrove {

/// The base64 text of these bytes; empty for none.
std::string base64(std::span<const std::uint8_t> bytes);

/// The bytes of a text; padding may be missing. nullopt where another character stands in it.
std::optional<std::vector<std::uint8_t>> decoded_base64(std::string_view text);

}  // namespace tanrove
