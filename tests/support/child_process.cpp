// Fork, run, wait.
#include "support/child_process.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace tanrove::builder {

namespace {

constexpr int code_of_signals = 128;

void run_and_leave(const std::function<int()>& body) noexcept {
    const int code = body();
    std::fflush(nullptr);
    _exit(code);
}

}  // namespace

int in_child(const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) run_and_leave(body);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) return -1;
    return WIFSIGNALED(status) ? code_of_signals + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace tanrove::builder
