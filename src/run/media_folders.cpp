// The audio folder of a run and the folder around it, as texts: nothing here looks at the disk.
#include "run/media_folders.hpp"

#include "base/paths.hpp"

namespace tanrove {

namespace {

/// "/" stays what it is: a folder's name never becomes empty.
std::string without_slashes_at_end(std::string folder) {
    while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
    return folder;
}

}  // namespace

std::string audio_folder_beside(const std::string& session_path) {
    return folder_of(session_path) + "/Audio Files";
}

MediaFolders media_folders(const RunOptions& options) {
    const std::string& given = options.audio_dir;
    const std::string folder =
        options.audio_dir_given ? given : audio_folder_beside(options.session_path);
    MediaFolders folders;
    folders.media_dir = without_slashes_at_end(folder);
    folders.media_parent = folder_of(folders.media_dir);
    return folders;
}

}  // namespace tanrove
