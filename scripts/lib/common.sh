# shellcheck shell=bash
# What every script of this folder starts with: strict mode, the project's root as the working folder, and a
# few words for speaking to whoever runs it. Source it; it is not run by itself.

set -euo pipefail

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$ROOT"

# The system's own Python: the one that the packages listed in packages.sh extend.
export PYTHON=/usr/bin/python3

JOBS=${JOBS:-$(nproc)}
export JOBS

# What one checkout has compiled, another of the same sources need not: paths count from the project's root.
export CCACHE_BASEDIR=$ROOT CCACHE_NOHASHDIR=true

say() { printf '\n== %s\n' "$*"; }
warn() { printf '%s: %s\n' "${0##*/}" "$*" >&2; }

die() {
    warn "$*"
    exit 1
}

# as_root COMMAND...: through sudo where that is needed.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "this needs root or sudo: $*"
    fi
}
