// What makes the writer's list grow. It stands apart from the header because gcc 12, where it sees
// a chain of small appends in one place, warns of writes past the end that do not happen.
#include "support/byte_writer.hpp"

namespace tanrove::builder {

ByteWriter& ByteWriter::number(std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i) {
        const std::size_t place = big_endian_ ? width - 1 - i : i;
        bytes_.push_back(static_cast<std::uint8_t>(place < 8 ? value >> (8 * place) : 0));
    }
    return *this;
}

ByteWriter& ByteWriter::zeros(std::size_t count) {
    bytes_.insert(bytes_.end(), count, 0);
    return *this;
}

ByteWriter& ByteWriter::raw(std::string_view text) {
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return *this;
}

ByteWriter& ByteWriter::raw(const Bytes& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
}

ByteWriter& ByteWriter::pad_to(std::size_t length) {
    if (bytes_.size() < length) bytes_.resize(length, 0);
    return *this;
}

}  // namespace tanrove::builder
