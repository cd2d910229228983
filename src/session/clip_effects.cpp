// Parameter sets 0x4400: u32 number of records at 9, the records from 13. Offsets from a record:
//   0       u64 identity
//   12      u32 bytes of the parameter area, which begins at 16
// Parameter, found in the area by its first bytes:
//   0       "px", 1, 0
//   4       u32 bytes behind this word, the name and 12 more
//   8       u32 count, 1 to 63, text of the name; then the u32 value
//
// A region 0x2629 whose clip has a set holds a 0x4403; the set's identity, 0 for none, is the 8
// bytes in front of that block.
#include "session/clip_effects.hpp"

#include <algorithm>
#include <optional>
#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::uint16_t set_type = 0x4400;
constexpr std::uint32_t largest_empty_set = 7;
constexpr std::size_t record_count_at = 9;
constexpr std::size_t first_record_at = 13;
constexpr std::size_t area_bytes_at = 12;
constexpr std::size_t area_at = 16;

constexpr std::string_view parameter_marker("px\x01\x00", 4);
constexpr std::size_t total_at = 4;
constexpr std::size_t name_count_at = 8;
constexpr std::size_t name_at = 12;
constexpr std::size_t value_width = 4;
constexpr std::size_t max_parameter_name = 63;

constexpr std::uint32_t least_region = 24;
constexpr std::uint16_t reference_type = 0x4403;
constexpr std::size_t identity_width = 8;
constexpr std::size_t clip_name_count_at = 18;
constexpr std::size_t max_clip_name = 400;

std::optional<ClipEffectsParameter> read_parameter(ByteView area, std::size_t at) {
    const auto name = readCountedText(area, at + name_count_at, max_parameter_name, area.size());
    if (!name || name->empty()) return std::nullopt;
    if (area.u32(at + total_at) != name->size() + name_at) return std::nullopt;
    const std::size_t value_at = at + name_at + name->size();
    if (!area.holds(value_at, value_width)) return std::nullopt;
    return ClipEffectsParameter{std::string(*name), area.u32(value_at)};
}

std::vector<ClipEffectsParameter> read_parameters(ByteView area) {
    std::vector<ClipEffectsParameter> parameters;
    std::size_t at = area.find(parameter_marker, 0);
    while (at != ByteView::npos) {
        std::size_t next = at + 1;
        if (auto parameter = read_parameter(area, at)) {
            next = at + name_at + parameter->name.size() + value_width;
            parameters.push_back(std::move(*parameter));
        }
        at = area.find(parameter_marker, next);
    }
    return parameters;
}

/// Adds the records of one set. `bytes_left` is what sets that do not overlap can still hold.
void read_set(ByteView image, const Block& set, std::size_t& bytes_left,
              std::vector<ClipEffectsRecord>& records) {
    const std::uint32_t count = image.u32(set.at + record_count_at);
    std::size_t at = set.at + first_record_at;
    for (std::uint32_t i = 0; i < count && at + area_at <= set.end(); ++i) {
        const std::size_t bytes = image.u32(at + area_bytes_at);
        if (bytes > set.end() - at - area_at || area_at + bytes > bytes_left) return;
        bytes_left -= area_at + bytes;
        auto parameters = read_parameters(image.window(at + area_at, bytes));
        if (!parameters.empty()) records.push_back({image.u64(at), std::move(parameters)});
        at += area_at + bytes;
    }
}

/// The identity that a region refers to; 0 for none.
std::uint64_t reference_of(const BlockIndex& index, const Block& region) {
    const Block* reference = index.first_child(region, reference_type);
    if (reference == nullptr || reference->at < region.payload() + identity_width) return 0;
    return index.image().u64(reference->at - identity_width);
}

}  // namespace

ClipEffects readClipEffects(const BlockIndex& index) {
    const ByteView image = index.image();
    ClipEffects effects;
    std::size_t bytes_left = image.size();
    for (const Block& set : index.of_type(set_type).all()) {
        if (set.size > largest_empty_set) read_set(image, set, bytes_left, effects.records);
    }
    std::map<std::uint64_t, std::size_t> by_identity;
    for (std::size_t i = 0; i < effects.records.size(); ++i) {
        by_identity[effects.records[i].identity] = i;
    }
    if (by_identity.empty()) return effects;
    for (const Block& region : index.of_type(block_type::audio_region).all()) {
        const Block* child = index.at(region.payload());
        if (region.size < least_region || child == nullptr) continue;
        if (child->content_type != block_type::clip) continue;
        const auto name =
            readCountedText(image, region.at + clip_name_count_at, max_clip_name, region.end());
        const std::uint64_t identity = reference_of(index, region);
        const auto record = by_identity.find(identity);
        if (!name || name->empty() || identity == 0 || record == by_identity.end()) continue;
        effects.record_of_clip[std::string(*name)] = record->second;
    }
    return effects;
}

}  // namespace tanrove
