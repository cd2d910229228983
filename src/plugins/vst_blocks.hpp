// The bytes around a VST's state in a project: the header with the plug-in's number and its pins,
// and the tail with its preset's name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tanrove {

/// What a header says. Of each pin the channels that it is connected to: bit 0 is the first.
struct VstHeader {
    std::uint32_t id = 0;
    std::vector<std::uint64_t> pins_in;
    std::vector<std::uint64_t> pins_out;
    std::size_t state_bytes = 0;
    std::uint32_t tail_word = 0;
    bool is_own_chunk = true;  ///< the state is the plug-in's own; else REAPER's list of parameters
};

/// What REAPER writes around the states of its own plug-ins.
constexpr std::uint32_t stock_tail_word = 0x100000;
constexpr std::string_view stock_block_tail{"\0\0\x10\0\0\0", 6};

std::string vst_header(const VstHeader& header);

/// The tail; a plug-in without a preset's name has one all the same.
std::string vst_tail(std::string_view preset_name);

/// The channel with this number alone; none for the 65th and further ones.
std::uint64_t channel_mask(std::size_t channel);

/// The number that an ident begins with, as far as it is one.
std::uint32_t ident_number(std::string_view ident);

/// The name and identity under which REAPER shows a plug-in that exists for Pro Tools only: made
/// from its code, so that it is the same in every project.
struct PlaceholderIdentity {
    std::uint32_t id = 0;
    std::string ident;
};

PlaceholderIdentity placeholder_identity(std::string_view code);

}  // namespace tanrove
