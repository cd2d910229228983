// Most store a list of values, as many as they have controls; the channel strip a map by name.
#include "plugins/avid_stand_ins.hpp"

#include <algorithm>

#include "plugins/elck_chunks.hpp"

namespace tanrove {

namespace {

struct ListedProduct {
    std::string_view key;
    std::string_view product;
    std::size_t control_count;
};

constexpr ListedProduct listed_products[] = {
    {"Digi47e3", "EQ3 7-Band", 38},
    {"Digi1be3", "EQ3 1-Band", 8},
    {"Digidn3c", "Dyn3 Compressor/Limiter", 14},
    {"Digidn3e", "Dyn3 Expander/Gate", 15},
};

constexpr std::string_view channel_strip_key = "AVIDChSt";
constexpr const char* channel_strip_controls[] = {"Cmp Ratio", "EQ Low Gain", "Filter 2 Type",
                                                  "Sc Source"};

bool is_channel_strip(const PluginInsert& insert, ByteView image) {
    const auto map = read_elck_map(image, static_cast<std::size_t>(insert.blockStart),
                                   static_cast<std::size_t>(insert.chunkLimit));
    return std::ranges::all_of(channel_strip_controls,
                               [&](const char* control) { return map.contains(control); });
}

}  // namespace

std::optional<std::string_view> stand_in_product(const PluginInsert& insert, ByteView image) {
    const std::string key = insert_key(insert);
    if (key == channel_strip_key && is_channel_strip(insert, image)) return "Channel Strip";
    if (insert.containerKind != ContainerKind::control_values) return std::nullopt;
    for (const ListedProduct& listed : listed_products) {
        if (key == listed.key && insert.controlValues.size() == listed.control_count) {
            return listed.product;
        }
    }
    return std::nullopt;
}

}  // namespace tanrove
