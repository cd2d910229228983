// The folders of the file list 0x103a, offsets from its 'Z': u32 number of entries at 9; from 13
// the entries: u8 kind, u32 parent, u32 count, text, 4-byte tag. A tag of an audio format marks a
// file; one whose first three bytes hold a zero marks a folder. Files follow their folder.
#include "session/audio_file_folders.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::size_t first_count_at = 18;
constexpr std::size_t count_width = 4;
constexpr std::size_t tag_width = 4;
constexpr std::size_t kind_and_parent_width = 5;
constexpr std::size_t max_name = 512;
constexpr std::size_t smallest_entry = count_width + 1 + tag_width + kind_and_parent_width;

constexpr std::array<std::string_view, 6> file_tags = {"WAVE", "EVAW", "AIFF",
                                                       "FFIA", "MXFf", "fFXM"};

bool is_file_tag(std::string_view tag) {
    return std::find(file_tags.begin(), file_tags.end(), tag) != file_tags.end();
}

bool is_folder_tag(std::string_view tag) {
    return tag.substr(0, 3).find('\0') != std::string_view::npos;
}

bool is_name(std::string_view text) {
    return !text.empty() && std::none_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 32 || byte == 127;
    });
}

}  // namespace

AudioFileFolders readAudioFileFolders(const BlockIndex& index) {
    const ByteView image = index.image();
    AudioFileFolders folders;
    // Lists do not overlap, so all of them together have no more entries than the image has room.
    std::size_t entries_left = image.size() / smallest_entry;
    for (const Block& list : index.of_type(block_type::file_names).all()) {
        std::string_view folder;
        for (std::size_t at = list.at + first_count_at; entries_left > 0; --entries_left) {
            const auto name = readCountedText(image, at, max_name, list.end());
            if (!name || !is_name(*name)) break;
            const std::size_t tag_at = at + count_width + name->size();
            const auto tag = image.text(tag_at, tag_width);
            if (!tag || tag_at + tag_width > list.end()) break;
            if (is_folder_tag(*tag)) folder = *name;
            if (is_file_tag(*tag) && !folder.empty()) {
                folders.try_emplace(std::string(*name), folder);
            }
            at = tag_at + tag_width + kind_and_parent_width;
        }
    }
    return folders;
}

}  // namespace tanrove
