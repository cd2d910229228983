// The debug text of how the strip table's rows became tracks.
#include "mix/fold_dump.hpp"

#include "base/formatted_text.hpp"

namespace tanrove {

std::string fold_text(const std::vector<StripTableEntry>& strip_table,
                      const std::vector<TrackPlan>& plans) {
    TextBuffer out;
    for (std::size_t i = 0; i < strip_table.size(); ++i) {
        const StripTableEntry& entry = strip_table[i];
        out.print("FOLD row %d type %02x w%d '%s'\n", static_cast<int>(i),
                  static_cast<unsigned>(entry.type), static_cast<int>(entry.width),
                  entry.name.c_str());
    }
    for (std::size_t i = 0; i < plans.size(); ++i) {
        out.print("FOLD outt %d name '%s' pt '%s'\n", static_cast<int>(i), plans[i].name.c_str(),
                  plans[i].session_name.c_str());
    }
    return out.text();
}

}  // namespace tanrove
