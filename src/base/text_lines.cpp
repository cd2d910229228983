// Pipes and devices given for a file are left alone: some of them would be waited for.
#include "base/text_lines.hpp"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "base/paths.hpp"
#include "base/platform.hpp"

namespace tanrove {

namespace {

constexpr std::size_t read_block_bytes = std::size_t{64} * 1024;

}  // namespace

std::optional<std::string> read_text_file(const std::string& path, std::size_t most_bytes) {
    if (!is_regular_file(path)) return std::nullopt;
    std::FILE* stream = open_file(path.c_str(), "rb");
    if (stream == nullptr) return std::nullopt;
    std::string text;
    std::size_t count = 1;
    while (count > 0 && text.size() < most_bytes) {
        const std::size_t at = text.size();
        const std::size_t wanted = std::min(read_block_bytes, most_bytes - at);
        text.resize(at + wanted);
        count = std::fread(text.data() + at, 1, wanted, stream);
        text.resize(at + count);
    }
    const bool failed = std::ferror(stream) != 0;
    std::fclose(stream);
    if (failed) return std::nullopt;
    return text;
}

std::optional<std::string_view> LineReader::next() {
    if (left_.empty()) return std::nullopt;
    const std::string_view piece = left_.substr(0, most_line_bytes_);
    const std::size_t end = piece.find('\n');
    std::string_view line = piece.substr(0, end);
    left_.remove_prefix(end == std::string_view::npos ? piece.size() : end + 1);
    line = line.substr(0, line.find('\0'));
    while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

std::string_view trimmed(std::string_view text) {
    const auto is_blank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view take_field(std::string_view& rest, char mark) {
    const std::size_t end = rest.find(mark);
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return field;
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_hex_digit(char c) {
    return is_digit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool is_number(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, is_digit);
}

std::uint32_t leading_number(std::string_view text) {
    std::uint32_t number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    return end.ec == std::errc() ? number : 0;
}

}  // namespace tanrove
