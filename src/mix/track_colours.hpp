// The colour of each track: the one that the user chose, or else the one that the session's coding
// draws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "mix/colour_coding.hpp"
#include "mix/colour_tallies.hpp"
#include "mix/palette_colours.hpp"
#include "mix/track_plan.hpp"
#include "session/track_displays.hpp"

namespace tanrove {

/// A colour and how it was made; 0 for none.
struct TrackShade {
    std::uint32_t colour = 0;
    ColourQuality quality = ColourQuality::not_measured;
};

/// Finds the colours that were chosen by the name of their track. Looks into a list that outlives
/// it.
class ChosenColours {
public:
    explicit ChosenColours(const std::vector<TrackColour>& stored);

    /// What the track shows; counts where its colour comes from. `list_place` counts from 1.
    TrackShade shade_of(const TrackPlan& plan, std::size_t list_place, const ColourCoding& coding,
                        ColourTallies& tallies) const;

private:
    std::map<std::string_view, std::int16_t> place_of_name_;
};

}  // namespace tanrove
