// Gain by name: the clip's own entry first, then its group's on top.
#include "timeline/clip_gain_plan.hpp"

#include <algorithm>
#include <cstddef>
#include <set>

namespace tanrove {
namespace {

// Points of all clips together. A line is copied to every clip that plays it, so a small file
// could ask for any amount of them; no session of people comes near this.
constexpr std::size_t max_line_points = 4'000'000;

class GainGiver {
public:
    GainGiver(const ClipGains& gains, const ClipGroups* groups, ClipGainTallies& tallies)
        : gains_(gains), groups_(groups), tallies_(tallies) {}

    void give(ClipItem& clip) {
        give_own_gain(clip);
        if (clip.grouping->group_name.empty()) return;
        GroupGain met = add_group_gain(clip, clip.grouping->group_name);
        for (const std::uint32_t group : clip.grouping->inner_groups) {
            if (groups_ == nullptr) break;
            const GroupGain inner = add_group_gain(clip, groups_->clips[group].name);
            met = {met.is_fixed || inner.is_fixed, met.has_line || inner.has_line};
        }
        tallies_.in_groups_with_gain += met.is_fixed ? 1 : 0;
        tallies_.in_groups_with_line += met.has_line ? 1 : 0;
    }

private:
    // The session stores a fixed gain with every line: a line without one is not in use.
    void give_own_gain(ClipItem& clip) {
        const auto fixed = gains_.audio.fixed_db.find(clip.name);
        if (fixed == gains_.audio.fixed_db.end()) return;
        ClipGain& gain = clip.gain.edit();
        gain.clip_gain_db = gain.fixed_gain_db = fixed->second;
        clip.has_clip_gain = true;
        ++tallies_.clips;
        if (const ClipGainEntry* line = gains_.line(gains_.audio, clip.name)) {
            give_line(gain, *line);
        }
    }

    void give_line(ClipGain& gain, const ClipGainEntry& line) {
        if (line.size() > max_line_points - points_given_) {
            ++tallies_.lines_past_limit;
            return;
        }
        points_given_ += line.size();
        gain.gain_envelope.clear();
        gain.gain_envelope.reserve(line.size());
        for (const ClipGainPoint& point : line)
            gain.gain_envelope.push_back({point.position, point.gain_db});
        std::ranges::stable_sort(gain.gain_envelope, {}, &ClipGainLinePoint::position);
    }

    /// What a group has of its own.
    struct GroupGain {
        bool is_fixed = false;
        bool has_line = false;
    };

    GroupGain add_group_gain(ClipItem& clip, std::string_view group) {
        const auto fixed = gains_.groups.fixed_db.find(group);
        const bool has_gain = fixed != gains_.groups.fixed_db.end() && fixed->second != 0;
        if (has_gain) {
            if (!clip.has_clip_gain) {
                clip.has_clip_gain = true;
                clip.gain.edit().clip_gain_db = 0;
                ++tallies_.clips;
            }
            clip.gain.edit().clip_gain_db += fixed->second;
        }
        const bool has_line = gains_.line(gains_.groups, group) != nullptr;
        if (has_line && groups_met_.emplace(group).second) {
            tallies_.groups_with_line.emplace_back(group);
        }
        return {has_gain, has_line};
    }

    const ClipGains& gains_;
    const ClipGroups* groups_;
    ClipGainTallies& tallies_;
    std::size_t points_given_ = 0;
    std::set<std::string> groups_met_;
};

}  // namespace

void give_clip_gain(std::vector<TimelineTrack>& tracks, const ClipGains& gains,
                    const ClipGroups* groups, ClipGainTallies& tallies) {
    tallies.count_disagreements = gains.count_disagreements;
    if (gains.entries.empty()) return;
    GainGiver giver(gains, groups, tallies);
    for (TimelineTrack& track : tracks) {
        for (ClipItem& clip : track.clips) {
            if (!clip.is_placeholder) giver.give(clip);
        }
    }
}

}  // namespace tanrove
