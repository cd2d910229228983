// The colour of each clip: its own, that of its recording on an alternate playlist, or what the
// session's coding of clips draws.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "mix/colour_coding.hpp"
#include "mix/colour_tallies.hpp"
#include "mix/track_colours.hpp"
#include "mix/track_plan.hpp"
#include "mix/video_plan.hpp"

namespace tanrove {

/// Where a marker stands, and its colour as 0x1BBGGRR; 0 for the default.
struct MarkerColour {
    double start_seconds = 0;
    std::uint32_t colour = 0;
};

/// Colours the clips of one track after another.
class ClipColouring {
public:
    /// The tallies say which theme and which coding; the markers come in any order.
    ClipColouring(std::vector<MarkerColour> markers, ColourTallies& tallies);

    /// Colours the clips, lanes and MIDI items of `plan`. `shade` is its track's, `coded` what the
    /// coding of clips gives its track.
    void colour(TrackPlan& plan, const TrackShade& shade, const CodedTrack& coded);

    /// The same for the clips of a video track.
    void colour_video(std::vector<VideoItem>& items, const TrackShade& shade,
                      const CodedTrack& coded);

    /// Placements that got a colour of their own; the passes of a loop count once, and
    /// so do the clips of a group.
    int coloured_placements() const { return coloured_placements_; }

private:
    std::optional<std::uint32_t> own_colour(std::int32_t place);
    std::optional<std::uint32_t> dark_own_colour(std::int32_t place);
    void note_own(std::int32_t place, std::optional<std::uint32_t> colour, ColourQuality quality);
    std::uint32_t in_theme(std::uint32_t colour);
    const MarkerColour* marker_at(double seconds) const;
    std::optional<std::uint32_t> coded_colour(const TrackShade& track, double start_seconds);

    TrackShade shade_by_coding(const TrackShade& track, const CodedTrack& coded) const;
    /// `legs`: of a fold, each of which has the placements that are written once.
    void colour_own(std::vector<ClipItem>& clips, int legs);
    void colour_lanes(TrackPlan& plan, const TrackShade& coded);
    void colour_midi(TrackPlan& plan, const TrackShade& coded);

    std::vector<MarkerColour> markers_;
    ColourTallies& tallies_;
    int coloured_placements_ = 0;
};

/// A line for each coloured clip: its track, start, name, stored place and colour.
std::string clip_colours_text(const std::vector<TrackPlan>& plans);

}  // namespace tanrove
