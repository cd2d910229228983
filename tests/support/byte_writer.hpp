// Composes session bytes: numbers, counted texts, blocks in blocks. The builder's own knowledge of
// the format stands here and in records/, apart from the readers': a wrong offset must not agree
// with itself.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tanrove::builder {

using Bytes = std::vector<std::uint8_t>;

/// Appends to a growing list of bytes; every call gives the writer back, so that a record reads as
/// one chain of fields.
class ByteWriter {
public:
    ByteWriter() = default;
    /// A writer of big-endian numbers and blocks, as old Macintosh sessions have them.
    explicit ByteWriter(bool big_endian) : big_endian_(big_endian) {}

    /// Number of `width` bytes, little-endian unless the writer is big-endian.
    ByteWriter& number(std::uint64_t value, std::size_t width);
    ByteWriter& u8(std::uint64_t value) { return number(value, 1); }
    ByteWriter& u16(std::uint64_t value) { return number(value, 2); }
    ByteWriter& u32(std::uint64_t value) { return number(value, 4); }
    ByteWriter& u64(std::uint64_t value) { return number(value, 8); }
    ByteWriter& i16(int value) { return number(static_cast<std::uint64_t>(value), 2); }
    ByteWriter& f32(float value) { return u32(std::bit_cast<std::uint32_t>(value)); }
    ByteWriter& f64(double value) { return u64(std::bit_cast<std::uint64_t>(value)); }

    /// A tick position as the session stores it: counted from 10^12, the top of its 8 bytes 0x40.
    ByteWriter& ticks(std::int64_t from_origin) {
        const auto stored = static_cast<std::uint64_t>(from_origin + 1000000000000LL);
        return number(stored, 7).u8(0x40);
    }

    ByteWriter& zeros(std::size_t count);
    ByteWriter& raw(std::string_view text);
    ByteWriter& raw(const Bytes& bytes);
    /// u32 count and the text behind it.
    ByteWriter& counted(std::string_view text) { return u32(text.size()).raw(text); }

    /// A block with this payload; the size word counts the content type.
    ByteWriter& block(std::uint16_t content_type, const Bytes& payload, std::uint16_t type = 1) {
        return u8('Z').u16(type).u32(payload.size() + 2).u16(content_type).raw(payload);
    }

    /// Zeros up to this length; a writer that is already longer stays as it is.
    ByteWriter& pad_to(std::size_t length);

    std::size_t size() const { return bytes_.size(); }
    const Bytes& bytes() const { return bytes_; }

private:
    Bytes bytes_;
    bool big_endian_ = false;
};

/// One block on its own.
inline Bytes block(std::uint16_t content_type, const Bytes& payload, std::uint16_t type = 1) {
    return ByteWriter().block(content_type, payload, type).bytes();
}

}  // namespace tanrove::builder
