// Folds the session's channels into tracks.
#include "mix/fold_channels.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace tanrove {

namespace {

constexpr std::size_t stereo_legs = 2;
constexpr std::size_t min_surround_legs = 3;
constexpr std::size_t max_surround_legs = 8;
constexpr double same_time_seconds = 1e-9;

// The name of a record that is no track and no named playlist.
constexpr std::string_view unnamed_row = "?";

struct Channel {
    TimelineTrack track;
    bool is_alternate = false;
    std::string lane_child_parent;  ///< of an unnamed row: the track in front of it

    bool is_unnamed_row() const { return is_alternate && track.name == unnamed_row; }
};

/// True if no track bears the playlist's name. Without a track list nothing can be told.
bool bears_no_tracks_name(const TimelineTrack& track, const FoldOptions& options) {
    return track.record && !track.name.empty() && !options.current_names.empty() &&
           !options.current_names.contains(track.name);
}

/// Of the entries that the track list has under one name, the one whose playlist is the track's:
/// that with a playlist named as tracks are, else the first.
std::map<std::string, std::size_t> main_entries(const std::vector<TimelineTrack>& tracks,
                                                const FoldOptions& options) {
    std::map<std::string, std::size_t> entries;
    for (const bool bears_none : {false, true}) {
        for (const TimelineTrack& track : tracks) {
            if (bears_no_tracks_name(track, options) == bears_none) {
                entries.try_emplace(track.listed_name, track.list_entry);
            }
        }
    }
    return entries;
}

/// A playlist whose name no track bears is an alternate, unless it is the one that its track has.
std::vector<Channel> classified(std::vector<TimelineTrack> tracks, const StripNames& strips,
                                const FoldOptions& options) {
    const auto main_entry = main_entries(tracks, options);
    std::vector<Channel> channels;
    channels.reserve(tracks.size());
    std::string latest_named;
    for (auto& track : tracks) {
        Channel channel;
        channel.is_alternate = bears_no_tracks_name(track, options);
        const auto own_strip = strips.strip_called(track.listed_name);
        if (channel.is_alternate && own_strip &&
            main_entry.at(track.listed_name) == track.list_entry) {
            channel.is_alternate = false;
            track.name = *own_strip;
        }
        channel.track = std::move(track);
        if (channel.is_unnamed_row()) {
            channel.lane_child_parent = latest_named;
        } else {
            latest_named = channel.track.name;
        }
        channels.push_back(std::move(channel));
    }
    return channels;
}

TrackTimebase timebase_of(const TimelineTrack& track) {
    return track.tick_based ? TrackTimebase::beats_position : TrackTimebase::time;
}

TrackPlan plan_named(const TimelineTrack& track) {
    TrackPlan plan;
    plan.name = track.name;
    plan.session_name = track.name;
    plan.timebase = timebase_of(track);
    return plan;
}

bool plays_like(const ClipItem& one, const ClipItem& other) {
    return one.name == other.name && std::abs(one.start - other.start) <= same_time_seconds &&
           std::abs(one.length - other.length) <= same_time_seconds;
}

bool is_same_placeholder(const ClipItem& one, const ClipItem& other) {
    return one.is_placeholder && other.is_placeholder && plays_like(one, other);
}

/// A group without audio on both legs is one empty item. Both lists are ordered by their starts.
void drop_twin_placeholders(const std::vector<ClipItem>& left, std::vector<ClipItem>& right) {
    std::erase_if(right, [&](const ClipItem& clip) {
        if (!clip.is_placeholder) return false;
        auto twin =
            std::ranges::lower_bound(left, clip.start - same_time_seconds, {}, &ClipItem::start);
        while (twin != left.end() && twin->start <= clip.start + same_time_seconds) {
            if (is_same_placeholder(*twin++, clip)) return true;
        }
        return false;
    });
}

/// On its side of the pair the clip plays its file's channel of that side by itself; any other
/// channel stays the only one that it plays.
void pan_leg(ClipItem& clip, std::int8_t pan) {
    clip.take_pan = pan;
    const std::uint16_t own_channel = pan < 0 ? 0 : 1;
    if (clip.file_channel == own_channel) clip.file_channel.reset();
}

/// Both legs play at every place, one hard to each side: so the two files sound together without
/// an interleaved one, and of one that is interleaved each plays its own side.
void take_both_legs(TrackPlan& plan, std::span<Channel> legs) {
    plan.channels = static_cast<int>(stereo_legs);
    auto& left = legs[0].track.clips;
    auto& right = legs[1].track.clips;
    drop_twin_placeholders(left, right);
    for (auto& clip : left) pan_leg(clip, -1);
    for (auto& clip : right) pan_leg(clip, 1);
    plan.clips.reserve(left.size() + right.size());
    std::merge(std::make_move_iterator(left.begin()), std::make_move_iterator(left.end()),
               std::make_move_iterator(right.begin()), std::make_move_iterator(right.end()),
               std::back_inserter(plan.clips),
               [](const auto& one, const auto& other) { return one.start < other.start; });
}

TrackPlan merged_pair(std::span<Channel> legs) {
    TrackPlan plan = plan_named(legs.front().track);
    take_both_legs(plan, legs);
    return plan;
}

bool can_fold(std::span<const Channel> legs) {
    if (legs.size() < min_surround_legs || legs.size() > max_surround_legs) return false;
    return std::ranges::all_of(legs, [&](const Channel& leg) {
        return std::ranges::equal(leg.track.clips, legs.front().track.clips, plays_like);
    });
}

TrackPlan folded_run(std::span<Channel> legs) {
    TrackPlan plan = plan_named(legs.front().track);
    plan.clips = std::move(legs.front().track.clips);
    for (ClipItem& clip : plan.clips) clip.file_channel.reset();
    plan.channels = static_cast<int>(legs.size());
    plan.folded_width = plan.channels;
    return plan;
}

/// Without its clips.
TrackPlan alternate_plan(const Channel& leg, const StripNames& strips) {
    TrackPlan plan;
    plan.name = leg.track.name;
    plan.original_name = leg.track.name;
    plan.is_alternate = true;
    plan.is_lane_child = leg.is_unnamed_row();
    plan.lane_child_parent = leg.lane_child_parent;
    if (auto parent = strips.parent_of(plan.original_name)) {
        plan.lane_parent = *parent;
        plan.name += " [lane: " + *parent + "]";
    } else {
        plan.name += " [alt playlist]";
    }
    return plan;
}

void mark_leg(TrackPlan& plan, bool is_left) {
    plan.leg_pan = is_left ? -1 : 1;
    plan.mixer.pan = plan.leg_pan;
    plan.name += is_left ? " [L]" : " [R]";
}

class Folding {
public:
    Folding(const StripNames& strips, const FoldOptions& options, TrackTallies& tallies)
        : strips_(strips), options_(options), tallies_(tallies) {}

