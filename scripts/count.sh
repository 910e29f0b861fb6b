# Counts what a run of ctest tested. Sourced by ./test.
# shellcheck shell=bash

# What the last run left behind would count again.
forget_results() {
  rm -rf "$1/tests/results" "$1/Testing/Temporary/LastTestsFailed.log"
}

# count_tests BUILD-FOLDER LOG-OF-CTEST prints "PASSED FAILED SKIPPED", or nothing when ctest ran no test. ctest runs
# whole suites, whose tests count one by one as they wrote it down; a suite that crashed, or failed although its tests
# passed (as when it leaks), counts as one failure.
count_tests() {
  local build=$1 log=$2 runs bad skipped suites=0 bad_suites=0 name failures
  local cases=0 case_failures=0 case_skips=0 lone_failures=0 results=$1/tests/results
  read -r bad runs < <(sed -n 's/.*tests passed, \([0-9]*\) tests\{0,1\} failed out of \([0-9]*\).*/\1 \2/p' "$log" |
    tail -n 1)
  [ -n "${runs-}" ] || return 0
  skipped=$(grep -c '\*\*\*Skipped' "$log")
  if compgen -G "$results/*.xml" >/dev/null; then
    read -r suites cases case_failures < <(sed -n \
      's/.*<testsuites tests="\([0-9]*\)" failures="\([0-9]*\)" disabled="\([0-9]*\)".*/\1 \2 \3/p' "$results"/*.xml |
      awk '{ suites++; cases += $1 - $3; failures += $2 } END { print suites + 0, cases + 0, failures + 0 }')
    case_skips=$(cat "$results"/*.xml | grep -c 'result="skipped"')
  fi
  while IFS=: read -r _ name; do
    failures=$(sed -n 's/.*<testsuites .*failures="\([0-9]*\)".*/\1/p' "$results/${name//\//.}.xml" 2>/dev/null)
    [ -z "$failures" ] || bad_suites=$((bad_suites + 1))
    [ "${failures:-0}" != 0 ] || lone_failures=$((lone_failures + 1))
  done < <(cat "$build/Testing/Temporary/LastTestsFailed.log" 2>/dev/null)
  echo $((cases - case_failures - case_skips + (runs - bad - skipped) - (suites - bad_suites))) \
    $((case_failures + lone_failures)) $((skipped + case_skips))
}
