# shellcheck shell=bash
# A display of its own for a windowed program: an X server in memory with a window manager.

DISPLAY_pids=()

# start_display WIDTHxHEIGHT: sets DISPLAY. stop_display ends what this started.
start_display() {
    local folder=$ROOT/build/display number
    mkdir -p "$folder"
    rm -f "$folder/number"
    mkfifo "$folder/number"
    Xvfb -displayfd 3 -screen 0 "$1x24" -dpi 96 -nolisten tcp >"$folder/server.log" 2>&1 3>"$folder/number" &
    DISPLAY_pids+=($!)
    read -r -t 30 number <"$folder/number" || die "the virtual display did not start: $(cat "$folder/server.log")"
    rm -f "$folder/number"
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY XAUTHORITY
    openbox --sm-disable >"$folder/manager.log" 2>&1 &
    DISPLAY_pids+=($!)
    for _ in $(seq 300); do
        xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && return
        sleep 0.1
    done
    die "the window manager did not start: $(cat "$folder/manager.log")"
}

stop_display() {
    local pid
    for pid in "${DISPLAY_pids[@]}"; do
        kill "$pid" 2>/dev/null || true
    done
    wait "${DISPLAY_pids[@]}" 2>/dev/null || true
    DISPLAY_pids=()
}
