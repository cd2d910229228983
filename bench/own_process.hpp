// A measurement in a process of its own, as people run a conversion: it begins without a heap that
// an earlier run has filled and warmed, whatever the size. In one process small runs would find
// their memory in the caches and large ones not, and look better than they are.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

namespace tanrove::bench {

inline double processor_seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// What `measure` gives, which runs in a child of this process; a child that fails ends it all.
template <typename Measure>
double measured_in_a_process(Measure measure) {
    int ends[2];
    if (pipe(ends) != 0) std::abort();
    const pid_t child = fork();
    if (child == 0) {
        const double result = measure();
        _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
    }
    close(ends[1]);
    double result = 0;
    const bool is_given = read(ends[0], &result, sizeof result) == sizeof result;
    close(ends[0]);
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0 || !is_given) std::abort();
    return result;
}

}  // namespace tanrove::bench
