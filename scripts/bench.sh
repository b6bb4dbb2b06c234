#!/usr/bin/env bash
# Builds the benchmarks in Release and runs them; the last lines printed are the tables of ratios.
# Google Benchmark's JSON output goes to bench.json in the build dir, and a chart of it to
# bench/bench.png (scripts/bench_chart.py, where python3-matplotlib is installed).
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
"$build/bench/cmddata_bench" --benchmark_min_time=0.2 --benchmark_repetitions=3 \
    --benchmark_out="$build/bench.json" --benchmark_out_format=json "$@"

# The first python3 with matplotlib: one on PATH (a virtualenv, say) may not have it, the
# system's from the Debian package does.
for python in python3 /usr/bin/python3; do
    if "$python" -c 'import matplotlib' 2>/dev/null; then
        exec "$python" "$root/scripts/bench_chart.py" "$build/bench.json" "$root/bench/bench.png"
    fi
done
echo "bench: chart skipped: no python3 with matplotlib (Debian package python3-matplotlib)"
