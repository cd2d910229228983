// A sample is known by a hash of both its files, so the same settings in two sessions are one.
#include "run/settings_corpus.hpp"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string_view>

#include "base/formatted_text.hpp"
#include "base/paths.hpp"
#include "base/platform.hpp"
#include "base/whole_file.hpp"

namespace tanrove {

namespace {

std::uint64_t hash_of(std::string_view block, std::string_view state) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const std::string_view bytes : {block, state}) {
        for (const char c : bytes) {
            hash = (hash ^ static_cast<std::uint8_t>(c)) * 0x100000001b3;
        }
    }
    return hash;
}

/// The code as a part of a file's name: a session may hold any character in it.
std::string as_file_name(std::string code) {
    constexpr std::string_view refused = "/\\:*?\"<>|";
    for (char& c : code) {
        if (refused.find(c) != std::string_view::npos) c = '_';
    }
    return code;
}

std::string as_cell(std::string text) {
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    }
    return text;
}

}  // namespace

bool SettingsCorpus::add_row(const std::string& cells) const {
    const std::string path = folder_ + "/" + corpus_table_name;
    std::FILE* table = open_file(path.c_str(), "ab");
    if (table == nullptr) return false;
    std::string text = cells;
    if (file_size_of(path) == 0) {
        text =
            "name\tsig\tproduct\tident\tkind\tblocklen\tdocoff\tdoclen\tchunklen\tsession\n" + text;
    }
    const bool is_whole = std::fwrite(text.data(), 1, text.size(), table) == text.size();
    return std::fclose(table) == 0 && is_whole;
}

bool SettingsCorpus::write_sample(const PluginInsert& insert, const PluginTableRow& row,
                                  const std::string& block, const std::string& state) const {
    constexpr unsigned half_bits = 32;
    const std::uint64_t hash = hash_of(block, state);
    const std::string name = formatted("%s.%08x%08x.", as_file_name(insert.code).c_str(),
                                       static_cast<unsigned>(hash >> half_bits),
                                       static_cast<unsigned>(hash & 0xffffffff));
    const std::string block_path = folder_ + "/" + name + "block";
    if (block_path.size() > max_corpus_path_bytes) return false;
    if (std::filesystem::exists(status_of(block_path))) return true;
    if (!write_whole_file(folder_ + "/" + name + "chunk", state)) return false;
    if (!write_whole_file(block_path, block)) return false;
    const std::uint64_t document_at =
        insert.chunkOffset == 0 ? 0 : insert.chunkOffset - insert.blockStart;
    return add_row(formatted("%s\t%s\t%s\t%s\t%d\t%llu\t%llu\t%u\t%u\t%s\n", name.c_str(),
                             as_cell(insert.code).c_str(), as_cell(row.productName).c_str(),
                             as_cell(row.ident).c_str(), static_cast<int>(insert.containerKind),
                             static_cast<unsigned long long>(block.size()),
                             static_cast<unsigned long long>(document_at), insert.chunkSize,
                             static_cast<unsigned>(state.size()), as_cell(session_path_).c_str()));
}

void SettingsCorpus::add(const PluginInsert& insert, const PluginTableRow& row, ByteView image,
                         const std::string& state) {
    const bool has_settings = insert.containerKind != ContainerKind::none || insert.chunkSize != 0;
    if (folder_.empty() || failed_ || !has_settings) return;
    const auto block = image.text(static_cast<std::size_t>(insert.blockStart),
                                  static_cast<std::size_t>(insert.chunkLimit - insert.blockStart));
    if (!block || write_sample(insert, row, std::string(*block), state)) return;
    failed_ = true;
    std::fprintf(stderr, "--dump-corpus: cannot write in %s (does the directory exist?)\n",
                 folder_.c_str());
}

}  // namespace tanrove
