#!/bin/bash
# Builds the unit tests with counters, runs them and reports which lines and branches of the library they reached:
#   scripts/coverage.sh                 everything
#   scripts/coverage.sh PATTERN...      only test programs whose names match, as "test_base test_map"
# The report, file by file, is build/coverage/report.txt; the table printed at the end sums up folders. The folders that
# must be covered by more than 95 % of their lines are named below; where everything was run and one is not, the script
# fails. 77 where gcovr is not installed.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v gcovr >/dev/null || { echo "gcovr is not installed" >&2; exit 77; }
readonly least=95 folders="base graphics views seismic map colour grid"
build=build/coverage

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS="--coverage -fno-inline -fprofile-abs-path" \
  -DXOV_PCH=OFF -DXOV_BATCHES=0 -DXOV_APPS=OFF -DXOV_EXAMPLES=OFF -DXOV_DESIGNER=OFF >"$build.log" 2>&1 ||
  { cat "$build.log" >&2; exit 1; }
mapfile -t programs < <(ninja -C "$build" -t targets all | sed -nE 's/^(test_[a-z_0-9]+): phony$/\1/p' | sort -u |
  if [ $# -gt 0 ]; then grep -xE "$(IFS='|'; echo "$*")"; else cat; fi)
ninja -C "$build" "${programs[@]}" >>"$build.log" 2>&1 || { tail -20 "$build.log" >&2; exit 1; }

find "$build" -name '*.gcda' -delete
export QT_QPA_PLATFORM=offscreen TZ=UTC LC_ALL=C.UTF-8 XOV_DATA_ROOT=/nonexistent
for program in "${programs[@]}"; do
  file=$(find "$build/tests" -type f -name "$program" -perm -u+x)
  "$file" >"$build/$program.log" 2>&1 || echo "$program fails: $build/$program.log"
done

gcovr -r . --object-directory "$build" --filter 'src/XOV_Graphics/' --exclude-throw-branches \
  --exclude-unreachable-branches --csv "$build/report.csv" --txt "$build/report.txt" --print-summary -j "$(nproc)" \
  2>"$build/gcovr.log" | tail -n 3
# Columns: file, lines, lines reached, share, branches, branches reached, share.
awk -F, -v least="$least" -v folders="$folders" -v whole=$(($# == 0)) '
  NR == 1 { next }
  {
    split($1, path, "/")
    folder = path[3]
    lines[folder] += $2; reached[folder] += $3; branches[folder] += $5; taken[folder] += $6
  }
  END {
    printf "%-10s %8s %8s %9s %8s\n", "folder", "lines", "reached", "branches", "reached"
    for (folder in lines)
      printf "%-10s %8d %7.1f%% %9d %7.1f%%\n", folder, lines[folder], 100 * reached[folder] / lines[folder],
        branches[folder], branches[folder] ? 100 * taken[folder] / branches[folder] : 100
    if (!whole) exit 0
    n = split(folders, wanted, " ")
    for (i = 1; i <= n; i++) {
      if (100 * reached[wanted[i]] > least * lines[wanted[i]]) continue
      print wanted[i] " is covered by no more than " least " % of its lines"
      bad = 1
    }
    exit bad
  }' "$build/report.csv"
