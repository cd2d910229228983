// Paths as text, and the one question that is asked of the disk: can this file be read.
#include "base/paths.hpp"

#include <cstdio>
#include <filesystem>

#include "base/platform.hpp"

namespace tanrove {

namespace {

constexpr const char* slashes = "/\\";

}  // namespace

std::string folder_of(const std::string& path) {
    const auto slash = path.find_last_of(slashes);
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

std::string file_name_of(const std::string& path) {
    const auto slash = path.find_last_of(slashes);
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string::size_type extension_at(const std::string& path) {
    const auto dot = path.rfind('.');
    const auto slash = path.find_last_of(slashes);
    if (dot == std::string::npos) return dot;
    if (slash != std::string::npos && dot < slash) return std::string::npos;
    return dot;
}

std::string without_extension(const std::string& path) {
    return path.substr(0, extension_at(path));
}

bool is_regular_file(const std::string& path) {
    return std::filesystem::is_regular_file(status_of(path));
}

bool is_folder(const std::string& path) {
    return std::filesystem::is_directory(status_of(path));
}

std::optional<std::uintmax_t> file_size_of(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(native_path(path), error);
    if (error) return std::nullopt;
    return size;
}

bool are_one_file(const std::string& path, const std::string& other) {
    std::error_code error;
    return std::filesystem::equivalent(native_path(path), native_path(other), error) && !error;
}

bool can_be_read(const std::string& path) {
    std::FILE* file = is_regular_file(path) ? open_file(path.c_str(), "rb") : nullptr;
    if (file != nullptr) std::fclose(file);
    return file != nullptr;
}

std::string lower_cased(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

}  // namespace tanrove
