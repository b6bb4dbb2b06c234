#!/usr/bin/env bash
# Proof that a fresh Debian 12 machine needs nothing but the repository: sudo bash scripts/check-fresh-root.sh
#
# Builds a minimal bookworm root with mmdebstrap (essential packages and apt, nothing else),
# copies a clean clone of this repository's committed HEAD into it and, inside it:
#   clean      cmake and g++ are absent: nothing was installed beforehand
#   demo       the README's first command, `bash scripts/demo.sh`, which installs what it needs
#              through scripts/install-deps.sh (the only step that installs anything)
#   lib-only   with CLI11 and nlohmann-json removed again, `cmake -S . -B build-lib` succeeds
#              with a one-line notice that the tool is skipped, and the library and its tests build
# Ends with one line per check, "PASS" or "FAIL", and exits non-zero when one failed. Each run
# starts from a new root. Needs root, network access to the Debian mirror of this machine's apt
# sources (/etc/apt/sources.list*, with the Acquire settings of /etc/apt/apt.conf.d) and some
# 20 minutes; not part of the test command.
#
# Environment: CMDDATA_FRESH_ROOT (the root's directory, default build-fresh-root in the
# repository; made anew each run and removed at the end unless CMDDATA_FRESH_ROOT_KEEP=1; some
# 6 GB), CMDDATA_WIN32_RUN (passed on to install-deps.sh).
set -u -o pipefail

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
TARGET=${CMDDATA_FRESH_ROOT:-$ROOT/build-fresh-root}
LOGS=$TARGET.logs
say() { printf 'check-fresh-root: %s\n' "$*"; }

if [ "$(id -u)" != 0 ]; then
    say "needs root (mmdebstrap and chroot)" >&2
    exit 2
fi
if ! command -v mmdebstrap >/dev/null; then
    say "installing mmdebstrap (host only)"
    DEBIAN_FRONTEND=noninteractive apt-get install -y -q mmdebstrap >/dev/null || {
        say "mmdebstrap is not installed and could not be" >&2
        exit 1
    }
fi

# The host's own apt sources and its Acquire settings (proxies, validity of old Release files).
mirrors=()
for f in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
    [ -f "$f" ] && grep -qE '^[[:space:]]*(deb|Types:)' "$f" && mirrors+=("$f")
done
aptopts=()
for f in /etc/apt/apt.conf.d/*; do
    [ -f "$f" ] && grep -q '^[[:space:]]*Acquire' "$f" && aptopts+=(--aptopt="$f")
done
if [ ${#mirrors[@]} -eq 0 ]; then
    say "no apt sources on this machine" >&2
    exit 1
fi

case $(realpath -m "$TARGET") in
    / | /bin | /boot | /etc | /home | /root | /usr | /var | "$ROOT")
        say "refusing to use $TARGET as the root's directory" >&2
        exit 2
        ;;
esac
rm -rf "$TARGET" "$LOGS"
mkdir -p "$LOGS"
say "building a bookworm root in $TARGET (log: $LOGS/mmdebstrap.log)"
t0=$(date +%s)
if ! mmdebstrap --variant=apt --mode=root "${aptopts[@]}" bookworm "$TARGET" "${mirrors[@]}" \
    >"$LOGS/mmdebstrap.log" 2>&1; then
    tail -n 20 "$LOGS/mmdebstrap.log"
    say "mmdebstrap failed" >&2
    exit 1
fi
say "root built in $(($(date +%s) - t0))s"
rm -f "$TARGET/etc/resolv.conf" && cp /etc/resolv.conf "$TARGET/etc/resolv.conf"

say "copying a clean clone of $(git -C "$ROOT" rev-parse --short HEAD) into /src/cmddata"
git clone -q --no-hardlinks "$ROOT" "$TARGET/src/cmddata" || exit 1

# Runs a shell command inside the root, in the clone, with /proc, /dev and shared memory of
# a private mount namespace (gone with the command). Output to the named log and the terminal.
inside() {
    local log=$LOGS/$1.log
    shift
    # shellcheck disable=SC2016
    unshare --mount --fork bash -c '
        set -e
        r=$0
        mount --make-rprivate /
        mount -t proc proc "$r/proc"
        mount --rbind /dev "$r/dev"
        mount -t tmpfs -o mode=1777 tmpfs "$r/dev/shm"
        mount -t tmpfs tmpfs "$r/tmp"
        exec chroot "$r" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root \
            LANG=C.UTF-8 ${CMDDATA_WIN32_RUN:+CMDDATA_WIN32_RUN=$CMDDATA_WIN32_RUN} \
            bash -c "cd /src/cmddata && $1"' "$TARGET" "$*" 2>&1 | tee "$log"
}

results=()
record() {  # name, status, what
    if [ "$2" = 0 ]; then
        results+=("PASS  $1: $3")
    else
        results+=("FAIL  $1: $3")
    fi
}

say "check clean: no compiler or cmake in the new root"
# shellcheck disable=SC2016
inside clean 'for t in cmake g++ c++ clang; do command -v $t && exit 1; done; echo "none of cmake, g++, c++, clang"'
record clean $? "no cmake or compiler before the project's install step"

say "check demo: bash scripts/demo.sh (installs through scripts/install-deps.sh)"
t0=$(date +%s)
inside demo 'bash scripts/demo.sh'
status=$?
record demo $status "bash scripts/demo.sh exit $status in $(($(date +%s) - t0))s"

say "check lib-only: without CLI11 and nlohmann-json, cmake -S . -B build-lib and a build"
# shellcheck disable=SC2016
inside lib-only 'apt-get remove -y -q libcli11-dev nlohmann-json3-dev >/dev/null &&
    ! test -e /usr/include/CLI/CLI.hpp && ! test -e /usr/include/nlohmann/json.hpp &&
    cmake -S . -B build-lib >configure.log 2>&1; rc=$?; cat configure.log; test $rc = 0 &&
    notice=$(grep -c "the cmddata tool is not built" configure.log) && test "$notice" = 1 &&
    echo "notice lines: $notice" && cmake --build build-lib -j2 >build.log 2>&1 &&
    test -f build-lib/libcmddata.so && test -x build-lib/tests/cmddata_tests &&
    ! test -e build-lib/tools/cmddata && echo "library and tests built, no tool"'
status=$?
record lib-only $status "library-only configure with one notice and build"

echo
say "results (logs in $LOGS):"
printf '  %s\n' "${results[@]}"
failed=$(printf '%s\n' "${results[@]}" | grep -c '^FAIL')
if [ "${CMDDATA_FRESH_ROOT_KEEP:-0}" != 1 ]; then
    rm -rf "$TARGET"
fi
if [ "$failed" = 0 ]; then
    say "all checks passed"
else
    say "$failed check(s) failed"
    exit 1
fi
