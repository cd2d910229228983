#!/usr/bin/env bash
# Hands the projects that the tests wrote to the independent parser `rppp` from the npm registry.
# Exit code 77 (skipped) where node or the registry cannot be reached.
#   parse_projects.sh <work folder> <folder of projects> ...
set -u
work=$1
shift
script=$(cd "$(dirname "$0")" && pwd)/parse_projects.cjs
if ! command -v npm >/dev/null 2>&1; then
    echo "SKIPPED: npm is not on this machine"
    exit 77
fi
mkdir -p "$work" && cd "$work" || exit 1
if [ ! -d node_modules/rppp ]; then
    [ -f package.json ] || echo '{"private": true}' > package.json
    if ! npm install --no-audit --no-fund --silent rppp@0.4.0 >/dev/null 2>&1; then
        echo "SKIPPED: the npm registry cannot be reached"
        exit 77
    fi
fi
NODE_PATH=$work/node_modules node "$script" "$@"
