# What the tests of real windows share. Sourced by sh.
# shellcheck shell=sh

# Ends as skipped where a window cannot be driven.
need_a_display() {
  for tool in Xvfb xdotool; do
    command -v "$tool" >/dev/null 2>&1 || { echo "skipped: $tool is not installed"; exit 77; }
  done
}

# begin_in FOLDER: an empty one, from now on the working folder.
begin_in() {
  rm -rf "$1"
  mkdir -p "$1"
  cd "$1" || exit 1
}

# start_display SIZE: the server, $server, picks a free display and says which.
start_display() {
  Xvfb -displayfd 3 -screen 0 "$1" -nolisten tcp 3>display 2>xvfb.log &
  server=$!
}
wait_for_display() {
  for _ in $(seq 200); do [ -s display ] && break; sleep 0.05; done
  [ -s display ] || { echo "FAILED: Xvfb did not start"; cat xvfb.log; exit 1; }
  DISPLAY=:$(cat display)
  export DISPLAY
}
