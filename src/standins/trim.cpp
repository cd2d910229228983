// Settings of a Trim: a record a channel, each beginning with the plug-in's code:
//
//   48   big-endian i32, the gain
//   52   big-endian u32, 0x7fffffff where the polarity is inverted; an older record ends before it
#include "standins/trim.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "base/formatted_text.hpp"
#include "plugins/state_span.hpp"
#include "standins/js_slots.hpp"

namespace tanrove {

namespace {

constexpr std::string_view trim_code = "DigiTrim";
constexpr std::size_t gain_at = 48;
constexpr std::size_t polarity_at = 52;
constexpr std::size_t word_bytes = 4;
constexpr std::uint32_t inverted_word = 0x7fffffff;
constexpr std::size_t max_channels = 64;

struct GainNode {
    double word;
    double db;
};

// Measured on sessions with Trim at these gains.
constexpr GainNode gain_nodes[] = {
    {-161638556, -12}, {463923640, -6}, {778803940, -3},
    {1093684240, 0},   {1635278356, 3}, {2147483646, 6},
};
constexpr std::int32_t greatest_measured = 0x7ffffffd;

}  // namespace

bool is_trim(const PluginInsert& insert) {
    return insert.code == trim_code;
}

std::vector<TrimChannel> read_trim(const PluginInsert& insert, ByteView image) {
    const ByteView bytes = image.window(0, static_cast<std::size_t>(insert.chunkLimit));
    std::vector<TrimChannel> channels;
    std::size_t at = bytes.find(trim_code, static_cast<std::size_t>(insert.blockStart));
    while (at != ByteView::npos && channels.size() < max_channels) {
        if (bytes.holds(at, gain_at + word_bytes)) {
            TrimChannel channel;
            channel.gain_word = static_cast<std::int32_t>(big_endian_u32(bytes, at + gain_at));
            channel.inverted = big_endian_u32(bytes, at + polarity_at) == inverted_word;
            channels.push_back(channel);
        }
        at = bytes.find(trim_code, at + trim_code.size());
    }
    return channels;
}

TrimGain trim_gain(std::int32_t gain_word) {
    if (gain_word > greatest_measured) return {.db = 6.0};
    const double word = gain_word;
    std::size_t segment = 0;
    while (segment + 2 < std::size(gain_nodes) && word > gain_nodes[segment + 1].word) ++segment;
    const GainNode& low = gain_nodes[segment];
    const GainNode& high = gain_nodes[segment + 1];
    const double share = (word - low.word) / (high.word - low.word);
    return {.db = low.db + share * (high.db - low.db), .below_measured = word < gain_nodes[0].word};
}

const TrimChannel& trim_channel(const std::vector<TrimChannel>& channels, std::size_t channel) {
    return channels[std::min(channel, channels.size() - 1)];
}

bool carries_trim_gain(const PluginInsert& insert, ByteView image, const StandInTrack& track) {
    return is_trim(insert) && track.width <= stereo_width && !read_trim(insert, image).empty();
}

StandIn make_trim(StandInMaker& maker, const PluginInsert& insert, const StandInTrack& track) {
    const auto channels = read_trim(insert, maker.image());
    const double gain_db = trim_gain(trim_channel(channels, track.first_channel).gain_word).db;
    FxSlot slot = volume_adjustment("Trim (Volume Adjustment)", gain_db,
                                    static_cast<std::uint32_t>(insert.blockStart));
    slot.preset_name = formatted("Avid Trim %+.2f dB", gain_db);
    StandIn made;
    made.slots.push_back(std::move(slot));
    made.can_go_offline = false;
    return made;
}

}  // namespace tanrove
