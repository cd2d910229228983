// Text that has to be UTF-8, from bytes that may be anything.
#pragma once

#include <string>
#include <string_view>

namespace tanrove {

/// The text with each byte that is no part of a whole, shortest, allowed sequence as U+FFFD.
std::string valid_utf8(std::string_view text);

/// How many bytes the character at the front has: 1 to 4; 1 where the bytes are no UTF-8. The text
/// is not empty.
std::size_t character_bytes(std::string_view text);

}  // namespace tanrove
