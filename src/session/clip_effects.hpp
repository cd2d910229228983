// Clip Effects: sets of named parameters, and the clips that use them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "session/block_index.hpp"

namespace tanrove {

struct ClipEffectsParameter {
    std::string name;
    std::uint32_t value = 0;  ///< the bits of an f32, 0 to 1
};

struct ClipEffectsRecord {
    std::uint64_t identity = 0;
    std::vector<ClipEffectsParameter> parameters;
};

struct ClipEffects {
    std::vector<ClipEffectsRecord> records;
    std::map<std::string, std::size_t, std::less<>> record_of_clip;

    /// The parameters of the clip of that name; nullptr if it has none.
    const ClipEffectsRecord* record(std::string_view clip) const {
        const auto found = record_of_clip.find(clip);
        return found == record_of_clip.end() ? nullptr : &records[found->second];
    }
};

ClipEffects readClipEffects(const BlockIndex& index);

}  // namespace tanrove
