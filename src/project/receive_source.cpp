#include "project/receive_source.hpp"

namespace tanrove {

namespace {

constexpr std::size_t max_source_digits = 6;

}  // namespace

std::optional<ReceiveSource> receive_source(std::string_view text) {
    ReceiveSource source;
    while (source.digits < text.size() && text[source.digits] >= '0' &&
           text[source.digits] <= '9') {
        if (source.digits == max_source_digits) return std::nullopt;
        source.track = source.track * 10 + static_cast<std::size_t>(text[source.digits] - '0');
        ++source.digits;
    }
    if (source.digits == 0) return std::nullopt;
    return source;
}

}  // namespace tanrove
