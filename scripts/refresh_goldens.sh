#!/usr/bin/env bash
# Rewrites the golden projects and texts from what the program makes now, and shows the difference,
# which is to be reviewed like code.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset debug >/dev/null
cmake --build --preset debug --target golden_tests project_tests report_tests run_tests
for tests in golden project report run; do
  TANROVE_REFRESH_GOLDENS=1 "build/debug/bin/${tests}_tests" || true
done
goldens=('tests/*.rpp' 'tests/*.txt' 'tests/*.json' ':!*CMakeLists.txt')
git --no-pager diff --stat -- "${goldens[@]}"
git --no-pager diff -- "${goldens[@]}"
