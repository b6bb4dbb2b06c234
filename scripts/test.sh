#!/usr/bin/env bash
# The test command: bash scripts/test.sh
#
# Legs, in order (each step prints a banner; a failing step does not stop the others):
#   deps     installs what is missing (only when run as root)
#   native   Release build and every ctest test, including the installed-package
#            consumer check (tests/consumer)
#   asan     the same tests built with AddressSanitizer + UndefinedBehaviorSanitizer
#   fuzz     clang + libFuzzer target under ASan/UBSan, about a minute from a generated corpus
#   windows  32-bit Windows cross build: cmddata.dll checked with `file`, the tests and the
#            tool's demo run once under Wine
# Ends with one line "summary: N passed, N failed" counting the test cases of all legs, and
# exits non-zero when anything failed.
#
# Environment: CMDDATA_LEGS (default "deps native asan fuzz windows"), CMDDATA_FUZZ_SECONDS
# (default 60), CMDDATA_TEST_BUILD_DIR (default build-test in the repository), CMDDATA_JOBS
# (default 2).
set -u -o pipefail

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$ROOT"
LEGS=" ${CMDDATA_LEGS:-deps native asan fuzz windows} "
FUZZ_SECONDS=${CMDDATA_FUZZ_SECONDS:-60}
OUT=${CMDDATA_TEST_BUILD_DIR:-$ROOT/build-test}
JOBS=${CMDDATA_JOBS:-2}
mkdir -p "$OUT"

PASSED=0
FAILED=0
FAILURES=()
TIMES=()

# A banner also closes the step before it, with that step's duration.
STEP_NAME=""
close_step() {
    if [ -n "$STEP_NAME" ]; then
        printf -- '---------- (%s took %ss)\n' "$STEP_NAME" $(($(date +%s) - STEP_T0))
    fi
    STEP_NAME=""
}
banner() {
    close_step
    printf '\n========== %s ==========\n' "$*"
    STEP_NAME=$*
    STEP_T0=$(date +%s)
}
pass() { PASSED=$((PASSED + ${2:-1})); printf -- '---------- ok: %s\n' "$1"; }
fail() {
    FAILED=$((FAILED + ${2:-1}))
    FAILURES+=("$1")
    printf -- '---------- FAILED: %s\n' "$1"
}
wants() { [[ "$LEGS" == *" $1 "* ]]; }

leg_start() { LEG_T0=$(date +%s); }
leg_end() {
    close_step
    TIMES+=("$(printf '%-8s %5ss' "$1" $(($(date +%s) - LEG_T0)))")
}

# Runs one step under a banner; its status is the command's.
step() {
    local what=$1
    shift
    banner "$what"
    "$@"
}

