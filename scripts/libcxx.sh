#!/usr/bin/env bash
# The program with the standard library that macOS has, built by clang: it compiles, and its golden
# conversions are the same bytes.
set -euo pipefail
cd "$(dirname "$0")/.."
TANROVE_INSTALL_PARSER=0 TANROVE_INSTALL_LIBCXX=1 scripts/install_tools.sh
cmake --preset libcxx >/dev/null
cmake --build --preset libcxx -j "$(nproc)" --target to_install golden_tests
build/libcxx/bin/golden_tests --gtest_brief=1
