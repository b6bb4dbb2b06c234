#!/usr/bin/env bash
# The main job: builds the library and the cmddata tool if needed, then runs the two-process demo.
# Extra arguments go to `cmddata demo` (for example --save DIR).
# What the build needs (cmake, g++, CLI11, nlohmann-json) is installed by scripts/install-deps.sh
# when this runs as root; otherwise one line says what to run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="$root/build"
mkdir -p "$build"

# Configures with the tool required, so that a missing library shows here and not at the build.
configure() {
    command -v cmake >/dev/null && command -v g++ >/dev/null &&
        cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMDDATA_BUILD_TESTS=OFF \
            -DCMDDATA_BUILD_TOOLS=ON >"$build/configure.log" 2>&1
}

if ! configure; then
    if [ "$(id -u)" = 0 ]; then
        echo "demo: installing what the build needs (scripts/install-deps.sh)" >&2
        bash "$root/scripts/install-deps.sh" >&2 || true
        # A cache from the failed attempt may hold the libraries' NOTFOUND paths.
        rm -f "$build/CMakeCache.txt"
    fi
    if ! configure; then
        echo "demo: cmake, g++, CLI11 and nlohmann-json are needed: run 'sudo bash scripts/install-deps.sh' (what configure said: $build/configure.log)" >&2
        exit 1
    fi
fi
cmake --build "$build" --target cmddata_tool -j2 >/dev/null
exec "$build/tools/cmddata" demo "$@"
