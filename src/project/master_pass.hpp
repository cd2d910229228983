// Puts the master fader onto a track of its own, through which all that played to the master plays.
// Pro Tools runs a master fader's plug-ins behind the fader, REAPER runs the master's in front of
// it: with the fader on a track and the plug-ins on the master the order is Pro Tools' again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/whole_file.hpp"

namespace tanrove {

/// The track that takes the fader.
struct MasterTrackPlan {
    std::string name;
    double fader_db = 0;
    bool automation_off = false;  ///< an envelope carries no level, so the fader does
    std::uint32_t colour = 0;     ///< of the `PEAKCOL` line
    std::optional<std::string> in_front_of =
        std::nullopt;  ///< name of a track; nullopt: it stands last
};

/// A project's text with the master track in it.
struct MasterTrackText {
    std::string text;
    std::size_t rerouted = 0;  ///< tracks that play through it
};

/// nullopt if no track plays to the master, or if the text is not what was expected.
std::optional<MasterTrackText> with_master_track(std::string_view text,
                                                 const MasterTrackPlan& plan);

/// The same on the file: how many tracks were rerouted; 0 if the file is what it was.
std::size_t give_master_its_track(const std::string& path, const MasterTrackPlan& plan,
                                  const DiskSteps& disk);

}  // namespace tanrove
