// The names and comments that are too long for their readers.
#pragma once

#include <string>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// The beginnings of all names over `max_name_bytes` and of all track comments over 65535 bytes
/// that lie whole in a record that shows one: each once, in the order of their bytes.
std::vector<std::string> read_long_texts(const BlockIndex& index);

}  // namespace tanrove
