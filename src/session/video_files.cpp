// Movies stand in file lists 0x103a, like the audio files. Those of 0x1006 and 0x2096 hold movies
// alone and can be of any length. Offsets from the list's 'Z': u32 number of entries at 9, the
// entries from 13. An entry: u8 kind, u32 word, u32 count, text, 4 bytes.
//
//   kind 0   a volume; the word is 0xffffffff
//   kind 1   a folder
//   kind 2   a file
//
// Behind its files the list of movies 0x1006 holds a 0x1005 a movie: u32 number of the entry that
// is its file at 9.
//
// The word of a folder or file is the number of the entry that it lies in; entries count from 0 and
// come in any order. Lists that keep no such tree number the folders of a single path instead.
#include "session/video_files.hpp"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "session/block_types.hpp"

namespace tanrove {

namespace {

constexpr std::array<std::uint16_t, 2> movie_list_types = {block_type::movie_list,
                                                           block_type::newer_movie_list};
constexpr std::size_t entry_of_movie_at = 9;
constexpr std::uint32_t least_list = 8;
constexpr std::uint32_t largest_list = 4000;  ///< of files that are no movies'

constexpr std::size_t least_name = 5;
constexpr std::size_t largest_name = 200;

constexpr std::size_t first_count_at = 18;
constexpr std::size_t largest_path_part = 260;
constexpr std::size_t kind_before_count = 5;
constexpr std::size_t word_before_count = 4;
constexpr std::size_t bytes_without_text = 13;  // from one count to the next

constexpr std::uint8_t kind_volume = 0;
constexpr std::uint8_t kind_folder = 1;
constexpr std::uint8_t kind_file = 2;
constexpr std::uint32_t volume_word = 0xffffffff;

constexpr std::array<std::string_view, 7> video_extensions = {".mp4", ".mov", ".avi", ".mxf",
                                                              ".m4v", ".mkv", ".mpg"};
constexpr std::size_t extension_bytes = 4;

bool is_video_name(std::string_view name) {
    if (name.size() < least_name) return false;
    std::string extension(name.substr(name.size() - extension_bytes));
    for (char& c : extension) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return std::find(video_extensions.begin(), video_extensions.end(), extension) !=
           video_extensions.end();
}

std::vector<Block> file_lists(const BlockIndex& index) {
    std::set<std::size_t> of_movies;
    for (const Block& movies : index.of_types(movie_list_types)) {
        const Block* list = index.first_child(movies, block_type::file_names);
        if (list != nullptr) of_movies.insert(list->at);
    }
    std::vector<Block> lists;
    for (const Block& list : index.of_type(block_type::file_names).all()) {
        const bool may_be_long = of_movies.contains(list.at);
        const bool fits = list.size <= largest_list || may_be_long;
        if (list.size >= least_list && fits) lists.push_back(list);
    }
    return lists;
}

struct ListEntry {
    std::uint8_t kind = 0;
    std::uint32_t word = 0;
    std::string_view text;
};

/// The entries of one list up to the first that does not fit. Each takes one of `entries_left`.
std::vector<ListEntry> read_entries(ByteView image, const Block& list, std::size_t& entries_left) {
    std::vector<ListEntry> entries;
    std::size_t at = list.at + first_count_at;
    for (; entries_left > 0; --entries_left) {
        const auto text = readCountedText(image, at, largest_path_part, list.end());
        if (!text || text->empty() || !is_session_text(*text)) break;
        entries.push_back(
            {image.u8(at - kind_before_count), image.u32(at - word_before_count), *text});
        at += bytes_without_text + text->size();
    }
    return entries;
}

bool is_volume(const ListEntry& entry) {
    return entry.kind == kind_volume && entry.word == volume_word;
}

/// True if each folder and file of the list lies, over however many folders, on a volume.
bool is_tree(const std::vector<ListEntry>& entries) {
    enum class State : std::uint8_t { unknown, on_the_way, on_a_volume };
    std::vector<State> states(entries.size(), State::unknown);
    std::vector<std::size_t> way;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        way.clear();
        std::size_t at = i;
        while (states[at] == State::unknown && !is_volume(entries[at])) {
            states[at] = State::on_the_way;
            way.push_back(at);
            at = entries[at].word;
            if (at >= entries.size() || entries[at].kind == kind_file) return false;
        }
        if (states[at] == State::on_the_way) return false;
        states[at] = State::on_a_volume;
        for (const std::size_t passed : way) states[passed] = State::on_a_volume;
    }
    return true;
}

/// The volume and the folders that `file` lies in, from the volume down, by the list's tree.
std::vector<std::string_view> parts_by_tree(const std::vector<ListEntry>& entries,
                                            const ListEntry& file) {
    std::vector<std::string_view> parts;
    const ListEntry* entry = &file;
    while (!is_volume(*entry)) {
        entry = &entries[entry->word];
        parts.push_back(entry->text);
    }
    std::reverse(parts.begin(), parts.end());
    return parts;
}

/// The volume and all folders of the list in the order of their numbers; none without a volume.
std::vector<std::string_view> parts_by_number(std::vector<ListEntry> entries) {
    const auto volume = std::find_if(entries.begin(), entries.end(), is_volume);
    if (volume == entries.end()) return {};
    std::vector<std::string_view> parts = {volume->text};
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.word < b.word; });
    for (const ListEntry& entry : entries) {
        if (entry.kind == kind_folder) parts.push_back(entry.text);
    }
    return parts;
}

