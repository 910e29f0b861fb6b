#!/bin/bash
# Shows that bench/run writes docs/benchmark.md from all works with all rivals, and leaves it alone otherwise:
#   bench_run.sh TREE SCRATCH-FOLDER
# The script runs in a folder where building does nothing and the benchmark is one line.
set -eu
tree=$1 scratch=$2
rm -rf "$scratch"
mkdir -p "$scratch"/{bench,scripts,docs,build/release/bench}
cp "$tree/bench/run" "$scratch/bench/"
echo introduction >"$scratch/bench/introduction.md"
echo 'must() { :; }; install_missing() { :; }' >"$scratch/scripts/setup.sh"
printf '#!/bin/sh\necho "table of $*"; exit ${STATUS-0}\n' >"$scratch/build/release/bench/xov_bench"
chmod +x "$scratch/build/release/bench/xov_bench"

# expect WRITTEN ARGUMENTS...
expect() {
  local wanted=$1 found=kept
  shift
  echo old >"$scratch/docs/benchmark.md"
  "$scratch/bench/run" "$@" >/dev/null || true
  [ "$(cat "$scratch/docs/benchmark.md")" = old ] || found=written
  [ "$found" = "$wanted" ] || {
    echo "bench/run $*: docs/benchmark.md is $found, not $wanted"
    exit 1
  }
}

expect written --rivals
grep -q '^introduction' "$scratch/docs/benchmark.md" && grep -q '^table of .*--rivals' "$scratch/docs/benchmark.md"
expect written --rivals --rounds 3
expect kept
expect kept --works W1
expect kept --rivals --works W1
expect kept --rivals --works=W1,W2
expect kept --one xov:W1
STATUS=1 expect kept --rivals
