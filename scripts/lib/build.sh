# shellcheck shell=bash
# Building the presets of CMakePresets.json.

# build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1
    shift
    cmake --log-level=WARNING --preset "$preset" &&
        cmake --build --preset "$preset" --parallel "$JOBS" ${1:+--target "$@"}
}
