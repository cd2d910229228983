// The search for audio files: the media folder, the folder that the session itself names for the
// file, then those in which Pro Tools keeps what it rendered, bounced or recorded.
#include "project/media_search.hpp"

#include <array>
#include <unordered_set>
#include <utility>

namespace tanrove {

namespace {

constexpr std::array<const char*, 3> usual_folders = {"Rendered Files", "Bounced Files",
                                                      "Audio Files"};

}  // namespace

MediaSearch::MediaSearch(std::string media_dir, std::string media_parent, AudioFileFolders folders,
                         CanBeRead can_open)
    : media_dir_(std::move(media_dir)),
      media_parent_(std::move(media_parent)),
      folders_(std::move(folders)),
      can_open_(std::move(can_open)) {}

const MediaPath& MediaSearch::find(std::string_view file) {
    return answer(file);
}

const MediaPath& MediaSearch::use(std::string_view file) {
    MediaPath& used = answer(file);
    used.is_used = true;
    return used;
}

MediaPath& MediaSearch::answer(std::string_view file) {
    if (latest_ == nullptr || latest_->first != file) {
        auto known = answers_.find(file);
        if (known == answers_.end()) {
            std::string name(file);
            MediaPath path = look_for(name);
            known = answers_.emplace(std::move(name), std::move(path)).first;
        }
        latest_ = &*known;
    }
    return latest_->second;
}

MediaPath MediaSearch::look_for(const std::string& file) const {
    MediaPath answer{.path = media_dir_ + "/" + file, .sibling_folder = {}};
    answer.found = can_open_(answer.path);
    if (answer.found || media_parent_.empty()) return answer;

    std::vector<std::string> folders;
    const auto listed = folders_.find(file);
    if (listed != folders_.end()) folders.push_back(listed->second);
    folders.insert(folders.end(), usual_folders.begin(), usual_folders.end());

    for (const std::string& folder : folders) {
        std::string path = media_parent_;
        path.append("/").append(folder).append("/").append(file);
        if (!can_open_(path)) continue;
        answer.path = path;
        answer.sibling_folder = folder;
        answer.found = true;
        answer.in_media_folder = path.starts_with(media_dir_ + "/");
        break;
    }
    return answer;
}

MediaTallies count_listed_files(MediaSearch& search, const std::vector<AudioFileEntry>& files) {
    MediaTallies tallies;
    std::unordered_set<std::string> counted;
    for (const AudioFileEntry& entry : files) {
        const std::string name = file_name_of(entry.name);
        if (!counted.insert(name).second) continue;
        const MediaPath& answer = search.find(name);
        if (!answer.found && answer.is_used) {
            tallies.missing_files.push_back(name);
        } else if (!answer.found) {
            ++tallies.missing_unused;
        } else if (!answer.sibling_folder.empty()) {
            ++tallies.files_in_siblings;
            ++tallies.files_by_folder[answer.sibling_folder];
        }
    }
    return tallies;
}

}  // namespace tanrove
