#!/bin/bash
# Builds the unit tests with counters, runs them and reports which lines and branches of the library they reached:
#   scripts/coverage.sh                 everything
#   scripts/coverage.sh PATTERN...      only test programs whose names match, as "test_base 'test_views_.*'"
# The report, file by file, is build/coverage/report.txt, and build/coverage/report.json says how often each line and branch
# was reached; the table printed at the end sums up folders. The folders that must be covered by more than 95 % of their lines
# are named below; where everything was run and one is not, or a test fails, the script fails. 77 where gcovr is not installed.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v gcovr >/dev/null || { echo "gcovr is not installed" >&2; exit 77; }
readonly least=95 folders="base graphics views seismic map colour grid"
build=$PWD/build/coverage
mkdir -p "$build"

# Counters in functions of the library alone, wherever they are compiled, and not in Qt's or the tests'. Threads count
# together: a lost count can make another negative. Not optimised, so that no line is merged with its neighbour.
counters="--coverage -fprofile-abs-path -fprofile-update=atomic -fprofile-filter-files=.*src/XOV_Graphics/.*"
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_CXX_FLAGS="$counters" \
  -DXOV_BATCHES=10 -DXOV_APPS=OFF -DXOV_EXAMPLES=OFF -DXOV_DESIGNER=OFF >"$build/build.log" 2>&1 ||
  { cat "$build/build.log" >&2; exit 1; }
mapfile -t programs < <(ninja -C "$build" -t targets all | sed -nE 's/^(test_[a-z_0-9]+): phony$/\1/p' | sort -u |
  if [ $# -gt 0 ]; then grep -xE "$(IFS='|'; echo "$*")"; else cat; fi)
[ ${#programs[@]} -gt 0 ] || { echo "no test program has such a name: $*" >&2; exit 1; }
ninja -C "$build" "${programs[@]}" >>"$build/build.log" 2>&1 || { tail -n 20 "$build/build.log" >&2; exit 1; }

# Builds count, too: a program is asked for its suites when it is linked.
find "$build" -name '*.gcda' -delete
export QT_QPA_PLATFORM=offscreen TZ=UTC LC_ALL=C.UTF-8 XOV_DATA_ROOT=$build/no-data-root
run_program() {
  local file
  file=$(find "$1/tests" -type f -name "$2" -perm -u+x)
  "$file" >"$1/$2.log" 2>&1 || { echo "$2 fails: $1/$2.log"; return 1; }
}
export -f run_program
failed=0
printf '%s\n' "${programs[@]}" | xargs -P "$(nproc)" -I{} bash -c 'run_program "$0" {}' "$build" || failed=1

gcovr -r . --object-directory "$build" --filter 'src/XOV_Graphics/' --exclude-throw-branches \
  --exclude-unreachable-branches --csv "$build/report.csv" --txt "$build/report.txt" --json "$build/report.json" \
  -j "$(nproc)" "$build" >"$build/gcovr.log" 2>&1 || { cat "$build/gcovr.log" >&2; exit 1; }
# Columns: file, lines, lines reached, share, branches, branches reached, share.
awk -F, -v least="$least" -v folders="$folders" -v whole=$(($# == 0)) '
  function row(folder) {
    printf "%-10s %8d %7.1f%% %9d %7.1f%%\n", folder, lines[folder], 100 * reached[folder] / lines[folder],
      branches[folder], branches[folder] ? 100 * taken[folder] / branches[folder] : 100
  }
  function add(folder) {
    lines[folder] += $2; reached[folder] += $3; branches[folder] += $5; taken[folder] += $6
  }
  NR == 1 { next }
  {
    split($1, path, "/")
    if (!(path[3] in lines)) order[++count] = path[3]
    add(path[3])
    add("all")
  }
  END {
    printf "%-10s %8s %8s %9s %8s\n", "folder", "lines", "reached", "branches", "reached"
    for (i = 1; i <= count; i++) row(order[i])
    row("all")
    if (!whole) exit 0
    n = split(folders, wanted, " ")
    for (i = 1; i <= n; i++) {
      if (100 * reached[wanted[i]] > least * lines[wanted[i]]) continue
      print wanted[i] " is covered by no more than " least " % of its lines"
      bad = 1
    }
    exit bad
  }' "$build/report.csv" || failed=1
exit $failed
