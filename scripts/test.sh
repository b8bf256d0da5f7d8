#!/usr/bin/env bash
# Runs the whole test suite from any state of the machine: installs missing packages, configures,
# builds and runs ctest twice, once in an optimised build and once under AddressSanitizer and
# UndefinedBehaviorSanitizer; in between, installs the optimised build and uses it as a host would
# (scripts/check-package.sh); last, runs the file loader's fuzzer for a minute under ASan+UBSan
# (scripts/fuzz.sh).  Pass --quick to skip the sanitizer build and the fuzzer.
set -euo pipefail
cd "$(dirname "$0")/.."

quick=0
[ "${1:-}" = "--quick" ] && quick=1

scripts/setup.sh

jobs=$(nproc)
generator=()
command -v ninja >/dev/null && generator=(-G Ninja)

# Warnings fail the suite here (and only here: a host building us with a newer compiler is not
# stopped by a new warning). Configuring every time keeps an older build directory on these settings.
run_suite() {
    local dir=$1; shift
    local again=()
    [ -f "$dir/CMakeCache.txt" ] || again=("${generator[@]}")
    cmake -S . -B "$dir" "${again[@]}" -DCMAKE_COMPILE_WARNING_AS_ERROR=ON "$@" >/dev/null
    cmake --build "$dir" --parallel "$jobs"
    (cd "$dir" && ctest --output-on-failure --parallel "$jobs" --timeout 600)
}

echo "== optimised build"
run_suite build/release -DCMAKE_BUILD_TYPE=RelWithDebInfo

echo "== the installed package, as hosts use it"
scripts/check-package.sh build/release

if [ $quick -eq 0 ]; then
    echo "== sanitizer build (ASan + UBSan)"
    export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:strict_string_checks=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    run_suite build/asan -DCMAKE_BUILD_TYPE=Debug -DZE_SANITIZE=ON -DZE_BUILD_BENCHMARKS=OFF

    echo "== fuzzing the file loader (ASan + UBSan, one minute)"
    scripts/fuzz.sh 60
fi
