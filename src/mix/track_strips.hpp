// The one join between the tracks as they are written and what the session has of them: strip row,
// mixer and edit window. Settled when it is known which tracks are written; every planner asks it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "mix/strip_names.hpp"
#include "mix/track_plan.hpp"
#include "session/strip_rows.hpp"
#include "session/strips.hpp"
#include "session/track_displays.hpp"

namespace tanrove {

/// What the session has of its strips, each list in its own order.
struct MixerRecords {
    std::span<const StripRow> rows;
    std::span<const Strip> strips;           ///< in step with the rows where their names are theirs
    std::span<const TrackDisplay> displays;  ///< in step with the rows; none where they are unknown
};

/// What the session has of one track.
struct TrackStrip {
    std::optional<std::size_t> row;         ///< its place among the strip rows
    const Strip* strip = nullptr;           ///< in the mixer; null where the session has no record
    const TrackDisplay* display = nullptr;  ///< in the edit window
};

/// Looks into lists that outlive it.
class TrackStrips {
public:
    /// A track is of the row that gave it its place, else of the one that shows its name, else of
    /// the one that was made under it, if that gave no other track its place. The legs of a strip
    /// that could not be merged share it; alternate playlists are tracks of no strip. A strip
    /// without a row is told by its name.
    TrackStrips(const std::vector<TrackPlan>& tracks, const MixerRecords& mixer);

    const TrackStrip& of(std::size_t track) const { return strip_of_track_[track]; }

    /// The first track of a strip row, if it has one that is written.
    std::optional<std::size_t> track_of(std::size_t row) const { return track_of_row_[row]; }

    /// The strip row of each track.
    std::vector<std::optional<std::size_t>> rows() const;

    /// How the edit window shows the strip of this name, be it a track or not.
    const TrackDisplay* display_named(std::string_view name) const;

    const MixerRecords& mixer() const { return mixer_; }

private:
    std::optional<std::size_t> row_of(const TrackPlan& track,
                                      const std::vector<bool>& is_placed) const;
    const TrackDisplay* display_of(std::optional<std::size_t> row) const;

    MixerRecords mixer_;
    StripNames names_;
    std::vector<TrackStrip> strip_of_track_;
    std::vector<std::optional<std::size_t>> track_of_row_;
};

}  // namespace tanrove
