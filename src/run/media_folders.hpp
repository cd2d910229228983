// Where a session's audio files and movies are looked for: the folder that the user named, or the
// one that Pro Tools puts beside the session. REAPER counts relative paths from the project's
// folder, this program from the current one; where the two differ the folders are absolute.
#pragma once

#include <string>

#include "run/run_options.hpp"

namespace tanrove {

/// The folders that the searches start from.
struct MediaFolders {
    std::string media_dir;     ///< the audio folder, without slashes at its end
    std::string media_parent;  ///< the folder around it; "." if its name tells none
    std::string session_folder;
};

/// The "Audio Files" folder beside the session.
std::string audio_folder_beside(const std::string& session_path);

/// The folders for these options: `audio_dir` where it was given, else the one beside the session.
/// "./Audio Files" stays where the session lies in the current folder and the project beside it.
MediaFolders media_folders(const RunOptions& options);

}  // namespace tanrove
