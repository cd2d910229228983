// Names for the project file, and the search for one that is not taken.
#include "run/output_path.hpp"

#include "base/formatted_text.hpp"
#include "base/paths.hpp"
#include "run/console.hpp"

namespace tanrove {

namespace {

/// True if a file or a folder has this name.
bool is_taken(const std::string& path) {
    return can_be_read(path) || is_folder(path);
}

}  // namespace

std::string project_path(const RunOptions& options) {
    if (!options.output_path.empty()) return options.output_path;
    return without_extension(options.session_path) + ".rpp";
}

std::string free_project_path(const std::string& wanted) {
    if (!is_taken(wanted)) return wanted;
    const std::string stem = without_extension(wanted);
    const std::string extension = wanted.substr(stem.size());
    std::string path = wanted;
    for (int number = 1; number <= max_free_name_number; ++number) {
        path = stem;
        path.append(formatted(" (%d)", number)).append(extension);
        if (!is_taken(path)) break;
    }
    return path;
}

std::string choose_output_path(const RunOptions& options) {
    std::string wanted = project_path(options);
    if (options.overwrite || options.check_only) return wanted;
    // A folder that was named as the project is refused when it is opened, not evaded.
    const bool is_named = !options.output_path.empty();
    if (is_named && is_folder(wanted)) return wanted;
    std::string path = free_project_path(wanted);
    if (path != wanted) {
        console_print(
            "\n  %s already exists - writing %s instead\n"
            "  (--overwrite to replace it)\n",
            wanted.c_str(), path.c_str());
    }
    return path;
}

bool is_same_file(const std::string& path, const std::string& other) {
    return path == other || are_one_file(path, other);
}

std::string second_pass_path(const std::string& first_output_path) {
    return without_extension(first_output_path) + "-2nd.rpp";
}

}  // namespace tanrove
