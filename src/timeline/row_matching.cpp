// Matches a track's placements to the rows of its edit list.
//
// A placement knows its clip and its stored position, and so does a row; neither knows the other.
// The key is the clip and the low half of the position. One key can occur several times, as a clip
// and as a fade of the same number, so each key remembers in which order its rows came.
#include "timeline/row_matching.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "session/playlist_walk.hpp"

namespace tanrove {

namespace {

// A row counts as a placement's own when it lies no farther away, in stored units.
constexpr std::uint64_t max_row_distance = 64;

/// The clip in the upper half, the low half of the stored position in the lower.
using PlacementKey = std::uint64_t;

PlacementKey key_of(std::uint32_t clip, std::uint64_t position) {
    return std::uint64_t{clip} << 32 | (position & 0xffffffff);
}

std::uint32_t clip_of(PlacementKey key) {
    return static_cast<std::uint32_t>(key >> 32);
}

std::uint32_t upper_half(std::uint64_t position) {
    return static_cast<std::uint32_t>(position >> 32);
}

/// Numbers of entries in one of the index's lists: the first, and the one behind the last.
struct Range {
    std::size_t first = 0;
    std::size_t end = 0;
};

/// What all rows of one key say together, and which of them are still to be handed out.
struct KeyRows {
    PlacementKey key = 0;
    std::size_t clip_slot = 0;  ///< its clip among the clips of the index
    Range fade_flags;           ///< one a row, in row order, from the next to be handed out
    Range exact_rows;           ///< those that can be a clip's own
    std::size_t live_left = 0;
    bool has_fade_row = false;
    bool has_ordinary_row = false;
    bool drawn_over_next = false;
    bool drawn_over_previous = false;
    bool locked = false;
    std::int32_t colour = no_colour;
    std::optional<bool> muted;  ///< the first live row's

    void add_live_row(const PlacementRow& row) {
        drawn_over_next |= row.overlap == overlap_over_next;
        drawn_over_previous |= row.overlap == overlap_over_previous;
        locked |= row.locked;
        if (colour == no_colour) colour = row.colour;
        if (!muted) muted = row.muted;
        ++live_left;
    }
};

/// A row that places a clip by itself. Rows of one key differ in the upper half of the position.
struct ExactRow {
    std::uint32_t upper_position = 0;
    std::uint32_t number = 0;
    std::uint32_t taken = 0;  ///< on the first of equal positions: how many of them were taken

    std::pair<std::uint32_t, std::uint32_t> order() const { return {upper_position, number}; }
};

/// The rows of one edit list in sorted vectors. Tracks with hundreds of thousands of rows are
/// real, and a lookup is one binary search.
class RowIndex {
public:
    RowIndex(const PlaylistDetail& list, std::span<const FadeRecord> fades);

    /// The slot of this key, or of the first one behind it.
    std::size_t slot_at_or_behind(PlacementKey key) const {
        const auto found = std::ranges::lower_bound(keys_, key, {}, &KeyRows::key);
        return static_cast<std::size_t>(found - keys_.begin());
    }

    /// True if the rows of this very key stand in the slot.
    bool is_slot_of(PlacementKey key, std::size_t slot) const {
        return slot < keys_.size() && keys_[slot].key == key;
    }

    const KeyRows& rows_in(std::size_t slot) const { return keys_[slot]; }

    /// True if the next placement of this slot's key is the rendered file of a fade.
    bool take_fade_flag(std::size_t slot);

    /// Takes one live row away: one of this key, else of the nearest key of the same clip that has
    /// one left. The earlier of two equally near. Returns the slot it was found in.
    std::optional<std::size_t> take_live_row(PlacementKey key, std::size_t at_or_behind);

    /// Takes away any live row of the clip that is left.
    bool take_live_row_of_clip(std::uint32_t clip);

    /// Hands out the first row of the slot's key, not handed out before, that stands exactly at
    /// this position.
    std::optional<std::size_t> take_exact_row(std::size_t slot, std::uint64_t position);

    const PlacementRow& row(std::size_t number) const { return list_.rows[number]; }

    bool keeps_tail(std::size_t row) const { return row_keeps_tail(list_, fades_, row); }

private:
    using KeyedRow = std::pair<PlacementKey, std::uint32_t>;  ///< with the row's number

