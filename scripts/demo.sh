#!/usr/bin/env bash
# The main job: installs what is missing, builds, and runs the demo program.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

dir=build/release
generator=()
command -v ninja >/dev/null && generator=(-G Ninja)
if [ ! -f "$dir/CMakeCache.txt" ]; then
    cmake -S . -B "$dir" "${generator[@]}" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build "$dir" --parallel "$(nproc)" --target zeDemo >/dev/null
exec "$dir/examples/zeDemo" "$@"
