# shellcheck shell=bash
# A desktop session with nothing of the user's in it, and nothing left of it afterwards: a home, a session bus and the
# accessibility bus that finds the controls of windows.

SESSION_home=

# start_session: sets HOME and all that follows from it. end_session takes it away.
start_session() {
    SESSION_home=$(mktemp -d)
    mkdir -m 700 "$SESSION_home/run"
    export HOME=$SESSION_home XDG_RUNTIME_DIR=$SESSION_home/run XDG_CONFIG_HOME=$SESSION_home/config
    export XDG_CACHE_HOME=$SESSION_home/cache XDG_DATA_HOME=$SESSION_home/data LC_ALL=C.UTF-8 TZ=UTC
    # Rows that a list no longer shows are asked for now and then; Qt says so each time.
    export QT_LOGGING_RULES=qt.accessibility.atspi=false
    unset DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS QT_SCALE_FACTOR QT_STYLE_OVERRIDE QT_QPA_PLATFORMTHEME PELLARION_PALETTE

    # The bus can start the accessibility bus and nothing else: no file manager comes unasked.
    mkdir "$HOME/services"
    cp /usr/share/dbus-1/services/org.a11y.Bus.service "$HOME/services"
    cat >"$HOME/session.conf" <<END
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <servicedir>$HOME/services</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
END
}

# in_session COMMAND...: runs it on that bus.
in_session() {
    dbus-run-session --config-file "$SESSION_home/session.conf" -- "$@" 2> >(grep -v -e dbus-daemon -e 'SpiRegistry daemon' >&2)
}

end_session() { rm -rf "$SESSION_home"; }
