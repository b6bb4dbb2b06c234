#!/usr/bin/env bash
# Installs what building and testing cmddata needs on a Debian 12 machine, and only what is
# missing: on a ready machine it checks and returns in well under a second.
# Run as root (it does nothing useful otherwise). Non-interactive.
#
# 32-bit Wine (wine32:i386) is optional: it is installed only where the kernel runs 32-bit x86
# programs (or CMDDATA_WIN32_RUN=1 asks for it), and a failure to install it is reported but does
# not fail the script. Everything else, 64-bit Wine included, is required.
set -u

export DEBIAN_FRONTEND=noninteractive

# Native build and tests, the sanitizer build, the fuzz target (clang + its runtime), the
# benchmarks, the tool's libraries, the 32-bit and 64-bit Windows cross builds and 64-bit Wine.
native_pkgs=(cmake make g++ clang libclang-rt-14-dev libgtest-dev googletest libbenchmark-dev
    python3 python3-pytest python3-matplotlib file libprotobuf-dev protobuf-compiler libcereal-dev libcli11-dev nlohmann-json3-dev)
# The 32-bit Linux build (-m32 with its UBSan runtime) and user-mode emulation to run it where
# the kernel does not run 32-bit programs.
if [ "$(dpkg --print-architecture)" = amd64 ]; then
    native_pkgs+=(g++-multilib qemu-user)
fi
# node and npm for the Kaitai check (packages of their own where node did not come from elsewhere).
if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
    native_pkgs+=(nodejs npm)
fi
windows_pkgs=(g++-mingw-w64-i686 g++-mingw-w64-x86-64-win32 wine wine64)
wine32_pkg=wine32:i386

log() { printf 'install-deps: %s\n' "$*"; }

