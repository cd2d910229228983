// Placements joined with the rows of their playlists, overlaps settled, and all of it in seconds.
// The list of placements tells a position by its distance from the tick origin; the rows of the
// playlists hold it as it is stored, with the clip's mute, lock, colour and how it is drawn.
#include "timeline/place_midi_clips.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "session/playlist_walk.hpp"
#include "session/record_forms.hpp"

namespace tanrove {

namespace {

/// A playlist that does not tell its timebase counts samples when its positions could be that:
/// ticks lie at their origin, which samples reach after months.
constexpr double most_sample_seconds = 86400;

/// Samples lie as far from the tick origin as ticks never do.
constexpr auto least_sample_distance = static_cast<std::int64_t>(tick_origin / 2);

/// Two clips that overlap by no more than this are neighbours whose edges were rounded.
constexpr std::int64_t least_overlap = 960;

/// A clip on its way, with how its row draws it; 0 without a row.
struct Placement {
    PlacedMidiClip clip;
    std::uint32_t overlap = 0;
};

/// What covers a clip, in its own unit.
struct Cut {
    std::int64_t tail = 0;  ///< the length that is left; 0 where the tail stands
    std::int64_t head = 0;  ///< what is covered of its head
    bool whole = false;     ///< the clip before it covers all of it
};

/// The rows of a track's playlists by what they place and where.
template <typename Row>
class RowFinder {
public:
    void add(std::uint32_t region, std::uint64_t distance, const Row& row) {
        rows_[{region, distance}].rows.push_back(row);
    }

    /// The next row that places the region there; each row is given out once.
    std::optional<Row> take(std::uint32_t region, std::int64_t distance) {
        const auto found = rows_.find({region, static_cast<std::uint64_t>(distance)});
        if (found == rows_.end() || found->second.next == found->second.rows.size()) return {};
        return found->second.rows[found->second.next++];
    }

private:
    struct Queue {
        std::vector<Row> rows;
        std::size_t next = 0;
    };
    std::map<std::pair<std::uint32_t, std::uint64_t>, Queue> rows_;
};

struct EditRow {
    const PlacementRow* row = nullptr;
    bool in_samples = false;
};

/// What the playlists tell of one track.
struct TrackRows {
    RowFinder<EditRow> edit_rows;
    RowFinder<std::uint64_t> stored_positions;
    std::optional<bool> tick_based;
    bool is_kind_read = false;  ///< `tick_based` is what a playlist says
    std::vector<Placement> placements;
};

class Placing {
public:
    Placing(const MidiPlacingInput& input, const TempoClock& clock, MidiTallies& tallies)
        : input_(input), clock_(clock), tallies_(tallies), tracks_(input.tracks.size()) {
        for (std::size_t i = 0; i < input.tracks.size(); ++i) {
            track_of_id_.emplace(input.tracks[i].id, i);
            track_of_playlist_.emplace(input.tracks[i].name, i);
        }
        gather_edit_rows();
        for (const MidiPlaylistRow& row : input.rows) {
            const auto track = track_of_playlist_.find(row.playlist);
            if (track == track_of_playlist_.end()) continue;
            tracks_[track->second].stored_positions.add(
                row.region, distance_from_origin(row.position), row.position);
        }
    }

    std::vector<PlacedMidiTrack> place() {
        for (const ClipTrack& row : input_.placements) {
            const auto track = track_of_id_.find(row.index);
            if (row.is_clip_group || track == track_of_id_.end()) continue;
            if (row.region_index < input_.regions.size()) add(row, tracks_[track->second]);
        }
        std::vector<PlacedMidiTrack> placed;
        placed.reserve(tracks_.size());
        for (std::size_t i = 0; i < tracks_.size(); ++i) {
            auto clips = settled(std::move(tracks_[i].placements));
            placed.push_back({input_.tracks[i].name, tracks_[i].tick_based, std::move(clips)});
        }
        return placed;
    }

private:
    /// A playlist belongs to the track of its name; under another name, to the one of its number,
    /// if that has no playlist of its own name: it may be the other playlist of a track.
    void gather_edit_rows() {
        std::set<std::string_view> names;
        for (const PlaylistDetail& playlist : input_.playlists) names.insert(playlist.name);
        for (std::size_t p = 0; p < input_.playlists.size(); ++p) {
            const PlaylistDetail& playlist = input_.playlists[p];
            const bool is_next = p < tracks_.size() && !names.contains(input_.tracks[p].name);
            if (is_next) track_of_playlist_.emplace(playlist.name, p);
            const auto found = track_of_playlist_.find(playlist.name);
            if (found == track_of_playlist_.end() || !playlist.is_read) continue;
            TrackRows& track = tracks_[found->second];
            if (!track.tick_based) track.tick_based = playlist.in_ticks;
            track.is_kind_read = true;
            for (const PlacementRow& row : playlist.rows) {
                if (row.in_group) continue;
                const std::uint64_t distance =
                    playlist.in_ticks ? row.position : distance_from_origin(row.position);
                track.edit_rows.add(row.region_id, distance, {&row, !playlist.in_ticks});
            }
        }
    }

