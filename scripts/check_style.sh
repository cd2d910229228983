#!/usr/bin/env bash
# Formatting of every source, the table of block types, and clang-tidy over all sources (pass --tidy);
# tests/.clang-tidy has the checks for tests.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t sources < <(git ls-files '*.cpp' '*.hpp')
clang-format --dry-run --Werror "${sources[@]}"
# Every type of block that we read stands in the table for newcomers.
for type in $(grep -oP 'std::uint16_t \K\w+(?= =)' src/session/block_types.hpp); do
    grep -q "| \`$type\` |" docs/block_types.md || { echo "docs/block_types.md lacks $type" >&2; exit 1; }
done
if [ "${1:-}" = --tidy ]; then
    # A build that names every source; nothing of it is compiled.
    cmake --preset clang -B build/tidy -DTANROVE_BENCH=ON -DTANROVE_FUZZ=ON >/dev/null
    # What is compiled for Windows alone has none of its headers here, the
    # consumer builds against an installed library.
    mapfile -t units < <(git ls-files '*.cpp' ':!*_windows.cpp' ':!examples/consumer')
    printf '%s\n' "${units[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/tidy --quiet
fi
