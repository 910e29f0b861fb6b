#!/bin/bash
# Runs the fuzz targets of tests/fuzz and says what they did and reached.
#   scripts/fuzz.sh run SECONDS [TARGET...]   runs all targets, or those; they share the time
#   scripts/fuzz.sh coverage                  lines of each reader and family of views that the corpora reach
#   scripts/fuzz.sh inputs                    public inputs that no target reads; none, or the status is 1
# What is worth keeping between runs lies in build/fuzz/corpora/, inputs that failed in build/fuzz/found/.
set -u
cd "$(dirname "$0")/.." || exit 1
. scripts/setup.sh

export UBSAN_OPTIONS=print_stacktrace=1 ASAN_OPTIONS=quarantine_size_mb=32:malloc_context_size=8 TZ=UTC LC_ALL=C.UTF-8
export XOV_DATA_ROOT=$PWD/build/fuzz/no-data-root
symbolizer=$(command -v llvm-symbolizer-14) && export ASAN_SYMBOLIZER_PATH=$symbolizer
most_bytes=4096 most_megabytes=1500 most_megabytes_at_once=600 most_seconds=120

# stat LOG NAME: a figure that libFuzzer gives at its end.
stat() { sed -n "s/^stat::$2: *//p" "$1" | tail -n 1; }

# run_target SECONDS NAME PROGRAM SEEDS: one line in build/log/fuzz-NAME.row.
run_target() {
  local seconds=$1 name=$2 program=$3 seeds=$4 log=$logs/fuzz-$2.log status=0 options=()
  mkdir -p "build/fuzz/corpora/$name" build/fuzz/found
  # A view allocates so much that a search for leaks behind each state takes half of the time; one at the end does.
  [[ $name != views_* ]] || options=(-detect_leaks=0)
  "$program" -max_total_time="$seconds" -max_len=$most_bytes -timeout=$most_seconds -rss_limit_mb=$most_megabytes \
    -malloc_limit_mb=$most_megabytes_at_once -print_final_stats=1 -entropic=0 -artifact_prefix="build/fuzz/found/$name-" \
    "${options[@]}" "build/fuzz/corpora/$name" "$seeds" >"$log" 2>&1 </dev/null || status=$?
  local count
  count=$(stat "$log" number_of_executed_units)
  printf '  %-15s %11d executions %7d a second, slowest %3d s, %4d MB%s\n' "$name" "${count:-0}" \
    "$(stat "$log" average_exec_per_sec)" "$(stat "$log" slowest_unit_time_sec)" "$(stat "$log" peak_rss_mb)" \
    "$([ $status = 0 ] || echo "  FOUND: $log")" | tee "$logs/fuzz-$name.row"
}

run() {
  local seconds=$1 name program seeds rest rows=() slice
  shift
  install_missing "${compile_packages[@]}" "${test_packages[@]}"
  build fuzz
  mkdir -p "$logs"
  rm -f "$logs"/fuzz-*.row
  while read -r name program seeds rest; do
    [ $# = 0 ] || [[ " $* " == *" $name "* ]] || continue
    rows+=("$name $program $seeds")
  done <build/fuzz/fuzzers
  # As many at once as there are processors.
  slice=$(((seconds * jobs + ${#rows[@]} - 1) / ${#rows[@]}))
  for row in "${rows[@]}"; do
    while [ "$(jobs -rp | wc -l)" -ge "$jobs" ]; do wait -n; done
    read -r name program seeds <<<"$row"
    run_target $slice "$name" "$program" "$seeds" &
  done
  wait
  cat "$logs"/fuzz-*.row | awk '{ executed += $2 } / FOUND: / { findings++ }
    END { printf "%d executions, %d findings\n", executed, findings; exit findings > 0 }'
}

# Replays the seeds and what the fuzzers kept in a build that counts lines.
coverage() {
  local name program seeds covers folders prefix sources
  build fuzz-coverage
  mkdir -p "$logs"
  while read -r name program seeds covers; do
    folders=("$seeds")
    [ -z "$(ls -A "build/fuzz/corpora/$name" 2>/dev/null)" ] || folders+=("build/fuzz/corpora/$name")
    LLVM_PROFILE_FILE=$program.profraw "$program" "${folders[@]}" >"$logs/coverage-$name.log" 2>&1 ||
      echo "  $name failed: $logs/coverage-$name.log"
    llvm-profdata-14 merge -o "$program.profdata" "$program.profraw"
    sources=()
    for prefix in $covers; do
      [[ $prefix == apps/* ]] || prefix=src/XOV_Graphics/$prefix
      sources+=("$PWD/$prefix")
    done
    llvm-cov-14 export -summary-only -instr-profile "$program.profdata" "$program" 2>/dev/null |
      python3 -c '
import json, os, sys
name, prefixes = sys.argv[1], tuple(sys.argv[2:])
files = [f for f in json.load(sys.stdin)["data"][0]["files"]
         if os.path.normpath(f["filename"]).startswith(prefixes) and f["filename"].endswith(".cpp")]
lines = sum(f["summary"]["lines"]["count"] for f in files)
covered = sum(f["summary"]["lines"]["covered"] for f in files)
print(f"  {name:15} {covered:6} of {lines:6} lines, {100 * covered / max(lines, 1):5.1f} %")
' "$name" "${sources[@]}"
  done <build/fuzz-coverage/fuzzers
}

case ${1-} in
run) shift && run "$@" ;;
coverage) coverage ;;
inputs) bash tests/checks/fuzzed.sh . ;;
*)
  sed -n '2,6s/^# \{0,1\}//p' "$0" >&2
  exit 2
  ;;
esac
