// The audio folder of a run and the folders around it, as texts: of the disk only the current
// folder is asked for.
#include "run/media_folders.hpp"

#include <cctype>
#include <filesystem>

#include "base/paths.hpp"
#include "base/platform.hpp"
#include "run/output_path.hpp"

namespace tanrove {

namespace {

/// "/" stays what it is: a folder's name never becomes empty.
std::string without_slashes_at_end(std::string folder) {
    while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
    return folder;
}

/// True of paths of any system: "/s", "\\\\server\\s", "D:\\s".
bool is_absolute(const std::string& path) {
    const bool has_drive = path.size() > 1 && path[1] == ':' &&
                           std::isalpha(static_cast<unsigned char>(path.front())) != 0;
    return has_drive || path.starts_with('/') || path.starts_with('\\');
}

/// Counted from the current folder, without a look at the disk: links stay links.
std::string absolute(const std::string& path) {
    std::error_code error;
    const auto current = std::filesystem::current_path(error);
    if (error || is_absolute(path)) return path;
    return without_slashes_at_end(path_text((current / native_path(path)).lexically_normal()));
}

/// True if the session lies in the current folder, so named, and the project goes beside it.
bool project_counts_paths_as_we_do(const RunOptions& options) {
    if (file_name_of(options.session_path) != options.session_path) return false;
    return absolute(folder_of(project_path(options))) == absolute(".");
}

}  // namespace

std::string audio_folder_beside(const std::string& session_path) {
    return folder_of(session_path) + "/Audio Files";
}

MediaFolders media_folders(const RunOptions& options) {
    const std::string beside = audio_folder_beside(options.session_path);
    const bool stays = project_counts_paths_as_we_do(options);
    MediaFolders folders;
    folders.media_dir =
        without_slashes_at_end(options.audio_dir_given ? options.audio_dir : beside);
    if (!stays || folders.media_dir != beside) folders.media_dir = absolute(folders.media_dir);
    folders.media_parent = folder_of(folders.media_dir);
    folders.session_folder = folder_of(options.session_path);
    if (!stays) folders.session_folder = absolute(folders.session_folder);
    return folders;
}

}  // namespace tanrove
