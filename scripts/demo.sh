#!/usr/bin/env bash
# The main job: builds the library and the cmddata tool if needed, then runs the two-process demo.
# Extra arguments go to `cmddata demo` (for example --save DIR).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build"
if ! command -v cmake >/dev/null || ! command -v g++ >/dev/null; then
    if [ "$(id -u)" = 0 ] && [ -x "$root/scripts/install-deps.sh" ]; then
        "$root/scripts/install-deps.sh"
    else
        echo "demo: cmake and g++ are needed (run scripts/install-deps.sh as root)" >&2
        exit 1
    fi
fi
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMDDATA_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target cmddata_tool -j2 >/dev/null
exec "$build/tools/cmddata" demo "$@"
