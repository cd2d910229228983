// One test of a clip's name for all tables that go by it.
#include "session/clip_names.hpp"

namespace tanrove {

std::optional<std::string_view> read_clip_name(ByteView image, const Block& clip) {
    constexpr std::size_t max_name = 128;
    const auto name = readCountedText(image, clip.payload(), max_name, clip.end());
    if (!name || name->empty() || !is_session_text(*name)) return std::nullopt;
    return name;
}

}  // namespace tanrove
