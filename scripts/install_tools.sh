#!/usr/bin/env bash
# Installs what the build, the tests and the checks need on a Debian machine; installs nothing that
# is already there. Sourced or run by the other scripts.
set -euo pipefail

packages=(g++ clang cmake ninja-build ccache libgtest-dev libbenchmark-dev locales)
[ "${TANROVE_INSTALL_CHECKERS:-0}" = 1 ] && packages+=(clang-format clang-tidy libclang-rt-dev)
if [ "${TANROVE_INSTALL_PACKAGERS:-0}" = 1 ]; then
    packages+=(dpkg-dev pkgconf man-db mandoc zsh fish)
fi
[ "${TANROVE_INSTALL_WINDOWS:-0}" = 1 ] && packages+=(g++-mingw-w64-x86-64-posix)
# An independent parser from the npm registry reads the projects that the tests write. Some machines
# have npm from elsewhere.
if [ "${TANROVE_INSTALL_PARSER:-1}" = 1 ] && ! command -v npm >/dev/null 2>&1; then
    packages+=(npm)
fi

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

missing=()
for package in "${packages[@]}"; do
    dpkg -s "$package" >/dev/null 2>&1 || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq "${missing[@]}" >/dev/null
fi

# A machine that has no wine builds for Windows all the same.
if [ "${TANROVE_INSTALL_WINDOWS:-0}" = 1 ] && ! command -v wine >/dev/null 2>&1; then
    echo "Installing: wine"
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
        wine wine64 >/dev/null || echo "wine cannot be had on this machine"
fi

# Nor is libc++ of that age in every system.
if [ "${TANROVE_INSTALL_LIBCXX:-0}" = 1 ] && ! dpkg -s libc++-16-dev >/dev/null 2>&1; then
    echo "Installing: libc++"
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq \
        clang-16 libc++-16-dev libc++abi-16-dev >/dev/null || echo "libc++ cannot be had on this machine"
fi

# Numbers must not follow the machine: some tests run under a locale with a decimal comma.
if ! grep -qix 'de_DE.utf8' <<<"$(locale -a)"; then
    "${as_root[@]}" localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi
