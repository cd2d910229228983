// 0x1004: u32 number of files at 9, then a 0x103a and one 0x1003 a file.
// 0x103a: u32 number of entries at 9, entries from 13. An entry: u8 kind (0 volume, 1 folder, 2
// file), u32 number of the folder it lies in, u32 count, text, 4-byte tag.
// 0x1003 holds a 0x1001: u32 rate at 9, u64 length in samples at 15.
#include "ptformat/audio_file_list.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace tanrove::ptformat {

namespace {

using AudioFile = PTFFormat::AudioFile;

constexpr std::uint16_t audio_list_type = 0x1004;
constexpr std::uint16_t entry_list_type = 0x103a;
constexpr std::uint16_t file_details_type = 0x1003;
constexpr std::uint16_t file_format_type = 0x1001;

constexpr std::size_t count_at = 9;
constexpr std::size_t entries_at = 13;

constexpr std::uint8_t kind_file = 2;
constexpr std::size_t text_count_at = 5;  // in an entry
constexpr std::size_t text_at = 9;
constexpr std::size_t tag_bytes = 4;
constexpr std::size_t smallest_entry = text_at + tag_bytes;

constexpr std::size_t rate_at = 9;
constexpr std::size_t length_at = 15;
constexpr std::size_t format_bytes = length_at + 8;

constexpr std::array<std::string_view, 6> audio_tags = {"WAVE", "EVAW", "AIFF",
                                                        "FFIA", "MXFf", "fFXM"};

bool is_audio_tag(std::string_view tag) {
    return std::find(audio_tags.begin(), audio_tags.end(), tag) != audio_tags.end();
}

/// Appends the audio files among the entries. False if the entries pass their block.
bool read_entries(const Container& session, const ChainBlock& list, std::size_t most,
                  std::vector<AudioFile>& files) {
    if (list.end() < list.at + entries_at) return false;
    std::size_t at = list.at + entries_at;
    const std::size_t count = session.u32(list.at + count_at);
    if (count > (list.end() - at) / smallest_entry) return false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t left = list.end() - at;
        if (left < smallest_entry) return false;
        const std::size_t length = session.u32(at + text_count_at);
        if (length > left - smallest_entry) return false;
        const auto name = session.image().text(at + text_at, length).value_or("");
        const auto tag = session.image().text(at + text_at + length, tag_bytes).value_or("");
        if (session.image().u8(at) == kind_file && is_audio_tag(tag) && files.size() < most) {
            files.push_back({.name = std::string(name.substr(0, max_file_name)),
                             .index = static_cast<std::uint16_t>(files.size())});
        }
        at += length + smallest_entry;
    }
    return true;
}

/// The details stand in the order of the files.
void read_details(const Container& session, const ChainBlock& audio_list,
                  std::vector<AudioFile>& files) {
    std::size_t next = 0;
    for (const ChainBlock& details : session.children(audio_list, {file_details_type})) {
        if (next == files.size()) return;
        AudioFile& file = files[next++];
        const auto formats = session.children(details, {file_format_type});
        if (formats.empty() || formats[0].end() - formats[0].at < format_bytes) continue;
        file.rate_hz = session.u32(formats[0].at + rate_at);
        file.length = static_cast<std::int64_t>(session.position(formats[0].at + length_at));
    }
}

}  // namespace

std::optional<std::vector<AudioFile>> read_audio_files(const Container& session) {
    std::vector<AudioFile> files;
    const auto audio_list = session.first_of_type(audio_list_type);
    if (!audio_list) return files;
    const auto entry_lists = session.children(*audio_list, {entry_list_type});
    if (entry_lists.empty()) return files;
    const std::size_t count = session.u32(audio_list->at + count_at);
    if (!read_entries(session, entry_lists[0], std::min(count, max_audio_files), files)) {
        return std::nullopt;
    }
    read_details(session, *audio_list, files);
    return files;
}

}  // namespace tanrove::ptformat
