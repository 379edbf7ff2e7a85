# shellcheck shell=bash
# What a Windows build on Linux needs beside MinGW-w64: the libraries that are linked, static, made from Debian's
# source packages, and the toolkit. Kept in the user's cache, so that this is done once.

WINDOWS_SYSROOT=${XDG_CACHE_HOME:-$HOME/.cache}/pellarion-windows

# A build of the toolkit for MinGW-w64; the windows are left out where there is none.
WINDOWS_QT_ARCHIVE=$ROOT/../shared/windows/qt6-mingw64-static.tar.xz

# fetch_source PACKAGE FOLDER: unpacks the source of a Debian package into FOLDER, as the release of this machine
# has it. Touches neither the system's package lists nor its settings.
fetch_source() {
    local package=$1 folder=$2 apt=$WINDOWS_WORK/apt list
    if [ ! -d "$apt/parts" ]; then
        mkdir -p "$apt/parts" "$apt/lists/partial"
        for list in /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list; do
            [ -f "$list" ] || continue
            sed -e 's/^Types: *deb$/Types: deb-src/' -e 's/^deb /deb-src /' "$list" >"$apt/parts/$(basename "$list")"
        done
        [ ! -f "$apt/parts/sources.list" ] || mv "$apt/parts/sources.list" "$apt/parts/old-form.list"
        cat >"$apt/apt.conf" <<CONF
Dir::Etc::sourcelist "/dev/null";
Dir::Etc::sourceparts "$apt/parts";
Dir::State::lists "$apt/lists";
Dir::Cache::srcpkgcache "";
Dir::Cache::pkgcache "";
CONF
        APT_CONFIG=$apt/apt.conf apt-get update -q
    fi
    (cd "$WINDOWS_WORK" && APT_CONFIG=$apt/apt.conf apt-get source -q --download-only "$package")
    dpkg-source -q -x "$WINDOWS_WORK/$package"_*.dsc "$folder"
}

make_mspack() {
    fetch_source libmspack "$WINDOWS_WORK/mspack"
    cd "$WINDOWS_WORK/mspack" || return
    ./configure --quiet --host=x86_64-w64-mingw32 --disable-shared --prefix=/ CC=x86_64-w64-mingw32-gcc-posix CFLAGS=-O2
    make -s -j"$JOBS" install DESTDIR="$WINDOWS_SYSROOT"
}

# RAR archives need none of the compressors of other formats.
make_archive() {
    local -a without=()
    local part source=$WINDOWS_WORK/archive
    for part in TEST TAR CPIO CAT OPENSSL LZMA ZSTD ZLIB BZip2 LZ4 LIBB2 LIBXML2 EXPAT PCREPOSIX CNG ICONV ACL XATTR WERROR; do
        without+=("-DENABLE_$part=OFF")
    done
    fetch_source libarchive "$source"
    cmake -S "$source" -B "$source/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/toolchains/mingw64.cmake" -DPELLARION_SYSROOT="$WINDOWS_SYSROOT" "${without[@]}"
    cmake --build "$source/build" --parallel "$JOBS" --target archive_static
    cp "$source/libarchive/archive.h" "$source/libarchive/archive_entry.h" "$WINDOWS_SYSROOT/include/"
    # The toolkit holds a hash of the same names.
    local -a renames
    mapfile -t renames < <(x86_64-w64-mingw32-nm "$source/build/libarchive/libarchive_static.a" | sed -n 's/.* T \(blake2.*\)/--redefine-sym=\1=archive_\1/p')
    x86_64-w64-mingw32-objcopy "${renames[@]}" "$source/build/libarchive/libarchive_static.a" "$WINDOWS_SYSROOT/lib/libarchive.a"
}

# Complete or not there at all: what is made beside it is moved into place at the end.
unpack_qt() {
    tar -xJf "$WINDOWS_QT_ARCHIVE" -C "$WINDOWS_WORK" opt/qt6-mingw64
    mv "$WINDOWS_WORK/opt/qt6-mingw64" "$WINDOWS_SYSROOT/"
}

