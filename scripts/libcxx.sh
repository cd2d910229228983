#!/usr/bin/env bash
# The program with the standard library that macOS has, built by clang: it compiles, and its golden
# conversions are the same bytes. With --program the tests are left out: the demo session of
# build/release is converted instead.
#   scripts/libcxx.sh [--program]
set -euo pipefail
cd "$(dirname "$0")/.."
TANROVE_INSTALL_PARSER=0 TANROVE_INSTALL_LIBCXX=1 scripts/install_tools.sh
if ! dpkg -s libc++-16-dev >/dev/null 2>&1; then
    echo "SKIPPED: no libc++ on this machine, so nothing was built with it"
    exit 0
fi
targets=(to_install)
[ "${1:-}" = --program ] || targets+=(golden_tests)
cmake --preset libcxx >/dev/null
cmake --build --preset libcxx -j "$(nproc)" --target "${targets[@]}"
if [ "${1:-}" != --program ]; then
    build/libcxx/bin/golden_tests --gtest_brief=1
    exit
fi
trial=$(mktemp -d)
trap 'rm -rf "$trial"' EXIT
build/release/bin/make_demo "$trial" >/dev/null
for build in release libcxx; do
    "build/$build/bin/tanrove" "$trial/Demo Song.ptx" -o "$trial/$build.rpp" >/dev/null
done
cmp "$trial/release.rpp" "$trial/libcxx.rpp"
echo "the same bytes with libc++"
