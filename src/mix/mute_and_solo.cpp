// REAPER plays a soloed track through its mute, Pro Tools does not: a track that is both keeps its
// mute and loses its solo. Only where its mute moves, and it will sound in its time, the solo
// stays.
#include "mix/mute_and_solo.hpp"

#include <algorithm>

namespace tanrove {

namespace {

bool mute_moves(const TrackPlan& plan) {
    return std::any_of(plan.envelopes.begin(), plan.envelopes.end(), [](const auto& envelope) {
        return envelope.kind == EnvelopeKind::mute && envelope.active;
    });
}

void settle_solo(TrackPlan& plan, SoloTallies& tallies) {
    if (plan.muted && !mute_moves(plan)) {
        ++tallies.dropped;
        return;
    }
    if (plan.muted) ++tallies.kept_with_mute_lane;
    plan.mixer.soloed = true;
    tallies.soloed.push_back(plan.name);
}

}  // namespace

bool settle_solos(std::vector<TrackPlan>& plans, const MixerLookup& mixer, SoloTallies& tallies) {
    for (TrackPlan& plan : plans) {
        const TrackDisplay* display = mixer.display_of(plan);
        if (display == nullptr) continue;
        // The track of a VCA master plays nothing: soloed, it would silence all others.
        if (display->soloed == true && !plan.is_vca) settle_solo(plan, tallies);
        plan.mixer.solo_safe = display->solo_safe == true;
        if (plan.mixer.solo_safe) tallies.solo_safe.push_back(plan.name);
    }
    const bool is_lost = tallies.dropped > 0 && tallies.soloed.empty();
    tallies.solo_track = is_lost ? 1 : 0;
    return is_lost;
}

}  // namespace tanrove
