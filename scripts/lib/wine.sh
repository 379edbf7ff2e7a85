# shellcheck shell=bash
# Running Windows programs, and the tests among them, under Wine. Needs common.sh and steps.sh.

# Wine in a folder of its own.
WINE_FOLDER=$ROOT/build/wine

# wine PROGRAM ARGUMENT...: runs a Windows program without a display, unless one is set, in a zone with summer time.
# One that hangs is ended.
wine() { PATH=$PATH:/usr/lib/wine TZ=Europe/Berlin WINEPREFIX=$WINE_FOLDER WINEDEBUG=-all timeout 900 wine64 "$@"; }

stop_wine() { WINEPREFIX=$WINE_FOLDER /usr/lib/wine/wineserver64 -k 2>/dev/null || true; }

# Cases that are left out, and why. Those that need what Wine cannot make (links, small media) skip themselves.
NOT_UNDER_WINE=-
# Programs of the machine that builds make the archives, and Wine's do not reach them.
NOT_UNDER_WINE+=:ZipExtractTest.ArchivesOfIndependentProgramsComeOutWhole
NOT_UNDER_WINE+=:ZipExtractTest.LargeEntriesComeOutWhole
# Wine knows an open folder by the path that it had when it was opened, and keeps a deleted one as long as it is open.
NOT_UNDER_WINE+=:OutputFolder.StaysWithTheFolderNotThePath
NOT_UNDER_WINE+=:DiskIOTest.ATargetThatVanishesIsReported
# Wine compares a new name with all that are there: 65,536 files in one folder would take it half an hour.
NOT_UNDER_WINE+=:CabCompressTest.HoldsAsManyFilesAsTheFormatCounts

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
    for program in "${programs[@]}"; do
        run_under_wine "$program"
    done
    stop_wine
}