    void add(const ClipTrack& row, TrackRows& track) {
        const Region& region = input_.regions[row.region_index];
        Placement placement;
        PlacedMidiClip& clip = placement.clip;
        clip.region = row.region_index;
        clip.length = std::max<std::int64_t>(region.length, 0);
        clip.source_offset = region.source_offset;
        const auto edit_row = track.edit_rows.take(region.index, row.start);
        const auto stored = track.stored_positions.take(region.index, row.start);
        if (edit_row) {
            const PlacementRow& found = *edit_row->row;
            clip.in_samples = edit_row->in_samples;
            clip.muted = found.muted;
            clip.locked = found.locked;
            clip.colour_place = found.colour;
            placement.overlap = found.overlap;
        } else if (track.is_kind_read) {
            clip.in_samples = !*track.tick_based;
        } else if (stored) {
            clip.in_samples = *stored < tick_origin &&
                              static_cast<double>(*stored) < most_sample_seconds * input_.rate_hz;
            if (!track.tick_based) track.tick_based = !clip.in_samples;
        } else {
            clip.in_samples = row.start > least_sample_distance;
        }
        if (clip.length == 0) return;
        clip.position = position_of(row, stored, clip.in_samples);
        if (clip.in_samples) ++tallies_.sample_based_clips;
        track.placements.push_back(placement);
    }

    /// A clip may begin a hair before the session's origin, as its stored ticks can: that is the
    /// origin.
    static std::int64_t position_of(const ClipTrack& row, std::optional<std::uint64_t> stored,
                                    bool in_samples) {
        const auto origin = static_cast<std::int64_t>(tick_origin);
        if (!stored) return std::max<std::int64_t>(in_samples ? origin - row.start : row.start, 0);
        const auto position = static_cast<std::int64_t>(*stored);
        return in_samples ? position : std::max<std::int64_t>(position - origin, 0);
    }

    std::vector<PlacedMidiClip> settled(std::vector<Placement> placements) {
        std::ranges::stable_sort(placements, {}, [](const Placement& placement) {
            return std::pair(placement.clip.position, placement.clip.region);
        });
        const std::vector<Cut> cuts = overlap_cuts(placements);
        std::vector<PlacedMidiClip> clips;
        for (std::size_t i = 0; i < placements.size(); ++i) {
            PlacedMidiClip& clip = placements[i].clip;
            apply(cuts[i], clip);
            set_seconds(clip);
            clips.push_back(clip);
        }
        return clips;
    }

    /// Of two neighbours that overlap, the one that Pro Tools draws below gives way.
    static std::vector<Cut> overlap_cuts(const std::vector<Placement>& placements) {
        std::vector<Cut> cuts(placements.size());
        for (std::size_t i = 0; i + 1 < placements.size(); ++i) {
            const PlacedMidiClip& first = placements[i].clip;
            const PlacedMidiClip& second = placements[i + 1].clip;
            const std::int64_t gap = second.position - first.position;
            const std::int64_t over = first.length - gap;
            if (gap <= 0 || over <= least_overlap) continue;
            if (first.in_samples != second.in_samples) continue;
            const std::uint32_t overlap = placements[i + 1].overlap;
            if (overlap == overlap_over_next) {
                cuts[i + 1].whole = over >= second.length;
                cuts[i + 1].head = cuts[i + 1].whole ? 0 : over;
            } else if (overlap == overlap_over_previous || overlap == overlap_in_order) {
                cuts[i].tail = gap;
            }
        }
        return cuts;
    }

    void apply(const Cut& cut, PlacedMidiClip& clip) {
        if (clip.in_samples) {
            if (cut.tail > 0 || cut.head > 0 || cut.whole) ++tallies_.sample_based_overlaps;
            return;
        }
        const std::int64_t end = cut.tail > 0 ? std::min(cut.tail, clip.length) : clip.length;
        if (cut.whole || cut.head >= end) {
            clip.muted = true;
            ++tallies_.covered_clips;
            return;
        }
        if (end < clip.length) {
            clip.length = end;
            ++tallies_.tail_cuts;
        }
        if (cut.head > 0) {
            clip.position += cut.head;
            clip.length -= cut.head;
            clip.source_offset -= cut.head;
            ++tallies_.head_cuts;
        }
    }

    void set_seconds(PlacedMidiClip& clip) const {
        const auto position = static_cast<double>(clip.position);
        const auto length = static_cast<double>(clip.length);
        if (clip.in_samples) {
            clip.start = position / input_.rate_hz;
            clip.length_seconds = length / input_.rate_hz;
        } else {
            clip.start = clock_.seconds(position);
            clip.length_seconds = clock_.seconds(position + length) - clip.start;
        }
    }

    const MidiPlacingInput& input_;
    const TempoClock& clock_;
    MidiTallies& tallies_;
    std::vector<TrackRows> tracks_;
    std::map<std::uint16_t, std::size_t> track_of_id_;
    std::map<std::string_view, std::size_t> track_of_playlist_;
};

}  // namespace

std::vector<PlacedMidiTrack> place_midi_clips(const MidiPlacingInput& input,
                                              const TempoClock& clock, MidiTallies& tallies) {
    return Placing(input, clock, tallies).place();
}

}  // namespace tanrove
