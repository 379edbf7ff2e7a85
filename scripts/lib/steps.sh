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
