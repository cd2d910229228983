// Temporary files, the list of them that a signal handler reads, and the rename at the end.
#include "base/whole_file.hpp"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <utility>

#include "base/platform.hpp"

namespace tanrove {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t read_block_bytes = std::size_t{64} * 1024;

// More temporary files than a run has at a time; one past them is not removed by a signal.
constexpr std::size_t max_listed_files = 16;

constexpr int max_taken_names = 99;

// What file systems take, and what number and suffixes need of it.
constexpr std::size_t max_name_bytes = 255;
constexpr std::size_t number_bytes = 2;

// A chain of links past this is a circle.
constexpr int max_links = 40;

std::array<std::atomic<const char*>, max_listed_files> listed_files = {};
static_assert(std::atomic<const char*>::is_always_lock_free, "a signal handler reads them");

void replace_listed(const char* former, const char* path) {
    for (auto& listed : listed_files) {
        if (listed != former) continue;
        listed = path;
        return;
    }
}

/// The path with the suffix, cut at a character so that its name leaves room for a number.
std::string temporary_name(const std::string& path, const std::string& suffix) {
    const std::size_t name_bytes = path_text(native_path(path).filename()).size();
    const std::size_t name_at = path.size() - std::min(name_bytes, path.size());
    std::size_t end = name_at + max_name_bytes - number_bytes - suffix.size();
    if (path.size() <= end) return path + suffix;
    while (end > name_at && (static_cast<unsigned char>(path[end]) & 0xC0U) == 0x80) --end;
    return path.substr(0, end) + suffix;
}

/// Where the links that begin at `path` lead, be there a file or not.
fs::path end_of_links(fs::path path) {
    std::error_code error;
    for (int i = 0; i < max_links && fs::is_symlink(path, error); ++i) {
        const fs::path next = fs::read_symlink(path, error);
        if (error) break;
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

/// True if the file may be written, without a change to it.
bool may_be_written(const std::string& path, const DiskSteps& disk) {
    std::FILE* stream = disk.open(path.c_str(), "ab");
    if (stream != nullptr) disk.close(stream);
    return stream != nullptr;
}

}  // namespace

DiskSteps real_disk() {
    const auto rename = [](const char* from, const char* to) {
        std::error_code error;
        fs::rename(native_path(from), native_path(to), error);
        return error ? -1 : 0;
    };
    return {.open = open_file,
            .close = [](std::FILE* stream) { return std::fclose(stream); },
            .rename = rename,
            .remove = remove_file};
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

bool write_whole_file(const std::string& path, const std::string& text, const DiskSteps& disk,
                      const char* suffix) {
    WholeFile file(path, disk, suffix);
    if (file.stream() == nullptr) return false;
    const bool is_whole = std::fwrite(text.data(), 1, text.size(), file.stream()) == text.size();
    return file.close() && is_whole && file.put_in_place();
}

TemporaryFile::TemporaryFile(const std::string& target, const char* suffix, DiskSteps disk)
    : disk_(std::move(disk)) {
    const std::string wanted = temporary_name(target, suffix);
    // The file and its place in the list change as one.
    const SignalsHeld held;
    for (int number = 1; number <= max_taken_names && stream_ == nullptr; ++number) {
        path_ = number == 1 ? wanted : wanted + std::to_string(number);
        errno = 0;
        stream_ = disk_.open(path_.c_str(), "w+bx");
        if (stream_ == nullptr && errno != EEXIST) break;
    }
    if (stream_ == nullptr) path_.clear();
    if (stream_ != nullptr) replace_listed(nullptr, path_.c_str());
}

TemporaryFile::~TemporaryFile() {
    const SignalsHeld held;
    if (stream_ != nullptr) disk_.close(stream_);
    if (path_.empty()) return;
    disk_.remove(path_.c_str());
    replace_listed(path_.c_str(), nullptr);
}

bool TemporaryFile::close() {
    if (stream_ == nullptr) return false;
    const bool failed = std::ferror(stream_) != 0;
    return disk_.close(std::exchange(stream_, nullptr)) == 0 && !failed;
}

bool TemporaryFile::rename_to(const std::string& target) {
    const SignalsHeld held;
    if (path_.empty() || disk_.rename(path_.c_str(), target.c_str()) != 0) return false;
    replace_listed(path_.c_str(), nullptr);
    path_.clear();
    return true;
}

WholeFile::WholeFile(const std::string& target, DiskSteps disk, const char* suffix)
    : disk_(std::move(disk)) {
    std::error_code error;
    const fs::file_status former = status_of(target);
    if (former.type() == fs::file_type::none) return;
    if (fs::exists(former) && !fs::is_regular_file(former)) {
        // Links to an open pipe (/dev/stdout) have no path to follow.
        straight_ = disk_.open(target.c_str(), "wb");
        return;
    }
    target_ = path_text(end_of_links(native_path(target)));
    if (fs::exists(former) && !may_be_written(target_, disk_)) return;
    temporary_.emplace(target_, suffix, disk_);
    if (fs::exists(former))
        fs::permissions(native_path(temporary_->path()), former.permissions(), error);
}

WholeFile::~WholeFile() {
    if (straight_ != nullptr) disk_.close(straight_);
}

std::FILE* WholeFile::stream() const {
    return temporary_ ? temporary_->stream() : straight_;
}

bool WholeFile::close() {
    if (temporary_) return temporary_->close();
    if (straight_ == nullptr) return false;
    const bool failed = std::ferror(straight_) != 0;
    return disk_.close(std::exchange(straight_, nullptr)) == 0 && !failed;
}

const std::string* WholeFile::temporary_path() const {
    return temporary_ ? &temporary_->path() : nullptr;
}

bool WholeFile::put_in_place() {
    return !temporary_ || temporary_->rename_to(target_);
}

void remove_temporary_files() noexcept {
    for (const auto& listed : listed_files) {
        const char* path = listed;
        if (path != nullptr) remove_file(path);
    }
}

}  // namespace tanrove
