#include "run/process_guard.hpp"

#include "base/platform.hpp"
#include "base/whole_file.hpp"

namespace tanrove {

void guard_process() {
    prepare_process(remove_temporary_files);
}

}  // namespace tanrove