# Counts ctest's closing line into the totals; a ctest that ran nothing is a failure.
count_ctest() {
    local what=$1 log=$2 line total failed
    line=$(grep -Eo '[0-9]+% tests passed, [0-9]+ tests? failed out of [0-9]+' "$log" | tail -n 1)
    if [ -z "$line" ]; then
        fail "$what: no tests ran"
        return
    fi
    total=${line##* }
    failed=$(sed -E 's/.*passed, ([0-9]+) tests? failed.*/\1/' <<<"$line")
    [ "$total" -gt 0 ] || { fail "$what: no tests ran"; return; }
    PASSED=$((PASSED + total - failed))
    if [ "$failed" -gt 0 ]; then
        fail "$what: $failed of $total tests" "$failed"
    else
        printf -- '---------- ok: %s: %s tests\n' "$what" "$total"
    fi
}

# Configures, builds and runs ctest in one build directory. Extra arguments go to cmake.
build_and_ctest() {
    local name=$1 dir=$2
    shift 2
    if ! step "$name: configure" cmake -S "$ROOT" -B "$dir" "$@"; then
        fail "$name: configure"
        return 1
    fi
    if ! step "$name: build" cmake --build "$dir" -j "$JOBS"; then
        fail "$name: build"
        return 1
    fi
    banner "$name: ctest"
    (cd "$dir" && ctest -j "$JOBS" --timeout 600 --output-on-failure) 2>&1 | tee "$dir/ctest.log"
    count_ctest "$name" "$dir/ctest.log"
}

# ---------------------------------------------------------------------------------------------
if wants deps; then
    leg_start
    if [ "$(id -u)" = 0 ]; then
        step "deps: install what is missing" bash "$ROOT/scripts/install-deps.sh" ||
            fail "deps: install-deps.sh"
    else
        banner "deps: not root, installing nothing"
    fi
    leg_end deps
fi

# ---------------------------------------------------------------------------------------------
if wants native; then
    leg_start
    build_and_ctest native "$OUT/native" -DCMAKE_BUILD_TYPE=Release \
        -DCMDDATA_SANITIZE=OFF -DCMDDATA_BUILD_TESTS=ON -DCMDDATA_BUILD_TOOLS=ON
    leg_end native
fi

# ---------------------------------------------------------------------------------------------
if wants asan; then
    leg_start
    # Leak checking needs ptrace, which some containers refuse: probe it once.
    leaks=0
    banner "asan: probing LeakSanitizer"
    probe=$OUT/lsan-probe
    printf '#include <cstdlib>\nint main() { volatile void* p = std::malloc(7); p = nullptr; (void)p; }\n' \
        >"$probe.cpp"
    if c++ -fsanitize=address "$probe.cpp" -o "$probe" 2>/dev/null &&
        ASAN_OPTIONS=detect_leaks=1 "$probe" 2>&1 | grep -q 'detected memory leaks'; then
        leaks=1
    fi
    echo "detect_leaks=$leaks"
    export ASAN_OPTIONS="detect_leaks=$leaks:abort_on_error=0:strict_string_checks=1"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    # -O1 with line tables: a third of the compile time of -O2 -g under the sanitizers, and
    # still stack traces with file and line.
    build_and_ctest asan "$OUT/asan" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g1" \
        -DCMDDATA_SANITIZE=ON -DCMDDATA_BUILD_TESTS=ON -DCMDDATA_BUILD_TOOLS=ON
    unset ASAN_OPTIONS UBSAN_OPTIONS
    leg_end asan
fi

# ---------------------------------------------------------------------------------------------
run_fuzz() {
    local dir=$OUT/fuzz
    if ! command -v clang++ >/dev/null; then
        banner "fuzz: clang++ not found"
        fail "fuzz: no clang++"
        return
    fi
    if ! step "fuzz: configure (clang, libFuzzer, ASan+UBSan)" env CC=clang CXX=clang++ \
        cmake -S "$ROOT" -B "$dir" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g1" \
        -DCMDDATA_SANITIZE=ON \
        -DCMDDATA_BUILD_FUZZ=ON -DCMDDATA_BUILD_TESTS=OFF -DCMDDATA_BUILD_TOOLS=OFF; then
        fail "fuzz: configure"
        return
    fi
    if ! step "fuzz: build" cmake --build "$dir" -j "$JOBS"; then
        fail "fuzz: build"
        return
    fi
    rm -rf "$dir/seeds" "$dir/artifacts"
    mkdir -p "$dir/seeds" "$dir/corpus" "$dir/artifacts"
    if ! step "fuzz: seed corpus" "$dir/fuzz/make_seeds" "$dir/seeds"; then
        fail "fuzz: seed corpus"
        return
    fi
    banner "fuzz: ${FUZZ_SECONDS}s of cmddata_fuzz"
    local rc
    ASAN_OPTIONS=detect_leaks=${leaks:-1} UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        timeout $((FUZZ_SECONDS + 300)) "$dir/fuzz/cmddata_fuzz" "$dir/corpus" "$dir/seeds" \
        -max_total_time="$FUZZ_SECONDS" -timeout=25 -rss_limit_mb=4096 -max_len=8192 \
        -artifact_prefix="$dir/artifacts/" -print_final_stats=1 </dev/null >"$dir/fuzz.log" 2>&1
    rc=$?
    # The progress lines and the suggested dictionary are left in the log.
    grep -v -E '^(#[0-9]+[[:space:]]+(NEW|REDUCE|pulse)|"|###### |[[:space:]]+NEW_FUNC)' "$dir/fuzz.log" | tail -n 40
    if [ $rc = 0 ]; then
        pass "fuzz: no finding in ${FUZZ_SECONDS}s"
    else
        ls -l "$dir/artifacts"
        fail "fuzz: exit $rc (inputs in $dir/artifacts, log $dir/fuzz.log)"
    fi
}
if wants fuzz; then
    leg_start
    run_fuzz
    leg_end fuzz
fi

# ---------------------------------------------------------------------------------------------
# Wine is given a prefix inside the build tree and a time limit on every call.
wine_run() {
    local limit=$1
    shift
    timeout -k 10 "$limit" "$@" </dev/null
}

run_windows() {
    local dir=$OUT/win bin
    bin=$dir/bin
    if ! command -v i686-w64-mingw32-g++-win32 >/dev/null &&
        ! command -v i686-w64-mingw32-g++ >/dev/null; then
        banner "windows: no MinGW-w64 compiler"
        fail "windows: no i686-w64-mingw32-g++"
        return
    fi
    if ! step "windows: configure (i686-w64-mingw32)" cmake -S "$ROOT" -B "$dir" \
        -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/toolchain-i686-w64-mingw32.cmake" \
        -DCMAKE_BUILD_TYPE=Release -DCMDDATA_BUILD_TESTS=ON -DCMDDATA_BUILD_TOOLS=ON; then
        fail "windows: configure"
        return
    fi
    # The tests first, so that a program that fails to build elsewhere does not hide them.
    if ! step "windows: build cmddata_tests" cmake --build "$dir" -j "$JOBS" --target cmddata_tests; then
        fail "windows: build cmddata_tests"
        return
    fi
    step "windows: build the rest" cmake --build "$dir" -j "$JOBS" || fail "windows: build"

    banner "windows: cmddata.dll"
    local kind
    kind=$(file -b "$bin/cmddata.dll" 2>&1)
    echo "$kind"
    ls -l "$bin" "$dir/libcmddata.dll.a" 2>&1
    if [[ "$kind" == PE32\ * && "$kind" == *"Intel 80386"* && "$kind" == *"(DLL)"* ]] &&
        [ -f "$dir/libcmddata.dll.a" ]; then
        pass "windows: cmddata.dll is a 32-bit DLL with its import library"
    else
        fail "windows: cmddata.dll is not a PE32 i386 DLL"
    fi
    # Nothing but the system's DLLs and cmddata.dll may be needed beside the programs.
    local objdump extra=""
    objdump=$(command -v i686-w64-mingw32-objdump)
    if [ -n "$objdump" ]; then
        for f in "$bin"/*.dll "$bin"/*.exe; do
            extra+=$("$objdump" -p "$f" | sed -n 's/^[[:space:]]*DLL Name: //p' |
                grep -iE '^(libstdc|libgcc|libwinpthread)' | sed "s|^|$(basename "$f") needs |")
        done
        if [ -n "$extra" ]; then
            echo "$extra"
            fail "windows: compiler runtime DLLs needed"
        else
            pass "windows: programs need only cmddata.dll and system DLLs"
        fi
    fi

    if ! command -v wine >/dev/null; then
        banner "windows: wine not found"
        fail "windows: no wine"
        return
    fi
    export WINEDEBUG=-all WINEPREFIX=$dir/wineprefix WINEARCH=win32 WINEDLLOVERRIDES="mscoree,mshtml="
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
        banner "windows: wineboot -i (new prefix in $WINEPREFIX)"
        wine_run 600 wineboot -i || echo "wineboot exited $?"
    fi

    banner "windows: cmddata_tests.exe under Wine"
    local log=$dir/wine-tests.log rc
    (cd "$bin" && GTEST_COLOR=no wine_run 900 wine ./cmddata_tests.exe) 2>&1 | tr -d '\r' | tee "$log"
    rc=${PIPESTATUS[0]}
    local ok bad
    ok=$(sed -nE 's/^\[  PASSED  \] ([0-9]+) tests?\.$/\1/p' "$log" | tail -n 1)
    bad=$(sed -nE 's/^\[  FAILED  \] ([0-9]+) tests?, listed below:$/\1/p' "$log" | tail -n 1)
    ok=${ok:-0}
    bad=${bad:-0}
    PASSED=$((PASSED + ok))
    if [ "$bad" -gt 0 ]; then
        fail "windows: $bad tests under Wine" "$bad"
    elif [ "$rc" != 0 ] || [ "$ok" = 0 ]; then
        fail "windows: cmddata_tests.exe exited $rc after $ok passing tests"
    else
        printf -- '---------- ok: windows: %s tests under Wine\n' "$ok"
    fi

    if [ -f "$bin/cmddata.exe" ]; then
        banner "windows: cmddata.exe demo under Wine"
        (cd "$bin" && wine_run 300 wine ./cmddata.exe demo) 2>&1 | tr -d '\r' | tail -n 60
        rc=${PIPESTATUS[0]}
        if [ "$rc" = 0 ]; then pass "windows: cmddata.exe demo"; else fail "windows: cmddata.exe demo exited $rc"; fi
    fi
    wine_run 60 wineserver -k >/dev/null 2>&1 || true
}
if wants windows; then
    leg_start
    run_windows
    leg_end windows
fi

# ---------------------------------------------------------------------------------------------
banner "timings"
STEP_NAME=""
printf '%s\n' "${TIMES[@]}"
if [ ${#FAILURES[@]} -gt 0 ]; then
    banner "failures"
    printf '  %s\n' "${FAILURES[@]}"
fi
echo
echo "summary: $PASSED passed, $FAILED failed"
[ "$FAILED" = 0 ]
