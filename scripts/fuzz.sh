#!/usr/bin/env bash
# Builds the fuzzing targets, writes their seeds, and runs each for some seconds under the address
# and undefined sanitizers.
#   scripts/fuzz.sh [seconds] [target ...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
shift || true

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)" --target fuzzers
bin=$PWD/build/fuzz/bin
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(cd "$bin" && ls -d fuzz_* | sort)

mkdir -p build/fuzz/seeds build/fuzz/corpus build/fuzz/findings
"$bin/write_seeds" build/fuzz/seeds
for target in "${targets[@]}"; do
    mkdir -p "build/fuzz/corpus/$target"
    echo "== $target, $seconds s"
    "$bin/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=65536 \
        -dict=fuzz/session.dict -artifact_prefix=build/fuzz/findings/ -verbosity=0 \
        -print_final_stats=1 "build/fuzz/corpus/$target" build/fuzz/seeds 2>&1 |
        grep -E 'ERROR|SUMMARY|Test unit|number_of_executed|exec/s|runtime error' || true
    [ "${PIPESTATUS[0]}" -eq 0 ] || { echo "$target found something: build/fuzz/findings"; exit 1; }
done
