#!/usr/bin/env bash
# From a Debian machine to a program for Windows: installs mingw-w64 and wine, builds the zip with
# tanrove.exe, its DLL and the README, and tries both out under wine: the golden conversions, and the
# program on paths as Windows has them. Where wine cannot be had, it says so and skips the trial.
set -euo pipefail
cd "$(dirname "$0")/.."
TANROVE_INSTALL_PARSER=0 TANROVE_INSTALL_WINDOWS=1 scripts/install_tools.sh

build=$PWD/build/windows
cmake --preset windows >/dev/null
cmake --build --preset windows -j "$(nproc)" --target to_install golden_tests make_demo
(cd "$build" && cpack --config CPackConfig.cmake -B "$build/zip" >/dev/null)
zip=$(echo "$build"/zip/*.zip)
ls -sh "$zip"

wine=$(command -v wine64 || command -v wine || true)
if [ -z "$wine" ]; then
    echo "SKIPPED: no wine on this machine, so nothing was run of what was built"
    exit 0
fi
export WINEDEBUG=-all WINEPREFIX=$build/wine
fail() { echo "FAILED: $*" >&2; exit 1; }
"$wine" wineboot --init >/dev/null 2>&1 </dev/null

echo "== whole conversions, byte for byte"
"$wine" "$build/bin/golden_tests.exe" --gtest_brief=1 </dev/null | tr -d '\r'

echo "== the program of the zip, on paths as Windows has them"
trial=$(mktemp -d)
trap 'rm -rf "$trial"' EXIT
mkdir "$trial/program"
(cd "$trial/program" && cmake -E tar xf "$zip")
program=$trial/program/tanrove.exe
for binary in "$trial"/program/*.exe "$trial"/program/*.dll; do
    needed=$(x86_64-w64-mingw32-objdump -p "$binary" | sed -n 's/.*DLL Name: //p' |
        grep -viE '^(kernel32|msvcrt|shell32|user32|libptformat)\.dll$' || true)
    [ -z "$needed" ] || fail "$(basename "$binary") needs $needed"
done
cp "$build/bin/make_demo.exe" "$trial"
(cd "$trial" && "$wine" make_demo.exe made >/dev/null </dev/null)
# Names outside ASCII are as wine's locale has them.
export LC_ALL=C.UTF-8
folder="$trial/Mïx 東京"
mv "$trial/made" "$folder"
mv "$folder/Demo Song.ptx" "$folder/Söng №1.ptx"
windows_path() { echo "Z:${1//\//\\}"; }
run() { "$wine" "$program" --no-pause "$@" </dev/null; }

# From elsewhere, by drive and backslashes, into a folder with a name of its own.
mkdir "$trial/oüt"
run "$(windows_path "$folder/Söng №1.ptx")" -o "$(windows_path "$trial/oüt/Projekt ä.rpp")" \
    --report --usage-json "$(windows_path "$trial/oüt/usage.json")" >"$trial/said.txt"
grep -q 'Projekt ä.rpp' "$trial/said.txt" || fail "the account does not name the project"
grep -q "FILE \"Z:.*Mïx 東京.*Clicks.wav" "$trial/oüt/Projekt ä.rpp" || fail "the media's paths"
! grep -q $'\r' "$trial/said.txt" "$trial/oüt/"* || fail "line ends of Windows"
[ "$(find "$trial/oüt" | wc -l)" = 4 ] || fail "not one project, report and summary: $(ls "$trial/oüt")"
cd "$folder"
# Beside the session, as words without quotes; a second one beside the first; a check writes none.
run Söng №1.ptx >/dev/null
run "Söng №1.ptx" >/dev/null
cmp "Söng №1.rpp" "Söng №1 (1).rpp"
run "Söng №1.ptx" --check >/dev/null
run "Söng №1.ptx" --overwrite >/dev/null
[ "$(find . -name '*.rpp*' | wc -l)" = 2 ] || fail "files beside the session: $(ls)"
if [ -x "$build/../release/bin/tanrove" ]; then
    "$build/../release/bin/tanrove" "Söng №1.ptx" -o linux.rpp >/dev/null
    cmp "Söng №1.rpp" linux.rpp
    echo "the same bytes as the program of build/release"
fi
# A path of more than 260 characters, media and project.
deep="$trial/$(printf 'a folder with a long name, the %d. of them/' 1 2 3 4 5 6 7 8)"
mkdir -p "$deep"
cp -r . "$deep"
rm "$deep"/*.rpp
run "$(windows_path "${deep}Söng №1.ptx")" --report >"$trial/said.txt"
grep -q "FILE \"Z:.*of them.*Clicks.wav" "$deep/Söng №1.rpp" || fail "media on long paths"
[ "$(find "$deep" -maxdepth 1 -type f | wc -l)" = 3 ] || fail "not a project and a report: $(ls "$deep")"
said=$("$wine" "$program" "missing.ptx" </dev/null || true)
[[ $said == *"Press Enter"* ]] || fail "no pause"
echo "drive letters, backslashes, blanks, names outside ASCII, long paths: all there"
