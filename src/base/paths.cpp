// Paths as text, and the one question that is asked of the disk: can this file be read.
#include "base/paths.hpp"

#include <filesystem>
#include <fstream>

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

bool can_be_read(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) &&
           std::ifstream(path, std::ios::binary).is_open();
}

std::string lower_cased(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

}  // namespace tanrove
