// A chain as REAPER saves it, with one VST whose state a test composes.
#pragma once

#include <string>
#include <vector>

#include "base/base64.hpp"
#include "support/byte_writer.hpp"

namespace tanrove::builder {

/// The plug-in "VST: A (B)" in "a b.dll". Its state is these words and then these bytes, in a line
/// without padding.
inline std::string fx_chain_text(const std::vector<std::uint32_t>& words,
                                 const std::string& bytes = "", const std::string& ident = "1<2>") {
    ByteWriter state;
    for (const std::uint32_t word : words) state.u32(word);
    std::string line = base64(state.raw(bytes).bytes());
    while (line.ends_with('=')) line.pop_back();
    return "BYPASS 0 0 0\n<VST \"VST: A (B)\" \"a b.dll\" 0 '' " + ident + " \"\"\n  " + line +
           "\n>\n";
}

}  // namespace tanrove::builder
