#!/usr/bin/env bash
# Makes the .deb and the .tar.gz, and tries both out: the archive in a folder of its own, where
# examples/consumer builds against it; the .deb in a root of its own, with its manual page and what
# the shells complete, until it is removed without a trace. Nothing is installed on this machine
# but the tools.
set -euo pipefail
cd "$(dirname "$0")/.."
TANROVE_INSTALL_PARSER=0 TANROVE_INSTALL_PACKAGERS=1 scripts/install_tools.sh

build=$PWD/build/release
packages=$PWD/build/packages
scripts=$PWD/scripts
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target to_install make_demo
rm -rf "$packages"
cpack --config "$build/CPackConfig.cmake" -B "$packages" >/dev/null
rm -rf "$packages/_CPack_Packages"
ls -sh "$packages"

trial=$(mktemp -d)
trap 'rm -rf "$trial"' EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }

echo "== the archive, in a folder of its own"
mkdir "$trial/moved"
tar -xzf "$packages"/*.tar.gz -C "$trial/moved" --strip-components 1
prefix=$trial/moved
"$prefix/bin/tanrove" --version
"$build/bin/make_demo" "$trial/Demo Song" >/dev/null
session="$trial/Demo Song/Demo Song.ptx"
"$prefix/bin/tanrove" "$session" -o "$trial/program.rpp" >/dev/null

cmake -S examples/consumer -B "$trial/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$trial/consumer" >/dev/null
"$trial/consumer/consumer" "$session" "$trial/consumer.rpp" | tail -n 2
cmp "$trial/program.rpp" "$trial/consumer.rpp"

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
# shellcheck disable=SC2046  # flags are words
g++ -std=c++20 examples/consumer/consumer.cpp -o "$trial/by_pkg_config" \
    $(pkg-config --cflags --libs tanrove)
LD_LIBRARY_PATH=$prefix/lib "$trial/by_pkg_config" "$session" "$trial/pkg_config.rpp" >/dev/null
cmp "$trial/program.rpp" "$trial/pkg_config.rpp"
echo "the consumer converts as the program does, found by CMake and by pkg-config"

echo "== the .deb, in a root of its own"
root=$trial/root
mkdir -p "$root/var/lib/dpkg/"{info,updates,triggers} "$root/var/log"
# What it depends on is asked of this machine.
for needed in $(dpkg-deb -f "$packages"/*.deb Depends | sed 's/([^)]*)//g; s/,/ /g'); do
    dpkg-query -s "$needed" >>"$root/var/lib/dpkg/status"
    echo >>"$root/var/lib/dpkg/status"
    touch "$root/var/lib/dpkg/info/$needed:$(dpkg --print-architecture).list"
done
dpkg_there() {
    PATH=$PATH:/usr/sbin:/sbin dpkg --root="$root" --force-not-root --force-script-chrootless \
        --path-include='/usr/share/*' "$@"
}
dpkg-deb --info "$packages"/*.deb | grep -E 'Depends|Installed-Size'
dpkg_there -i "$packages"/*.deb >/dev/null
"$root/usr/bin/tanrove" "$session" -o "$trial/installed.rpp" >/dev/null
cmp "$trial/program.rpp" "$trial/installed.rpp"

page=$(man -M "$root/usr/share/man" -w tanrove)
warnings=$(man --warnings -E UTF-8 -l "$page" 2>&1 >/dev/null)
[ -z "$warnings" ] || fail "man: $warnings"
if mandoc -T lint -W warning "$page" | grep -v "missing date"; then fail "mandoc"; fi
man -E ascii -l "$page" >"$trial/page.txt"
mapfile -t names <"$build/pages/options.txt"
[ ${#names[@]} -gt 50 ] || fail "the table of options is too short: ${#names[@]}"
for name in "${names[@]}"; do
    grep -qE -- "^ +$name( |\$)" "$trial/page.txt" || fail "the manual page lacks $name"
done

# What a shell offers behind a line, a word a line.
bash_offers() {
    bash -c 'source "$0"; complete -p tanrove >/dev/null
        COMP_WORDS=(tanrove "$@"); COMP_CWORD=$#; _tanrove; printf "%s\n" "${COMPREPLY[@]}"' \
        "$root/usr/share/bash-completion/completions/tanrove" "$@"
}
fish_offers() {
    fish --no-config -c "source $root/usr/share/fish/vendor_completions.d/tanrove.fish
        complete -C 'tanrove $*'" | cut -f 1
}
zsh_offers() {
    timeout 60 zsh -f "$scripts/zsh_offers.zsh" "$root/usr/share/zsh/site-functions" "tanrove $*"
}
cd "$trial/Demo Song"
for shell in bash fish zsh; do
    "${shell}_offers" -- | sort >"$trial/offered.txt"
    for name in "${names[@]}"; do
        [[ $name == --* ]] || continue
        grep -qxF -- "$name" "$trial/offered.txt" || fail "$shell does not offer $name"
    done
    "${shell}_offers" --pt-theme d | grep -qx dark || fail "$shell does not offer dark"
    "${shell}_offers" D | grep -q '^Demo.*\.ptx' || fail "$shell does not offer the session"
done
cd "$OLDPWD"
echo "the manual page shows, and bash, fish and zsh offer, all ${#names[@]} options"

dpkg_there -L tanrove | sed 's|^/\.$|/|' >"$trial/listed.txt"
dpkg_there -r tanrove >/dev/null
while read -r path; do
    [ ! -f "$root$path" ] || fail "$path is left"
done <"$trial/listed.txt"
[ ! -e "$root/usr" ] || fail "folders are left: $(find "$root/usr")"
echo "removed without a trace: $(wc -l <"$trial/listed.txt") entries"
