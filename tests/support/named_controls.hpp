// The controls of a plug-in as one reads them aloud.
#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tanrove::builder {

/// Names and values, from "Input Trim 3, EQ Low Gain -6".
inline std::vector<std::pair<std::string, double>> named_controls(const std::string& text) {
    std::vector<std::pair<std::string, double>> controls;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts >> std::ws, part, ',');) {
        const std::size_t gap = part.rfind(' ');
        controls.emplace_back(part.substr(0, gap), std::stod(part.substr(gap + 1)));
    }
    return controls;
}

}  // namespace tanrove::builder
