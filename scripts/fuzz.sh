#!/usr/bin/env bash
# Fuzzes the animation file loader with libFuzzer under ASan+UBSan, starting from the seed corpus
# in tests/fuzz/corpus/file (kept as it is; new inputs go to build/fuzz/corpus). Any finding is
# written to build/fuzz/findings and fails the run; replay one with
#   build/fuzz/tests/fuzz/zeFileFuzzer build/fuzz/findings/crash-...
#   scripts/fuzz.sh [seconds]      (default 60; e.g. 3600 for an hour)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}

scripts/setup.sh

dir=build/fuzz
generator=()
command -v ninja >/dev/null && generator=(-G Ninja)
if [ ! -f "$dir/CMakeCache.txt" ]; then
    CC=clang CXX=clang++ cmake -S . -B "$dir" "${generator[@]}" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZE_SANITIZE=ON \
        -DZE_BUILD_FUZZERS=ON -DZE_BUILD_TESTS=OFF -DZE_BUILD_BENCHMARKS=OFF -DZE_BUILD_EXAMPLES=OFF \
        -DZE_INSTALL=OFF >/dev/null
fi
cmake --build "$dir" --parallel "$(nproc)" --target zeFileFuzzer

mkdir -p "$dir/corpus" "$dir/findings"
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp
"$dir/tests/fuzz/zeFileFuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 -max_len=16384 \
    -print_final_stats=1 -artifact_prefix="$dir/findings/" "$dir/corpus" tests/fuzz/corpus/file 2>"$dir/fuzz.log" || {
    tail -n 60 "$dir/fuzz.log"
    echo "fuzz: a finding is in $dir/findings" >&2
    exit 1
}
grep -E '^stat::(number_of_executed_units|new_units_added)' "$dir/fuzz.log"
