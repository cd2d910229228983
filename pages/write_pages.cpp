// Writes the manual page and the completions into a folder, for the build.
//   write_pages FOLDER
#include <cstdio>
#include <string>

#include "base/whole_file.hpp"
#include "pages.hpp"

int main(int argc, char** argv) {
    using namespace tanrove;
    if (argc != 2) {
        std::puts("usage: write_pages FOLDER");
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    const bool written = write_whole_file(folder + "options.txt", pages::option_names()) &&
                         write_whole_file(folder + "tanrove.1", pages::manual_page()) &&
                         write_whole_file(folder + "tanrove.bash", pages::bash_completion()) &&
                         write_whole_file(folder + "_tanrove", pages::zsh_completion()) &&
                         write_whole_file(folder + "tanrove.fish", pages::fish_completion());
    if (!written) std::printf("could not write the pages into %s\n", argv[1]);
    return written ? 0 : 1;
}
