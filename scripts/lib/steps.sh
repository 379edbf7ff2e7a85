# shellcheck shell=bash
# Timed steps that are counted, and the closing line.

STEPS_passed=0
STEPS_failed=0
STEPS_failures=()
STEPS_times=()
STEPS_start=$SECONDS

# count_passed NUMBER
count_passed() { STEPS_passed=$((STEPS_passed + $1)); }

# count_failed TEXT [NUMBER]
count_failed() {
    STEPS_failed=$((STEPS_failed + ${2:-1}))
    STEPS_failures+=("$1")
}

# count_report REPORT TITLE STATUS: adds what a JUnit report of ctest or GoogleTest holds to the counts; STATUS is how the run ended.
count_report() {
    local passed failed skipped
    read -r passed failed skipped < <("$PYTHON" - "$1" <<'PYTHON'
import sys
import xml.etree.ElementTree

cases = list(xml.etree.ElementTree.parse(sys.argv[1]).getroot().iter("testcase"))
failed = sum(1 for case in cases if case.find("failure") is not None)
skipped = sum(1 for case in cases if case.find("skipped") is not None or case.get("status") in ("notrun", "disabled"))
print(len(cases) - failed - skipped, failed, skipped)
PYTHON
    ) || return 1
    count_passed "$passed"
    [ "$failed" -eq 0 ] || count_failed "$2: see above" "$failed"
    [ "$3" -eq 0 ] || [ "$failed" -gt 0 ] || count_failed "$2: ended with $3"
    [ "$skipped" -eq 0 ] || warn "$2: $skipped skipped"
}

# count_closing_line LOG TITLE: adds the counts of the line that ends a program's report, "N passed, N failed".
count_closing_line() {
    local passed failed
    read -r passed failed < <(sed -n 's/^\([0-9]*\) passed, \([0-9]*\) failed$/\1 \2/p' "$1" | tail -n 1) || return 1
    count_passed "$passed"
    [ "$failed" -eq 0 ] || count_failed "$2: see above" "$failed"
}

# timed TITLE COMMAND...: runs the command and keeps its duration; answers with its status.
timed() {
    local title=$1 from=$SECONDS status=0
    shift
    say "$title"
    "$@" || status=$?
    STEPS_times+=("$(printf '%5d s  %s' $((SECONDS - from)) "$title")")
    printf -- '-- %s: %d s\n' "$title" $((SECONDS - from))
    return "$status"
}

# count_run TITLE LOG COMMAND...: a timed run whose report ends with that line: shown as it goes on, kept in LOG, counted.
count_run() {
    local title=$1 log=$2
    shift 2
    mkdir -p "${log%/*}"
    : >"$log"
    "$@" </dev/null >"$log" 2>&1 &
    timed "$title" tail -n +1 -f --pid $! "$log"
    wait $! || true
    count_closing_line "$log" "$title" || count_failed "$title: no closing line"
}

# check TITLE COMMAND...: a timed step that counts as one passed or failed check. Its status is the check's.
check() {
    if timed "$@"; then
        count_passed 1
    else
        count_failed "$1"
        return 1
    fi
}

# summary: durations, failures and the closing line; its status is non-zero when something failed or nothing ran.
summary() {
    say "Durations"
    printf '%s\n' "${STEPS_times[@]}"
    printf '%5d s  in all\n' $((SECONDS - STEPS_start))
    if [ ${#STEPS_failures[@]} -gt 0 ]; then
        say "Failed"
        printf '  %s\n' "${STEPS_failures[@]}"
    fi
    printf '\n%d passed, %d failed\n' "$STEPS_passed" "$STEPS_failed"
    [ "$STEPS_failed" -eq 0 ] && [ "$STEPS_passed" -gt 0 ]
}
