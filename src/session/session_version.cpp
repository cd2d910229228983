// The product record, block 0x0003: u8 at 9, counted product text at 10 ("Pro Tools", "Pro Tools
// HD", "Pro Tools Ultimate"), 16 bytes of numbers, counted version text.
// Sessions without one say it at their head: anywhere in the first 1024 bytes a counted text (u32
// count, 2 to 64 bytes) that begins with "Pro Tools" and is longer than that; the next counted text
// is the version. Folders stand there too, and one can be called "Pro Tools Sessions".
#include "session/session_version.hpp"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "base/text_lines.hpp"
#include "session/block_types.hpp"
#include "session/record_forms.hpp"

namespace tanrove {

namespace {

constexpr std::string_view product_prefix = "Pro Tools";
constexpr std::size_t head_bytes = 1024;
constexpr std::size_t count_width = 4;
constexpr std::size_t max_text_bytes = 64;
constexpr std::size_t min_text_bytes = 2;

constexpr std::size_t product_at = 10;
constexpr std::size_t numbers_bytes = 16;

constexpr std::int32_t last_light_year = 2020;
constexpr std::int32_t last_light_month = 10;

/// The number made of the leading digits, 0 if there are none; too large a one stays at the top.
std::int32_t capped_number(std::string_view text) {
    constexpr std::int32_t top = std::numeric_limits<std::int32_t>::max();
    std::int32_t number = 0;
    for (const char c : text) {
        if (!is_digit(c)) break;
        const std::int32_t digit = c - '0';
        if (number > (top - digit) / 10) return top;
        number = number * 10 + digit;
    }
    return number;
}

bool is_version_text(std::string_view text) {
    if (text.empty() || !is_digit(text.front())) return false;
    return std::all_of(text.begin(), text.end(), [](char c) { return is_digit(c) || c == '.'; });
}

SessionVersion version_of(std::string_view product, std::string_view version) {
    if (!is_version_text(version)) return {};
    return {
        .product = std::string(product),
        .version = std::string(version),
        .major = capped_number(version),
    };
}

std::optional<std::string_view> read_text(ByteView bytes, std::size_t at, std::size_t limit) {
    const auto text = readCountedText(bytes, at, max_text_bytes, limit);
    if (!text || text->size() < min_text_bytes || !is_session_text(*text)) return std::nullopt;
    return text;
}

/// Text by text through the head: what is no text, or not the one wanted, is passed over by byte.
SessionVersion scan_head(ByteView image) {
    const ByteView head = image.window(0, head_bytes);
    std::string_view product;
    for (std::size_t i = 0; i < head.size();) {
        const auto text = read_text(head, i, head.size());
        if (!product.empty() && text) return version_of(product, *text);
        const bool is_product = text && text->size() > product_prefix.size() &&
                                text->substr(0, product_prefix.size()) == product_prefix;
        if (is_product) product = *text;
        i += is_product ? count_width + text->size() : 1;
    }
    return {};
}

/// The last product record stands: sessions that were saved anew keep no older one behind it.
/// nullopt where there is none.
std::optional<SessionVersion> read_product_record(const BlockIndex& index) {
    const auto records = index.of_type(block_type::product).all();
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        const std::size_t at = record->at + product_at;
        const auto product = read_text(index.image(), at, record->end());
        if (!product || product->substr(0, product_prefix.size()) != product_prefix) continue;
        const std::size_t version_at = at + count_width + product->size() + numbers_bytes;
        return version_of(*product,
                          read_text(index.image(), version_at, record->end()).value_or(""));
    }
    return std::nullopt;
}

}  // namespace

SessionVersion scanSessionVersion(const BlockIndex& index) {
    const auto record = read_product_record(index);
    return record ? *record : scan_head(index.image());
}

bool saved_after_2020_10(const SessionVersion& version) {
    if (version.version.empty() || version.major > last_light_year) return true;
    if (version.major < last_light_year) return false;
    const auto point = version.version.find('.');
    if (point == std::string::npos) return false;
    return capped_number(std::string_view(version.version).substr(point + 1)) > last_light_month;
}

}  // namespace tanrove
