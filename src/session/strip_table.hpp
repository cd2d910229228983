// The strip table: every strip in edit-window order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

/// Type code of a folder in the strip table.
constexpr std::uint16_t strip_table_folder_type = 11;

struct StripTableEntry {
    std::string name;
    std::uint16_t type = 0;
    std::uint8_t width = 0;  ///< channel count (long form) or width code (short forms), as stored
    bool width_is_code = false;  ///< short forms: 0 mono, 1 stereo
    bool flag = false;           ///< set on folders, else as stored
    std::uint64_t identity = 0;  ///< 0 if the record has none
};

/// What an entry says of the name that its strip has now.
struct StripTableRecord {
    std::string_view name;  ///< lies in the image; empty where it cannot be read
    std::uint16_t type = 0;
    std::uint64_t identity = 0;
};

/// Every entry block of the image, in order, whatever holds it: the second copy included.
std::vector<StripTableRecord> read_strip_table_records(const BlockIndex& index);

/// The table up to its second copy; empty where one record breaks its layout.
std::vector<StripTableEntry> readStripTable(const BlockIndex& index);

}  // namespace tanrove
