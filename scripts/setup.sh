#!/usr/bin/env bash
# Installs the Debian packages the build needs, and only those that are missing.
# Safe to run any number of times; does nothing when everything is present.
set -euo pipefail

# pkgconf and dpkg-dev (dpkg-shlibdeps) serve the package check: the pkg-config consumer and the
# dependencies of the Debian package. clang and its runtime (libFuzzer) build the fuzzers.
# librsvg2-bin (rsvg-convert) renders the pictures of zeanim plot in its tests.
packages=(cmake g++ ninja-build qtbase5-dev libboost-dev googletest libgtest-dev libgmock-dev libbenchmark-dev
    pkgconf dpkg-dev clang libclang-rt-14-dev librsvg2-bin)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "setup: installing ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
    sudo_cmd=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
