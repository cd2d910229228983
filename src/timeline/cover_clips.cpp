// Pro Tools lets clips overlap and plays one at each moment. REAPER plays them all, so what lies
// under another clip is cut away or muted here.
//
// The rows of an edit list stand in the order in which Pro Tools draws them: a later clip lies over
// the earlier ones, unless an earlier one keeps its tail. What a clip has lost to another does not
// come back where that one ends.
#include "timeline/cover_clips.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <map>
#include <tuple>

#include "timeline/stretch_markers.hpp"

namespace tanrove {

namespace {

// Without rows there are only positions, and these cannot tell a butt edit from an overlap.
constexpr double butt_edit_seconds = 0.05;
constexpr double same_place_seconds = 0.001;

double end_of(const ClipItem& clip) {
    return clip.start + clip.length;
}

void clamp_fades(ClipItem& clip) {
    clip.fade_in.length = std::min(clip.fade_in.length, clip.length);
    clip.fade_out.length = std::min(clip.fade_out.length, clip.length);
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
    clip.fade_in.length = std::max(clip.fade_in.length - cut, 0.0);
    clip.sync_offset = std::max(clip.sync_offset - cut, 0.0);
    clamp_fades(clip);
    clip.head_of_file = false;
}

/// Parts of the timeline on which clips lie that play to their own end. They never overlap.
class KeptSpans {
public:
    /// The end of the span that covers this moment and what comes `slack` behind it; `at` where
    /// there is none.
    double end_behind(double at, double slack) const {
        const auto later = ends_.upper_bound(at + slack);
        if (later == ends_.begin()) return at;
        const double end = std::prev(later)->second;
        return end > at + slack ? end : at;
    }

    /// Where the first span behind this moment begins; `otherwise` if none does before that.
    double next_start(double at, double otherwise) const {
        const auto later = ends_.upper_bound(at);
        return later == ends_.end() ? otherwise : std::min(later->first, otherwise);
    }

    /// Spans that lie no farther apart than `slack` become one, so that a search takes one step.
    void add(double start, double end, double slack) {
        auto span = ends_.upper_bound(start);
        if (span != ends_.begin() && std::prev(span)->second >= start - slack) --span;
        while (span != ends_.end() && span->first <= end + slack) {
            start = std::min(start, span->first);
            end = std::max(end, span->second);
            span = ends_.erase(span);
        }
        ends_[start] = end;
    }

private:
    std::map<double, double> ends_;  ///< by the start
};

/// One track being drawn, row by row.
class DrawnTrack {
public:
    DrawnTrack(double rate_hz, CoveringTallies& tallies)
        : rate_hz_(rate_hz), half_sample_(0.5 / rate_hz), tallies_(tallies) {}

    /// Draws a clip over all that was drawn before. `next` is the clip of the next row, if any: a
    /// crossfade shares its sound with that one.
    void draw(ClipItem& clip, const ClipItem* next) {
        if (!clear_head(clip)) return;
        clear_tail(clip);
        cover_earlier(clip);
        if (clip.crossfaded && next != nullptr) {
            add_open(clip, std::min(next->start, end_of(clip)));
        } else if (clip.tail_kept) {
            kept_.add(clip.start, end_of(clip), half_sample_);
        } else {
            add_open(clip, end_of(clip));
        }
    }

private:
    /// A clip that gives way to those drawn later, and where it ends for them.
    struct OpenClip {
        ClipItem* clip = nullptr;
        double end = 0;
    };

    /// False if nothing of the clip shows.
    bool clear_head(ClipItem& clip) {
        const double cut = kept_.end_behind(clip.start, half_sample_) - clip.start;
        if (cut <= half_sample_) return true;
        if (cut >= clip.length - half_sample_) {
            clip.muted = true;
            ++tallies_.muted_clips;
            return false;
        }
        start_later(clip, cut, rate_hz_);
        ++tallies_.later_heads;
        return true;
    }

    /// Rows mostly stand in the order of time; a clip that reaches under an earlier row's from the
    /// front is the exception.
    void clear_tail(ClipItem& clip) const {
        const double end = kept_.next_start(clip.start + half_sample_, end_of(clip));
        if (end < end_of(clip) - half_sample_) cut_tail(clip, end - clip.start);
    }

