// Pro Tools lets clips overlap and plays one at each moment. REAPER plays them all, so what lies
// under another clip is cut away or muted here.
//
// The rows of an edit list stand in the order in which Pro Tools draws them: a later clip lies over
// the earlier ones, unless an earlier one keeps its tail. A clip that is cut in its middle does not
// come back where the other one ends.
#include "timeline/cover_clips.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <limits>
#include <map>
#include <span>
#include <tuple>

#include "timeline/cut_clip.hpp"

namespace tanrove {

namespace {

// Without rows there are only positions, and these cannot tell a butt edit from an overlap.
constexpr double butt_edit_seconds = 0.05;
constexpr double same_place_seconds = 0.001;

double end_of(const ClipItem& clip) {
    return clip.start + clip.length;
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

/// What is left of one row: its clip, or the passes of its loop, which lie end to end and are drawn
/// and covered as the one clip that Pro Tools shows.
struct DrawnRow {
    std::span<ClipItem* const> clips;
    bool counted = false;  ///< among the rows that lost whole passes

    double start() const { return clips.front()->start; }
    double end() const { return end_of(*clips.back()); }
    bool muted() const { return clips.front()->muted; }
};

/// One track being drawn, row by row.
class DrawnTrack {
public:
    DrawnTrack(double rate_hz, CoveringTallies& tallies)
        : rate_hz_(rate_hz), half_sample_(0.5 / rate_hz), tallies_(tallies) {}

    /// Draws a row over all that was drawn before. `next` is the clip of the next row, if any: a
    /// crossfade shares its sound with that one. No row that is still to come begins before
    /// `earliest_to_come`.
    void draw(DrawnRow row, const ClipItem* next, double earliest_to_come) {
        earliest_to_come_ = earliest_to_come;
        if (!clear_head(row)) return;
        clear_tail(row);
        cover_earlier(row);
        if (row.clips.back()->crossfaded && next != nullptr) {
            add_open(row, std::min(next->start, row.end()));
        } else if (row.clips.front()->tail_kept) {
            kept_.add(row.start(), row.end(), half_sample_);
        } else {
            add_open(row, row.end());
        }
    }

private:
    /// A row that gives way to those drawn later, and where it ends for them.
    struct OpenRow {
        DrawnRow row;
        double end = 0;
    };

    /// False if nothing of the row shows.
    bool clear_head(DrawnRow& row) {
        const double shows_from = kept_.end_behind(row.start(), half_sample_);
        if (shows_from - row.start() <= half_sample_) return true;
        if (shows_from >= row.end() - half_sample_) {
            mute(row, row.clips);
            return false;
        }
        hide_head(row, shows_from);
        return true;
    }

    /// Takes what lies in front of a moment inside the row; passes in front are not heard.
    void hide_head(DrawnRow& row, double shows_from) {
        std::size_t hidden = 0;
        while (end_of(*row.clips[hidden]) <= shows_from + half_sample_) ++hidden;
        mute(row, row.clips.first(hidden));
        row.clips = row.clips.subspan(hidden);
        const double cut = shows_from - row.start();
        if (cut <= half_sample_) return;
        start_later(*row.clips.front(), cut, rate_hz_);
        ++tallies_.later_heads;
    }

    /// Rows mostly stand in the order of time; a clip that reaches under an earlier row's from the
    /// front is the exception.
    void clear_tail(DrawnRow& row) {
        const double end = kept_.next_start(row.start() + half_sample_, row.end());
        if (end < row.end() - half_sample_) end_row(row, end);
    }

    void cover_earlier(const DrawnRow& row) {
        const double start = row.start();
        auto under = first_behind(start);
        if (under != open_.begin() && std::prev(under)->second.end > start + half_sample_) {
            --under;
        }
        while (under != open_.end() && under->first < row.end() - half_sample_) {
            DrawnRow& covered = under->second.row;
            const bool keeps_start = start - under->first >= half_sample_;
            if (!keeps_start && under->second.end > row.end() + half_sample_) {
                OpenRow left = under->second;
                open_.erase(under);
                hide_head(left.row, row.end());
                add_open(left.row, left.end);
                return;
            }
            if (!keeps_start) {
                mute(covered, covered.clips);
                cut_tail(*covered.clips.front(), 1 / rate_hz_);
                under = open_.erase(under);
                continue;
            }
            if (row.muted() && !covered.muted()) ++tallies_.silenced_tails;
            end_row(covered, start);
            under->second.end = start;
            ++under;
        }
    }

    /// Ends a row at a moment inside it; passes behind that are not heard.
    void end_row(DrawnRow& row, double at) {
        std::size_t left = row.clips.size();
        while (left > 1 && row.clips[left - 1]->start > at - half_sample_) --left;
        mute(row, row.clips.subspan(left));
        row.clips = row.clips.first(left);
        ClipItem& last = *row.clips.back();
        if (at < end_of(last) - half_sample_) cut_tail(last, at - last.start);
    }

    void mute(DrawnRow& row, std::span<ClipItem* const> hidden) {
        for (ClipItem* clip : hidden) clip->muted = clip->covered = true;
        if (hidden.empty() || row.counted) return;
        row.counted = true;
        ++tallies_.muted_clips;
    }

    /// Most rows begin behind all that were drawn before.
    std::map<double, OpenRow>::iterator first_behind(double start) {
        const bool is_last = open_.empty() || open_.rbegin()->first <= start;
        return is_last ? open_.end() : open_.upper_bound(start);
    }

    void add_open(const DrawnRow& row, double end) {
        if (end - row.start() < half_sample_ || end <= earliest_to_come_) return;
        open_.insert_or_assign(first_behind(row.start()), row.start(), OpenRow{row, end});
    }

    double rate_hz_;
    double half_sample_;
    double earliest_to_come_ = 0;
    CoveringTallies& tallies_;
    KeptSpans kept_;
    /// By the start; none reaches into the next. Without those that no row to come can reach.
    std::map<double, OpenRow> open_;
};

/// The track's clips and groups without the rendered fades that were kept: those lie where they
/// fade a clip.
std::vector<ClipItem*> clips_that_cover(TimelineTrack& track) {
    std::vector<ClipItem*> clips;
    clips.reserve(track.clips.size() + track.groups.size());
    for (ClipItem& clip : track.clips) {
        if (!clip.is_fade_reference) clips.push_back(&clip);
    }
    for (ClipItem& group : track.groups) clips.push_back(&group);
    return clips;
}

bool is_next_pass(const ClipItem& clip, const ClipItem& next) {
    return next.edit_row == clip.edit_row && next.loop_pass == clip.loop_pass + 1;
}

/// The rows of clips in the order of drawing, the passes of a loop together.
std::vector<DrawnRow> rows_of(std::span<ClipItem* const> order) {
    std::vector<DrawnRow> rows;
    rows.reserve(order.size());
    for (std::size_t first = 0; first < order.size();) {
        std::size_t end = first + 1;
        while (end < order.size() && is_next_pass(*order[end - 1], *order[end])) ++end;
        rows.push_back({.clips = order.subspan(first, end - first)});
        first = end;
    }
    return rows;
}

/// Where the earliest of the rows behind each begins; a head that is cut only begins later.
std::vector<double> earliest_starts_behind(std::span<const DrawnRow> rows) {
    std::vector<double> starts(rows.size());
    double earliest = std::numeric_limits<double>::infinity();
    for (std::size_t i = rows.size(); i-- > 0;) {
        starts[i] = earliest;
        earliest = std::min(earliest, rows[i].start());
    }
    return starts;
}

void cover_by_rows(TimelineTrack& track, double rate_hz, CoveringTallies& tallies) {
    auto order = clips_that_cover(track);
    std::ranges::stable_sort(order, [](const ClipItem* one, const ClipItem* other) {
        return std::tie(one->edit_row, one->start) < std::tie(other->edit_row, other->start);
    });
    const auto rows = rows_of(order);
    const auto earliest = earliest_starts_behind(rows);
    DrawnTrack drawn(rate_hz, tallies);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ClipItem* next = i + 1 < rows.size() ? rows[i + 1].clips.front() : nullptr;
        drawn.draw(rows[i], next, earliest[i]);
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
        clip.muted = clip.covered = true;
        ++tallies.muted_clips;
    } else {
        start_later(clip, overlap, rate_hz);
        ++tallies.later_heads;
    }
}

void cover_by_positions(TimelineTrack& track, double rate_hz, CoveringTallies& tallies) {
    auto clips = clips_that_cover(track);
    if (!track.groups.empty()) std::ranges::stable_sort(clips, {}, &ClipItem::start);
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
