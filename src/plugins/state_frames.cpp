// The layouts of the frames, as the hosts of these builds wrote them.
#include "plugins/state_frames.hpp"

#include <bit>

namespace tanrove {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t component_flag = 1;
constexpr std::size_t controller_flag = 0;

/// What the framework appends to a plain state: its own name around the bypass switch's value.
constexpr std::string_view private_data =
    "JUCEPrivateData\0\1\1Bypass\0\1\1\3\0\x1d\0\0\0\0\0\0\0JUCEPrivateData"sv;
static_assert(private_data.size() == 52);
constexpr std::string_view private_name = private_data.substr(0, 15);
constexpr std::size_t private_length_bytes = 8;

// The bank's parts beside the document: its own gap, the gap behind the document, and what each of
// the two lengths counts.
constexpr std::size_t bank_gap_bytes = 128;
constexpr std::size_t document_gap_bytes = 16;
constexpr std::size_t bank_bytes = 191;         // behind the bank's own length
constexpr std::size_t chunk_bytes_around = 39;  // behind the chunk's

}  // namespace

StateBytes& StateBytes::little(std::size_t word) {
    for (int shift = 0; shift < 32; shift += 8) bytes_ += static_cast<char>(word >> shift & 0xff);
    return *this;
}

StateBytes& StateBytes::big(std::size_t word) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes_ += static_cast<char>(word >> shift & 0xff);
    return *this;
}

StateBytes& StateBytes::real(float value) {
    return little(std::bit_cast<std::uint32_t>(value));
}

StateBytes& StateBytes::wide_real(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return little(static_cast<std::uint32_t>(bits)).little(static_cast<std::uint32_t>(bits >> 32));
}

StateBytes& StateBytes::text(std::string_view bytes) {
    bytes_ += bytes;
    return *this;
}

StateBytes& StateBytes::zeros(std::size_t count) {
    bytes_.append(count, '\0');
    return *this;
}

std::uint32_t little_word(std::string_view bytes, std::size_t at) {
    if (at > bytes.size() || bytes.size() - at < 4) return 0;
    std::uint32_t word = 0;
    for (std::size_t i = 4; i-- > 0;) word = word << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    return word;
}

std::string upper_hexadecimal(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        text += digits[byte >> 4];
        text += digits[byte & 0xf];
    }
    return text;
}

std::string one_block_frame(std::string_view component) {
    return two_block_frame(component, {});
}

std::string two_block_frame(std::string_view component, std::string_view controller) {
    StateBytes frame;
    frame.little(component.size()).little(component_flag).text(component);
    frame.little(controller.size()).little(controller_flag).text(controller);
    return frame.take();
}

std::string juce_one_frame(std::string_view state) {
    StateBytes component;
    component.text(state).zeros(private_length_bytes).text(private_data);
    return one_block_frame(component.take());
}

std::string juce_two_frame(std::string_view tag, std::string_view document,
                           std::string_view plugin_id, std::uint32_t version) {
    const std::size_t n = document.size();
    StateBytes component;
    component.text("VstW").big(8).big(1).big(0);
    component.text("CcnK").big(n + bank_bytes).text("FBCh").big(2);
    component.text(plugin_id).big(version).big(0).zeros(bank_gap_bytes);
    component.big(n + chunk_bytes_around).text(tag).little(n - 1).text(document);
    component.zeros(document_gap_bytes).text(private_name);
    return one_block_frame(component.take());
}

}  // namespace tanrove