    void cover_earlier(const ClipItem& clip) {
        auto under = open_.upper_bound(clip.start);
        if (under != open_.begin() && std::prev(under)->second.end > clip.start + half_sample_) {
            --under;
        }
        while (under != open_.end() && under->first < end_of(clip) - half_sample_) {
            ClipItem& covered = *under->second.clip;
            const double left = clip.start - under->first;
            if (left < half_sample_) {
                leave_nothing(covered);
                under = open_.erase(under);
                continue;
            }
            if (clip.muted && !covered.muted) ++tallies_.silenced_tails;
            cut_tail(covered, left);
            under->second.end = clip.start;
            ++under;
        }
    }

    void leave_nothing(ClipItem& clip) {
        clip.muted = true;
        cut_tail(clip, 1 / rate_hz_);
        ++tallies_.muted_clips;
    }

    void add_open(ClipItem& clip, double end) {
        if (end - clip.start >= half_sample_) open_[clip.start] = {&clip, end};
    }

    double rate_hz_;
    double half_sample_;
    CoveringTallies& tallies_;
    KeptSpans kept_;
    std::map<double, OpenClip> open_;  ///< by the start; none reaches into the next
};

/// The track's clips without the rendered fades that were kept: those lie where they fade a clip.
std::vector<ClipItem*> clips_that_cover(TimelineTrack& track) {
    std::vector<ClipItem*> clips;
    clips.reserve(track.clips.size());
    for (ClipItem& clip : track.clips) {
        if (!clip.is_fade_reference) clips.push_back(&clip);
    }
    return clips;
}

void cover_by_rows(TimelineTrack& track, double rate_hz, CoveringTallies& tallies) {
    auto order = clips_that_cover(track);
    std::ranges::stable_sort(order, [](const ClipItem* one, const ClipItem* other) {
        return std::tie(one->edit_row, one->start) < std::tie(other->edit_row, other->start);
    });
    DrawnTrack drawn(rate_hz, tallies);
    for (std::size_t i = 0; i < order.size(); ++i) {
        drawn.draw(*order[i], i + 1 < order.size() ? order[i + 1] : nullptr);
    }
}

/// Two neighbours of which the earlier is drawn over the later. `room` is what the later one has
/// until the clip behind it.
void cover_head(ClipItem& over, ClipItem& clip, double room, double rate_hz,
                CoveringTallies& tallies) {
    const double overlap = end_of(over) - clip.start;
    if (overlap <= same_place_seconds) {
        cut_tail(over, clip.start - over.start);
    } else if (overlap >= std::min(clip.length, room) - same_place_seconds) {
        clip.muted = true;
        ++tallies.muted_clips;
    } else {
        start_later(clip, overlap, rate_hz);
        ++tallies.later_heads;
    }
}

void cover_by_positions(TimelineTrack& track, double rate_hz, CoveringTallies& tallies) {
    const auto clips = clips_that_cover(track);
    for (std::size_t i = 1; i < clips.size(); ++i) {
        ClipItem& previous = *clips[i - 1];
        ClipItem& clip = *clips[i];
        if (previous.crossfaded) continue;
        if (clip.muted && !previous.muted && previous.drawn_over_next) continue;
        const double gap = clip.start - previous.start;
        if (gap <= butt_edit_seconds || previous.length <= gap) continue;

        if (clip.muted && !previous.muted) ++tallies.silenced_tails;
        if (clip.muted || clip.drawn_over_previous || !previous.drawn_over_next) {
            cut_tail(previous, gap);
            continue;
        }
        const double room = i + 1 < clips.size() ? clips[i + 1]->start - clip.start : clip.length;
        cover_head(previous, clip, room, rate_hz, tallies);
    }
}

}  // namespace

void cover_clips(std::vector<TimelineTrack>& tracks, double rate_hz, CoveringTallies& tallies) {
    for (TimelineTrack& track : tracks) {
        if (track.row_ordered) {
            cover_by_rows(track, rate_hz, tallies);
        } else {
            order_by_start(track.clips);
            cover_by_positions(track, rate_hz, tallies);
        }
        order_by_start(track.clips);
    }
}

}  // namespace tanrove
