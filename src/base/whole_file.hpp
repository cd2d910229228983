// Files that are on the disk whole or not at all. What is written goes under a temporary name
// beside its target and takes the target's name by one rename when all of it is there: until then
// the target holds what it held, whatever fails on the way. A temporary file goes with its object,
// and with the process where a signal ends it.
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
    /// Takes the place of what has the new name already.
    std::function<int(const char* from, const char* to)> rename;
    std::function<int(const char* path)> remove;
};

/// The steps of this machine's disk.
DiskSteps real_disk();

/// Behind the name of the file that is being written.
constexpr const char* temporary_suffix = ".tmp";

/// The whole file; nullopt if it cannot be opened or a read fails.
std::optional<std::string> read_whole_file(const std::string& path, const DiskSteps& disk);

/// Puts `text` in the place of what `path` holds. False if that failed: `path` is what it was. A
/// device or a pipe is written straight, which a failure cannot take back.
[[nodiscard]] bool write_whole_file(const std::string& path, const std::string& text,
                                    const DiskSteps& disk = real_disk(),
                                    const char* suffix = temporary_suffix);

/// A file that nobody had, removed with the object unless it was given a name to stay.
class TemporaryFile {
public:
    /// Makes the file whose name has `suffix` behind that of `target`; where that is taken,
    /// with the first free number from 2 on. A name that gets too long loses the end of the
    /// target's.
    TemporaryFile(const std::string& target, const char* suffix, DiskSteps disk);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }

    /// Binary, for writing and reading; null if no file could be made, and once it is closed.
    std::FILE* stream() const { return stream_; }

    /// False if not all that was written has reached the file.
    [[nodiscard]] bool close();

    /// Gives the closed file this name for good. False: it keeps its own, and what has the name
    /// keeps that.
    [[nodiscard]] bool rename_to(const std::string& target);

private:
    DiskSteps disk_;
    std::string path_;  ///< empty: there is no file, or it is temporary no more
    std::FILE* stream_ = nullptr;
};

/// A file on its way to its target. Written straight where that is a device or a pipe: nothing
/// stands behind those that could be kept.
class WholeFile {
public:
    explicit WholeFile(const std::string& target, DiskSteps disk = real_disk(),
                       const char* suffix = temporary_suffix);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// Binary; null if nothing can be written there, and once it is closed.
    std::FILE* stream() const;

    /// False if not all that was written has reached the disk.
    [[nodiscard]] bool close();

    /// The closed file on its temporary name, where passes can read and replace it; null where it
    /// is written straight.
    const std::string* temporary_path() const;

    /// Makes it the target. False if that failed: the target is what it was.
    [[nodiscard]] bool put_in_place();

private:
    DiskSteps disk_;
    std::string target_;  ///< where links lead to
    std::optional<TemporaryFile> temporary_;
    std::FILE* straight_ = nullptr;
};

/// Removes every temporary file of this process. A signal handler may call it.
void remove_temporary_files() noexcept;

}  // namespace tanrove
