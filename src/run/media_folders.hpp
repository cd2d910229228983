// Where a session's audio files are looked for: the folder that the user named, or the one that
// Pro Tools puts beside the session.
#pragma once

#include <string>

#include "run/run_options.hpp"

namespace tanrove {

/// The two folders that the media search starts from.
struct MediaFolders {
    std::string media_dir;     ///< the audio folder, without slashes at its end
    std::string media_parent;  ///< the folder around it; "." if its name tells none
};

/// The "Audio Files" folder beside the session.
std::string audio_folder_beside(const std::string& session_path);

/// The folders for these options: `audio_dir` where it was given, else the one beside the session.
MediaFolders media_folders(const RunOptions& options);

}  // namespace tanrove
