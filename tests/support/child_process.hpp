// A piece of a test in a process of its own, for what ends one: signals, closed descriptors,
// limits.
#pragma once

#include <functional>

namespace tanrove::builder {

/// Runs it in a child and waits. Its result as the shell shows it: the code, or 128 and the signal
/// that ended it. An exception that leaves `body` ends the child as one that leaves `main` does.
int in_child(const std::function<int()>& body);

}  // namespace tanrove::builder