    /// Takes consecutive channels of one name.
    void add_run(std::span<Channel> legs) {
        const bool has_alternate = std::ranges::any_of(legs, &Channel::is_alternate);
        if (!has_alternate && legs.size() == stereo_legs) {
            plans_.push_back(merged_pair(legs));
        } else if (!has_alternate && can_fold(legs)) {
            plans_.push_back(folded_run(legs));
        } else if (has_alternate && !options_.keep_alt_takes) {
            set_aside(legs);
        } else if (is_pair_of_known_strip(legs)) {
            TrackPlan plan = alternate_plan(legs.front(), strips_);
            take_both_legs(plan, legs);
            plans_.push_back(std::move(plan));
        } else {
            for (std::size_t i = 0; i < legs.size(); ++i) add_leg(legs[i], i, legs.size());
        }
    }

    std::vector<TrackPlan> take() { return std::move(plans_); }

private:
    /// Leaves the alternates of a run out. Its legs are one playlist; unnamed rows are none.
    void set_aside(std::span<Channel> legs) {
        const bool is_playlist = std::ranges::any_of(
            legs, [](const Channel& leg) { return leg.is_alternate && !leg.is_unnamed_row(); });
        if (is_playlist) ++tallies_.alternates_set_aside;
        for (std::size_t i = 0; i < legs.size(); ++i) {
            if (!legs[i].is_alternate) add_leg(legs[i], i, legs.size());
        }
    }

    /// True if the legs are one stereo playlist that becomes a lane of its track.
    bool is_pair_of_known_strip(std::span<const Channel> legs) const {
        return legs.size() == stereo_legs && std::ranges::all_of(legs, &Channel::is_alternate) &&
               !legs.front().is_unnamed_row() && strips_.parent_of(legs.front().track.name);
    }

    void add_leg(Channel& leg, std::size_t number, std::size_t leg_count) {
        TrackPlan plan = leg.is_alternate ? alternate_plan(leg, strips_) : plan_named(leg.track);
        plan.clips = std::move(leg.track.clips);
        if (!leg.is_alternate) plan.channels = static_cast<int>(leg_count);
        if (leg_count == stereo_legs) mark_leg(plan, number == 0);
        plans_.push_back(std::move(plan));
    }

    const StripNames& strips_;
    const FoldOptions& options_;
    TrackTallies& tallies_;
    std::vector<TrackPlan> plans_;
};

}  // namespace

std::vector<TrackPlan> fold_channels(std::vector<TimelineTrack> channels, const StripNames& strips,
                                     const FoldOptions& options, TrackTallies& tallies) {
    std::vector<Channel> legs = classified(std::move(channels), strips, options);
    Folding folding(strips, options, tallies);
    for (std::size_t first = 0; first < legs.size();) {
        std::size_t end = first + 1;
        while (end < legs.size() && legs[end].track.name == legs[first].track.name) ++end;
        folding.add_run(std::span(legs).subspan(first, end - first));
        first = end;
    }
    return folding.take();
}

}  // namespace tanrove
