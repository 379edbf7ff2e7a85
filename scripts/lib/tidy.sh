# shellcheck shell=bash
# clang-tidy over the parts without Qt, which read foreign bytes. The windows would cost several times the time. Needs
# build.sh, common.sh and steps.sh.

TIDY_FOLDERS=(base platform app archive)

# tidy_sources: every source that is built on this system, one a line.
tidy_sources() {
    git ls-files -co --exclude-standard -- "${TIDY_FOLDERS[@]/%//*.cpp}" | grep -v -e /windows/ -e 'Windows\.cpp$'
}

# changed_files: files of those folders that differ from what has landed, newest change first. What has landed is the
# tip of origin/main, where this branch is ahead of it; otherwise the last 20 commits count as changes, as on a
# build server that has just cloned main.
changed_files() {
    local base
    base=$(git merge-base HEAD origin/main 2>/dev/null) || base=
    if [ -z "$base" ] || [ "$base" = "$(git rev-parse HEAD)" ]; then
        base=$(git rev-list --first-parent --max-count=21 HEAD | tail -n 1)
    fi
    {
        git diff --name-only --diff-filter=d HEAD -- "${TIDY_FOLDERS[@]}"
        git ls-files -o --exclude-standard -- "${TIDY_FOLDERS[@]}"
        # A file that was only moved has nothing new to check.
        git log --format= --name-status --find-renames --diff-filter=d "$base"..HEAD -- "${TIDY_FOLDERS[@]}" |
            awk -F '\t' '$1 != "R100" { print $NF }'
    } | awk '!seen[$0]++'
}

# source_for HEADER: a source that includes it: the one of the same name, else the first that is found.
source_for() {
    local own=${1%.h}.cpp
    if [ -f "$own" ]; then
        printf '%s\n' "$own"
    else
        tidy_sources | xargs -r -d '\n' grep -lE "^#include .*\\b${1##*/}\"" | sed 1q || true
    fi
}

# changed_sources: the sources to check for the changes, newest change first. What is found in a header is reported
# where that is included, so a header stands for one source that includes it.
changed_sources() {
    local file
    changed_files | while read -r file; do
        case $file in
            *.cpp) printf '%s\n' "$file" ;;
            *.h) source_for "$file" ;;
        esac
    done | awk '!seen[$0]++' | grep -Fxf <(tidy_sources) || true
}

# tidy_one DEADLINE LOG SOURCE: checks a source and adds it to LOG, unless the deadline, in seconds since 1970, is over.
# Status 1 when something was found.
tidy_one() {
    [ "$(date +%s)" -lt "$1" ] || return 0
    printf '%s\n' "$3" >>"$2"
    clang-tidy -p build/release --quiet --warnings-as-errors='*' --extra-arg=-Wno-unknown-warning-option "$3" \
        2> >(grep -v 'warnings generated' >&2)
}

# run_tidy SECONDS SOURCE...: checks the sources in this order and starts none after that time. Status 1 when something
# was found, or when there was no time for any.
run_tidy() {
    local status=0 log deadline=$(($(date +%s) + $1))
    shift
    [ $# -gt 0 ] || { echo "no source to check" && return; }
    log=$(mktemp)
    export -f tidy_one
    printf '%s\n' "$@" | xargs -P "$JOBS" -I{} bash -c 'tidy_one "$@"' bash "$deadline" "$log" {} || status=1
    printf '%d of %d sources checked\n' "$(wc -l <"$log")" $#
    [ -s "$log" ] || status=1
    rm -f "$log"
    return "$status"
}

# seconds_left: for the sources with changes six minutes, or what the steps before have left of the 37 that a whole run
# may take, so that a slow machine ends in time too; one minute in any case.
seconds_left() {
    # shellcheck disable=SC2154 # set by steps.sh
    local left=$((37 * 60 - (SECONDS - STEPS_start)))
    [ "$left" -le 360 ] || left=360
    [ "$left" -ge 60 ] || left=60
    echo "$left"
}

# tidy_all, tidy_changed: all sources, or those with changes as far as the time allows.
tidy_all() {
    local -a sources
    mapfile -t sources < <(tidy_sources)
    build_preset release >/dev/null && run_tidy 86400 "${sources[@]}"
}

tidy_changed() {
    local -a sources
    mapfile -t sources < <(changed_sources)
    build_preset release >/dev/null && run_tidy "$(seconds_left)" "${sources[@]}"
}
