#!/bin/bash
# Which thread may use what: each public header belongs to a row of the table under "Threads" in docs/reliability.md, and
# none says that it is the main thread's which the table gives to any.
#   threads.sh ROOT HEADER...    headers below src/XOV_Graphics
set -u
root=$1
shift
[ $# -gt 50 ] || { echo "only $# public headers"; exit 1; }
rows=$(awk '/^## /{ inside = $2 == "Threads" } inside && /^\| `/ { print }' "$root/docs/reliability.md")
[ "$(wc -l <<<"$rows")" -ge 4 ] || { echo "docs/reliability.md has no table under Threads"; exit 1; }
bad=0
for header; do
  # The longest of the rows' beginnings that fits.
  found=$(awk -v header="$header" '
    { split($0, cell, "|")
      n = split(cell[2], names, "`")
      for (i = 2; i <= n; i += 2) if (index(header, names[i]) == 1 && length(names[i]) > longest) { longest = length(names[i]); row = cell[3] } }
    END { print row }' <<<"$rows")
  if [ -z "$found" ]; then
    echo "$header: docs/reliability.md does not say which thread may use it"
    bad=1
  elif grep -qE '^ *///.*Any thread' "$root/src/XOV_Graphics/$header" 2>/dev/null && [[ $found != *any\ threads* ]]; then
    echo "$header: says \"Any thread\", and docs/reliability.md:$found"
    bad=1
  elif grep -qE '^ *///.*[Mm]ain thread only' "$root/src/XOV_Graphics/$header" 2>/dev/null && [[ $found == *any\ threads* ]] &&
    ! grep -qE 'Q_OBJECT' "$root/src/XOV_Graphics/$header"; then
    echo "$header: says \"main thread only\", and docs/reliability.md:$found"
    bad=1
  fi
done
exit $bad
