#!/usr/bin/env bash
# Line and function coverage of the library and the platform layer by the whole test suite.
# Not part of CI: a developer's tool for checking that reshaping the tests keeps what they reach.
#   scripts/coverage.sh [build-dir]   -> <build-dir>/coverage.txt (summary) and coverage.json
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build/coverage}

command -v gcovr >/dev/null || { apt-get update -qq && apt-get install -y -qq gcovr >/dev/null; }

if [ ! -f "$dir/CMakeCache.txt" ]; then
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=--coverage \
        -DZE_BUILD_BENCHMARKS=OFF -DZE_BUILD_EXAMPLES=OFF >/dev/null
fi
cmake --build "$dir" --parallel "${JOBS:-2}"
find "$dir" -name '*.gcda' -delete
(cd "$dir" && ctest --parallel "${JOBS:-2}" --timeout 900 -E consumer >/dev/null) || echo "some tests failed"

filters=(--filter 'Animation/' --filter 'Platform/')
gcovr -r . "$dir" "${filters[@]}" -j "${JOBS:-2}" --json "$dir/coverage.json" --txt "$dir/coverage.txt" \
    --print-summary
