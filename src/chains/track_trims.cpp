// The gain stands in the Trim's own slot, and only what it cannot hold is counted here.
#include "chains/track_trims.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "base/formatted_text.hpp"
#include "standins/trim.hpp"
#include "standins/trim_polarity.hpp"

namespace tanrove {

namespace {

/// The records of all channels; of a leg the one that it plays.
std::vector<TrimChannel> channels_of(const TrackPlugin& plugin, const ChainTrack& track,
                                     ByteView image) {
    std::vector<TrimChannel> channels;
    for (const PluginInsert* insert : plugin.channels) {
        const auto read = read_trim(*insert, image);
        channels.insert(channels.end(), read.begin(), read.end());
    }
    if (track.leg && !channels.empty()) channels = {trim_channel(channels, *track.leg)};
    return channels;
}

/// A slot for what the track's switch cannot do, or must not: a frozen track plays a render that
/// is turned over already, and has it in the chain that unfreezing brings back.
std::optional<FxSlot> polarity_in_chain(const TrackPolarity& polarity, const ChainTrack& track,
                                        bool stand_ins, TrimTallies& tallies) {
    if (polarity.inverts_track) {
        return track.is_frozen ? std::optional(both_sides_slot(track.name)) : std::nullopt;
    }
    if (polarity.one_side == InvertedSide::none) return std::nullopt;
    if (!stand_ins) {
        ++tallies.one_sided_declined;
        return std::nullopt;
    }
    ++tallies.one_sided;
    return one_sided_slot(polarity.one_side, track.name);
}

}  // namespace

void count_trim_gain(const TrackPlugin& plugin, const ChainTrack& track, ByteView image,
                     TrimTallies& tallies) {
    const auto channels = channels_of(plugin, track, image);
    if (channels.empty()) return;
    if (track.width > stereo_width) {
        ++tallies.on_wide_tracks;
        return;
    }
    ++tallies.gains_carried;
    const TrimGain gain = trim_gain(channels.front().gain_word);
    if (gain.below_measured) {
        tallies.below_measured.push_back(formatted("%s: %.2f dB", track.name.c_str(), gain.db));
    }
    const auto plays_with_first = [&](const TrimChannel& channel) {
        return channel.gain_word == channels.front().gain_word;
    };
    const auto width = static_cast<std::size_t>(std::max(track.width, 1));
    const auto last =
        channels.begin() + static_cast<std::ptrdiff_t>(std::min(width, channels.size()));
    if (!std::all_of(channels.begin(), last, plays_with_first)) ++tallies.different_gains;
}

void add_trim_polarity(ChainPlan& chain, const ChainTrack& track,
                       const std::vector<TrackPlugin>& plugins, ByteView image, bool stand_ins,
                       ChainTallies& tallies) {
    TrimTallies& trims = tallies.trims;
    std::vector<TrackTrim> found;
    for (const TrackPlugin& plugin : plugins) {
        const PluginInsert& insert = *plugin.place.insert;
        if (!is_trim(insert)) continue;
        ++trims.instances;
        TrackTrim trim{.channels = channels_of(plugin, track, image),
                       .plays = !insert.bypassed && !insert.inactive};
        if (trim.channels.empty()) continue;
        found.push_back(std::move(trim));
    }
    const auto channel_count = static_cast<std::size_t>(std::max(track.width, 1));
    const TrackPolarity polarity = track_polarity(found, channel_count);
    trims.switched_off += polarity.switched_off;
    if (polarity.cancels_out) trims.cancelled.push_back(track.name);
    if (polarity.mixed_wide) trims.mixed_wide.push_back(track.name);
    if (track.is_master) {
        const bool inverts = polarity.inverts_track || polarity.one_side != InvertedSide::none;
        trims.without_switch += inverts ? 1 : 0;
        return;
    }
    chain.inverts_track = polarity.inverts_track && !track.is_frozen;
    trims.inverted_tracks += polarity.inverts_track ? 1 : 0;
    if (auto slot = polarity_in_chain(polarity, track, stand_ins, trims)) {
        chain.slots.insert(chain.slots.begin(), std::move(*slot));
    }
}

}  // namespace tanrove
