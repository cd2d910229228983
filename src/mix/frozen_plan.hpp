// Which tracks were frozen, and which of them arrive frozen: those whose render is known, lies on
// the disk, and stands for all that the track plays.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "mix/track_plan.hpp"
#include "session/freeze_renders.hpp"
#include "session/session_lists.hpp"
#include "session/tempo_map.hpp"

namespace tanrove {

/// Why a frozen track arrives unfrozen, in the order in which the reasons are looked for.
enum class FreezeRefusal : std::uint8_t {
    several_renders,
    two_mono_files,
    unidentified,
    not_on_disk,
    has_lanes,
    feeds_surround_panner,
    unreadable,
    no_temporary_file,
};

struct RefusedFreeze {
    std::string track;
    FreezeRefusal reason = FreezeRefusal::unidentified;
    std::string render = {};  ///< file name, where the reason names it
};

struct FrozenTallies {
    int frozen_tracks = 0;  ///< in the session, whatever becomes of them
    int delivered = 0;      ///< of those: written frozen
    std::vector<RefusedFreeze> refused;
};

/// What the disk says of a render.
struct RenderFile {
    std::string path;
    bool found = false;
    bool readable = false;  ///< it begins as an audio file does
};

struct FrozenInput {
    FreezeRenders renders;  ///< by the names of the tracks
    std::span<const Region> regions;
    std::span<const AudioFileEntry> files;
    std::function<RenderFile(const std::string& file)> find_render;
    double rate_hz = 48000;  ///< above 0
    bool keep_frozen = false;
};

/// True if one of the files is a render of a frozen track. Few sessions have any, and the clips of
/// all others need not be looked through.
bool has_freeze_files(std::span<const AudioFileEntry> files);

/// The names under which Pro Tools may have kept renders of these tracks.
std::vector<std::string> names_of_renders(const std::vector<TrackPlan>& tracks);

/// Gives each track that can be delivered frozen its render, if that is wanted, and counts those
/// that were frozen. The disk is asked only about renders that nothing else rules out.
void plan_frozen(std::vector<TrackPlan>& tracks, const FrozenInput& input, const TempoClock& clock,
                 FrozenTallies& tallies);

}  // namespace tanrove
