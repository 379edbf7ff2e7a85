# shellcheck shell=bash
# Running Windows programs, and the tests among them, under Wine. Needs build.sh, common.sh and steps.sh.

# Wine in a folder of its own.
WINE_FOLDER=$ROOT/build/wine

# wine PROGRAM ARGUMENT...: runs a Windows program without a display, unless one is set, in a zone with summer time
# unless another is set. One that hangs is ended.
wine() { PATH=$PATH:/usr/lib/wine TZ=${TZ:-Europe/Berlin} WINEPREFIX=$WINE_FOLDER WINEDEBUG=-all timeout 900 wine64 "$@"; }

stop_wine() { WINEPREFIX=$WINE_FOLDER /usr/lib/wine/wineserver64 -k 2>/dev/null || true; }

# Cases that are left out, and why. Those that need what Wine cannot make (links, small media) skip themselves.
NOT_UNDER_WINE=-
# Programs of the machine that builds make the archives, and Wine's do not reach them.
NOT_UNDER_WINE+=:ZipExtractTest.ArchivesOfIndependentProgramsComeOutWhole
# Wine knows an open folder by the path that it had when it was opened, and what is deleted stays as long as it is open.
NOT_UNDER_WINE+=:OutputFolder.StaysWithTheFolderNotThePath
NOT_UNDER_WINE+=:DiskIOTest.ATargetThatVanishesIsReported:CabTest.NoticesWhatVanishedBetweenCalls
# Wine compares a new name with all that are there: 65,536 files in one folder would take it half an hour.
NOT_UNDER_WINE+=:CabCompressTest.HoldsAsManyFilesAsTheFormatCounts
# A minute each there, for thousands of files in which nothing is the system's.
NOT_UNDER_WINE+=:HostileTest.EveryByteChanged:CabDataTest.DamagedAnywhereItEndsCleanly

# left_out_exist: whether each case that is left out is still there under its name.
left_out_exist() {
    local case missing=0
    for case in ${NOT_UNDER_WINE//:/ }; do
        [ "$case" = - ] || git grep -qE "^TEST(_F|_P)?\\(${case%.*}, ${case#*.}\\)" -- tests || {
            warn "no such case: $case"
            missing=1
        }
    done
    return "$missing"
}

# run_under_wine PROGRAM: a test program, its cases counted one by one.
run_under_wine() {
    local report=build/windows/${1##*/}.xml status=0
    rm -f "$report"
    timed "Under Wine: ${1##*/}" wine "$1" --gtest_brief=1 --gtest_filter="$NOT_UNDER_WINE" --gtest_output="xml:$report" || status=$?
    count_report "$report" "${1##*/}" "$status" || count_failed "${1##*/}: no report"
}

# test_under_wine: every test program that has been built.
test_under_wine() {
    local program
    local -a programs
    mapfile -t programs < <(find build/windows/tests -name '*_test.exe' | sort)
    [ ${#programs[@]} -gt 0 ] || count_failed "no test programs for Windows"
    check "The cases that are left out are there" left_out_exist || true
    for program in "${programs[@]}"; do
        run_under_wine "$program"
    done
    check "The programs of both systems agree" cross_check || true
    stop_wine
}

# cross_check: settings, cabinets and real archives by the engine of both systems.
cross_check() {
    build_preset release probe exchange &&
        PATH=$PATH:/usr/lib/wine WINEPREFIX=$WINE_FOLDER WINEDEBUG=-all PYTHONDONTWRITEBYTECODE=1 \
            "$PYTHON" tests/cross/cross_check.py build/release build/windows ../shared/corpus
}

# wine_settings: a drive that answers as removable, and a font that this machine has for those that it lacks.
wine_settings() {
    local name
    printf 'REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\Software\\Wine\\Drives]\n"e:"="floppy"\n\n'
    printf '[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]\n'
    for name in 'Segoe UI' Tahoma 'MS Shell Dlg' 'MS Shell Dlg 2' 'MS Sans Serif'; do
        printf '"%s"="DejaVu Sans"\n' "$name"
    done
}

# new_wine FOLDER: a Wine that nothing has run in yet, with these settings; set for all that follows.
new_wine() {
    rm -rf "$1"
    WINE_FOLDER=$1
    export WINEPREFIX=$1 WINEDEBUG=-all PATH=$PATH:/usr/lib/wine LC_ALL=C.UTF-8 TZ=UTC
    wine wineboot -i >/dev/null 2>&1
    wine_settings >"$1/settings.reg"
    wine regedit /S "$1/settings.reg"
    wineserver64 -w
}

# tour_under_wine [NAME...]: the tour of the Windows program, on a display of its own, each of its checks counted.
tour_under_wine() {
    start_display 1280x900
    count_run "The tour of the Windows program" "$ROOT/build/tour-windows.log" run_tour_under_wine "$@"
    stop_display
}

run_tour_under_wine() (
    output=$ROOT/build/tour-windows
    mkdir -p "$output/home"
    export HOME=$output/home # nothing of the user's desktop leaks in
    new_wine "$output/wine"
    timeout 1500 "$PYTHON" tools/tour/windows_tour.py --program build/windows/program \
        --icons build/windows/resources/icons --output "$output" "$@"
    stop_wine
)
