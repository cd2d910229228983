// Descriptors, then signals. What whoever started us wants ignored (`nohup`) stays ignored.
#include "run/process_guard.hpp"

#if defined(_WIN32)

namespace tanrove {

void guard_process() {}

}  // namespace tanrove

#else

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "base/whole_file.hpp"

namespace tanrove {

namespace {

/// From the user, from the system, and from ourselves where no memory is left.
constexpr int ending_signals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT};

/// What fails a write by ending the process.
constexpr int write_signals[] = {SIGPIPE, SIGXFSZ};

/// Each is opened the wrong way round: what is written there fails as it would have, and is known
/// to have failed.
void open_closed_descriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) != -1) continue;
        // The lowest free number is the one that we found closed.
        const int mode = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        static_cast<void>(open("/dev/null", mode));
    }
}

/// The signal's own action is back by now and ends the process when this returns.
void remove_files_and_end(int signal) {
    remove_temporary_files();
    static_cast<void>(raise(signal));
}

void remove_files_on(int signal) {
    struct sigaction action = {};
    if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
    action = {};
    action.sa_handler = remove_files_and_end;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigfillset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

}  // namespace

void guard_process() {
    open_closed_descriptors();
    for (const int signal : write_signals) std::signal(signal, SIG_IGN);
    for (const int signal : ending_signals) remove_files_on(signal);
}

}  // namespace tanrove

#endif
