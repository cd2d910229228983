// REAPER has no clip that repeats over its own length as Pro Tools means it, so a loop becomes as
// many items as it has passes. Loops that do not come out so are listed one by one.
#include "timeline/loop_clips.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>
#include <utility>

#include "session/block_types.hpp"
#include "timeline/cut_clip.hpp"
#include "timeline/stretch_markers.hpp"

namespace tanrove {

namespace {

constexpr std::uint32_t loop_length_mode = 1;
constexpr std::uint32_t number_of_loops_mode = 2;
constexpr std::uint16_t no_placement = 0;  // no block stands around the record
constexpr std::uint32_t min_count = 2;
constexpr std::uint32_t max_count = 10000;
constexpr double shortest_pass_seconds = 0.001;

// Loop lengths are stored in samples of this rate in every session.
constexpr double loop_rate_hz = 48000;
constexpr double same_length_seconds = 0.001;

// Names may be long and loops many: the account names this many.
constexpr std::size_t max_listed = 1000;

void list(UnloopedClip unlooped, LoopTallies& tallies) {
    ++tallies.unlooped;
    if (tallies.listed.size() < max_listed) tallies.listed.push_back(std::move(unlooped));
}

void list_short(ShortLoop loop, LoopTallies& tallies) {
    ++tallies.short_loops;
    if (tallies.listed_short_loops.size() < max_listed) {
        tallies.listed_short_loops.push_back(std::move(loop));
    }
}

UnloopedClip unlooped_clip(const std::string& track, const ClipItem& clip, LoopRefusal refusal) {
    UnloopedClip unlooped;
    unlooped.refusal = refusal;
    unlooped.track = track;
    unlooped.clip = std::string(clip.name);
    unlooped.start_seconds = clip.start;
    return unlooped;
}

bool ends_by_length(const LoopRecord& loop) {
    return loop.known_shape && loop.parent_type == block_type::audio_placement &&
           loop.mode == loop_length_mode;
}

/// Why this clip cannot be written as passes; nothing where it can.
std::optional<LoopRefusal> refusal_of(const ClipItem& clip, const LoopRecord& loop) {
    if (!loop.known_shape) return LoopRefusal::unknown_shape;
    if (loop.parent_type != block_type::audio_placement) return LoopRefusal::not_audio;
    if (loop.mode != number_of_loops_mode) return LoopRefusal::unknown_mode;
    if (loop.count < min_count || loop.count > max_count) return LoopRefusal::unreadable_count;
    // What a crossfade adds to a head or a tail is no part of the loop.
    const bool is_crossfaded = clip.crossfaded || clip.crossfaded_head;
    const bool is_plain =
        clip.playrate == 1 && !is_crossfaded && clip.length >= shortest_pass_seconds;
    if (!is_plain) return LoopRefusal::stretched_or_crossfaded;
    return std::nullopt;
}

ClipItem pass_of(const ClipItem& clip, std::uint32_t number, double rate_hz) {
    ClipItem pass = clip;
    pass.loop_pass = number;
    pass.start += number * clip.length;
    pass.placed_start += number * clip.length;
    pass.stored_position +=
        number * static_cast<std::uint64_t>(std::llround(clip.length * rate_hz));
    return pass;
}

void end_clip(ClipItem& clip, double length) {
    clip.length = length;
    truncate_marker_tail(clip, length);
    clamp_fades(clip);
    clip.head_of_file = false;
}

}  // namespace

ClipLooper::ClipLooper(std::span<const LoopRecord> records) : records_(records) {
    for (const LoopRecord& record : records) {
        const bool may_be_audio =
            record.parent_type == block_type::audio_placement || record.parent_type == no_placement;
        if (may_be_audio) loops_.push_back({&record});
    }
    std::ranges::stable_sort(loops_, {}, [](const KeyedLoop& loop) {
        return std::tuple(loop.record->in_group, loop.record->key,
                          loop.record->parent_type != block_type::audio_placement);
    });
    for (std::size_t i = 0; i < loops_.size(); ++i) {
        by_placement_.emplace_back(loops_[i].record->placed_at, i);
    }
    std::ranges::sort(by_placement_);
}

/// The loop of the placement that begins there; the number of loops where it has none.
std::size_t ClipLooper::placed(std::size_t at) const {
    const auto found = std::ranges::lower_bound(by_placement_, std::pair(at, std::size_t{0}));
    const bool has_loop = found != by_placement_.end() && found->first == at;
    return has_loop ? found->second : loops_.size();
}

/// The first of the loops with this key; their number where none has it.
std::size_t ClipLooper::place_of(std::uint64_t key, bool in_group) const {
    const auto key_of = [](const KeyedLoop& loop) {
        return std::pair(loop.record->in_group, loop.record->key);
    };
    const auto found = std::ranges::lower_bound(loops_, std::pair(in_group, key), {}, key_of);
    if (found == loops_.end() || key_of(*found) != std::pair(in_group, key)) return loops_.size();
    return static_cast<std::size_t>(found - loops_.begin());
}

/// A clip that knows its row knows its loop: another track may hold the same clip at the same place
/// without one.
std::size_t ClipLooper::place_of(const ClipItem& clip) const {
    if (clip.placed_at > 0) return placed(clip.placed_at);
    const auto group = clip.grouping->clip_group;
    return place_of(loop_key(clip.stored_position, group.value_or(clip.region)), group.has_value());
}

MemberLoop ClipLooper::loop_member(const ClipGroupMember& member, const ClipItem& clip,
                                   const std::string& track, LoopTallies& tallies) {
    const std::size_t place = placed(member.placed_at);
    if (place == loops_.size()) return {};
    const LoopRecord& loop = *loops_[place].record;
    if (ends_by_length(loop)) {
        const double seconds = loop.length / loop_rate_hz;
        if (std::abs(seconds - clip.length) <= same_length_seconds) return {};
        if (seconds > clip.length || seconds <= same_length_seconds) {
            list_short({track, std::string(clip.name), clip.start, seconds, clip.length}, tallies);
            return {};
        }
        ++tallies.ended_by_length;
        return {.passes = 1, .pass_seconds = seconds};
    }
    auto refusal = refusal_of(clip, loop);
    if (!refusal && !can_afford(clip, loop.count - 1)) refusal = LoopRefusal::too_many_passes;
    if (refusal) {
        list(unlooped_clip(track, clip, *refusal), tallies);
        return {};
    }
    ++tallies.looped;
    tallies.passes += static_cast<int>(loop.count);
    return {.passes = loop.count, .pass_seconds = clip.length};
}

bool ClipLooper::can_afford(const ClipItem& clip, std::size_t passes) {
    const std::size_t markers = passes * clip.stretch->stretch_markers.size();
    if (passes > passes_left_ || markers > markers_left_) return false;
    passes_left_ -= passes;
    markers_left_ -= markers;
    return true;
}

void ClipLooper::write_passes(TimelineTrack& track, double rate_hz, LoopTallies& tallies) {
    if (loops_.empty()) return;
    write_passes(track.clips, track, rate_hz, tallies);
    write_passes(track.groups, track, rate_hz, tallies);
}

void ClipLooper::write_passes(std::vector<ClipItem>& clips, const TimelineTrack& track,
                              double rate_hz, LoopTallies& tallies) {
    std::vector<ClipItem> passes;
    for (const ClipItem& clip : clips) {
        const std::size_t place = place_of(clip);
        if (place == loops_.size()) continue;
        const LoopRecord* loop = loops_[place].record;
        loops_[place].taken = true;
        if (ends_by_length(*loop)) continue;
        auto refusal = refusal_of(clip, *loop);
        if (!refusal && !can_afford(clip, loop->count - 1)) refusal = LoopRefusal::too_many_passes;
        if (refusal) {
            list(unlooped_clip(track.name, clip, *refusal), tallies);
            continue;
        }
        for (std::uint32_t k = 1; k < loop->count; ++k) passes.push_back(pass_of(clip, k, rate_hz));
        ++tallies.looped;
        tallies.passes += static_cast<int>(loop->count);
        if (clip.fades->fade_in.length > 0 || clip.fades->fade_out.length > 0) ++tallies.with_fades;
    }
    if (passes.empty()) return;
    clips.insert(clips.end(), std::make_move_iterator(passes.begin()),
                 std::make_move_iterator(passes.end()));
    order_by_start(clips);
}

void ClipLooper::list_unmatched(LoopTallies& tallies) const {
    for (const LoopRecord& record : records_) {
        if (record.parent_type == block_type::audio_placement) continue;
        const std::size_t place = record.parent_type == no_placement
                                      ? place_of(record.key, record.in_group)
                                      : loops_.size();
        if (place < loops_.size() && loops_[place].taken) continue;
        UnloopedClip unlooped;
        unlooped.refusal = LoopRefusal::no_clip;
        unlooped.stored_position = static_cast<std::uint32_t>(record.key >> 32);
        unlooped.placement_type = record.parent_type;
        list(std::move(unlooped), tallies);
    }
}

void ClipLooper::end_loops(TimelineTrack& track, LoopTallies& tallies) const {
    if (loops_.empty()) return;
    for (ClipItem& clip : track.clips) end_loop(clip, track, tallies);
    for (ClipItem& group : track.groups) end_loop(group, track, tallies);
}

void ClipLooper::end_loop(ClipItem& clip, const TimelineTrack& track, LoopTallies& tallies) const {
    const std::size_t place = place_of(clip);
    if (place == loops_.size() || !ends_by_length(*loops_[place].record)) return;
    const double loop = loops_[place].record->length / loop_rate_hz;
    const double placed = clip.placed_length;
    if (loop > same_length_seconds && loop < placed - same_length_seconds) {
        end_clip(clip, std::min(loop + (clip.placed_start - clip.start), clip.length));
        ++tallies.ended_by_length;
    } else if (std::abs(loop - placed) > same_length_seconds) {
        list_short({track.name, std::string(clip.name), clip.placed_start, loop, placed}, tallies);
    }
}

}  // namespace tanrove
