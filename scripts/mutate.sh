#!/bin/bash
# Changes the library's sources in one small place at a time, and sees whether the tests notice:
#   scripts/mutate.sh [-n COUNT] [-s SEED] [-b BUILD] [-r PROGRAM] FOLDER...
# Of all places in the FOLDERs (below src/XOV_Graphics) where a comparison, a sign, a condition or a small number can be
# changed, COUNT (200) are drawn by SEED (1). Each mutant's source is compiled alone with the flags of BUILD (build/dev),
# linked before the library into the folder's test program, which is built there first, and run until its first
# failure, for at most five times as long as it takes without a change. Nothing in the tree is changed.
#
# One line a mutant goes to build/mutants/results: killed, survived, late (killed by the time) or invalid (does not
# compile), then file:line and the change. Those that survive are shown at the end, for a test or an explanation: what is
# known to change nothing that can be seen stands in scripts/mutants.equal, a line each as it stands in the results.
set -euo pipefail
cd "$(dirname "$0")/.."
count=200 seed=1 build=build/dev only=
while getopts n:s:b:r: option; do
  case $option in
    n) count=$OPTARG ;; s) seed=$OPTARG ;; b) build=$OPTARG ;; r) only=$OPTARG ;;
    *) exit 2 ;;
  esac
done
shift $((OPTIND - 1))
[ $# -gt 0 ] || { echo "usage: scripts/mutate.sh [-n COUNT] [-s SEED] [-b BUILD] [-r PROGRAM] FOLDER..." >&2; exit 2; }
work=build/mutants
mkdir -p "$work"
: >>"$work/results"
export QT_QPA_PLATFORM=offscreen TZ=UTC LC_ALL=C.UTF-8 XOV_DATA_ROOT=/nonexistent

# The test program of a folder; the rows that come first win.
program_of() {
  [ -z "$only" ] || { echo "$only"; return; }
  case $1 in
    */platform/trace/*) echo test_traces ;;
    */platform/symbol/*) echo test_symbols ;;
    */views/navigation/*) echo test_views_navigation ;;
    */views/*) sed -E 's,.*/views/([a-z]+)/.*,test_views_\1,' <<<"$1" ;;
    */seismic/io/events/*) echo test_seismic_events ;;
    */seismic/signal/* | */seismic/array/* | */seismic/arrivals/* | */seismic/mechanism/* | */seismic/picks/*)
      sed -E 's,.*/seismic/([a-z]+)/.*,test_seismic_\1,' <<<"$1" ;;
    *) sed -E 's,.*XOV_Graphics/([a-z]+)/.*,test_\1,' <<<"$1" ;;
  esac
}

