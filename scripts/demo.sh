#!/usr/bin/env bash
# From a fresh machine to a converted session: installs the tools, builds the program, makes the
# demo session with its audio, converts it, and says where the project is.
set -euo pipefail
cd "$(dirname "$0")/.."

TANROVE_INSTALL_PARSER=0 scripts/install_tools.sh
cmake --preset release >/dev/null
cmake --build --preset release --target tanrove make_demo

build/release/bin/make_demo "Demo Song"
build/release/bin/tanrove "Demo Song/Demo Song.ptx" -o "Demo Song/Demo Song.rpp" --overwrite
echo
echo "The project: $PWD/Demo Song/Demo Song.rpp"
