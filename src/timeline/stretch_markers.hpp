// Stretch markers tie places in an item to places in its file. Where an item is cut, its markers
// are cut with it, so that what is left plays as it did.
#pragma once

#include <optional>
#include <vector>

#include "timeline/clip_item.hpp"

namespace tanrove {

/// Fewer markers than this are not written: the playrate alone says the same.
constexpr std::size_t min_written_markers = 3;

/// True if markers carry the clip's rate, so that its item is written at a playrate of 1.
bool has_stretch_map(const ClipItem& clip);

/// Where in the file the sound at `seconds` of the item lies: between the two markers around it, or
/// on the line of the first or last two. Needs at least one marker.
double source_position_at(const std::vector<StretchMarker>& markers, double seconds);

/// When, in seconds of the item, a place of the file sounds: the same lines the other way round.
double item_position_of(const std::vector<StretchMarker>& markers, double source_seconds);

/// Takes the first `cut` seconds off the markers and gives the file position, in seconds, at which
/// what is left begins. Without two markers, or with a cut at or outside their ends, it gives
/// nothing and changes nothing.
std::optional<double> cut_head(std::vector<StretchMarker>& markers, double cut);

/// Ends the markers at `cut` seconds, under the same conditions. True if it did.
bool truncate_tail(std::vector<StretchMarker>& markers, double cut);

/// `cut_head` and `truncate_tail` for a clip. Where only two markers are left, the clip's playrate
/// becomes the rate between them. Start, length and offset of the clip stay the caller's to move.
std::optional<double> cut_marker_head(ClipItem& clip, double cut);
void truncate_marker_tail(ClipItem& clip, double cut);

}  // namespace tanrove
