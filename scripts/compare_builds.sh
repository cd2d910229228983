#!/usr/bin/env bash
# Two builds, the same bytes: compares every project that the golden tests of each build wrote.
#   scripts/compare_builds.sh build/release build/clang
set -euo pipefail
cd "$(dirname "$0")/.."
diff -r "$1/golden_projects" "$2/golden_projects"
echo "$(find "$1/golden_projects" -name '*.rpp' | wc -l) projects are byte-identical in $1 and $2"
