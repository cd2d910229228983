// A folder of a test's own, gone when the test ends.
#pragma once

#include <filesystem>
#include <string>

namespace tanrove::builder {

/// An empty folder under the system's temporary folder; removed with all it holds. While it lives
/// it can be made the working folder, so that texts hold no path of this machine.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string path() const { return path_.string(); }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    /// Makes it the working folder, and the user's home, until the object goes: programs keep
    /// settings there that no test knows of.
    void enter();

    /// Number of files in it, folders inside included.
    std::size_t file_count() const;

private:
    std::filesystem::path path_;
    std::filesystem::path former_;
    std::string former_home_;
};

/// Sets a variable of the environment.
void set_variable(const char* name, const std::string& value);

/// The whole file; empty if it cannot be read.
std::string file_text(const std::string& path);

/// Writes the whole file. False if that fails.
[[nodiscard]] bool write_file_text(const std::string& path, const std::string& text);

}  // namespace tanrove::builder
