#!/usr/bin/env bash
# Long fuzzing: bash scripts/fuzz.sh [SECONDS]   (default 600)
#
# Runs cmddata_fuzz_one (preset "fuzz"), the fuzz target whose input's first two bytes choose
# one class, so that each class gets the executions of its own inputs. The corpus starts from
# make_seeds (every class fresh and filled) and the messages `cmddata demo --save` writes, each
# behind the number of its class. Memory is capped (-rss_limit_mb=256) and so is each input's
# time (-timeout=10); findings land in build-test/fuzz/artifacts. The corpus is kept between
# runs (build-test/fuzz/corpus-one). CMDDATA_TEST_BUILD_DIR and CMDDATA_JOBS as for test.sh.
set -u -o pipefail
ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
SECONDS_TO_RUN=${1:-600}
OUT=${CMDDATA_TEST_BUILD_DIR:-$ROOT/build-test}
JOBS=${CMDDATA_JOBS:-2}
dir=$OUT/fuzz
cd "$ROOT" || exit 1

cmake --preset fuzz -B "$dir" >/dev/null || exit 1
cmake --build "$dir" -j "$JOBS" --target cmddata_fuzz_one make_seeds >/dev/null || exit 1

seeds=$dir/seeds-one
saved=$dir/demo-saved
rm -rf "$seeds" "$saved"
mkdir -p "$seeds" "$saved" "$dir/corpus-one" "$dir/artifacts"
"$dir/fuzz/make_seeds" --numbered "$seeds" || exit 1
if bash "$ROOT/scripts/demo.sh" --save "$saved" >/dev/null; then
    # NNN-Command-snd.bin is a message of class CCommandSnd: give it that class's number.
    "$dir/fuzz/make_seeds" --names | python3 -c '
import os, re, sys
numbers = {}
for line in sys.stdin:
    n, name = line.split(None, 1)
    numbers[name.strip()] = int(n)
saved, seeds = sys.argv[1], sys.argv[2]
count = 0
for f in sorted(os.listdir(saved)):
    m = re.match(r"\d+-(\w+)-(snd|rcv)\.bin$", f)
    number = m and numbers.get("C%s%s" % (m.group(1), m.group(2).capitalize()))
    if number is None:
        continue
    with open(os.path.join(saved, f), "rb") as src:
        data = src.read()
    with open(os.path.join(seeds, "demo_" + f), "wb") as dst:
        dst.write(bytes((number & 0xFF, number >> 8)) + data)
    count += 1
print("fuzz: %d demo messages added to the seeds" % count)' "$saved" "$seeds"
else
    echo "fuzz: the demo did not run; its messages are not in the seeds"
fi

echo "fuzz: ${SECONDS_TO_RUN}s of cmddata_fuzz_one (log: $dir/fuzz-one.log)"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    timeout $((SECONDS_TO_RUN + 300)) "$dir/fuzz/cmddata_fuzz_one" "$dir/corpus-one" "$seeds" \
    -max_total_time="$SECONDS_TO_RUN" -timeout=10 -rss_limit_mb=256 -max_len=65536 \
    -artifact_prefix="$dir/artifacts/" -print_final_stats=1 </dev/null >"$dir/fuzz-one.log" 2>&1
rc=$?
grep -E '^#[0-9]+[[:space:]]+(DONE|pulse)|^stat::|ERROR|SUMMARY|==[0-9]+==' "$dir/fuzz-one.log" | tail -n 25
if [ $rc = 0 ]; then
    echo "fuzz: no finding in ${SECONDS_TO_RUN}s"
else
    ls -l "$dir/artifacts"
    echo "fuzz: exit $rc (inputs in $dir/artifacts)"
fi
exit $rc
