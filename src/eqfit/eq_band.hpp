// An EQ band as Pro Tools has it, and the sections of REAPER's EQ that stand for it.
#pragma once

#include <cstdint>
#include <vector>

namespace tanrove {

/// REAPER's numbers of the filters.
enum class SectionType : std::uint32_t {
    low_shelf = 0,
    high_shelf = 1,
    low_pass = 3,
    high_pass = 4,
    notch = 6,
    band_pass = 7,
    bell = 8,
};

struct EqSection {
    SectionType type = SectionType::bell;
    bool enabled = true;
    double frequency = 1000;  ///< Hz
    double gain = 0;          ///< dB; of shelves and bells
    double q = 1;
    double width = 0;     ///< as REAPER counts; 0: what frequency, gain and Q make it
    bool locked = false;  ///< stands for what REAPER's EQ lacks; the fit leaves it alone
};

enum class BandKind : std::int32_t { bell = 0, shelf = 1, pass = 2, notch = 3 };

struct EqBand {
    BandKind kind = BandKind::bell;
    bool enabled = true;
    double frequency = 1000;  ///< Hz
    double gain = 0;          ///< dB
    double q = 1;
    bool high = false;  ///< a high shelf, a high-pass
    int slope = 2;      ///< of a pass filter: 1 to 4, for 6, 12, 18 and 24 dB an octave

    std::vector<EqSection> sections;
    std::vector<EqSection> fitStart;  ///< the sections before the fit, which bound it
    double firstOrderFrequency = 0;   ///< Hz, of the part that a filter of its own plays; 0: none
    double worstDb = 0;               ///< what the fit leaves
    int extraSections = 0;            ///< added by the fit
    bool fitted = false;              ///< the sections as they were did not do
};

inline bool is_shelf(SectionType type) {
    return type == SectionType::low_shelf || type == SectionType::high_shelf;
}

inline bool is_pass(SectionType type) {
    return type == SectionType::low_pass || type == SectionType::high_pass;
}

/// Pass filters and notches have no gain.
inline bool has_gain(SectionType type) {
    return is_shelf(type) || type == SectionType::bell;
}

}  // namespace tanrove