    void add_key(std::span<const KeyedRow> rows);
    void add_row(KeyRows& key, std::uint32_t number);
    bool is_usable_fade(const PlacementRow& row) const {
        return row.is_fade && row.region_id < fades_.size();
    }
    const PlaylistDetail& list_;
    std::span<const FadeRecord> fades_;
    std::vector<KeyRows> keys_;  ///< ascending
    std::vector<bool> fade_flags_;
    std::vector<ExactRow> exact_rows_;
    std::vector<std::size_t> live_left_of_clip_;  ///< clips ascending
};

RowIndex::RowIndex(const PlaylistDetail& list, std::span<const FadeRecord> fades)
    : list_(list), fades_(fades) {
    std::vector<KeyedRow> rows;
    rows.reserve(list_.rows.size());
    for (std::size_t number = 0; number < list_.rows.size(); ++number) {
        const PlacementRow& row = list_.rows[number];
        if (row.in_group) continue;
        rows.emplace_back(key_of(row.region_id, row.position), static_cast<std::uint32_t>(number));
    }
    std::ranges::sort(rows);
    keys_.reserve(rows.size());
    fade_flags_.reserve(rows.size());
    exact_rows_.reserve(rows.size());
    for (std::size_t first = 0; first < rows.size();) {
        std::size_t end = first + 1;
        while (end < rows.size() && rows[end].first == rows[first].first) ++end;
        add_key(std::span(rows).subspan(first, end - first));
        first = end;
    }
}

void RowIndex::add_key(std::span<const KeyedRow> rows) {
    const PlacementKey key = rows.front().first;
    const bool is_new_clip = keys_.empty() || clip_of(keys_.back().key) != clip_of(key);
    if (is_new_clip) live_left_of_clip_.push_back(0);
    KeyRows& added = keys_.emplace_back();
    added.key = key;
    added.clip_slot = live_left_of_clip_.size() - 1;
    added.fade_flags.first = fade_flags_.size();
    added.exact_rows.first = exact_rows_.size();
    for (const auto& row : rows) add_row(added, row.second);
    added.fade_flags.end = fade_flags_.size();
    added.exact_rows.end = exact_rows_.size();
    std::ranges::sort(std::span(exact_rows_).subspan(added.exact_rows.first), {}, &ExactRow::order);
}

void RowIndex::add_row(KeyRows& key, std::uint32_t number) {
    const PlacementRow& row = list_.rows[number];
    fade_flags_.push_back(is_usable_fade(row));
    if (is_usable_fade(row)) {
        key.has_fade_row = true;
        return;
    }
    key.has_ordinary_row = true;
    if (!row.live()) return;

    key.add_live_row(row);
    ++live_left_of_clip_[key.clip_slot];
    if (!row.is_fade) exact_rows_.push_back({upper_half(row.position), number});
}

bool RowIndex::take_fade_flag(std::size_t slot) {
    KeyRows& rows = keys_[slot];
    Range& flags = rows.fade_flags;
    const bool flag = flags.first < flags.end && fade_flags_[flags.first++];
    return flag || (rows.has_fade_row && !rows.has_ordinary_row);
}

std::optional<std::size_t> RowIndex::take_live_row(PlacementKey key, std::size_t at_or_behind) {
    const auto is_near = [&](std::size_t slot) {
        const PlacementKey other = keys_[slot].key;
        const auto distance = other < key ? key - other : other - key;
        return clip_of(other) == clip_of(key) && distance <= max_row_distance;
    };
    // No more keys lie near than the distance has places, so both walks are short.
    std::size_t behind = at_or_behind;
    while (behind < keys_.size() && is_near(behind) && keys_[behind].live_left == 0) ++behind;
    std::size_t end_in_front = at_or_behind;
    while (end_in_front > 0 && is_near(end_in_front - 1) && keys_[end_in_front - 1].live_left == 0)
        --end_in_front;

    const bool has_behind = behind < keys_.size() && is_near(behind);
    const bool has_in_front = end_in_front > 0 && is_near(end_in_front - 1);
    if (!has_behind && !has_in_front) return std::nullopt;
    const bool is_behind = has_behind && (!has_in_front || keys_[behind].key - key <
                                                               key - keys_[end_in_front - 1].key);
    const std::size_t slot = is_behind ? behind : end_in_front - 1;
    --keys_[slot].live_left;
    --live_left_of_clip_[keys_[slot].clip_slot];
    return slot;
}

bool RowIndex::take_live_row_of_clip(std::uint32_t clip) {
    const std::size_t slot = slot_at_or_behind(key_of(clip, 0));
    if (slot == keys_.size() || clip_of(keys_[slot].key) != clip) return false;
    std::size_t& left = live_left_of_clip_[keys_[slot].clip_slot];
    if (left == 0) return false;
    --left;
    return true;
}

std::optional<std::size_t> RowIndex::take_exact_row(std::size_t slot, std::uint64_t position) {
    const Range range = keys_[slot].exact_rows;
    const auto rows = std::span(exact_rows_).subspan(range.first, range.end - range.first);
    const auto first =
        std::ranges::lower_bound(rows, upper_half(position), {}, &ExactRow::upper_position);
    if (first == rows.end()) return std::nullopt;
    const auto next = static_cast<std::size_t>(first - rows.begin()) + first->taken;
    if (next >= rows.size() || rows[next].upper_position != upper_half(position)) {
        return std::nullopt;
    }
    ++first->taken;
    return rows[next].number;
}

enum class Fate : std::uint8_t { unmatched, matched, fade_reference };

/// What became of one placement in the search for its row.
struct Match {
    Fate fate = Fate::unmatched;
    std::optional<std::size_t> own_slot;   ///< of the key of its own place
    std::optional<std::size_t> rows_slot;  ///< of the row it was matched to, else its own
};

Match find_match(const ClipItem& clip, RowIndex& index) {
    const PlacementKey key = key_of(clip.region, clip.stored_position);
    const std::size_t slot = index.slot_at_or_behind(key);
    Match match;
    if (index.is_slot_of(key, slot)) match.own_slot = match.rows_slot = slot;
    if (match.own_slot && index.take_fade_flag(slot)) {
        match.fate = Fate::fade_reference;
    } else if (const auto found = index.take_live_row(key, slot)) {
        match.fate = Fate::matched;
        match.rows_slot = found;
    }
    return match;
}

void apply_rows(ClipItem& clip, const Match& match, RowIndex& index) {
    if (match.rows_slot) {
        const KeyRows& rows = index.rows_in(*match.rows_slot);
        clip.drawn_over_next = rows.drawn_over_next;
        clip.drawn_over_previous = rows.drawn_over_previous;
        clip.colour_place = rows.colour;
        clip.locked = rows.locked;
        clip.muted = rows.muted.value_or(false);
    }
    if (!match.own_slot) return;
    if (const auto row = index.take_exact_row(*match.own_slot, clip.stored_position)) {
        clip.edit_row = static_cast<std::int32_t>(*row);
        clip.placed_at = index.row(*row).placed_at;
        clip.tail_kept = index.keeps_tail(*row);
        clip.muted = index.row(*row).muted;
    }
}

/// True if the clip stays on its track; then it has what its rows say.
bool settle_clip(ClipItem& clip, const Match& match, RowIndex& index, bool keep_fade_clips,
                 TimelineTallies& tallies) {
    if (match.fate == Fate::fade_reference) {
        // The rows of its key are the fade's and, it may be, those of a clip of the same number:
        // none of them speaks of the rendered file.
        clip.is_fade_reference = true;
        if (!keep_fade_clips) ++tallies.fade_references_dropped;
        return keep_fade_clips;
    }
    if (match.fate == Fate::unmatched && !index.take_live_row_of_clip(clip.region)) {
        ++tallies.deleted_placements;
        return false;
    }
    apply_rows(clip, match, index);
    return true;
}

}  // namespace

bool row_keeps_tail(const PlaylistDetail& edit_list, std::span<const FadeRecord> fades,
                    std::size_t row) {
    if (edit_list.rows[row].overlap == overlap_over_next) return true;
    if (row + 1 >= edit_list.rows.size()) return false;
    const PlacementRow& next = edit_list.rows[row + 1];
    const bool is_usable = next.is_fade && next.region_id < fades.size();
    return is_usable && fades[next.region_id].kind == FadeKind::fade_out;
}

void match_rows(TimelineTrack& track, const PlaylistDetail& edit_list,
                std::span<const FadeRecord> fades, bool keep_fade_clips, TimelineTallies& tallies) {
    RowIndex index(edit_list, fades);
    std::vector<Match> matches;
    matches.reserve(track.clips.size());
    for (const auto& clip : track.clips) matches.push_back(find_match(clip, index));

    // Only now is it known which rows no placement claimed: they can vouch for a clip that lies
    // elsewhere than its row says.
    auto kept_end = track.clips.begin();
    for (std::size_t i = 0; i < track.clips.size(); ++i) {
        ClipItem& clip = track.clips[i];
        if (!settle_clip(clip, matches[i], index, keep_fade_clips, tallies)) continue;
        if (&clip != &*kept_end) *kept_end = std::move(clip);
        ++kept_end;
    }
    track.clips.erase(kept_end, track.clips.end());
}

}  // namespace tanrove
