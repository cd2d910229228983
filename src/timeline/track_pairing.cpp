// Finds for each track the playlist record that is its own.
#include "timeline/track_pairing.hpp"

#include <algorithm>
#include <map>

namespace tanrove {

namespace {

/// Numbers of records, ascending, by something that they share.
template <typename Key>
class RecordsBy {
public:
    void add(const Key& key, std::size_t record) { records_[key].push_back(record); }

    /// The first record with this key at or behind the cursor.
    std::optional<std::size_t> first_from(std::size_t cursor, const Key& key) const {
        const auto found = records_.find(key);
        if (found == records_.end()) return std::nullopt;
        const auto record = std::ranges::lower_bound(found->second, cursor);
        if (record == found->second.end()) return std::nullopt;
        return *record;
    }

private:
    std::map<Key, std::vector<std::size_t>> records_;
};

/// What the rows of one edit list say about the number of its record's placements.
struct RowCounts {
    std::size_t fades_without_clip = 0;  ///< fade rows that the clip lists could not show as clips
    bool has_group = false;
};

RowCounts count_rows(const PlaylistDetail& list, std::size_t region_count) {
    RowCounts counts;
    for (const PlacementRow& row : list.rows) {
        if (row.in_group) {
            counts.has_group = true;
        } else if (row.is_fade && row.region_id >= region_count) {
            ++counts.fades_without_clip;
        }
    }
    return counts;
}

/// Pairs by what both lists hold and in which order: for sessions whose lists number nothing.
class Pairing {
public:
    explicit Pairing(const TimelineInput& input) : input_(input) {
        const bool lists_match = edit_lists_match_records(input);
        const auto counted = std::min(input.records.size(), input.clip_counts.size());
        for (std::size_t i = 0; i < counted; ++i) by_clip_count_.add(input.clip_counts[i], i);
        if (!lists_match) return;

        row_counts_.reserve(counted);
        for (std::size_t i = 0; i < counted; ++i) {
            const std::string_view name = input.records[i].name;
            row_counts_.push_back(count_rows(input.edit_lists[i], input.regions.size()));
            by_name_.add(name, i);
            if (row_counts_[i].has_group) with_group_by_name_.add(name, i);
            if (row_counts_[i].fades_without_clip > 0) with_fades_by_name_.add(name, i);
        }
    }

    std::optional<std::size_t> next(const PairingTrack& track) {
        auto record = with_fade_rows(track);
        if (!record) record = by_clip_count_.first_from(cursor_, track.placement_count);
        if (!record) record = with_group_by_name_.first_from(cursor_, track.name);
        if (!record) record = with_fades_by_name_.first_from(cursor_, track.name);
        if (record) cursor_ = *record + 1;
        return record;
    }

private:
    /// A record of the track's own name whose surplus over the track's placements is exactly its
    /// fade rows. Only the first of that name is asked.
    std::optional<std::size_t> with_fade_rows(const PairingTrack& track) const {
        const auto record = by_name_.first_from(cursor_, track.name);
        if (!record) return std::nullopt;
        const auto fades = row_counts_[*record].fades_without_clip;
        const bool fits =
            fades != 0 && input_.clip_counts[*record] == track.placement_count + fades;
        return fits ? record : std::nullopt;
    }

    const TimelineInput& input_;
    std::size_t cursor_ = 0;
    std::vector<RowCounts> row_counts_;
    RecordsBy<std::string_view> by_name_;
    RecordsBy<std::string_view> with_group_by_name_;
    RecordsBy<std::string_view> with_fades_by_name_;
    RecordsBy<std::size_t> by_clip_count_;
};

/// The first record of each number, where tracks and records have numbers at all.
std::map<std::uint16_t, std::size_t> numbered_records(const std::vector<PairingTrack>& tracks,
                                                      const TimelineInput& input) {
    std::map<std::uint16_t, std::size_t> records;
    const bool tracks_are_numbered = std::ranges::any_of(
        tracks, [](const PairingTrack& track) { return track.playlist.has_value(); });
    if (!tracks_are_numbered) return records;
    for (std::size_t i = 0; i < input.records.size(); ++i) {
        if (input.records[i].number) records.try_emplace(*input.records[i].number, i);
    }
    return records;
}

}  // namespace

bool edit_lists_match_records(const TimelineInput& input) {
    return input.records.size() == input.edit_lists.size();
}

std::vector<std::optional<std::size_t>> pair_with_records(const std::vector<PairingTrack>& tracks,
                                                          const TimelineInput& input) {
    std::vector<std::optional<std::size_t>> records;
    records.reserve(tracks.size());
    if (const auto numbered = numbered_records(tracks, input); !numbered.empty()) {
        for (const auto& track : tracks) {
            const auto found = track.playlist ? numbered.find(*track.playlist) : numbered.end();
            records.push_back(found == numbered.end() ? std::nullopt
                                                      : std::optional(found->second));
        }
        return records;
    }
    Pairing pairing(input);
    for (const auto& track : tracks) records.push_back(pairing.next(track));
    return records;
}

}  // namespace tanrove
