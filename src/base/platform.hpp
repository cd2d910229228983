// What differs between the systems that we run on, and all of it: how files are opened and named,
// what the process was started with, and how it ends. Inside the program paths and words are UTF-8
// texts (on systems that keep bytes, whatever bytes they are); here they become what the system
// takes.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tanrove {

/// What swallows all that is written to it.
extern const char* const null_device;

/// 1 where a double click opens a console window of its own, which closes with the program.
extern const std::int32_t default_pause_at_end;

/// The path as the system's calls take it.
std::filesystem::path native_path(const std::string& path);

/// A path of the system's as our text.
std::string path_text(const std::filesystem::path& path);

/// What the path is, devices by name included.
std::filesystem::file_status status_of(const std::string& path);

/// As `std::fopen`. With "x" in its mode the file must be new (errno is EEXIST if it is not), and
/// it can be removed while it is open.
std::FILE* open_file(const char* path, const char* mode);

/// As `std::remove`, for files. A signal handler may call it.
int remove_file(const char* path) noexcept;

/// The value of a variable of the environment; nullopt if it is not set.
std::optional<std::string> environment_value(const char* name);

/// The folder in which the system's users keep what programs know of them; empty if the environment
/// names none. It need not be there.
std::string user_data_folder();

/// The words that the program was started with; first the program's own path, where the system can
/// tell it.
std::vector<std::string> command_words(int count, const char* const* words);

/// No signal is handled while this lives.
class SignalsHeld {
public:
    SignalsHeld();
    ~SignalsHeld();
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

private:
    std::array<std::uint64_t, 16> former_ = {};  ///< what the system gave us to put back
};

/// What the program asks of its process before it begins, so that nothing from outside leaves a
/// project torn, and no word of ours is changed on its way. Closed standard descriptors are opened,
/// so that no file of ours gets their numbers and the words of the run with them. A pipe that
/// nobody reads any more, or a limit on the size of files, fails a write and ends nothing. What
/// ends the process from outside calls `clean_up` first, in a signal handler or a thread of its
/// own. Where large pages can be had for the heap, it begins as a stretch of them. A program that
/// links the conversion keeps its own signals and its own heap, and does not call this.
void prepare_process(void (*clean_up)() noexcept);

}  // namespace tanrove
