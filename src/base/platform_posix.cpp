// Systems whose paths are bytes: Linux and macOS.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <bit>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "base/platform.hpp"

namespace tanrove {

namespace {

/// From the user, from the system, and from ourselves.
constexpr int ending_signals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT};

/// What fails a write by ending the process.
constexpr int write_signals[] = {SIGPIPE, SIGXFSZ};

/// Set once, before a handler can ask for it.
void (*clean_up_at_end)() noexcept = nullptr;

/// Each is opened the wrong way round: what is written there fails as it would have, and is known
/// to have failed.
void open_closed_descriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) != -1) continue;
        // The lowest free number is the one that we found closed.
        const int mode = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        static_cast<void>(open(null_device, mode));
    }
}

/// The signal's own action is back by now and ends the process when this returns.
void clean_up_and_end(int signal) {
    clean_up_at_end();
    static_cast<void>(raise(signal));
}

/// What whoever started us wants ignored (`nohup`) stays ignored.
void clean_up_on(int signal) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
    action = {};
    action.sa_handler = clean_up_and_end;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigfillset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

#if defined(__GLIBC__) && defined(MADV_HUGEPAGE)
/// Addresses, not memory: what a session of 40 MB takes to convert.
constexpr std::size_t heap_stretch_bytes = std::size_t{256} << 20;
constexpr std::uintptr_t large_page_bytes = std::uintptr_t{2} << 20;

/// A large session fills some ten thousand small pages, and fetching each costs as much as reading
/// what comes to lie on it. So the heap begins as one stretch of large pages, and keeps what it
/// has.
void lay_out_heap() {
    if (mallopt(M_MMAP_MAX, 0) == 0) return;  // not the system's own allocator
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    void* const stretch = std::malloc(heap_stretch_bytes);
    if (stretch == nullptr) return;
    const auto begin = (std::bit_cast<std::uintptr_t>(stretch) + large_page_bytes - 1) /
                       large_page_bytes * large_page_bytes;
    const auto end = (std::bit_cast<std::uintptr_t>(stretch) + heap_stretch_bytes) /
                     large_page_bytes * large_page_bytes;
    madvise(std::bit_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    std::free(stretch);
}
#else
void lay_out_heap() {}
#endif

}  // namespace

const char* const null_device = "/dev/null";
const std::int32_t default_pause_at_end = 0;

std::filesystem::path native_path(const std::string& path) {
    return path;
}

std::string path_text(const std::filesystem::path& path) {
    return path.string();
}

std::filesystem::file_status status_of(const std::string& path) {
    std::error_code error;
    return std::filesystem::status(path, error);
}

std::FILE* open_file(const char* path, const char* mode) {
    return std::fopen(path, mode);
}

int remove_file(const char* path) noexcept {
    return unlink(path);
}

std::optional<std::string> environment_value(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr) return std::nullopt;
    return value;
}

std::string user_data_folder() {
    const std::string home = environment_value("HOME").value_or("");
#if defined(__APPLE__)
    return home.empty() ? "" : home + "/Library/Application Support";
#else
    std::string chosen = environment_value("XDG_DATA_HOME").value_or("");
    if (!chosen.empty()) return chosen;
    return home.empty() ? "" : home + "/.local/share";
#endif
}

std::vector<std::string> command_words(int count, const char* const* words) {
    std::vector<std::string> all(words, words + count);
    // One that was found by its name alone does not know where it lies; Linux does.
    std::error_code error;
    const bool is_bare = !all.empty() && all.front().find('/') == std::string::npos;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (is_bare && !error) all.front() = program.string();
    return all;
}

SignalsHeld::SignalsHeld() {
    static_assert(sizeof(sigset_t) <= sizeof(former_));
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former);
    std::memcpy(former_.data(), &former, sizeof(former));
}

SignalsHeld::~SignalsHeld() {
    sigset_t former;
    std::memcpy(&former, former_.data(), sizeof(former));
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
}

void prepare_process(void (*clean_up)() noexcept) {
    lay_out_heap();
    clean_up_at_end = clean_up;
    open_closed_descriptors();
    for (const int signal : write_signals) std::signal(signal, SIG_IGN);
    for (const int signal : ending_signals) clean_up_on(signal);
}

}  // namespace tanrove
