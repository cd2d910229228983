// Reads a file in blocks; writes its successor beside it and swaps the two by renaming.
#include "project/file_replacement.hpp"

#include <cstddef>

namespace tanrove {

namespace {

constexpr std::size_t read_block_bytes = std::size_t{64} * 1024;

bool write_file(const std::string& path, const std::string& text, const DiskSteps& disk) {
    std::FILE* stream = disk.open(path.c_str(), "wb");
    if (stream == nullptr) return false;
    const bool is_whole = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    const bool is_closed = disk.close(stream) == 0;
    if (!is_whole || !is_closed) disk.remove(path.c_str());
    return is_whole && is_closed;
}

}  // namespace

DiskSteps real_disk() {
    return {.open = [](const char* path, const char* mode) { return std::fopen(path, mode); },
            .close = [](std::FILE* stream) { return std::fclose(stream); },
            .rename = [](const char* from, const char* to) { return std::rename(from, to); },
            .remove = [](const char* path) { return std::remove(path); }};
}

std::optional<std::string> read_whole_file(const std::string& path, const DiskSteps& disk) {
    std::FILE* stream = disk.open(path.c_str(), "rb");
    if (stream == nullptr) return std::nullopt;
    std::string text;
    std::size_t count = read_block_bytes;
    while (count == read_block_bytes) {
        const std::size_t at = text.size();
        text.resize(at + read_block_bytes);
        count = std::fread(text.data() + at, 1, read_block_bytes, stream);
        text.resize(at + count);
    }
    const bool failed = std::ferror(stream) != 0;
    disk.close(stream);
    if (failed) return std::nullopt;
    return text;
}

bool replace_file(const std::string& path, const std::string& text,
                  const ReplacementSuffixes& suffixes, const DiskSteps& disk) {
    const std::string fresh = path + suffixes.temporary;
    const std::string old = path + suffixes.old;
    if (!write_file(fresh, text, disk)) return false;
    disk.remove(old.c_str());
    if (disk.rename(path.c_str(), old.c_str()) != 0) {
        disk.remove(fresh.c_str());
        return false;
    }
    if (disk.rename(fresh.c_str(), path.c_str()) != 0) {
        disk.rename(old.c_str(), path.c_str());
        disk.remove(fresh.c_str());
        return false;
    }
    disk.remove(old.c_str());
    return true;
}

}  // namespace tanrove
