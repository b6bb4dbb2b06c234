#!/usr/bin/env bash
# Builds the benchmarks in Release and runs them; the last lines printed are the tables of ratios.
# Usage: scripts/bench.sh [build-dir] [extra Google Benchmark flags...]
#   e.g. scripts/bench.sh build-bench --benchmark_filter='S1|S2'
# Needs libbenchmark-dev, libprotobuf-dev, protobuf-compiler and libcereal-dev
# (scripts/install-deps.sh installs them).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-bench}
shift || true

cmake -S "$root" -B "$build" -DCMDDATA_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build" --target cmddata_bench -j2

# Three repetitions of at least 0.2 s each; the tables keep the fastest of the three.
exec "$build/bench/cmddata_bench" --benchmark_min_time=0.2 --benchmark_repetitions=3 "$@"
