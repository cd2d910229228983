// Records whose readers pass over a text that is too long, with the place of its u32 count. A
// display record counts its comment behind its first child.
#include "session/long_texts.hpp"

#include <set>
#include <string_view>

#include "session/block_types.hpp"
#include "session/record_forms.hpp"

namespace tanrove {

namespace {

struct NamePlace {
    std::uint16_t type;
    std::size_t count_at;
};

constexpr NamePlace name_places[] = {
    {block_type::memory_location, 15}, {block_type::strip_table_entry, 11},
    {block_type::own_path, 11},        {block_type::io_path, 11},
    {block_type::audio_playlist, 9},   {block_type::midi_playlist, 9},
    {block_type::path_reference, 45},
};

constexpr std::size_t comment_behind_child = 8;
constexpr std::size_t max_comment_bytes = 65535;
constexpr std::size_t count_width = 4;
constexpr std::size_t shown_bytes = 32;

/// Adds the beginning of a text that is longer than `most` and no longer than its record.
void add_if_long(ByteView image, std::size_t count_at, std::size_t end, std::size_t most,
                 std::set<std::string_view>& texts) {
    const std::size_t bytes = image.u32(count_at);
    if (bytes <= most || count_at + count_width + bytes > end) return;
    const auto beginning = image.text(count_at + count_width, shown_bytes);
    if (beginning && is_session_text(*beginning)) texts.insert(*beginning);
}

}  // namespace

std::vector<std::string> read_long_texts(const BlockIndex& index) {
    const ByteView image = index.image();
    std::set<std::string_view> texts;
    for (const NamePlace& place : name_places) {
        for (const Block& record : index.of_type(place.type).all()) {
            add_if_long(image, record.at + place.count_at, record.end(), max_name_bytes, texts);
        }
    }
    for (const Block& record : index.of_type(block_type::track_display).all()) {
        const Block* child = index.first_child(record);
        if (child == nullptr) continue;
        add_if_long(image, child->end() + comment_behind_child, record.end(), max_comment_bytes,
                    texts);
    }
    return {texts.begin(), texts.end()};
}

}  // namespace tanrove
