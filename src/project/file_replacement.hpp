// Puts a new text in the place of a finished file, all or nothing: whatever fails on the way, the
// file is there with its old bytes, and nothing else is left beside it.
#pragma once

#include <cstdio>
#include <functional>
#include <optional>
#include <string>

namespace tanrove {

/// The steps of the disk, so that a test can make each of them fail.
struct DiskSteps {
    std::function<std::FILE*(const char* path, const char* mode)> open;
    std::function<int(std::FILE* stream)> close;
    std::function<int(const char* from, const char* to)> rename;
    std::function<int(const char* path)> remove;
};

/// The steps of this machine's disk.
DiskSteps real_disk();

/// What a pass puts behind the project's path for the file that it writes, and for the file that it
/// replaces until that has gone well.
struct ReplacementSuffixes {
    const char* temporary = "";
    const char* old = "";
};

/// The whole file; nullopt if it cannot be opened or a read fails.
std::optional<std::string> read_whole_file(const std::string& path, const DiskSteps& disk);

/// True if `path` now holds `text`; false if it holds what it held.
bool replace_file(const std::string& path, const std::string& text,
                  const ReplacementSuffixes& suffixes, const DiskSteps& disk);

}  // namespace tanrove
