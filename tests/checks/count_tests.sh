#!/bin/bash
# Shows that ./test counts tests one by one though ctest runs suites: count_tests.sh TREE SCRATCH-FOLDER
set -u
. "$1/scripts/count.sh"
build=$2
faults=0

# result NAME TESTS FAILURES SKIPPED: what a suite writes down.
result() {
  local k
  {
    echo "<testsuites tests=\"$2\" failures=\"$3\" disabled=\"0\" errors=\"0\" name=\"AllTests\">"
    for ((k = 0; k < $4; ++k)); do echo '<testcase name="a" result="skipped">'; done
  } >"$build/tests/results/$1.xml"
}

# run TOTAL FAILED-NAMES...: what ctest leaves behind.
run() {
  local total=$1 name
  shift
  echo "90% tests passed, $# tests failed out of $total" >"$build/log"
  for name in "$@"; do echo "7:$name"; done >"$build/Testing/Temporary/LastTestsFailed.log"
}

expect() {
  local found
  found=$(count_tests "$build" "$build/log")
  [ "$found" = "$2" ] || { echo "$1: '$found', not '$2'" && faults=$((faults + 1)); }
  forget_results "$build"
  mkdir -p "$build/tests/results"
}

rm -rf "$build"
mkdir -p "$build"/{tests/results,Testing/Temporary}

result base.Resources 5 0 0 && result base.Odd.Suite 3 0 0 && run 3
expect "two suites and a plain test" "9 0 0"
result base.Resources 5 2 0 && result base.Odd.Suite 3 0 1 && run 3 base.Resources
expect "two failures of five, one skipped of three, a plain test" "6 2 1"
result base.Odd.Suite 3 1 0 && run 1 base.Odd/Suite
expect "a failure in a suite with a slash in its name" "2 1 0"
result base.Resources 5 0 0 && run 2 base.Crashed
expect "a crash" "5 1 0"
result base.Resources 5 0 0 && run 1 base.Resources
expect "a leak, found when all tests had passed" "5 1 0"
run 2 window
expect "plain tests only" "1 1 0"
result base.Resources 5 0 0 && run 1 && forget_results "$build" && run 1
expect "nothing left of an earlier run" "1 0 0"
echo "No tests were found!!!" >"$build/log"
expect "no test" ""
[ "$faults" = 0 ]
