// Joins tracks, rows and strips, each once.
#include "mix/track_strips.hpp"

#include <algorithm>
#include <map>

namespace tanrove {

namespace {

/// Finds the mixer's records. Of strips that share a name the first counts.
class StripFinder {
public:
    StripFinder(const MixerRecords& mixer, const StripNames& names)
        : mixer_(mixer),
          names_(names),
          strips_are_rows_(
              std::ranges::equal(mixer.strips, mixer.rows, {}, &Strip::name, shown_name)) {
        for (const Strip& strip : mixer.strips) {
            const bool is_known = strip.present && !strip.name.empty();
            if (is_known) strip_of_name_.try_emplace(strip.name, &strip);
        }
    }

    const Strip* called(std::string_view name) const {
        const auto found = strip_of_name_.find(name);
        return found == strip_of_name_.end() ? nullptr : found->second;
    }

    /// The strip of a track that was renamed may still bear the name from its creation.
    const Strip* of_row(std::size_t row) const {
        if (strips_are_rows_) return mixer_.strips[row].present ? &mixer_.strips[row] : nullptr;
        if (const Strip* strip = called(shown_name(mixer_.rows[row]))) return strip;
        const std::string& original = mixer_.rows[row].original_name;
        return names_.is_shown(original) ? nullptr : called(original);
    }

private:
    const MixerRecords& mixer_;
    const StripNames& names_;
    bool strips_are_rows_ = false;  ///< a row's place is its strip's
    std::map<std::string_view, const Strip*> strip_of_name_;
};

}  // namespace

TrackStrips::TrackStrips(const std::vector<TrackPlan>& tracks, const MixerRecords& mixer)
    : mixer_(mixer),
      names_(mixer.rows),
      strip_of_track_(tracks.size()),
      track_of_row_(mixer.rows.size()) {
    const StripFinder finder(mixer_, names_);
    std::vector<bool> is_placed(mixer.rows.size());
    for (const TrackPlan& track : tracks) {
        if (track.strip_row && *track.strip_row < is_placed.size())
            is_placed[*track.strip_row] = true;
    }
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        if (tracks[i].is_alternate) continue;
        const auto row = row_of(tracks[i], is_placed);
        strip_of_track_[i] = {
            .row = row,
            .strip = row ? finder.of_row(*row) : finder.called(tracks[i].session_name),
            .display = display_of(row)};
        if (row && !track_of_row_[*row]) track_of_row_[*row] = i;
    }
}

std::optional<std::size_t> TrackStrips::row_of(const TrackPlan& track,
                                               const std::vector<bool>& is_placed) const {
    if (track.strip_row)
        return *track.strip_row < mixer_.rows.size() ? track.strip_row : std::nullopt;
    const auto row = names_.row_called(track.session_name);
    const bool is_anothers = row && is_placed[*row] && !names_.is_shown(track.session_name);
    return is_anothers ? std::nullopt : row;
}

const TrackDisplay* TrackStrips::display_of(std::optional<std::size_t> row) const {
    return row && *row < mixer_.displays.size() ? &mixer_.displays[*row] : nullptr;
}

std::vector<std::optional<std::size_t>> TrackStrips::rows() const {
    std::vector<std::optional<std::size_t>> rows;
    rows.reserve(strip_of_track_.size());
    for (const TrackStrip& strip : strip_of_track_) rows.push_back(strip.row);
    return rows;
}

const TrackDisplay* TrackStrips::display_named(std::string_view name) const {
    return display_of(names_.row_shown(name));
}

}  // namespace tanrove
