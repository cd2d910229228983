// How many channels a strip has, by its name.
#include "mix/strip_widths.hpp"

namespace tanrove {

namespace {

/// Channels by the width code of older sessions; 0 for a code whose channels are not known.
int channels_of_code(std::uint8_t code) {
    switch (code) {
        case 0:
            return 1;
        case 1:
            return 2;
        case 2:
            return 3;  // LCR
        case 3:
            return 4;  // Quad
        case 5:
        case 6:
            return code;  // 5.0, 5.1
        default:
            return 0;
    }
}

}  // namespace

StripWidths::StripWidths(const std::vector<TrackTableRow>& track_rows,
                         const std::vector<StripTableEntry>& strip_table) {
    for (std::size_t first = 0; first < track_rows.size();) {
        std::size_t end = first + 1;
        while (end < track_rows.size() && track_rows[end].name == track_rows[first].name) ++end;
        channels_.try_emplace(track_rows[first].name, static_cast<int>(end - first));
        first = end;
    }
    for (const auto& entry : strip_table) {
        const int width = entry.width_is_code ? channels_of_code(entry.width) : entry.width;
        channels_.try_emplace(entry.name, width);
    }
}

int StripWidths::channels_of(std::string_view name) const {
    const auto found = channels_.find(name);
    return found == channels_.end() ? 0 : found->second;
}

}  // namespace tanrove
