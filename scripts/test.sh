#!/usr/bin/env bash
# Builds everything and runs the whole test suite.
#   scripts/test.sh [preset]     release (default), debug, clang, asan or fuzz
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-release}

scripts/install_tools.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" -j "$(nproc)"
ctest --preset "$preset" -j "$(nproc)"