# Core, Gui, Widgets and Test, static, with the third-party libraries that come with the source. Direct2D 1.0 stays on,
# since the font database needs it; of 1.1 there is only another platform plugin, which the compiler does not take.
# Tablets would need a header that Debian's source lacks.
make_qt() {
    local -a without=()
    local part source=$WINDOWS_WORK/qt
    for part in network sql dbus concurrent xml printsupport tabletevent zstd direct2d1_1; do
        without+=("-DFEATURE_$part=OFF")
    done
    for part in doubleconversion freetype harfbuzz jpeg pcre2 png sqlite zlib; do
        without+=("-DFEATURE_system_$part=OFF")
    done
    fetch_source qt6-base "$source"
    cmake -S "$source" -B "$source/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$ROOT/cmake/toolchains/mingw64.cmake" -DPELLARION_SYSROOT="$WINDOWS_SYSROOT" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake" \
        -DCMAKE_INSTALL_PREFIX="$WINDOWS_WORK/qt6-mingw64" -DBUILD_SHARED_LIBS=OFF \
        -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DFEATURE_testlib=ON -DINPUT_opengl=no "${without[@]}"
    cmake --build "$source/build" --parallel "$JOBS"
    cmake --install "$source/build"
    mv "$WINDOWS_WORK/qt6-mingw64" "$WINDOWS_SYSROOT/"
}

# in_sysroot FILE COMMAND: makes a part of the sysroot unless FILE, the last thing that COMMAND brings, is there.
# What the makers print is shown only when one fails.
in_sysroot() {
    local log=$WINDOWS_WORK/log status=0
    [ -e "$WINDOWS_SYSROOT/$1" ] && return 0
    printf 'making %s\n' "${2#*_}"
    # By a shell of its own: this one would not end a part of a condition at its first failure.
    WINDOWS_WORK=$WINDOWS_WORK bash -c 'source scripts/lib/common.sh; source scripts/lib/windows.sh; "$1"' bash "$2" >"$log" 2>&1 || status=$?
    [ "$status" -eq 0 ] || tail -n 40 "$log"
    return "$status"
}

# with_work_folder COMMAND...: the work is done in a folder that goes away. It lies beside what is made: the toolkit's
# sources and objects need more room than /tmp may have.
with_work_folder() {
    local status=0
    mkdir -p "$WINDOWS_SYSROOT"
    WINDOWS_WORK=$(mktemp -d "$WINDOWS_SYSROOT/work.XXXXXX")
    "$@" || status=$?
    rm -rf "$WINDOWS_WORK"
    return "$status"
}

# prepare_sysroot: the libraries, and the toolkit where an archive of it is at hand.
prepare_sysroot() { with_work_folder bring_libraries; }

bring_libraries() {
    in_sysroot lib/libmspack.a make_mspack && in_sysroot lib/libarchive.a make_archive || return
    [ ! -f "$WINDOWS_QT_ARCHIVE" ] || in_sysroot "$WINDOWS_QT_FILE" unpack_qt
}

# build_toolkit: from its source, which takes about 25 minutes on two cores and 3 GB while it lasts.
build_toolkit() { with_work_folder in_sysroot "$WINDOWS_QT_FILE" make_qt; }

WINDOWS_QT_FILE=qt6-mingw64/lib/cmake/Qt6/Qt6Config.cmake

has_windows_qt() { [ -e "$WINDOWS_SYSROOT/$WINDOWS_QT_FILE" ]; }

# build_windows [TARGET...]: all of it, or only these targets; without the windows where the toolkit is not at hand.
build_windows() {
    local gui=OFF
    if has_windows_qt; then
        gui=ON
    else
        warn "no toolkit for Windows: the windows are not built"
    fi
    cmake --log-level=WARNING --preset windows -DPELLARION_SYSROOT="$WINDOWS_SYSROOT" -DPELLARION_GUI="$gui" &&
        cmake --build --preset windows --parallel "$JOBS" ${1:+--target "$@"}
}

# check_program_file: what the program file carries, where it has been built.
check_program_file() {
    local program=build/windows/program/pellarion.exe
    [ ! -e "$program" ] || "$PYTHON" tests/program/program_file.py "$program"
}
