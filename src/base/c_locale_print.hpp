// The few conversions of which nearly every project line is made, printed without printf: the same
// bytes in a fraction of the time.
#pragma once

#include <cstdarg>

#include "base/line_buffer.hpp"
#include "base/printf_check.hpp"

namespace tanrove {

/// Appends what vsnprintf writes in the "C" locale. Knows "%s", "%d", "%u", "%lu", "%%", and "%f"
/// and "%g" with or without a precision. False, and `target` as it was, for any other conversion
/// and for a text of `max_formatted_bytes` or more.
bool append_plain(LineBuffer& target, const char* format, std::va_list values) TANROVE_PRINTF(2, 0);

}  // namespace tanrove
