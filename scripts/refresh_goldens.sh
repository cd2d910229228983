#!/usr/bin/env bash
# Rewrites the golden projects and console texts from what the program makes now, and shows the
# difference, which is to be reviewed like code.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset debug >/dev/null
cmake --build --preset debug --target golden_tests
TANROVE_REFRESH_GOLDENS=1 build/debug/bin/golden_tests || true
git --no-pager diff --stat -- tests/golden
git --no-pager diff -- tests/golden
