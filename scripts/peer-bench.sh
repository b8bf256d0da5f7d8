#!/usr/bin/env bash
# The peer benchmark and its picture, in one command: installs OpenSceneGraph's osgAnimation when
# missing (not needed by anything else), builds bench_peer, runs it (3 repetitions, the picture
# takes the median) and draws bench/peer/peer.svg from its JSON output.
# Arguments go to the benchmark, e.g. --benchmark_filter='keys:16'.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
if ! dpkg-query -W -f='${Status}' libopenscenegraph-dev 2>/dev/null | grep -q "install ok installed"; then
    sudo_cmd=()
    [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
    export DEBIAN_FRONTEND=noninteractive
    "${sudo_cmd[@]}" apt-get update -qq
    "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends libopenscenegraph-dev >/dev/null
fi

dir=build/release
generator=()
command -v ninja >/dev/null && generator=(-G Ninja)
[ -f "$dir/CMakeCache.txt" ] || generator+=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
cmake -S . -B "$dir" "${generator[@]}" >/dev/null # again: finds a newly installed peer
cmake --build "$dir" --parallel "$(nproc)" --target bench_peer >/dev/null

json=$dir/bench/peer/bench_peer.json
"$dir/bench/peer/bench_peer" --benchmark_repetitions=3 --benchmark_out="$json" \
    --benchmark_out_format=json --benchmark_display_aggregates_only=true "$@"
python3 bench/peer/plot_peer.py "$json" bench/peer/peer.svg
# The picture must render, and not as a blank page.
rsvg-convert bench/peer/peer.svg -o "$dir/bench/peer/peer.png"
python3 - "$dir/bench/peer/peer.png" <<'PY'
import struct, sys, zlib
data, pos, pixels = open(sys.argv[1], "rb").read(), 8, b""
while pos < len(data):
    size, kind = struct.unpack(">I4s", data[pos:pos + 8])
    pixels += data[pos + 8:pos + 8 + size] if kind == b"IDAT" else b""
    pos += 12 + size
if len(set(zlib.decompress(pixels))) < 8:
    sys.exit("peer.svg renders blank")
PY
echo "wrote bench/peer/peer.svg"
