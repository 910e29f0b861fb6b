#!/bin/sh
# Runs the example that writes pages without a display, and has each one read: batch.sh PROGRAM FOLDER
set -eu
program=$1 folder=$2
command -v pdfinfo >/dev/null || exit 77
rm -rf "$folder"
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
"$program" "$folder"
count=0
for page in "$folder"/*.pdf; do
  pdfinfo "$page" | grep -q '^Page size: *500 x 350 pts'
  count=$((count + 1))
done
[ $count = 100 ] || { echo "$count pages, not 100"; exit 1; }
# Each is of an event of its own.
[ "$(cat "$folder"/*.pdf | wc -c)" -gt 100000 ]
[ "$(md5sum "$folder"/*.pdf | cut -d ' ' -f 1 | sort -u | wc -l)" = 100 ]
! "$program" /dev/null/nowhere
