#!/usr/bin/env bash
# Formatting of every source, and clang-tidy over the program's own sources (pass --tidy).
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t sources < <(git ls-files '*.cpp' '*.hpp')
clang-format --dry-run --Werror "${sources[@]}"
if [ "${1:-}" = --tidy ]; then
    cmake --preset clang >/dev/null
    # What is compiled for Windows alone has none of its headers here.
    mapfile -t units < <(git ls-files 'src/*.cpp' ':!src/*_windows.cpp')
    printf '%s\n' "${units[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet
fi
