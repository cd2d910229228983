// The three places of a movie, each asked once.
#include "project/movie_search.hpp"

#include <utility>
#include <vector>

namespace tanrove {

MovieSearch::MovieSearch(MoviePlaces places, CanBeRead can_open)
    : places_(std::move(places)), can_open_(std::move(can_open)) {}

const MoviePath& MovieSearch::find(const std::string& file) {
    const auto known = answers_.find(file);
    if (known != answers_.end()) return known->second;
    return answers_.emplace(file, look_for(file)).first->second;
}

MoviePath MovieSearch::look_for(const std::string& file) const {
    std::vector<std::string> paths = {places_.media_parent + "/Video Files/" + file,
                                      places_.session_folder + "/" + file};
    const auto stored = places_.stored_paths.find(file);
    if (stored != places_.stored_paths.end()) paths.push_back(stored->second);
    for (const std::string& path : paths) {
        if (can_open_(path)) {
            return {.path = path, .found = true, .elsewhere = path != paths.front()};
        }
    }
    return {.path = file, .found = false};
}

}  // namespace tanrove
