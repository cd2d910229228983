// REAPER plays a soloed track through its mute, Pro Tools does not: a track that is both keeps its
// mute and loses its solo. Only where its mute moves, and it will sound in its time, the solo
// stays. A soloed VCA master solos its members, and its own track plays nothing: soloed, it would
// silence all others.
#include "mix/mute_and_solo.hpp"

#include <algorithm>
#include <set>
#include <string_view>

namespace tanrove {

namespace {

bool mute_moves(const TrackPlan& plan) {
    return std::any_of(plan.envelopes.begin(), plan.envelopes.end(), [](const auto& envelope) {
        return envelope.kind == EnvelopeKind::mute && envelope.active;
    });
}

/// The tracks that soloed VCA masters solo. One that is a member of another hands its solo on.
std::set<std::string_view> soloed_by_vca(const TrackGroups& groups, const TrackStrips& strips) {
    std::vector<const std::vector<std::string>*> soloed;
    for (const auto& [master, members] : groups.members_of_vca) {
        const TrackDisplay* display = strips.display_named(master);
        if (display != nullptr && display->soloed == true) soloed.push_back(&members);
    }
    std::set<std::string_view> names;
    while (!soloed.empty()) {
        const auto& members = *soloed.back();
        soloed.pop_back();
        for (const std::string& member : members) {
            const auto vca = groups.members_of_vca.find(member);
            const bool is_new = names.insert(member).second;
            if (is_new && vca != groups.members_of_vca.end()) soloed.push_back(&vca->second);
        }
    }
    return names;
}

/// Decides about one soloed track or VCA master after the other.
class Solos {
public:
    Solos(const TrackGroups& groups, SoloTallies& tallies) : groups_(groups), tallies_(tallies) {}

    void solo_vca(const TrackPlan& plan) {
        const auto vca = groups_.members_of_vca.find(plan.session_name);
        const bool has_members = vca != groups_.members_of_vca.end() && !vca->second.empty();
        if (has_members) tallies_.soloed.push_back(plan.name);
    }

    void solo_track(TrackPlan& plan) {
        if (plan.muted && !mute_moves(plan)) {
            ++tallies_.dropped;
            return;
        }
        if (plan.muted) ++tallies_.kept_with_mute_lane;
        plan.mixer.soloed = true;
        any_arrives_ = true;
        tallies_.soloed.push_back(plan.name);
    }

    bool is_lost() const { return tallies_.dropped > 0 && !any_arrives_; }

private:
    const TrackGroups& groups_;
    SoloTallies& tallies_;
    bool any_arrives_ = false;
};

}  // namespace

bool settle_solos(std::vector<TrackPlan>& plans, const TrackStrips& strips,
                  const TrackGroups& groups, SoloTallies& tallies) {
    const auto by_vca = soloed_by_vca(groups, strips);
    Solos solos(groups, tallies);
    for (std::size_t i = 0; i < plans.size(); ++i) {
        TrackPlan& plan = plans[i];
        const TrackDisplay* display = strips.of(i).display;
        if (display == nullptr) continue;
        const bool is_soloed = display->soloed == true;
        if (plan.is_vca) {
            if (is_soloed) solos.solo_vca(plan);
        } else if (is_soloed || by_vca.contains(plan.session_name)) {
            solos.solo_track(plan);
        }
        plan.mixer.solo_safe = display->solo_safe == true;
        if (plan.mixer.solo_safe) tallies.solo_safe.push_back(plan.name);
    }
    tallies.solo_track = solos.is_lost() ? 1 : 0;
    return solos.is_lost();
}

}  // namespace tanrove
