# shellcheck shell=bash
# The Debian packages that each purpose needs, and one way to get them. Nothing that is installed is touched, and
# the network is not asked for anything while nothing is missing.
# shellcheck disable=SC2034  # the lists are read by the name of their purpose

# The program: compiler, build tools, Qt with its X11 platform, the resource compiler of the text libraries, and
# what draws the icons and sets the help documents. GoogleTest and the JSON library, since every configuration knows the
# tests and the probe.
PACKAGES_build=(g++ cmake ninja-build ccache binutils-mingw-w64-x86-64 librsvg2-bin qt6-base-dev python3
    libmspack-dev libarchive-dev zlib1g-dev rapidjson-dev python3-pil python3-reportlab fonts-dejavu-core libgtest-dev)

# Making archives, for tests and for the demo stick.
PACKAGES_archivers=(zip unzip 7zip gcab cabextract libarchive-tools)

# The tests and the checks of the sources.
PACKAGES_test=("${PACKAGES_build[@]}" "${PACKAGES_archivers[@]}" unar git clang clang-format
    clang-tidy libclang-rt-14-dev shellcheck fonts-dejavu-core)

# Fuzzing alone.
PACKAGES_fuzz=(cmake ninja-build ccache binutils-mingw-w64-x86-64 clang libclang-rt-14-dev llvm python3 zip 7zip
    libmspack-dev libarchive-dev zlib1g-dev rapidjson-dev)

# Our figures beside those of other unpackers, and of a file manager on a display of its own.
PACKAGES_bench=("${PACKAGES_build[@]}" "${PACKAGES_archivers[@]}" libdeflate-dev pcmanfm xvfb openbox xdotool x11-utils
    imagemagick dbus fonts-dejavu-core)

# Running the program on the demo stick.
PACKAGES_run=("${PACKAGES_build[@]}" "${PACKAGES_archivers[@]}" fonts-dejavu-core)

# Driving the program on a display of its own: the server, a window manager, real input, the accessibility bus
# that finds its controls, screenshots, and file managers to exchange files with.
PACKAGES_tour=("${PACKAGES_run[@]}" xvfb openbox xdotool x11-utils imagemagick dbus at-spi2-core gir1.2-atspi-2.0
    python3-gi pcmanfm thunar)

# The program for Windows: the compiler, what its libraries are built with, and Wine to run it.
PACKAGES_windows=("${PACKAGES_build[@]}" g++-mingw-w64-x86-64-posix libz-mingw-w64-dev googletest make dpkg-dev xz-utils
    wine64)

# Its tour: the display, input, the clipboard that tells what the windows hold, screenshots, and archivers.
PACKAGES_windows_tour=("${PACKAGES_archivers[@]}" xvfb openbox xdotool x11-utils xclip imagemagick fonts-dejavu-core)

# is_installed PACKAGE
is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# need_packages PURPOSE...: installs what those purposes lack.
need_packages() {
    local purpose package
    local -A missing=()
    command -v dpkg-query >/dev/null || {
        warn "no dpkg here: the packages of '$*' are taken to be there"
        return 0
    }
    for purpose in "$@"; do
        local -n list="PACKAGES_$purpose"
        for package in "${list[@]}"; do
            is_installed "$package" || missing[$package]=1
        done
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local -a names
    mapfile -t names < <(printf '%s\n' "${!missing[@]}" | sort)
    say "Installing what is missing: ${names[*]}"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${names[@]}"
}
