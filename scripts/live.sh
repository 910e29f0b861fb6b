#!/bin/bash
# Plays the day of the example data as if it were recorded now, a minute a second, and shows it in a monitor that
# receives it over SeedLink, until that is closed:
#   scripts/live.sh XOV_PROGRAM EXAMPLE_DATA [OPTIONS OF xov monitor...]
set -eu
xov=$1 data=$2
shift 2

folder=$(mktemp -d)
server=
leave() {
  [ -z "$server" ] || kill "$server" 2>/dev/null || true
  rm -rf "$folder"
}
trap leave EXIT
trap 'exit 130' INT TERM

"$xov" -q convert "$data"/day/*.SAC -o "$folder/day.mseed"
"$xov" serve "$folder/day.mseed" --port 0 --speed 60 >"$folder/port" &
server=$!
until grep -q . "$folder/port"; do
  kill -0 "$server" || exit 1
  sleep 0.05
done
read -r _ _ _ port <"$folder/port"
"$xov" -q monitor --seedlink "localhost:$port" '*_*' --since 2025-03-12T00:00:00 --span 1800 --latency --late 120 \
  --events "$data/day/catalogue.csv" --title 'A day, a minute a second' "$@"
