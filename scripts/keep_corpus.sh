#!/usr/bin/env bash
# Minimises what the fuzzing targets have found so far, in build/fuzz/corpus and in the kept corpus,
# to the inputs that reach something new, and keeps those in fuzz/corpus.tar.xz. All of it grew from
# the seeds that our own session builder writes. Behind scripts/fuzz.sh, which builds the targets.
#   scripts/keep_corpus.sh
set -euo pipefail
cd "$(dirname "$0")/.."
most_bytes=2000000
bin=$PWD/build/fuzz/bin
minimised=build/fuzz/minimised
rm -rf "$minimised"
for source in fuzz/fuzz_*.cpp; do
    target=$(basename -s .cpp "$source")
    mkdir -p "$minimised/$target" "build/fuzz/corpus/$target" "build/fuzz/kept/$target"
    "$bin/$target" -merge=1 -set_cover_merge=1 -timeout=60 -rss_limit_mb=2048 -verbosity=0 \
        "$minimised/$target" "build/fuzz/corpus/$target" "build/fuzz/kept/$target" \
        build/fuzz/seeds >"build/fuzz/$target.merge.log" 2>&1
    echo "$target: $(find "$minimised/$target" -type f | wc -l) inputs"
done
(cd "$minimised" && cmake -E tar cJf corpus.tar.xz --format=gnutar --mtime=2000-01-01 -- fuzz_*)
bytes=$(stat -c %s "$minimised/corpus.tar.xz")
echo "$bytes bytes"
[ "$bytes" -le "$most_bytes" ] || { echo "more than $most_bytes bytes: not kept" >&2; exit 1; }
cp "$minimised/corpus.tar.xz" fuzz/corpus.tar.xz
