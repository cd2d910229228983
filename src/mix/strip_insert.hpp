// What the mix knows of an insert: which strip holds it, and whether it plays.
#pragma once

#include <cstddef>
#include <string>

namespace tanrove {

/// A plug-in or a hardware insert on a strip.
struct StripInsert {
    std::size_t strip_row = 0;
    std::string code;   ///< a plug-in's maker and product; empty for hardware
    bool plays = true;  ///< neither bypassed nor inactive
};

}  // namespace tanrove
