// Where the tables lie that people keep for the program: what they have taught it, and names of
// parameters. Beside the program, as long as that is theirs; one that a package has installed has
// no room there, and looks in the user's own folder too.
#pragma once

#include <string>

namespace tanrove {

struct TableFolders {
    std::string of_program;
    std::string of_user;  ///< looked at behind the other; empty: the system names none
};

TableFolders table_folders(const std::string& program_path);

}  // namespace tanrove
