#!/usr/bin/env bash
# Installs what building and testing cmddata needs on a Debian 12 machine, and only what is
# missing: on a ready machine it checks and returns in well under a second.
# Run as root (it does nothing useful otherwise). Non-interactive.
set -u

export DEBIAN_FRONTEND=noninteractive

# Native build and tests, the sanitizer build, the fuzz target (clang + its runtime), the
# benchmarks, the 32-bit Windows cross build and Wine to run it.
native_pkgs=(cmake make g++ clang libclang-rt-14-dev libgtest-dev googletest libbenchmark-dev
    python3 file libprotobuf-dev protobuf-compiler libcereal-dev)
windows_pkgs=(g++-mingw-w64-i686 wine wine32:i386)

log() { printf 'install-deps: %s\n' "$*"; }

if [ "$(id -u)" != 0 ]; then
    log "not root: installing nothing"
    exit 0
fi

installed() {
    dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'
}

missing=()
for p in "${native_pkgs[@]}" "${windows_pkgs[@]}"; do
    installed "$p" || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
    log "everything is installed already"
    exit 0
fi
log "missing: ${missing[*]}"

need_i386=0
for p in "${missing[@]}"; do
    case "$p" in *:i386) need_i386=1 ;; esac
done
if [ $need_i386 = 1 ] && ! dpkg --print-foreign-architectures | grep -qx i386; then
    log "adding the i386 architecture (for wine32)"
    dpkg --add-architecture i386
fi

# An index of one suite can be out of step with the others (seen for the i386 security
# index), which makes update exit non-zero although the main suites are fine: go on anyway.
apt_update() {
    apt-get update -q || log "apt-get update reported an error; continuing with what it fetched"
}

apt_install() {
    apt-get install -y -q "$@"
}

apt_update

native_missing=()
windows_missing=()
for p in "${missing[@]}"; do
    case " ${windows_pkgs[*]} " in
        *" $p "*) windows_missing+=("$p") ;;
        *) native_missing+=("$p") ;;
    esac
done

status=0
if [ ${#native_missing[@]} -gt 0 ]; then
    if ! apt_install "${native_missing[@]}"; then
        log "plain install failed; retrying from the release suite"
        apt_install -t bookworm "${native_missing[@]}" || status=1
    fi
fi
if [ ${#windows_missing[@]} -gt 0 ]; then
    # wine32 needs the i386 side of its dependencies; a stale i386 security index gives unmet
    # dependencies, which the release suite alone resolves.
    if ! apt_install "${windows_missing[@]}"; then
        log "plain install failed; retrying from the release suite"
        apt_install -t bookworm "${windows_missing[@]}" || status=1
    fi
fi

still=()
for p in "${missing[@]}"; do
    installed "$p" || still+=("$p")
done
if [ ${#still[@]} -gt 0 ]; then
    log "still missing: ${still[*]}"
    exit 1
fi
log "done"
exit $status
