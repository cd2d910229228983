// The source of a send in finished project text: the number that an `AUXRECV` line opens with.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tanrove {

/// How every receive of a track opens.
constexpr std::string_view receive_opening = "    AUXRECV ";

/// The source of a receive, and how many digits it has.
struct ReceiveSource {
    std::size_t track = 0;
    std::size_t digits = 0;
};

/// Reads the number that `text` opens with; nullopt if it has none, or more than six digits.
std::optional<ReceiveSource> receive_source(std::string_view text);

}  // namespace tanrove
