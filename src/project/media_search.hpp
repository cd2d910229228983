// Where the audio files of the session really lie. A session knows its files by name; the search
// tries the media folder first, then the folders beside it, and remembers each answer for the run.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/paths.hpp"
#include "session/audio_file_folders.hpp"
#include "session/session_lists.hpp"

namespace tanrove {

/// The answer of the search for one file name.
struct MediaPath {
    std::string path;            ///< what a `FILE` line states, found or not
    std::string sibling_folder;  ///< folder beside the media folder that holds it; else empty
    bool found = false;
    bool in_media_folder = true;  ///< the path leads into the media folder
    bool is_used = false;         ///< an item of the project plays it
};

class MediaSearch {
public:
    using CanBeRead = std::function<bool(const std::string&)>;

    /// `media_dir` has no slash at its end; `media_parent` is the folder that holds it, empty if
    /// none is known. `folders` are those that the session lists for its files.
    MediaSearch(std::string media_dir, std::string media_parent, AudioFileFolders folders,
                CanBeRead can_open = can_be_read);

    /// The path of a file by its bare name. A file that lies nowhere keeps its path in the media
    /// folder. The disk is asked once for each name; the reference stays valid.
    const MediaPath& find(std::string_view file);

    /// The same for an item that is written now.
    const MediaPath& use(std::string_view file);

private:
    using Answers = std::map<std::string, MediaPath, std::less<>>;

    MediaPath& answer(std::string_view file);
    MediaPath look_for(const std::string& file) const;

    std::string media_dir_;
    std::string media_parent_;
    AudioFileFolders folders_;
    CanBeRead can_open_;
    Answers answers_;
    Answers::value_type* latest_ = nullptr;  // clips of one file come in runs
};

/// What became of the audio files that the session lists. A name counts once.
struct MediaTallies {
    int files_in_siblings = 0;                   ///< found beside the media folder
    std::map<std::string, int> files_by_folder;  ///< of those: how many in which folder
    std::vector<std::string> missing_files;  ///< of items, found nowhere; in the session's order
    int missing_unused = 0;                  ///< found nowhere, and no item plays them
};

/// Searches every file of the session's list. To be called when all items are written.
MediaTallies count_listed_files(MediaSearch& search, const std::vector<AudioFileEntry>& files);

}  // namespace tanrove
