// Where the movies of the session really lie: in the folder that Pro Tools keeps for them, beside
// the session, or where they lay on its author's machine.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "base/paths.hpp"

namespace tanrove {

/// Where to look, in this order.
struct MoviePlaces {
    std::string media_parent;                         ///< the folder that holds "Video Files"
    std::string session_folder;                       ///< the one of the session itself
    std::map<std::string, std::string> stored_paths;  ///< by file name, as the session has them
};

struct MoviePath {
    std::string path;  ///< of the `FILE` line; the bare name where the movie lies nowhere
    bool found = false;
    bool elsewhere = false;  ///< found, but not in the folder that Pro Tools keeps for movies
};

class MovieSearch {
public:
    using CanBeRead = std::function<bool(const std::string&)>;

    explicit MovieSearch(MoviePlaces places, CanBeRead can_open = can_be_read);

    /// The path of a movie by its file name. The disk is asked once for each name; the reference
    /// stays valid.
    const MoviePath& find(const std::string& file);

private:
    MoviePath look_for(const std::string& file) const;

    MoviePlaces places_;
    CanBeRead can_open_;
    std::map<std::string, MoviePath> answers_;
};

}  // namespace tanrove
