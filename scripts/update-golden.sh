#!/usr/bin/env bash
# Rewrites tests/golden/ from the classes as they are now: one file per class of the table with
# the bytes it writes when filled as the demo fills it. The files are the wire contract: commit a
# change to them only with the reason the bytes had to change.
# Usage: bash scripts/update-golden.sh [BUILD_DIR]   (default build-native, configured if needed)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-native}
[ -f "$build/CMakeCache.txt" ] || cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build" --target cmddata_tests -j "${CMDDATA_JOBS:-2}" >/dev/null
mkdir -p "$root/tests/golden"
rm -f "$root/tests/golden/"*.bin
CMDDATA_GOLDEN_WRITE=1 "$build/tests/cmddata_tests" --gtest_filter='EveryClass/Golden.*' >/dev/null
echo "update-golden: $(ls "$root/tests/golden" | wc -l) files in tests/golden; review with git diff --stat"
