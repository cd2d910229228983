// The text of the `<TRACK` blocks: each planned track with its mixer values, lanes and items.
#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "base/text_sink.hpp"
#include "mix/track_plan.hpp"
#include "plugins/fx_slot.hpp"
#include "project/media_search.hpp"
#include "timeline/take_envelope.hpp"

namespace tanrove {

class FreezeWriter;

/// What went into one track.
struct TrackFacts {
    std::string name;  ///< as the project has it
    int clips = 0;     ///< audio items, those on lanes included
    int notes = 0;
};

/// What went into the project.
struct WrittenTallies {
    int tracks = 0;
    int clips = 0;              ///< audio items, those on lanes included
    int notes = 0;              ///< MIDI notes
    int clips_in_siblings = 0;  ///< of `clips`: those whose file lies outside the media folder
    int locked_clips = 0;       ///< items, of audio, MIDI and groups without audio
    int time_tracks = 0;        ///< of `tracks`: their items keep their times
    int beats_tracks = 0;       ///< of `tracks`: their items keep their bars and beats
    int automation_points = 0;  ///< of tracks and the master, those that follow the fader included
    int automated_tracks = 0;   ///< tracks with such points; the master counts
    int send_points = 0;        ///< of the envelopes of sends
    int placeholders = 0;       ///< empty items in place of clip groups without audio
    std::set<std::string> untold_paths = {};  ///< of items: paths that no project line can hold
};

/// Counts the path of an item's file, if a project line cannot hold it.
void count_untold_path(const std::string& path, WrittenTallies& tallies);

/// The FX chains of a project.
struct ProjectChains {
    std::span<const ChainPlan> of_tracks = {};  ///< in step with the tracks
    std::span<const ChainPlan> of_takes = {};   ///< as items name them
};

/// Told before each track is written: its index from 0 and the number of tracks.
using TrackProgress = std::function<void(std::size_t index, std::size_t count)>;

/// Writes the envelopes of a track that have points.
void write_track_envelopes(TextSink& out, const TrackPlan& plan, WrittenTallies& tallies);

/// Writes one track. `index` is its place in the project's track list, from 0; its identifiers are
/// made from it. Without a `freezer` it is written unfrozen, whatever its plan says.
TrackFacts write_track(TextSink& out, const TrackPlan& plan, const ProjectChains& chains,
                       std::size_t index, MediaSearch& media, TakePlanner& takes,
                       WrittenTallies& tallies, FreezeWriter* freezer = nullptr);

/// The chain of the plan with this index; tracks behind the last chain have none.
const ChainPlan& chain_of(std::span<const ChainPlan> chains, std::size_t index);

/// Writes all tracks in their order and tells what went into each.
/// `progress` may be empty.
std::vector<TrackFacts> write_tracks(TextSink& out, const std::vector<TrackPlan>& plans,
                                     const ProjectChains& chains, MediaSearch& media,
                                     TakePlanner& takes, WrittenTallies& tallies,
                                     const TrackProgress& progress,
                                     FreezeWriter* freezer = nullptr);

}  // namespace tanrove
