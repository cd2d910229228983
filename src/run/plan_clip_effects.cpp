// A record is rebuilt once for each width of track; the items that share it share its slots, and
// each has a number of its own for their identifiers.
#include "run/plan_clip_effects.hpp"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "standins/channel_strip_slots.hpp"
#include "standins/read_channel_strip_settings.hpp"

namespace tanrove {

namespace {

class ClipEffectsPlanning {
public:
    ClipEffectsPlanning(ProjectPlan& project, const ClipEffects& effects,
                        ClipEffectsTallies& tallies)
        : project_(project), effects_(effects), tallies_(tallies) {}

    void plan(TrackPlan& track) {
        const int width = track.width_unknown ? stereo_width : track.channels;
        plan(track.clips, width);
        for (LanePlan& lane : track.lanes) plan(lane.clips, width);
    }

private:
    /// The slots of a record, and what is said of each item that has them.
    struct Rebuilt {
        std::size_t chain = 0;
        std::vector<std::string> notes;
        std::vector<std::string> carried;
    };

    void plan(std::vector<ClipItem>& clips, int width) {
        for (ClipItem& clip : clips) {
            if (!clip.is_placeholder) plan(clip, width);
            const std::string_view group = clip.grouping->group_name;
            if (effects_.record(group) != nullptr) groups_.insert(group);
        }
        tallies_.of_groups = static_cast<int>(groups_.size());
    }

    void plan(ClipItem& clip, int width) {
        const ClipEffectsRecord* record = effects_.record(clip.name);
        if (record == nullptr) return;
        if (inverts_clip(*record)) {
            clip.polarity_inverted = true;
            ++tallies_.inverted;
        }
        if (!changes_sound(*record)) return;
        const Rebuilt& rebuilt = rebuild(*record, width);
        clip.take_fx = TakeFx{.chain = rebuilt.chain, .number = next_number_++};
        ++tallies_.carried;
        for (const std::string& part : rebuilt.carried) ++tallies_.parts[part];
        for (const std::string& note : rebuilt.notes) ++tallies_.notes[note];
    }

    const Rebuilt& rebuild(const ClipEffectsRecord& record, int width) {
        const auto [place, is_new] = rebuilt_.try_emplace({&record, width});
        if (!is_new) return place->second;
        StandIn made = strip_stand_in(
            read_clip_effects(record),
            {.width = width, .rate_hz = static_cast<double>(project_.head.sample_rate)},
            SlotNumbers(0));
        place->second = {project_.take_chains.size(), std::move(made.notes),
                         std::move(made.carried)};
        project_.take_chains.push_back({.slots = std::move(made.slots)});
        return place->second;
    }

    ProjectPlan& project_;
    const ClipEffects& effects_;
    ClipEffectsTallies& tallies_;
    std::map<std::pair<const ClipEffectsRecord*, int>, Rebuilt> rebuilt_;
    std::set<std::string_view> groups_;
    std::uint32_t next_number_ = 0;
};

}  // namespace

void plan_clip_effects(ProjectPlan& project, const ClipEffects& effects,
                       ClipEffectsTallies& tallies) {
    ClipEffectsPlanning planning(project, effects, tallies);
    for (TrackPlan& track : project.mix.tracks) planning.plan(track);
}

}  // namespace tanrove
