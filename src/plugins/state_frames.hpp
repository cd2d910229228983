// The frames in which REAPER keeps a plug-in's settings, and the words that they are made of. A
// VST3 build has a component's and a controller's block, each with its length in front; some
// frameworks wrap the bytes of their VST2 build once more inside the component's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tanrove {

/// The bytes of a state, put together word by word.
class StateBytes {
public:
    StateBytes& little(std::size_t word);  ///< u32, least significant byte first
    StateBytes& big(std::size_t word);     ///< u32, most significant byte first
    StateBytes& real(float value);         ///< 32 bits, least significant byte first
    StateBytes& wide_real(double value);   ///< 64 bits, likewise
    StateBytes& text(std::string_view bytes);
    StateBytes& zeros(std::size_t count);

    std::size_t size() const { return bytes_.size(); }
    std::string take() { return std::move(bytes_); }

private:
    std::string bytes_;
};

/// The u32 at `at`, least significant byte first; 0 where it passes the end.
std::uint32_t little_word(std::string_view bytes, std::size_t at);

/// Two digits a byte.
std::string upper_hexadecimal(std::string_view bytes);

/// A component's block and no controller's.
std::string one_block_frame(std::string_view component);

/// A component's block and a controller's.
std::string two_block_frame(std::string_view component, std::string_view controller);

/// A plain state as the component of a VST3 build whose framework appends data of its own. On
/// loading, the framework takes that data off again, with its length and eight bytes of its name.
std::string juce_one_frame(std::string_view state);

/// A document with its four-character tag, as the bank of a VST2 build inside a VST3 wrapper.
/// `plugin_id` has four characters; `version` is the one that the bank states.
std::string juce_two_frame(std::string_view tag, std::string_view document,
                           std::string_view plugin_id, std::uint32_t version);

}  // namespace tanrove
