// What a reader finds in an image of bytes, in one call, and as one text where it is many fields.
#pragma once

#include <sstream>

#include "session/strip_rows.hpp"
#include "support/byte_writer.hpp"

namespace tanrove {

template <typename Read>
auto over(const builder::Bytes& image, Read read) {
    return read(BlockIndex(ByteView(image)));
}

/// The same for a reader that takes the strip rows as well.
template <typename Read>
auto over_rows(const builder::Bytes& image, Read read) {
    const BlockIndex index{ByteView(image)};
    return read(index, readStripRows(index).rows);
}

/// The first `count` bytes.
inline builder::Bytes cut_to(const builder::Bytes& image, std::size_t count) {
    return {image.begin(), image.begin() + static_cast<std::ptrdiff_t>(count)};
}

/// One value as text: numbers to 15 digits, lists with commas, and "-" for what is not there.
template <typename Value>
std::string shown(const Value& value) {
    std::ostringstream text;
    text.precision(15);
    if constexpr (std::is_enum_v<Value>) {
        text << static_cast<int>(value);
    } else if constexpr (std::is_arithmetic_v<Value>) {
        text << +value;
    } else if constexpr (requires { value.has_value(); }) {
        text << (value ? shown(*value) : "-");
    } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
        text << value;
    } else {
        for (const auto& entry : value)
            text << (&entry == &value.front() ? "" : ",") << shown(entry);
    }
    return text.str();
}

/// Fields of a record as one text, with blanks between.
template <typename First, typename... Rest>
std::string fields(const First& first, const Rest&... rest) {
    return (shown(first) + ... + (" " + shown(rest)));
}

/// An image, and what is read of it as text.
struct Reads {
    const char* what;
    builder::Bytes image;
    std::string text;
};

}  // namespace tanrove
