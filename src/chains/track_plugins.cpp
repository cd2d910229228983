// What stands in the same slot with the same plug-in, each of one channel, is one unlinked plug-in.
#include "chains/track_plugins.hpp"

#include <algorithm>
#include <cstdint>
#include <map>
#include <tuple>
#include <utility>

namespace tanrove {

namespace {

constexpr int least_unlinked_width = 2;

using SlotKey = std::tuple<std::string, std::uint32_t, std::uint64_t>;

SlotKey slot_key(const PluginInsert& insert) {
    return {insert_key(insert), insert.slotWord, insert.slot_end};
}

/// Keeps of an unlinked plug-in what one leg plays; of a linked one all.
void keep_leg(std::vector<ChainInsert>& channels, std::size_t leg) {
    const ChainInsert played = channels[std::min(leg, channels.size() - 1)];
    channels = {played};
}

}  // namespace

std::vector<TrackPlugin> track_plugins(const ChainTrack& track) {
    const bool can_be_unlinked = track.width >= least_unlinked_width || track.leg;
    std::vector<std::vector<ChainInsert>> found;
    std::map<SlotKey, std::size_t> met;
    for (const ChainInsert& place : track.inserts) {
        const bool is_mono_in_slot =
            place.insert->channels == 1 && place.insert->slot_end != no_slot_end;
        if (!can_be_unlinked || !is_mono_in_slot) {
            found.push_back({place});
            continue;
        }
        const auto [known, is_new] = met.emplace(slot_key(*place.insert), found.size());
        if (is_new) found.emplace_back();
        found[known->second].push_back(place);
    }
    std::vector<TrackPlugin> plugins;
    plugins.reserve(found.size());
    for (std::vector<ChainInsert>& channels : found) {
        if (track.leg) keep_leg(channels, *track.leg);
        TrackPlugin plugin;
        plugin.place = channels.front();
        plugin.slot = static_cast<int>(plugins.size()) + 1;
        for (const ChainInsert& channel : channels) plugin.channels.push_back(channel.insert);
        plugins.push_back(std::move(plugin));
    }
    return plugins;
}

}  // namespace tanrove
