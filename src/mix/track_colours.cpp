// A stored colour wins over every coding.
#include "mix/track_colours.hpp"

namespace tanrove {

namespace {

void count_coded(const CodedTrack& coded, ColourTallies& tallies) {
    ++(coded.place ? tallies.tracks_by_scheme : tallies.tracks_without);
    tallies.tracks_without_row += coded.without_row ? 1 : 0;
    tallies.tracks_past_rows += coded.past_rows ? 1 : 0;
    tallies.instrument_feeds += coded.feeds_instrument ? 1 : 0;
    tallies.tracks_without_output += coded.without_output ? 1 : 0;
}

}  // namespace

ChosenColours::ChosenColours(const std::vector<TrackColour>& stored) {
    for (const TrackColour& colour : stored) place_of_name_.try_emplace(colour.name, colour.index);
}

TrackShade ChosenColours::shade_of(const TrackPlan& plan, std::size_t list_place,
                                   const ColourCoding& coding, ColourTallies& tallies) const {
    TrackShade shade;
    const auto chosen = place_of_name_.find(coloured_name(plan));
    if (chosen != place_of_name_.end()) {
        shade.colour = trackColour(chosen->second, shade.quality);
        ++tallies.tracks_own;
        if (!is_track_palette_index(chosen->second)) ++tallies.tracks_off_palette;
        return shade;
    }
    CodedTrack coded;
    const auto scheme = tallies.schemes.track;
    if (colours_tracks(scheme)) coded = coding.of(*scheme, plan, list_place);
    count_coded(coded, tallies);
    if (coded.place) shade.colour = trackColour(*coded.place, shade.quality);
    return shade;
}

}  // namespace tanrove
