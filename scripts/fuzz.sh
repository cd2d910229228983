#!/usr/bin/env bash
# Builds the fuzzing targets, writes their seeds, and runs each for some seconds under the address
# and undefined sanitizers, from what earlier runs have found (fuzz/corpus.tar.xz, made by
# scripts/keep_corpus.sh).
#   scripts/fuzz.sh [seconds] [target ...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-30}
shift || true

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz -j "$(nproc)" --target fuzzers
bin=$PWD/build/fuzz/bin
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(cd fuzz && basename -s .cpp fuzz_*.cpp)

mkdir -p build/fuzz/seeds build/fuzz/corpus build/fuzz/findings build/fuzz/kept
(cd build/fuzz/kept && cmake -E tar xJf ../../../fuzz/corpus.tar.xz)
"$bin/write_seeds" build/fuzz/seeds
for target in "${targets[@]}"; do
    echo "== $target, $seconds s"
    log=build/fuzz/$target.log
    mkdir -p "build/fuzz/corpus/$target" "build/fuzz/kept/$target"
    if ! "$bin/$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=65536 \
        -dict=fuzz/session.dict -artifact_prefix=build/fuzz/findings/ -verbosity=0 \
        -print_final_stats=1 "build/fuzz/corpus/$target" "build/fuzz/kept/$target" \
        build/fuzz/seeds >"$log" 2>&1; then
        tail -n 40 "$log"
        echo "$target found something: build/fuzz/findings"
        exit 1
    fi
    grep -E 'number_of_executed' "$log"
done
