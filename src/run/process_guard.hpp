// What the program asks of its process before it begins, so that nothing from outside leaves a
// project torn, and a heap that a large session fills fast. A program that links the conversion
// keeps its own signals and its own heap, and does not call it.
#pragma once

namespace tanrove {

/// Closed standard descriptors are opened, so that no file of ours gets their numbers and the words
/// of the run with them. A pipe that nobody reads any more, or a limit on the size of files, fails
/// a write and ends nothing. Signals that end the process remove its temporary files first.
void guard_process();

}  // namespace tanrove
