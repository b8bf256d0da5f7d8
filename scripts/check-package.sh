#!/usr/bin/env bash
# Uses a built tree the way a host would use the installed package: installs it into a temporary
# prefix, builds and runs tests/consumer against it through CMake (find_package) and through
# pkg-config, compiles every installed header on its own, then makes the Debian package and checks
# its fields, its contents and that it installs here and works unpacked.
#   scripts/check-package.sh [build-dir]     (default build/release, already built)
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(cd "${1:-build/release}" && pwd)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

fail() {
    echo "check-package: $*" >&2
    exit 1
}

# Runs a command, showing its output only when it fails.
quiet() {
    "$@" >"$work/log" 2>&1 || {
        cat "$work/log"
        fail "failed: $*"
    }
}

generator=()
command -v ninja >/dev/null && generator=(-G Ninja)
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
major=${version%%.*}
[ -n "$version" ] || fail "no project version in $build/CMakeCache.txt"

echo "== install into a temporary prefix"
quiet cmake --install "$build" --prefix "$prefix"
# The promised include forms and nothing else: no headers of a library's own implementation.
included=$(cd "$prefix/include" && find . -mindepth 1 -type d | LC_ALL=C sort | tr '\n' ' ')
[ "$included" = "./OpenSG ./zeAnimation ./zeOpenSGExt ./zeOpenSGUtils ./zeQt4Ext ./zeUtils " ] ||
    fail "installed include directories are: $included"
libdir=$(dirname "$(find "$prefix" -name "libzeAnimation.so.$version" -print -quit)")
[ -d "$libdir" ] || fail "libzeAnimation.so.$version not installed"
for lib in "$libdir"/lib*.so."$version"; do
    name=$(basename "$lib" ".$version")
    [[ $(readelf -d "$lib") == *"Library soname: [$name.$major]"* ]] || fail "$lib: SONAME is not $name.$major"
done
# The library hides its internals, but a scene-graph type's registry entry must stay one per
# process: no private copy of a function-local static of the osg templates may live in it.
private=$(nm --defined-only "$libdir/libzeAnimation.so.$version" | awk '$2 ~ /^[bdr]$/ && $3 ~ /^_Z(GV)?ZN3osg/')
[ -z "$private" ] || fail "libzeAnimation holds private copies of scene-graph statics:"$'\n'"$private"
echo "libzeAnimation.so.$version exports $(nm -D --defined-only "$libdir/libzeAnimation.so.$version" | wc -l) symbols"
if [ -f apps/CMakeLists.txt ]; then
    [[ $("$prefix/bin/zeanim" --version) == *"$version"* ]] || fail "zeanim --version does not report $version"
fi

echo "== consumer through find_package, every installed header on its own"
quiet cmake -S tests/consumer -B "$work/cmake" "${generator[@]}" -DCMAKE_PREFIX_PATH="$prefix"
quiet cmake --build "$work/cmake" --parallel "$(nproc)"
"$work/cmake/consumer"
# The next major version is refused, for the version and no other reason.
if cmake -S tests/consumer -B "$work/refused" "${generator[@]}" -DCMAKE_PREFIX_PATH="$prefix" \
    -DZE_REQUIRED_VERSION=$((major + 1)).0 >"$work/refused.log" 2>&1; then
    fail "find_package accepted version $((major + 1)).0 of a $version package"
fi
grep -q "compatible with requested version" "$work/refused.log" || {
    cat "$work/refused.log"
    fail "find_package of version $((major + 1)).0 failed for another reason than the version"
}

echo "== consumer through pkg-config"
export PKG_CONFIG_PATH=$libdir/pkgconfig
[ "$(pkg-config --modversion zeAnimation)" = "$version" ] || fail "zeAnimation.pc does not say version $version"
# shellcheck disable=SC2046 # the flags are meant to split
g++ -o "$work/pc-consumer" tests/consumer/consumer.cpp $(pkg-config --cflags --libs zeAnimation) \
    -Wl,-rpath,"$(pkg-config --variable=libdir zeAnimation)"
"$work/pc-consumer"

echo "== Debian package"
quiet cpack -G DEB -B "$work/deb" --config "$build/CPackConfig.cmake"
deb=$(find "$work/deb" -maxdepth 1 -name 'zeanimation_*.deb' -print -quit)
[ -n "$deb" ] || fail "cpack made no zeanimation_*.deb"
[ "$(dpkg-deb -f "$deb" Package)" = zeanimation ] || fail "package name is not zeanimation"
[ "$(dpkg-deb -f "$deb" Version)" = "$version" ] || fail "package version is not $version"
depends=$(dpkg-deb -f "$deb" Depends)
[[ $depends == *libqt5core5a* ]] || fail "Depends lacks Qt: $depends"
contents=$(dpkg-deb -c "$deb")
expected=(include/zeAnimation/zeAnimationManager.h include/OpenSG/OSGNode.h "libzeAnimation.so.$major"
    cmake/zeAnimation/zeAnimationConfigVersion.cmake pkgconfig/zeAnimation.pc)
[ -f apps/CMakeLists.txt ] && expected+=(usr/bin/zeanim)
for path in "${expected[@]}"; do
    grep -qF "$path" <<<"$contents" || fail "the package lacks $path"
done
# Installable here (a simulation: nothing changes on the machine), and working where it unpacks.
quiet apt-get install -s "$deb"
dpkg-deb -x "$deb" "$work/unpacked"
if [ -f apps/CMakeLists.txt ]; then
    [[ $("$work/unpacked/usr/bin/zeanim" --version) == *"$version"* ]] || fail "packaged zeanim does not run"
fi
quiet cmake -S tests/consumer -B "$work/unpacked-cmake" "${generator[@]}" -DCMAKE_PREFIX_PATH="$work/unpacked/usr"
quiet cmake --build "$work/unpacked-cmake" --target consumer
"$work/unpacked-cmake/consumer"
echo "check-package: the installed tree and $(basename "$deb") work"
