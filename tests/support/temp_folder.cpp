// Temporary folders with names that no two tests share.
#include "support/temp_folder.hpp"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

namespace tanrove::builder {

namespace fs = std::filesystem;

void set_variable(const char* name, const std::string& value) {
#if defined(_WIN32)
    _putenv_s(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}

TempFolder::TempFolder() {
    std::random_device random;
    do {
        path_ = fs::temp_directory_path() / ("tanrove-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
}

TempFolder::~TempFolder() {
    std::error_code error;
    if (!former_.empty()) {
        fs::current_path(former_, error);
        set_variable("HOME", former_home_);
    }
    fs::remove_all(path_, error);
}

void TempFolder::enter() {
    former_ = fs::current_path();
    fs::current_path(path_);
    const char* home = std::getenv("HOME");
    former_home_ = home == nullptr ? "" : home;
    set_variable("HOME", path());
    set_variable("XDG_DATA_HOME", "");
}

std::size_t TempFolder::file_count() const {
    std::size_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(path_))
        count += entry.is_regular_file();
    return count;
}

std::string file_text(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

bool write_file_text(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    out.close();
    return out.good();
}

}  // namespace tanrove::builder
