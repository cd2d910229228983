// Which tracks get REAPER's surround panner, and how it stands: the mono and stereo ones that Pro
// Tools pans into a surround bus.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "mix/panner_envelopes.hpp"
#include "mix/plan_routes.hpp"
#include "mix/track_plan.hpp"

namespace tanrove {

struct PannerTallies {
    int mono = 0;             ///< panned tracks; an unmerged leg counts as one
    int stereo = 0;           ///< likewise
    int with_sends = 0;       ///< of both: those whose panner stands aside for their sends
    int envelopes = 0;        ///< of their panners
    int envelope_points = 0;  ///< in all of those
    int straight_moves = 0;   ///< moves that lack the points between, past the limit
    int lanes_left_out = 0;   ///< lanes that move on no track; of wide strips the short groups'
    int lanes_past_limit = 0;
    int unknown_layouts = 0;   ///< tracks into buses whose speakers are not known
    int without_settings = 0;  ///< tracks whose panner's numbers are not known
    std::vector<std::string> straight_to_hardware;  ///< tracks that no surround bus takes there
};

/// A track that plays into a surround bus, and what the session says of its panner.
struct PannerTry {
    std::string track;
    std::string bus;
    std::size_t channels = 0;   ///< of the bus
    std::size_t leg_count = 0;  ///< that the session lists
    bool is_placed = false;     ///< its speakers are known
    bool has_settings = false;
    bool is_stereo = false;
    std::array<std::int32_t, 3> first_numbers = {};  ///< left-right in front and in the rear, depth
};

/// Plans the panners, once the outputs are planned; before the key inputs, which lie behind the
/// channels of the panner. Gives an entry for each track that plays into a surround bus.
std::vector<PannerTry> plan_panners(std::vector<TrackPlan>& plans, const RoutingView& routing,
                                    PannerEnvelopePlanner& envelopes, PannerTallies& tallies);

/// Counts the panner lanes of these tracks' strips that move and were not written. Of a strip wider
/// than stereo the account speaks as one: here only the short groups count.
void count_panner_lanes_left_out(const std::vector<TrackPlan>& plans, const TrackStrips& strips,
                                 PannerTallies& tallies);

/// The debug text of the tries, one a line.
std::string panner_tries_text(const std::vector<PannerTry>& tries);

}  // namespace tanrove
