// One folder of ours within that of the user's programs.
#include "run/table_folders.hpp"

#include "base/paths.hpp"
#include "base/platform.hpp"

namespace tanrove {

TableFolders table_folders(const std::string& program_path) {
    const std::string data = user_data_folder();
    return {folder_of(program_path), data.empty() ? "" : data + "/tanrove"};
}

}  // namespace tanrove
