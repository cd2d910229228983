// Both ends of a clip take its markers, fades and source along.
#include "timeline/cut_clip.hpp"

#include <algorithm>
#include <cmath>

#include "timeline/stretch_markers.hpp"

namespace tanrove {

void clamp_fades(ClipItem& clip) {
    if (!clip.fades) return;
    ClipFades& fades = clip.fades.edit();
    fades.fade_in.length = std::min(fades.fade_in.length, clip.length);
    fades.fade_out.length = std::min(fades.fade_out.length, clip.length);
}

void cut_tail(ClipItem& clip, double length) {
    clip.length = length;
    truncate_marker_tail(clip, length);
    clamp_fades(clip);
}

void start_later(ClipItem& clip, double cut, double rate_hz) {
    const auto source_at_cut = cut_marker_head(clip, cut);
    clip.source_offset = source_at_cut.value_or(clip.source_offset + clip.playrate * cut);
    clip.source_offset_samples = offset_in_samples(std::llround(clip.source_offset * rate_hz));
    clip.start += cut;
    clip.length -= cut;
    if (clip.fades) {
        ClipFade& fade_in = clip.fades.edit().fade_in;
        fade_in.length = std::max(fade_in.length - cut, 0.0);
    }
    clip.sync_offset = std::max(clip.sync_offset - cut, 0.0);
    clamp_fades(clip);
    clip.head_of_file = false;
}

}  // namespace tanrove
