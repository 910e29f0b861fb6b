#!/bin/sh
# Drives the desk with real mouse and key events: desk_test.sh XOV EXAMPLE_DATA WORK_FOLDER
# Opens the drum of a day, changes it, writes it out, closes the desk, opens it again and finds all as it was. Does the
# same with a seismogram that is zoomed by the wheel, filtered and picked on.
# Needs Xvfb and xdotool; without them it says so and exits 77, which ctest counts as skipped.
set -u
. "$(dirname "$0")/display.sh"
xov=$1
data=$2
work=$3

need_a_display
begin_in "$work"
XDG_CONFIG_HOME=$work/config
XDG_RUNTIME_DIR=$work/runtime
export XDG_CONFIG_HOME XDG_RUNTIME_DIR
mkdir -m 700 "$XDG_RUNTIME_DIR"
settings=$XDG_CONFIG_HOME/xov/desk.json

# What the screen shows at the end is left beside the log, where there is a tool for it.
fail() {
  echo "FAILED: $1"
  import -window root failed.png 2>/dev/null
  echo "--- what the desk said:"
  cat desk.log
  exit 1
}

# Waits up to 20 s for a command to succeed.
wait_for() {
  what=$1
  shift
  for _ in $(seq 400); do
    "$@" >/dev/null 2>&1 && return 0
    kill -0 "$desk" 2>/dev/null || fail "the desk has ended while waiting for $what"
    sleep 0.05
  done
  fail "waited in vain for $what"
}
has_title() { xdotool search --onlyvisible --name "$1"; }
has_bytes() { [ -s "$1" ]; }

start_display 1280x900x24
desk=$server
trap 'kill $desk $server 2>/dev/null' EXIT
wait_for_display

start() {
  QT_QPA_PLATFORM=xcb "$xov" desk "$@" >desk.log 2>&1 &
  desk=$!
}
has_no_dialog() { ! xdotool search --onlyvisible --name 'Export All|Save Picks'; }
focus() { timeout 2 xdotool windowfocus --sync "$(xdotool search --onlyvisible --name 'XOV Desk' | head -n 1)"; }
# Without a window manager nobody gives the keyboard back when a dialog is closed.
take_keys() {
  wait_for "the end of dialogs" has_no_dialog
  wait_for "the keyboard" focus
}
# Closes the desk by its key; what it remembers is then in its file. A key that comes while the focus goes from one
# window to another is lost, since no window manager holds it back: it is pressed again after five seconds.
finish() {
  for _ in 1 2 3 4; do
    take_keys
    xdotool key ctrl+q
    timeout 5 tail --pid="$desk" -f /dev/null && return
  done
  fail "waited in vain for its end"
}

# The drum of a day, from the command line.
start "$data"/day/*.SAC
wait_for "the drum" has_title 'Drum: XX.* — XOV Desk'
window=$(xdotool search --onlyvisible --name 'Drum: XX.* — XOV Desk' | head -n 1)
sleep 1

# Zoomed to some hours by a box.
xdotool mousemove --window "$window" 600 420 mousedown 1
for step in 1 2 3 4 5; do xdotool mousemove_relative -- 30 12; sleep 0.1; done
xdotool mouseup 1
sleep 1

# The same files another way, by a key: a spectrogram, beside the drum.
xdotool key ctrl+8
wait_for "the spectrogram" has_title 'Spectrogram: XX.* — XOV Desk'
sleep 1
xdotool key ctrl+backslash
sleep 1

# Taken back and done again.
xdotool key ctrl+z
wait_for "the drum alone" has_title 'Drum: XX.* — XOV Desk'
xdotool key ctrl+shift+z
wait_for "the spectrogram again" has_title 'Spectrogram: XX.* — XOV Desk'
sleep 2

# Both as pages of a file, whose name is typed.
xdotool key ctrl+e
wait_for "the dialog" has_title 'Export All'
sleep 1
xdotool type --delay 20 "$work/pages.pdf"
xdotool key Return
wait_for "pages.pdf" has_bytes pages.pdf
head -c 5 pages.pdf | grep -q '%PDF-' || fail "pages.pdf is no PDF"

# Closed and opened again: the same panes at the same places.
finish
has_bytes "$settings" || fail "nothing is remembered in $settings"
grep -q '"kind": "drum"' "$settings" && grep -q '"kind": "spectrogram"' "$settings" || fail "panes are forgotten"
grep -q '"part": ' "$settings" || fail "the zoom is forgotten"
cp "$settings" before.json
start
wait_for "the spectrogram of the last time" has_title 'Spectrogram: XX.* — XOV Desk'
sleep 2
finish
# Where a window stands that no window manager has placed, Qt guesses anew; and the state of the panes' places has the
# least sizes of tabs that were not in front yet.
sed -i '/"geometry":/d; /"workspace":/d' before.json
sed '/"geometry":/d; /"workspace":/d' "$settings" >after.json
cmp -s before.json after.json || { diff before.json after.json; fail "it is not as it was"; }

# Seismograms to pick on: the wheel zooms about the pointer, turned the other way it comes back.
rm "$settings"
start "$data"/section/XX.KITE.00.BHZ.SAC
wait_for "the section" has_title 'Record section: XX.KITE.* — XOV Desk'
window=$(xdotool search --onlyvisible --name 'Record section: XX.KITE.* — XOV Desk' | head -n 1)
take_keys
sleep 1
xdotool mousemove --window "$window" 600 420
for notch in 1 2 3 4 5 6; do xdotool click 4; done
for notch in 1 2; do xdotool click 5; done

# Filtered by a key, a P where the pointer is, and the picks in a file.
xdotool key ctrl+f
sleep 1
xdotool key ctrl+k
sleep 1
xdotool mousemove_relative -- 7 0
sleep 0.3
xdotool key p
sleep 0.3
xdotool key ctrl+shift+s
wait_for "the dialog" has_title 'Save Picks'
sleep 1
xdotool key ctrl+a
xdotool type --delay 20 "$work/picks.xml"
xdotool key Return
wait_for "picks.xml" has_bytes picks.xml
[ "$(grep -c '<pick ' picks.xml)" = 1 ] || fail "picks.xml has no pick, or several"
grep -q '<phaseHint>P</phaseHint>' picks.xml || fail "the pick is no P"
grep -q 'stationCode="KITE"' picks.xml || fail "the pick is not of the station"
finish
grep -q '"bandpass"' "$settings" || fail "the filter is forgotten"
grep -q '"part": ' "$settings" || fail "what the wheel showed is forgotten"
cp "$settings" before.json

# All is there again: the filtered part, and the pick, which is written once more.
cp picks.xml picks_before.xml
start
wait_for "the section of the last time" has_title 'Record section: XX.KITE.* — XOV Desk'
sleep 2
rm picks.xml
take_keys
xdotool key ctrl+shift+s
wait_for "picks.xml anew" has_bytes picks.xml
finish
sed -i '/"geometry":/d; /"workspace":/d' before.json
sed '/"geometry":/d; /"workspace":/d' "$settings" >after.json
cmp -s before.json after.json || { diff before.json after.json; fail "it is not as it was"; }
pick_of() { sed -n '/<pick /,/<\/pick>/p' "$1"; }
[ "$(pick_of picks.xml)" = "$(pick_of picks_before.xml)" ] || fail "the pick is another one"

# Broken settings do not keep it from starting, and are laid aside.
echo '{"panes": [' >"$settings"
start
wait_for "a desk without settings" has_title 'XOV Desk'
finish
has_bytes "$settings.broken" || fail "broken settings are not kept"
echo "desk test passed on display $DISPLAY"
