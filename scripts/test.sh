#!/usr/bin/env bash
# The test command: bash scripts/test.sh
#
# Legs, in order (each step prints a banner; a failing step does not stop the others):
#   deps     installs what is missing (only when run as root)
#   native   preset "native": Release build and every ctest test, including the
#            installed-package consumer check (tests/consumer)
#   asan     preset "asan": the same tests under AddressSanitizer + UndefinedBehaviorSanitizer
#   tsan     preset "tsan": the tests that share an object between threads, under ThreadSanitizer
#   linux32  preset "linux32": the library and its test program for 32-bit x86 Linux (-m32) with
#            UBSan, run directly where the kernel runs 32-bit programs, else under qemu-i386
#   fuzz     preset "fuzz": clang + libFuzzer one-class target under ASan/UBSan, a minute from a
#            seed corpus, then 20 s of the JSON reader's target
#   windows  preset "win32": the 32-bit Windows cross build, always; its DLL and programs checked.
#            Where this machine runs 32-bit x86 programs, ctest runs its tests and the tool's demo
#            under 32-bit Wine; where it cannot, preset "win64" builds the same for 64-bit Windows
#            and runs them under 64-bit Wine instead: the 32-bit cases then count as skipped.
# Ends with the time of each leg and one line "summary: N passed, N failed, N skipped" counting
# the test cases of all legs, and exits non-zero when anything failed.
#
# Environment: CMDDATA_LEGS (default "deps native asan tsan linux32 fuzz windows"), CMDDATA_FUZZ_SECONDS
# (default 60), CMDDATA_FUZZ_JSON_SECONDS (default 20), CMDDATA_TEST_BUILD_DIR (default build-test in the repository), CMDDATA_JOBS
# (default 2), CMDDATA_WIN32_RUN (1 or 0: run the 32-bit Windows programs or not, instead of
# probing whether this machine can).
set -u -o pipefail

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$ROOT" || exit 1
LEGS=" ${CMDDATA_LEGS:-deps native asan tsan linux32 fuzz windows} "
FUZZ_SECONDS=${CMDDATA_FUZZ_SECONDS:-60}
FUZZ_JSON_SECONDS=${CMDDATA_FUZZ_JSON_SECONDS:-20}
OUT=${CMDDATA_TEST_BUILD_DIR:-$ROOT/build-test}
JOBS=${CMDDATA_JOBS:-2}
mkdir -p "$OUT"
OUT=$(cd "$OUT" && pwd)

PASSED=0
FAILED=0
SKIPPED=0
FAILURES=()
NOTES=()
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
note() { NOTES+=("$1"); printf -- '---------- note: %s\n' "$1"; }
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

# Configures build directory DIR from preset PRESET (CMakePresets.json) and builds TARGETS in
# order (all when none are named). Fails, and says so, at the first step that fails.
configure_and_build() {
    local name=$1 preset=$2 dir=$3 target
    shift 3
    if ! step "$name: configure (preset $preset)" cmake --preset "$preset" -B "$dir"; then
        fail "$name: configure"
        return 1
    fi
    for target in "${@:-all}"; do
        if ! step "$name: build $target" cmake --build "$dir" -j "$JOBS" --target "$target"; then
            fail "$name: build $target"
            return 1
        fi
    done
}

# The native test program runs as two shards, each counted from its own report.
shard_reports() {
    local shard
    for shard in 0 1; do
        rm -f "$1/tests/cmddata_tests.$shard.xml"
        printf -- '--cases cmddata_tests.%s=%s ' "$shard" "$1/tests/cmddata_tests.$shard.xml"
    done
    # The Python package's cases, from pytest's own report.
    rm -f "$1/tests/python.xml"
    printf -- '--cases python=%s ' "$1/tests/python.xml"
}