/// The folders' path with the file at its end; empty where no volume is known.
std::string joined(const std::vector<std::string_view>& folders, std::string_view file) {
    if (folders.empty()) return {};
    std::string path(folders.front());
    std::replace(path.begin(), path.end(), '\\', '/');
    path += '/';
    for (std::size_t i = 1; i < folders.size(); ++i) path.append(folders[i]).append("/");
    return path.append(file);
}

/// Adds the paths of one list's movies: of all of them where it is a tree, else of the first, which
/// is the only one that its folders can belong to. False once there is no room for another path.
bool add_paths(const std::vector<ListEntry>& entries, std::size_t& path_bytes_left,
               std::map<std::string, std::string>& paths) {
    const bool has_tree = is_tree(entries);
    for (const ListEntry& file : entries) {
        if (file.kind != kind_file || !is_video_name(file.text)) continue;
        const std::string name(file.text);
        if (paths.find(name) == paths.end()) {
            const auto path =
                joined(has_tree ? parts_by_tree(entries, file) : parts_by_number(entries), name);
            if (path.size() > path_bytes_left) return false;
            path_bytes_left -= path.size();
            if (!path.empty()) paths.emplace(name, path);
        }
        if (!has_tree) break;
    }
    return true;
}

}  // namespace

// Each position of each list can begin a name. Lists that overlap are walked as one: a name fits if
// it fits the list that reaches furthest.
std::vector<std::string> readVideoFiles(const BlockIndex& index) {
    const ByteView image = index.image();
    const auto lists = file_lists(index);
    std::vector<std::string> names;
    std::set<std::string_view> seen;
    std::size_t end = 0;
    for (std::size_t i = 0; i < lists.size(); ++i) {
        end = std::max(end, lists[i].end());
        const std::size_t stop = i + 1 < lists.size() ? std::min(end, lists[i + 1].payload()) : end;
        for (std::size_t at = lists[i].payload(); at < stop; ++at) {
            const auto name = readCountedText(image, at, largest_name, end);
            if (!name || !is_video_name(*name) || !is_session_text(*name)) continue;
            if (seen.insert(*name).second) names.emplace_back(*name);
        }
    }
    return names;
}

std::vector<std::string> read_movie_list(const BlockIndex& index) {
    const ByteView image = index.image();
    std::vector<std::string> movies;
    const auto lists = index.of_type(block_type::movie_list).all();
    if (lists.empty()) return movies;
    const Block& list = lists.front();
    const Block* files = index.first_child(list, block_type::file_names);
    if (files == nullptr) return movies;
    std::size_t entries_left = image.size() / bytes_without_text;
    const auto entries = read_entries(image, *files, entries_left);
    std::size_t name_bytes_left = image.size();
    std::size_t end_of_last = files->end();
    for (const Block& movie : index.of_type(block_type::movie).between(files->end(), list.end())) {
        if (movie.at < end_of_last || movie.end() > list.end()) continue;
        end_of_last = movie.end();
        const std::size_t number = image.u32(movie.at + entry_of_movie_at);
        const auto name = number < entries.size() ? entries[number].text : std::string_view();
        if (name.size() > name_bytes_left) break;
        name_bytes_left -= name.size();
        movies.emplace_back(name);
    }
    return movies;
}

std::map<std::string, std::string> readVideoPaths(const BlockIndex& index) {
    const ByteView image = index.image();
    std::map<std::string, std::string> paths;
    // Lists do not overlap: together they have no more entries than the image has room for, and
    // paths that are longer than the whole session come from no author's machine.
    std::size_t entries_left = image.size() / bytes_without_text;
    std::size_t path_bytes_left = image.size();
    for (const Block& list : file_lists(index)) {
        if (!add_paths(read_entries(image, list, entries_left), path_bytes_left, paths)) break;
    }
    return paths;
}

}  // namespace tanrove
