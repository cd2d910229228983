// The one way to touch bytes that somebody else wrote. Every reader of the session file, from the
// container to the last record, reads through ByteView and does no pointer arithmetic of its own.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

namespace tanrove {

/// A bounds-checked, read-only window on bytes we do not trust. Positions count from the window's
/// first byte. Numbers are little-endian; one that would pass the window's end reads as 0, so test
/// `holds` where 0 means something.
class ByteView {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    ByteView() = default;
    explicit ByteView(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    bool empty() const { return bytes_.empty(); }
    std::span<const std::uint8_t> span() const { return bytes_; }

    /// True if `count` bytes at `at` lie inside. Cannot overflow.
    bool holds(std::size_t at, std::size_t count) const {
        return at <= bytes_.size() && count <= bytes_.size() - at;
    }

    /// Unsigned number of `width` bytes, 1 to 8.
    std::uint64_t number(std::size_t at, std::size_t width) const {
        if (!holds(at, width)) return 0;
        std::uint64_t value = 0;
        for (std::size_t i = width; i-- > 0;) value = value << 8 | bytes_[at + i];
        return value;
    }

    std::uint8_t u8(std::size_t at) const {
        return at < bytes_.size() ? bytes_[at] : std::uint8_t{0};
    }
    std::uint16_t u16(std::size_t at) const { return whole<std::uint16_t>(at); }
    std::uint32_t u32(std::size_t at) const { return whole<std::uint32_t>(at); }
    std::uint64_t u64(std::size_t at) const { return whole<std::uint64_t>(at); }
    std::int16_t i16(std::size_t at) const { return static_cast<std::int16_t>(u16(at)); }
    std::int32_t i32(std::size_t at) const { return static_cast<std::int32_t>(u32(at)); }
    std::int64_t i64(std::size_t at) const { return static_cast<std::int64_t>(u64(at)); }
    float f32(std::size_t at) const { return std::bit_cast<float>(u32(at)); }
    double f64(std::size_t at) const { return std::bit_cast<double>(u64(at)); }

    /// The text of `length` bytes at `at`; nullopt if it passes the end.
    std::optional<std::string_view> text(std::size_t at, std::size_t length) const {
        if (!holds(at, length)) return std::nullopt;
        return chars().substr(at, length);
    }

    /// True if exactly these bytes stand at `at`.
    bool has(std::size_t at, std::string_view bytes) const {
        return holds(at, bytes.size()) && chars().substr(at, bytes.size()) == bytes;
    }

    /// First position of `byte` at or behind `from`; npos if there is none.
    std::size_t find(std::uint8_t byte, std::size_t from) const {
        if (from >= bytes_.size()) return npos;
        const void* hit = std::memchr(bytes_.data() + from, byte, bytes_.size() - from);
        if (hit == nullptr) return npos;
        return static_cast<std::size_t>(static_cast<const std::uint8_t*>(hit) - bytes_.data());
    }

    /// First position of these bytes at or behind `from`; npos if there is none.
    std::size_t find(std::string_view bytes, std::size_t from) const {
        const auto at = chars().find(bytes, from);
        return at == std::string_view::npos ? npos : at;
    }

    /// The window of `count` bytes at `at`, cut to what this window holds.
    ByteView window(std::size_t at, std::size_t count) const {
        if (at >= bytes_.size()) return ByteView();
        const auto rest = bytes_.size() - at;
        return ByteView(bytes_.subspan(at, count < rest ? count : rest));
    }

private:
    /// A number in one load where the machine keeps numbers as the session does: byte for byte it
    /// takes many times as long, and a session has millions of them.
    template <typename Number>
    Number whole(std::size_t at) const {
        if constexpr (std::endian::native == std::endian::little) {
            if (!holds(at, sizeof(Number))) return 0;
            Number value = 0;
            std::memcpy(&value, bytes_.data() + at, sizeof value);
            return value;
        } else {
            return static_cast<Number>(number(at, sizeof(Number)));
        }
    }

    std::string_view chars() const {
        if (bytes_.empty()) return {};
        return {reinterpret_cast<const char*>(bytes_.data()), bytes_.size()};
    }

    std::span<const std::uint8_t> bytes_;
};

}  // namespace tanrove