# Runs ctest in DIR and adds its test cases to the totals (see count_results.py; extra
# arguments go to it). A run that ran nothing is a failure.
ctest_and_count() {
    local name=$1 dir=$2 results
    shift 2
    banner "$name: ctest"
    rm -f "$dir/ctest-junit.xml"
    ctest --test-dir "$dir" -j "$JOBS" --timeout 600 --output-on-failure --no-tests=error \
        --output-junit "$dir/ctest-junit.xml" </dev/null 2>&1 | tr -d '\r'
    echo "(the whole output of every test: $dir/Testing/Temporary/LastTest.log)"
    results=$(python3 "$ROOT/scripts/count_results.py" "$dir/ctest-junit.xml" "$@")
    local rc=$? counts passed failed skipped
    counts=$(tail -n 1 <<<"$results")
    if [ $rc != 0 ] || ! [[ "$counts" =~ ^[0-9]+\ [0-9]+\ [0-9]+$ ]]; then
        echo "$results"
        fail "$name: no test results"
        return
    fi
    read -r passed failed skipped <<<"$counts"
    PASSED=$((PASSED + passed))
    SKIPPED=$((SKIPPED + skipped))
    LAST_CASES=$((passed + failed + skipped))
    [ "$skipped" = 0 ] || echo "$skipped test cases skipped"
    if [ "$failed" -gt 0 ]; then
        sed '$d' <<<"$results"
        fail "$name: $failed of $((passed + failed)) test cases" "$failed"
    elif [ "$passed" = 0 ]; then
        fail "$name: no test cases ran"
    else
        printf -- '---------- ok: %s: %s test cases\n' "$name" "$passed"
    fi
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
    configure_and_build native native "$OUT/native" && ctest_and_count native "$OUT/native" \
        $(shard_reports "$OUT/native")
    leg_end native
fi

# ---------------------------------------------------------------------------------------------
# Leak checking needs ptrace, which some containers refuse: probed once, for asan and fuzz.
LEAKS=""
probe_leaks() {
    [ -n "$LEAKS" ] && return
    LEAKS=0
    banner "probing LeakSanitizer"
    local probe=$OUT/lsan-probe
    printf '#include <cstdlib>\nint main() { volatile void* p = std::malloc(7); p = nullptr; (void)p; }\n' \
        >"$probe.cpp"
    if c++ -fsanitize=address "$probe.cpp" -o "$probe" 2>/dev/null &&
        ASAN_OPTIONS=detect_leaks=1 "$probe" 2>&1 | grep -q 'detected memory leaks'; then
        LEAKS=1
    fi
    echo "detect_leaks=$LEAKS"
}

if wants asan; then
    leg_start
    probe_leaks
    if configure_and_build asan asan "$OUT/asan"; then
        ASAN_OPTIONS="detect_leaks=$LEAKS:abort_on_error=0:strict_string_checks=1" \
            UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1" ctest_and_count asan "$OUT/asan" \
                $(shard_reports "$OUT/asan")
    fi
    leg_end asan
fi

# ---------------------------------------------------------------------------------------------
# The tests that share an object between threads (a locked ECU list filled by one thread while
# another reads it under the lock), under ThreadSanitizer. Only those: the verification tests
# flip region bytes from a second thread on purpose.
if wants tsan; then
    leg_start
    report=$OUT/tsan/tests/tsan.xml
    if configure_and_build tsan tsan "$OUT/tsan" cmddata_tests; then
        banner "tsan: the threaded tests"
        rm -f "$report"
        TSAN_OPTIONS="halt_on_error=1" "$OUT/tsan/tests/cmddata_tests" \
            --gtest_filter='EcuListLock.*' --gtest_output="xml:$report" </dev/null 2>&1 | tail -n 20
        rc=${PIPESTATUS[0]}
        counts=$(python3 -c 'import sys; sys.path.insert(0, sys.argv[1]); import count_results as c
p, f, s = c.gtest_cases(sys.argv[2]); print(p, len(f))' "$ROOT/scripts" "$report" 2>/dev/null)
        read -r passed failed <<<"${counts:-0 0}"
        PASSED=$((PASSED + passed))
        if [ "$rc" != 0 ] || [ "${failed:-0}" != 0 ] || [ "${passed:-0}" = 0 ]; then
            fail "tsan: exit $rc, $passed passed, $failed failed" "$(( ${failed:-0} > 0 ? failed : 1 ))"
        else
            printf -- '---------- ok: tsan: %s test cases\n' "$passed"
        fi
    fi
    leg_end tsan
fi

# ---------------------------------------------------------------------------------------------
# The 32-bit code of the library, run on every machine: the test program of preset linux32
# starts directly where the kernel runs 32-bit x86 programs, else under user-mode emulation.
run_linux32() {
    local dir=$OUT/linux32 prog report rc runner=() counts passed failed skipped
    prog=$dir/tests/cmddata_tests
    report=$dir/tests/cmddata_tests.xml
    configure_and_build linux32 linux32 "$dir" cmddata_tests || return
    banner "linux32: the test program"
    # Started by bash itself: exit 126 (Exec format error) says the kernel refuses it.
    bash -c 'exec "$0" --gtest_list_tests' "$prog" </dev/null >/dev/null 2>&1
    rc=$?
    if [ $rc = 0 ]; then
        echo "32-bit programs run here: running the test program directly"
    elif command -v qemu-i386 >/dev/null; then
        runner=(qemu-i386 -L /)
        echo "32-bit programs do not run here (exit $rc): running the test program under qemu-i386"
        note "linux32: 32-bit programs do not run on this machine: the test program ran under qemu-i386"
    else
        fail "linux32: 32-bit programs do not run here (exit $rc) and qemu-i386 is not installed"
        return
    fi
    rm -f "$report"
    UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1" timeout -k 10 1800 "${runner[@]}" "$prog" \
        --gtest_output="xml:$report" </dev/null 2>&1 | grep -v -E '^\[ +(OK|RUN) +\]' | tail -n 30
    rc=${PIPESTATUS[0]}
    counts=$(python3 -c 'import sys; sys.path.insert(0, sys.argv[1]); import count_results as c
p, f, s = c.gtest_cases(sys.argv[2]); print(p, len(f), s)' "$ROOT/scripts" "$report" 2>/dev/null)
    read -r passed failed skipped <<<"${counts:-0 0 0}"
    PASSED=$((PASSED + passed))
    SKIPPED=$((SKIPPED + ${skipped:-0}))
    if [ "$rc" != 0 ] || [ "${failed:-0}" != 0 ] || [ "${passed:-0}" = 0 ]; then
        fail "linux32: exit $rc, $passed passed, $failed failed" "$(( ${failed:-0} > 0 ? failed : 1 ))"
    else
        printf -- '---------- ok: linux32: %s test cases (%s skipped)\n' "$passed" "${skipped:-0}"
    fi
}
if wants linux32; then
    leg_start
    run_linux32
    leg_end linux32
fi

# ---------------------------------------------------------------------------------------------
run_fuzz() {
    local dir=$OUT/fuzz
    if ! command -v clang++ >/dev/null; then
        banner "fuzz: clang++ not found"
        fail "fuzz: no clang++"
        return
    fi
    probe_leaks
    # The one-class target only: each class gets the executions of its own inputs, and the
    # all-class target is not compiled. The corpus is the one scripts/fuzz.sh keeps.
    configure_and_build fuzz fuzz "$dir" cmddata_fuzz_one cmddata_fuzz_json make_seeds || return
    rm -rf "$dir/seeds" "$dir/artifacts"
    mkdir -p "$dir/seeds" "$dir/corpus-one" "$dir/artifacts"
    if ! step "fuzz: seed corpus" "$dir/fuzz/make_seeds" --numbered "$dir/seeds"; then
        fail "fuzz: seed corpus"
        return
    fi
    banner "fuzz: ${FUZZ_SECONDS}s of cmddata_fuzz_one"
    local rc
    ASAN_OPTIONS=detect_leaks=$LEAKS UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        timeout $((FUZZ_SECONDS + 300)) "$dir/fuzz/cmddata_fuzz_one" "$dir/corpus-one" "$dir/seeds" \
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
# The JSON reader's target, from every class's JSON: each input names a class and its text.
run_fuzz_json() {
    local dir=$OUT/fuzz rc
    [ -x "$dir/fuzz/make_seeds" ] || return  # the build failed: said already
    if [ ! -x "$dir/fuzz/cmddata_fuzz_json" ]; then
        fail "fuzz: cmddata_fuzz_json was not built"
        return
    fi
    rm -rf "$dir/json-seeds"
    mkdir -p "$dir/json-seeds" "$dir/json-corpus"
    if ! step "fuzz: JSON seed corpus" "$dir/fuzz/make_seeds" --json "$dir/json-seeds"; then
        fail "fuzz: JSON seed corpus"
        return
    fi
    banner "fuzz: ${FUZZ_JSON_SECONDS}s of cmddata_fuzz_json"
    ASAN_OPTIONS=detect_leaks=$LEAKS UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        timeout $((FUZZ_JSON_SECONDS + 300)) "$dir/fuzz/cmddata_fuzz_json" "$dir/json-corpus" \
        "$dir/json-seeds" -max_total_time="$FUZZ_JSON_SECONDS" -timeout=25 -rss_limit_mb=2048 \
        -max_len=65536 -artifact_prefix="$dir/artifacts/" -print_final_stats=1 </dev/null \
        >"$dir/fuzz-json.log" 2>&1
    rc=$?
    grep -E '^#[0-9]+[[:space:]]+DONE|^stat::|ERROR|SUMMARY|==[0-9]+==' "$dir/fuzz-json.log" | tail -n 20
    if [ $rc = 0 ]; then
        pass "fuzz: JSON reader, no finding in ${FUZZ_JSON_SECONDS}s"
    else
        fail "fuzz: JSON reader, exit $rc (inputs in $dir/artifacts, log $dir/fuzz-json.log)"
    fi
}
if wants fuzz; then
    leg_start
    run_fuzz
    run_fuzz_json
    leg_end fuzz
fi

# ---------------------------------------------------------------------------------------------
# The DLL and the programs of one Windows build: `file` must name the expected kind of DLL, the
# import library must be there, and nothing but system DLLs and cmddata.dll may be needed.
check_windows_binaries() {
    local name=$1 dir=$2 kind_re=$3 objdump=$4 kind extra="" f
    banner "$name: cmddata.dll and the programs"
    kind=$(file -b "$dir/bin/cmddata.dll" 2>&1)
    echo "cmddata.dll: $kind"
    ls -l "$dir/bin" "$dir/libcmddata.dll.a" 2>&1
    if [[ "$kind" =~ $kind_re ]] && [ -f "$dir/libcmddata.dll.a" ]; then
        pass "$name: cmddata.dll is a ${kind%%,*} DLL with its import library"
    else
        fail "$name: cmddata.dll is not a DLL of the expected kind ($kind_re)"
    fi
    # The C interface leaves the DLL under its plain C names, for any compiler and language.
    local exports
    exports=$("$objdump" -p "$dir/bin/cmddata.dll" | grep -oE '\b[_A-Za-z0-9@]*cmddata_[a-z_]+[@0-9]*' | sort -u)
    if grep -qx cmddata_from_json <<<"$exports" && grep -qx cmddata_region_open <<<"$exports" &&
        ! grep -qE '^_cmddata_|@' <<<"$exports"; then
        pass "$name: the C interface is exported under undecorated names ($(wc -l <<<"$exports") of them)"
    else
        echo "$exports"
        fail "$name: the C interface's names are missing or decorated in the DLL's export table"
    fi
    for f in "$dir"/bin/*.dll "$dir"/bin/*.exe; do
        extra+=$("$objdump" -p "$f" | sed -n 's/^[[:space:]]*DLL Name: //p' |
            grep -iE '^(libstdc|libgcc|libwinpthread)' | sed "s|^|$(basename "$f") needs |")
    done
    if [ -n "$extra" ]; then
        echo "$extra"
        fail "$name: compiler runtime DLLs needed"
    else
        pass "$name: programs need only cmddata.dll and system DLLs"
    fi
}

# Whether this machine runs 32-bit x86 programs, asked once per run of the 32-bit Wine loader
# the win32 build found: `--version` exits 126 (Exec format error) on a kernel without 32-bit
# support. CMDDATA_WIN32_RUN=1 or 0 overrides the answer. Sets WIN32_RUN and WIN32_WHY.
probe_win32() {
    local loader rc out
    banner "windows: can this machine run 32-bit programs?"
    loader=$(sed -n 's/^CMDDATA_WINE:FILEPATH=//p' "$OUT/win32/CMakeCache.txt" 2>/dev/null)
    WIN32_RUN=0
    if [ -z "$loader" ] || [[ "$loader" == *NOTFOUND ]]; then
        WIN32_WHY="no 32-bit Wine loader is installed"
    elif [ "$(head -c 2 "$loader")" = '#!' ] && [ -d /usr/lib/wine ] && [ ! -x /usr/lib/wine/wine ]; then
        # Debian's /usr/bin/wine falls back to the 64-bit loader when wine32 is missing.
        WIN32_WHY="32-bit Wine (wine32) is not installed"
    else
        # Started by bash itself: timeout's execvp would hand a program the kernel refuses to sh.
        # shellcheck disable=SC2016
        out=$(timeout -k 5 60 bash -c 'exec "$0" --version' "$loader" </dev/null 2>&1)
        rc=$?
        out=$(head -n 1 <<<"$out")
        echo "$loader --version: exit $rc: $out"
        if [ $rc = 0 ]; then
            WIN32_RUN=1
            WIN32_WHY="$loader --version runs ($out)"
        elif [ $rc = 126 ] || [[ "$out" == *"Exec format error"* ]]; then
            WIN32_WHY="$loader --version: Exec format error, exit $rc"
        else
            WIN32_WHY="$loader --version exited $rc"
        fi
    fi
    local answer
    answer=$([ $WIN32_RUN = 1 ] && echo yes || echo no)
    echo "32-bit programs run here: $answer ($WIN32_WHY)"
    case ${CMDDATA_WIN32_RUN:-} in
        1 | 0)
            WIN32_RUN=$CMDDATA_WIN32_RUN
            WIN32_WHY="CMDDATA_WIN32_RUN=$CMDDATA_WIN32_RUN (the probe said $answer: $WIN32_WHY)"
            echo "$WIN32_WHY"
            ;;
    esac
}

# ctest of one Windows build, under the Wine its toolchain named; then its wineserver is stopped.
run_under_wine() {
    local name=$1 dir=$2
    rm -f "$dir/tests/cmddata_tests.xml"
    ctest_and_count "$name" "$dir" --setup wine.prefix \
        --cases "cmddata_tests=$dir/tests/cmddata_tests.xml"
    WINEPREFIX=$dir/wineprefix timeout -k 5 60 wineserver -k </dev/null >/dev/null 2>&1 || true
}

run_windows() {
    local dir32=$OUT/win32 dir64=$OUT/win64
    # Every 32-bit program is built and linked everywhere, whether or not it can run here; the
    # tests first, so that a program that fails to build elsewhere does not hide them.
    if ! command -v i686-w64-mingw32-objdump >/dev/null; then
        banner "windows: no MinGW-w64 for i686"
        fail "windows: no i686-w64-mingw32 toolchain"
        return
    fi
    if configure_and_build win32 win32 "$dir32" cmddata_tests all; then
        check_windows_binaries win32 "$dir32" '^PE32 executable \(DLL\).*Intel 80386' \
            i686-w64-mingw32-objdump
    fi

    probe_win32
    if [ "$WIN32_RUN" = 1 ]; then
        if [[ ${CMDDATA_WIN32_RUN:-} == [01] ]]; then
            note "windows: $WIN32_WHY: ran the 32-bit Windows build under Wine"
        else
            note "windows: 32-bit programs run on this machine ($WIN32_WHY): ran the 32-bit Windows build under Wine"
        fi
        [ -f "$dir32/bin/cmddata_tests.exe" ] && run_under_wine win32 "$dir32"
        return
    fi
    if [[ ${CMDDATA_WIN32_RUN:-} == [01] ]]; then
        note "windows: $WIN32_WHY: 32-bit programs not run: ran the 64-bit Windows build under Wine instead"
    else
        note "windows: 32-bit programs cannot run on this machine ($WIN32_WHY): ran the 64-bit Windows build under Wine instead"
    fi
    if ! command -v x86_64-w64-mingw32-objdump >/dev/null; then
        banner "windows: no MinGW-w64 for x86_64"
        fail "windows: no x86_64-w64-mingw32 toolchain"
        return
    fi
    if configure_and_build win64 win64 "$dir64" cmddata_tests all; then
        check_windows_binaries win64 "$dir64" '^PE32\+ executable \(DLL\).*x86-64' \
            x86_64-w64-mingw32-objdump
    fi
    LAST_CASES=0
    [ -f "$dir64/bin/cmddata_tests.exe" ] && run_under_wine win64 "$dir64"
    # The 64-bit run stands in for the 32-bit one; the 32-bit cases did not run.
    if [ "$LAST_CASES" -gt 0 ]; then
        SKIPPED=$((SKIPPED + LAST_CASES))
        echo "$LAST_CASES test cases of the 32-bit Windows build not run: counted as skipped"
    fi
}
if wants windows; then
    leg_start
    run_windows
    leg_end windows
fi

# ---------------------------------------------------------------------------------------------
closing() {
    banner "$1"
    STEP_NAME=""
}
closing "timings"
printf '%s\n' "${TIMES[@]}"
if [ ${#NOTES[@]} -gt 0 ]; then
    closing "notes"
    printf '  %s\n' "${NOTES[@]}"
fi
if [ ${#FAILURES[@]} -gt 0 ]; then
    closing "failures"
    printf '  %s\n' "${FAILURES[@]}"
fi
echo
echo "summary: $PASSED passed, $FAILED failed, $SKIPPED skipped"
[ "$FAILED" = 0 ]