# All places of a source that can be changed: line, column, what stands there, what comes there. Comments, includes,
# texts, templates' brackets and lines of declarations only are left out.
places() {
  awk '
    BEGIN {
      n = split("< <= > >= == != && || + - ++ -- * / true false 0 1 2", words, " ")
      other["<="] = "<"; other[">="] = ">"; other["=="] = "!="; other["!="] = "=="; other["&&"] = "||"; other["||"] = "&&"
      other["+"] = "-"; other["-"] = "+"; other["*"] = "/"; other["/"] = "*"; other["<"] = "<="; other[">"] = ">="
      other["true"] = "false"; other["false"] = "true"; other["0"] = "1"; other["1"] = "2"; other["2"] = "3"
    }
    /^ *(\/\/|#|\*|template|using|namespace|static_assert|enum|case .*:$)/ { next }
    /["\047]/ { next }
    {
      line = $0
      sub(/ \/\/.*/, "", line)
      # Operators stand between blanks, where .clang-format puts them.
      for (i = 1; i <= n; i++) {
        word = words[i]
        if (!(word in other)) continue
        for (at = 1; (found = index(substr(line, at), " " word " ")) > 0; at += found) print NR, at + found, word, other[word]
      }
      for (at = 1; match(substr(line, at), /[^A-Za-z0-9_.:](true|false|[012])[^A-Za-z0-9_.:]/); at += RSTART + RLENGTH - 1) {
        word = substr(line, at + RSTART, RLENGTH - 2)
        print NR, at + RSTART, word, other[word]
      }
    }' "$1"
}

# How the source is compiled and the program linked in the build folder.
compile_command() {
  awk -v file="$PWD/$1" '
    /"command":/ { command = $0 }
    index($0, "\"file\": \"" file "\"") { sub(/^ *"command": "/, "", command); sub(/",$/, "", command); print command; exit }
  ' "$build/compile_commands.json" | sed -E 's,\\(.),\1,g; s,^ccache ,,; s,$, -Wno-error,'
}
link_command() { ninja -C "$build" -t commands "$1" | grep -E -- "-o [^ ]*/$1( |$)" | tail -n 1 | sed -E 's,^: && ,,; s, && .*$,,; s,^ccache ,,'; }

# Seconds that a program takes as it is.
declare -A usual
usual_seconds() {
  if [ -z "${usual[$1]-}" ]; then
    local file begin
    ninja -C "$build" "$1" >"$work/build.log" 2>&1 || { tail -5 "$work/build.log" >&2; exit 1; }
    file=$(find "$build/tests" -type f -name "$1" -perm -u+x)
    [ -n "$file" ] || { echo "$1 is not built in $build" >&2; exit 1; }
    begin=$SECONDS
    "$file" --gtest_brief=1 >"$work/$1.log" 2>&1 || { echo "$1 fails as it is" >&2; exit 1; }
    usual[$1]=$((SECONDS - begin + 2))
  fi
}

mutant=0
while IFS=$'\t' read -r source line column from to; do
  mutant=$((mutant + 1))
  name="$source:$line:$column"$'\t'"$from -> $to"
  grep -qF "$name" "$work/results" && continue
  program=$(program_of "$source")
  usual_seconds "$program"
  changed=$work/changed.cpp
  awk -v line="$line" -v column="$column" -v from="$from" -v to="$to" '
    NR == line { $0 = substr($0, 1, column - 1) to substr($0, column + length(from)) } { print }' "$source" >"$changed"
  compile=$(compile_command "$source" | sed -E "s, -o [^ ]+, -o $PWD/$work/changed.o,; s, -M[DTF]+ [^ ]+,,g; s, -MD,,g; s,$PWD/$source,$PWD/$changed,")
  link=$(link_command "$program" | sed -E "s, -o [^ ]+, -o $PWD/$work/mutant,; s, ([^ ]*libxov_static\.a), $PWD/$work/changed.o \1,")
  verdict=survived
  if ! (cd "$build" && bash -c "$compile") >"$work/compile.log" 2>&1; then
    verdict=invalid
  elif ! (cd "$build" && bash -c "$link") >"$work/link.log" 2>&1; then
    echo "cannot link $program: $work/link.log" >&2
    exit 1
  else
    mkdir -p "$work/XOV_Graphics"
    ln -sfn "$PWD/resources" "$work/XOV_Graphics/resources"
    status=0
    timeout $((5 * usual[$program])) "$work/mutant" --gtest_brief=1 --gtest_fail_fast >"$work/run.log" 2>&1 || status=$?
    [ $status = 0 ] || verdict=killed
    [ $status != 124 ] || verdict=late
  fi
  printf '%s\t%s\n' "$verdict" "$name" | tee -a "$work/results"
done < <(
  for folder; do
    find "src/XOV_Graphics/$folder" -name '*.cpp' | sort | while read -r source; do
      places "$source" | awk -v source="$source" 'BEGIN { OFS = "\t" } { print source, $1, $2, $3, $4 }'
    done
  done | shuf --random-source=<(awk -v seed="$seed" 'BEGIN { srand(seed); for (;;) printf "%c", 256 * rand() }') -n "$count")

equal=scripts/mutants.equal
echo
awk -F '\t' '{ n[$1]++ } END { for (verdict in n) printf "%s %d  ", verdict, n[verdict]; print "" }' "$work/results"
awk -F '\t' '$1 == "survived"' "$work/results" | { grep -vxFf <(grep -v '^#' "$equal" 2>/dev/null || true) || true; }
