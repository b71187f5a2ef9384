# The session that ./run starts Tallyvane in: the user's own, or a private one where there is none. Sourced; wants
# `scratch`, a folder of this run that end_session removes.
: "${scratch:?}"
name=com.Quillmoor.Tallyvane
private_bus=
transient=

call_bus() { dbus-send --bus="$DBUS_SESSION_BUS_ADDRESS" --print-reply=literal --dest=org.freedesktop.DBus / "org.freedesktop.DBus.$1" "${@:2}"; }

find_own_bus() {
  if [ -z "${DBUS_SESSION_BUS_ADDRESS:-}" ] && [ -S "${XDG_RUNTIME_DIR:-}/bus" ]; then
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$XDG_RUNTIME_DIR/bus
  fi
  [ -n "${DBUS_SESSION_BUS_ADDRESS:-}" ] && call_bus GetId >/dev/null 2>&1
}

# until_true TENTHS COMMAND…: asks every tenth of a second.
until_true() {
  local tenths=$1
  shift
  until "$@"; do
    [ $((tenths--)) -gt 0 ] || return 1
    sleep 0.1
  done
}

start_private_bus() {
  dbus-daemon --session --nofork --nopidfile --print-address=1 >"$scratch/address" 2>"$scratch/bus.log" &
  private_bus=$!
  until_true 50 test -s "$scratch/address" || {
    cat "$scratch/bus.log" >&2
    fail "A session bus could not be started."
  }
  DBUS_SESSION_BUS_ADDRESS=$(head -n 1 "$scratch/address")
  export DBUS_SESSION_BUS_ADDRESS
}

join_session() {
  if [ -w "${XDG_RUNTIME_DIR:-}" ] && find_own_bus; then
    say "Using your session bus."
  else
    export XDG_RUNTIME_DIR=$scratch/runtime
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    start_private_bus
    say "There is no session bus here; using a private one that ends with this command."
  fi
}

# The bus looks for services in the runtime folder too, which is gone after the session: nothing is installed.
announce() {
  transient=$XDG_RUNTIME_DIR/dbus-1/services/$name.service
  mkdir -p "${transient%/*}"
  cp "$1/share/dbus-1/services/$name.service" "$transient"
  call_bus ReloadConfig >/dev/null
}

withdraw() {
  rm -f "$transient"
  call_bus ReloadConfig >/dev/null 2>&1 || true
}

runs() { [[ "$(call_bus NameHasOwner "string:$name" 2>/dev/null)" == *true* ]]; }

# start_application PREFIX
start_application() {
  local before=
  if runs; then before='already '; else announce "$1"; fi
  XDG_DATA_DIRS=$1/share:${XDG_DATA_DIRS:-/usr/local/share:/usr/share} "$1/bin/tallyvane-helper" --verbose || true
  until_true 150 runs || fail "Tallyvane did not start: nothing owns $name after 15 seconds."
  say "Tallyvane ${before}runs ($name)."
}

end_session() {
  [ -z "$transient" ] || withdraw
  [ -z "$private_bus" ] || end_private_session
  rm -rf "$scratch"
}

end_private_session() {
  local agent
  agent=$(call_bus GetConnectionUnixProcessID "string:$name" 2>/dev/null | sed 's/.* //') || agent=
  if [ -n "$agent" ]; then
    kill "$agent" 2>/dev/null || true
    until_true 50 gone "$agent" || say "The agent (process $agent) does not end."
  fi
  kill "$private_bus" 2>/dev/null || true
  wait "$private_bus" 2>/dev/null || true
}

gone() { ! kill -0 "$1" 2>/dev/null; }
