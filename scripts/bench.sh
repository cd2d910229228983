#!/usr/bin/env bash
# Speed of opening, indexing and converting, from an optimised build.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_tools.sh
cmake --preset release >/dev/null
cmake --build --preset release --target benchmarks
for program in build/release/bin/bench_*; do "$program" "$@"; done
