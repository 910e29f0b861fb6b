#!/bin/sh
# Drives a real window with real mouse and key events: window_test.sh HOST_PROGRAM WORK_FOLDER
# Needs Xvfb and xdotool; without them it says so and exits 77, which ctest counts as skipped.
set -u
. "$(dirname "$0")/display.sh"
host=$1
work=$2

need_a_display
begin_in "$work"

fail() { echo "FAILED: $1"; echo "--- what the host printed:"; cat host.log; exit 1; }

# Waits up to 10 s for a line of the host's output, or for a file.
wait_for_line() {
  for _ in $(seq 200); do
    grep -q "$1" host.log && return 0
    sleep 0.05
  done
  fail "no line matching '$1'"
}
wait_for_file() {
  for _ in $(seq 200); do
    [ -s "$1" ] && return 0
    sleep 0.05
  done
  fail "no file $1"
}

start_display 1024x768x24
trap 'kill $host_pid $server 2>/dev/null' EXIT
wait_for_display

QT_QPA_PLATFORM=xcb "$host" >host.log 2>&1 &
host_pid=$!
wait_for_line '^ready'
window=$(xdotool search --sync --onlyvisible --name 'xov window test' | head -n 1)
sleep 0.3

# The data frame of a view of 640 x 400 points is (20, 60, 600, 300): its centre lies 320 from the left and 190 from the
# top. The record runs from 0 to 100 s and from -1000 to 1000, widened by 0.05 of the range of 1999 or 2000.
xdotool mousemove --window "$window" 320 190 click 1
wait_for_line '^clicked'
x=$(sed -n 's/^clicked \([^ ]*\) .*/\1/p' host.log | head -n 1)
y=$(sed -n 's/^clicked [^ ]* \(.*\)/\1/p' host.log | head -n 1)
awk -v x="$x" -v y="$y" 'BEGIN { exit !(x > 49.9 && x < 50.1 && y > -8 && y < 8) }' || fail "the click reported $x $y"

# Outside the frame nothing is reported, nor by the second click of a double click.
sleep 1
xdotool mousemove --window "$window" 5 5 click 1
sleep 1
xdotool mousemove --window "$window" 200 150 click --repeat 2 --delay 60 1
sleep 0.5
[ "$(grep -c '^clicked' host.log)" = 2 ] || fail "expected two clicks to be reported"

# The contextual menu opens; its first item opens a save sheet that proposes plt_000.pdf.
xdotool mousemove --window "$window" 300 150 click 3
wait_for_line '^menu open'
xdotool mousemove_relative 20 12 click 1
wait_for_line '^menu closed'
sleep 1
xdotool key Return
wait_for_file plt_000.pdf
head -c 5 plt_000.pdf | grep -q '%PDF-' || fail "plt_000.pdf is no PDF"
kill -0 $host_pid 2>/dev/null || fail "the host has crashed"
echo "window test passed on display $DISPLAY"