# Kaitai Struct's compiler and JavaScript runtime, and a YAML reader, for the tool test's check of
# the .ksy descriptions: npm packages in the project's own folder (no root needed), installed
# when a pinned version is missing. Without node and npm the check is skipped.
node_dir=${CMDDATA_NODE_DIR:-$(cd "$(dirname "$0")/.." && pwd)/build-test/node}
npm_pkgs=(kaitai-struct-compiler@0.11.0 kaitai-struct@0.11.0 js-yaml@4.1.0)
install_npm() {
    local p missing_npm=()
    for p in "${npm_pkgs[@]}"; do
        grep -qs "\"version\": *\"${p##*@}\"" "$node_dir/node_modules/${p%@*}/package.json" ||
            missing_npm+=("$p")
    done
    [ ${#missing_npm[@]} -eq 0 ] && return 0
    if ! command -v npm >/dev/null; then
        log "npm not found: not installing ${missing_npm[*]} (the Kaitai check will be skipped)"
        return 0
    fi
    log "npm: installing ${missing_npm[*]} into $node_dir"
    mkdir -p "$node_dir" &&
        npm install --prefix "$node_dir" --no-audit --no-fund --no-save --loglevel=error \
            "${npm_pkgs[@]}" >/dev/null ||
        { log "npm install failed"; return 1; }
}
install_npm || log "continuing without them: the Kaitai check will be skipped"

if [ "$(id -u)" != 0 ]; then
    log "not root: installing nothing"
    exit 0
fi

# One dpkg-query for all of them: one per package takes a second on a large package database.
native_arch=$(dpkg --print-architecture)
status_list=""
read_status() {
    status_list=$(dpkg-query -W -f='${binary:Package} ${db:Status-Abbrev}\n' \
        "${native_pkgs[@]}" "${windows_pkgs[@]}" "$wine32_pkg" 2>/dev/null)
}
installed() {
    grep -qxF -e "$1 ii " -e "$1:$native_arch ii " <<<"$status_list"
}

# Whether the kernel executes 32-bit x86 programs: a 94-byte static i386 ELF program whose only
# instructions are exit(42). Kernels built without IA-32 emulation refuse it (Exec format error);
# there the i386 packages are useless and their maintainer scripts fail.
kernel_runs_i386() {
    local dir rc
    dir=$(mktemp -d) || return 1
    printf '%b' \
        '\x7fELF\x01\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00' \
        '\x02\x00\x03\x00\x01\x00\x00\x00\x54\x80\x04\x08\x34\x00\x00\x00' \
        '\x00\x00\x00\x00\x00\x00\x00\x00\x34\x00\x20\x00\x01\x00\x00\x00\x00\x00\x00\x00' \
        '\x01\x00\x00\x00\x00\x00\x00\x00\x00\x80\x04\x08\x00\x80\x04\x08' \
        '\x5e\x00\x00\x00\x5e\x00\x00\x00\x05\x00\x00\x00\x00\x10\x00\x00' \
        '\x31\xc0\x40\xbb\x2a\x00\x00\x00\xcd\x80' >"$dir/exit42"
    chmod +x "$dir/exit42"
    "$dir/exit42" 2>/dev/null
    rc=$?
    rm -rf "$dir"
    [ $rc = 42 ]
}

want_wine32=0
if [ "${CMDDATA_WIN32_RUN:-}" = 1 ]; then
    want_wine32=1
elif [ "${CMDDATA_WIN32_RUN:-}" != 0 ] && kernel_runs_i386; then
    want_wine32=1
fi

read_status
missing=()
for p in "${native_pkgs[@]}" "${windows_pkgs[@]}"; do
    installed "$p" || missing+=("$p")
done
optional_missing=()
if [ $want_wine32 = 1 ] && ! installed "$wine32_pkg"; then
    optional_missing=("$wine32_pkg")
fi
if [ $want_wine32 = 0 ] && ! installed "$wine32_pkg"; then
    log "this kernel does not run 32-bit x86 programs: not installing $wine32_pkg" \
        "(the 64-bit Windows build is tested instead)"
fi

if [ ${#missing[@]} -eq 0 ] && [ ${#optional_missing[@]} -eq 0 ]; then
    log "everything is installed already"
    exit 0
fi
log "missing: ${missing[*]} ${optional_missing[*]}"

if [ ${#optional_missing[@]} -gt 0 ] && ! dpkg --print-foreign-architectures | grep -qx i386; then
    log "adding the i386 architecture (for wine32)"
    dpkg --add-architecture i386
fi

# An index of one suite can be out of step with the others (seen for the i386 security
# index), which makes update exit non-zero although the main suites are fine: go on anyway.
apt_update() {
    apt-get update -q || log "apt-get update reported an error; continuing with what it fetched"
}

# A package whose i386 twin came from a different suite than its amd64 candidate gives unmet
# dependencies (Multi-Arch: same needs equal versions); the release suite alone resolves that.
apt_install() {
    apt-get install -y -q "$@" && return 0
    log "plain install failed; retrying from the release suite"
    apt-get install -y -q -t bookworm "$@"
}

# Multi-Arch "same" packages must have equal versions in both architectures. When the i386 index
# of a suite did not download, an amd64 package installed from that suite (bookworm-security, say)
# has no i386 twin at its version, and no install of wine32 resolves. For each such package in
# wine32's dependencies, this prints pkg:amd64=V pkg:i386=V at the highest version V both
# architectures' indexes offer: a downgrade of the amd64 package to the release suite's version.
wine32_pins() {
    local closure table base have i386_versions v
    closure=$(apt-cache depends --recurse --no-recommends --no-suggests --no-conflicts \
        --no-breaks --no-replaces --no-enhances "$wine32_pkg" 2>/dev/null |
        sed -n 's/^\([a-z0-9][^ ]*\):i386$/\1/p' | sort -u)
    [ -n "$closure" ] || return 0
    # "name arch version" for every version either index offers, highest first; one apt-cache
    # call for all (one per package takes minutes).
    # shellcheck disable=SC2046
    table=$(apt-cache madison $(sed 's/$/:i386/' <<<"$closure") $(sed 's/$/:amd64/' <<<"$closure") \
        2>/dev/null | awk -F'|' '{ gsub(/ /, ""); n = $1; a = "amd64"
            if (n ~ /:i386$/) a = "i386"; sub(/:(i386|amd64)$/, "", n); print n, a, $2 }')
    # shellcheck disable=SC2086
    dpkg-query -W -f='${Package} ${Architecture} ${db:Status-Abbrev}\t${Version}\n' $closure 2>/dev/null |
        awk -F'\t' '$1 ~ / amd64 ii / { split($1, f, " "); print f[1], $2 }' |
        while read -r base have; do
            i386_versions=$(awk -v b="$base" '$1 == b && $2 == "i386" { print $3 }' <<<"$table")
            # Only where no i386 version reaches the installed one (an upgrade apt finds
            # itself), and only for packages both architectures may hold at once.
            [ -n "$i386_versions" ] && ! grep -qxF "$have" <<<"$i386_versions" &&
                dpkg --compare-versions "$have" gt "$(head -n 1 <<<"$i386_versions")" &&
                apt-cache show "$base:i386" 2>/dev/null | grep -qx 'Multi-Arch: same' || continue
            for v in $(awk -v b="$base" '$1 == b && $2 == "amd64" { print $3 }' <<<"$table"); do
                if grep -qxF "$v" <<<"$i386_versions"; then
                    printf '%s:amd64=%s %s:i386=%s\n' "$base" "$v" "$base" "$v"
                    break
                fi
            done
        done
}

apt_update

status=0
if [ ${#missing[@]} -gt 0 ]; then
    apt_install "${missing[@]}" || status=1
fi

# Last and on its own, so that nothing above depends on it.
if [ ${#optional_missing[@]} -gt 0 ]; then
    installed_wine32=0
    if apt_install "${optional_missing[@]}"; then
        installed_wine32=1
    else
        mapfile -t pins < <(wine32_pins)
        if [ ${#pins[@]} -gt 0 ]; then
            log "i386 and amd64 versions differ; installing both at one version: ${pins[*]}"
            # shellcheck disable=SC2068
            apt-get install -y -q --no-remove --allow-downgrades -t bookworm \
                "${optional_missing[@]}" ${pins[@]} && installed_wine32=1
        fi
    fi
    if [ $installed_wine32 = 0 ]; then
        log "could not install ${optional_missing[*]} (optional: 32-bit Windows programs will" \
            "not run here, the 64-bit build is tested instead)"
        # Leave no half-configured i386 package behind for the next apt-get to trip over.
        broken=$(dpkg-query -W -f='${Package}:${Architecture} ${Status}\n' 2>/dev/null |
            awk '$1 ~ /:i386$/ && $NF != "installed" && $NF != "not-installed" \
                 && $NF != "config-files" { print $1 }')
        if [ -n "$broken" ]; then
            log "removing unconfigured i386 packages: ${broken//$'\n'/ }"
            # shellcheck disable=SC2086
            dpkg --remove --force-depends $broken >/dev/null 2>&1 ||
                log "dpkg --remove reported an error"
        fi
    fi
fi

read_status
still=()
for p in "${missing[@]}"; do
    installed "$p" || still+=("$p")
done
if [ ${#still[@]} -gt 0 ]; then
    log "still missing: ${still[*]}"
    exit 1
fi
install_npm || status=1  # now that apt may have brought npm
log "done"
exit $status
