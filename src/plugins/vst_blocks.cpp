// A header, all u32: the number, a magic word, the pins in and of each two words of channels, the
// pins out likewise, the state's length, 1 or 0 as the magic says, and a word of the format.
#include "plugins/vst_blocks.hpp"

#include "plugins/state_frames.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t own_chunk_magic = 0xfeed5eee;
constexpr std::uint32_t parameter_list_magic = 0xfeed5eef;

constexpr std::uint32_t hash_basis = 0x811c9dc5;
constexpr std::uint32_t hash_prime = 16777619;
constexpr std::size_t class_digits = 32;
constexpr std::size_t max_code_bytes = 16;

void add_pins(StateBytes& bytes, const std::vector<std::uint64_t>& pins) {
    bytes.little(pins.size());
    for (const std::uint64_t channels : pins) {
        bytes.little(static_cast<std::uint32_t>(channels));
        bytes.little(static_cast<std::uint32_t>(channels >> 32));
    }
}

std::uint32_t hash_of(std::string_view text) {
    std::uint32_t hash = hash_basis;
    for (const char c : text) hash = (hash ^ static_cast<std::uint8_t>(c)) * hash_prime;
    return hash;
}

}  // namespace

std::string vst_header(const VstHeader& header) {
    StateBytes bytes;
    bytes.little(header.id);
    bytes.little(header.is_own_chunk ? own_chunk_magic : parameter_list_magic);
    add_pins(bytes, header.pins_in);
    add_pins(bytes, header.pins_out);
    bytes.little(header.state_bytes).little(header.is_own_chunk ? 1 : 0).little(header.tail_word);
    return bytes.take();
}

std::string vst_tail(std::string_view preset_name) {
    return StateBytes().zeros(1).text(preset_name).zeros(1).little(0).take();
}

std::uint64_t channel_mask(std::size_t channel) {
    constexpr std::size_t mask_bits = 64;
    return channel < mask_bits ? std::uint64_t{1} << channel : 0;
}

std::uint32_t ident_number(std::string_view ident) {
    std::uint32_t number = 0;
    for (const char c : ident) {
        if (c < '0' || c > '9') break;
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return number;
}

PlaceholderIdentity placeholder_identity(std::string_view code) {
    std::uint32_t random = hash_of(code);
    PlaceholderIdentity identity;
    identity.id = random | 1;
    std::string digits = upper_hexadecimal(code.substr(0, max_code_bytes));
    while (digits.size() < class_digits) {
        random = random * 1103515245 + 12345;
        digits += "0123456789ABCDEF"[random >> 28];
    }
    identity.ident = std::to_string(identity.id) + "{" + digits + "}";
    return identity;
}

}  // namespace tanrove
