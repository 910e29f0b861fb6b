#!/bin/bash
# Changes the library's sources in one small place at a time, and sees whether the tests notice:
#   scripts/mutate.sh [-n COUNT] [-s SEED] [-j JOBS] [-b BUILD] PLACE...
#   scripts/mutate.sh -a [-j JOBS] [-b BUILD]      tries again what survived and is not explained
# Of all spots in each PLACE (a folder below src/XOV_Graphics or a source) where a comparison, a sign, a condition or a
# small number can be changed, COUNT (20) are drawn by SEED (1). Each mutant's source is compiled alone with the flags of
# BUILD (build/dev) and linked in front of the library into the programs that test it, which are built there first: the
# suites of the source's own test, then its folder's, then others; until something fails, or takes five times the
# processor's time that it takes without a change. With -a, what survives is compiled and tried once more with sanitizers,
# as the tests run with them elsewhere. JOBS (2) are tried at a time. Nothing in the tree is changed.
#
# One line a mutant goes to build/mutants/results, and what stands there is not tried again: killed, survived, late
# (killed by the time) or invalid (does not compile); the source below src/XOV_Graphics; and its line with [this -> that].
# Those that survive are shown at the end, for a test or an explanation: what is known to change nothing that can be seen
# stands in scripts/mutants.equal, as in the results but for the first word. scripts/mutants.list is what was drawn last.
set -euo pipefail
cd "$(dirname "$0")/.."
count=20 seed=1 build=build/dev jobs=2 again=
usage() { sed -n '2,4s/^# *//p' "$0" >&2; exit 2; }
while getopts n:s:b:j:a option; do
  case $option in
    n) count=$OPTARG ;; s) seed=$OPTARG ;; b) build=$OPTARG ;; j) jobs=$OPTARG ;; a) again=1 ;;
    *) usage ;;
  esac
done
shift $((OPTIND - 1))
[ $# -gt 0 ] || [ -n "$again" ] || usage
work=$PWD/build/mutants equal=scripts/mutants.equal
mkdir -p "$work"
: >>"$work/results"
export QT_QPA_PLATFORM=offscreen TZ=UTC LC_ALL=C.UTF-8 XOV_DATA_ROOT=/nonexistent ASAN_OPTIONS=detect_leaks=0:hard_rss_limit_mb=4000

# The programs that test a source, its own first.
programs_of() {
  case $1 in
    apps/*) echo test_apps ;;
    */platform/trace/*) echo test_traces test_platform ;;
    */platform/pixels/*) echo test_platform test_views_image ;;
    */platform/symbol/*) echo test_symbols ;;
    */views/base/*) echo test_views_base test_views_xy test_views_navigation test_views_seismic test_views_map test_views_all ;;
    */views/navigation/*) echo test_views_navigation test_views_all ;;
    */views/*) sed -E 's,.*/views/([a-z]+)/.*,test_views_\1 test_views_navigation test_views_all,' <<<"$1" ;;
    */seismic/io/picks/*) echo test_seismic_picks ;;
    */seismic/signal/* | */seismic/array/* | */seismic/arrivals/* | */seismic/mechanism/* | */seismic/picks/*)
      sed -E 's,.*/seismic/([a-z]+)/.*,test_seismic_\1,' <<<"$1" ;;
    *) sed -E 's,.*XOV_Graphics/([a-z]+)/.*,test_\1,' <<<"$1" ;;
  esac
}

# Tests that compute for long without optimisation, and notice little that others do not.
slow_tests() {
  case $1 in
    test_symbols) echo 'SymbolRaster.overlapping*:SymbolCulling.ofAThird*' ;;
    test_traces) echo '*/TraceRasterPicture.*:TraceUnion.equalsACount*:TraceRaster.aLineOfMany*:TraceTimeline.accumulates*' ;;
    test_views_all) echo 'RandomViews.*' ;;
  esac
}

# The suites of the test that is named as the source.
own_suites() {
  local name
  name=$(basename "$1" .cpp)
  find tests -name "${name}Test.cpp" -exec sed -nE 's/^TEST(_F|_P)?\(([A-Za-z0-9_]+),.*/\2/p' {} + | sort -u |
    sed 's,.*,&.*:*/&.*,' | paste -sd:
}

# All spots of a source that can be changed: line, column, what stands there, what comes there, and how it is called.
# Comments, includes, texts, templates' brackets and lines of declarations only are left out.
spots() {
  awk -v source="${1#src/XOV_Graphics/}" -v OFS='\t' '
    function spot(at, from, to) { print NR, at, from, to, source "\t" called(at, from, to) }
    function called(at, from, to,    text) {
      text = substr($0, 1, at - 1) "[" from " -> " to "]" substr($0, at + length(from))
      sub(/^ */, "", text)
      return text
    }
    BEGIN {
      n = split("< <= > >= == != && || + - * /", words, " ")
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
      for (i = 1; i <= n; i++)
        for (at = 1; (found = index(substr(line, at), " " words[i] " ")) > 0; at += found)
          spot(at + found, words[i], other[words[i]])
      for (at = 1; match(substr(line, at), /[^A-Za-z0-9_.:](true|false|[012])[^A-Za-z0-9_.:]/); at += RSTART + RLENGTH - 2) {
        word = substr(line, at + RSTART, RLENGTH - 2)
        spot(at + RSTART, word, other[word])
      }
    }' "$1" | sed "s,^,$1\t,"
}

# How the source is compiled in the build folder; how the program is linked.
compile_command() {
  awk -v file="$PWD/$1" '
    /"command":/ { command = $0 }
    index($0, "\"file\": \"" file "\"") { sub(/^ *"command": "/, "", command); sub(/",$/, "", command); print command; exit }
  ' "$build/compile_commands.json" | sed -E 's,\\(.),\1,g; s,^ccache ,,; s,$, -Wno-error,'
}
link_command() { ninja -C "$build" -t commands "$1" | grep -E -- "-o [^ ]*/$1( |$)" | tail -n 1 | sed -E 's,^: && ,,; s, && .*$,,; s,^ccache ,,'; }

# Runs a program's suites in a job's folder: killed, late or survived. A mutant may ask for any memory and time.
verdict_of() {
  local program=$1 folder=$2 filter=$3 seconds status=0
  seconds=$((5 * $(cat "$work/$program.seconds")))
  rm -rf "$folder/tmp" && mkdir "$folder/tmp"
  (
    # Sanitizers keep books beside all addresses there are.
    [ -n "$sanitized" ] || ulimit -v 8000000
    ulimit -t "$seconds" -c 0
    TMPDIR=$folder/tmp exec timeout $((10 * seconds)) "$folder/$program" --gtest_brief=1 --gtest_fail_fast --gtest_filter="$filter"
  ) >"$folder/run.log" 2>&1 || status=$?
  case $status in
    0) echo survived ;;
    124 | 137 | 152) echo late ;;
    *) echo killed ;;
  esac
}

# Compiles a source's mutant in the folder of its job.
compile_mutant() {
  local folder=$1 source=$2 command
  command=$(compile_command "$source" |
    sed -E "s, -o [^ ]+, -o $folder/changed.o,; s, -M[DTF]+ [^ ]+,,g; s, -MD,,g; s,$PWD/$source,$folder/changed.cpp,")
  # What was precompiled was so without sanitizers.
  [ -z "$sanitized" ] || command="$(sed -E 's, -include [^ ]+,,' <<<"$command") $sanitized"
  (cd "$build" && bash -c "$command") >"$folder/compile.log" 2>&1
}

# Links a program with it: an object of the program's own is replaced, one of the library comes before it.
link_mutant() {
  local folder=$1 source=$2 program=$3 object command
  object=$(compile_command "$source" | sed -E 's,.* -o ([^ ]+).*,\1,')
  command=$(sed -E "s, $object , $folder/changed.o ,; t replaced
    s, ([^ ]*libxov_static\.a), $folder/changed.o \1,; :replaced
    s, -o [^ ]+, -o $folder/$program," "$work/$program.link")
  (cd "$build" && bash -c "$command $sanitized") >"$folder/link.log" 2>&1 ||
    { echo "cannot link $program: $folder/link.log" >&2; return 1; }
}

# Tries one mutant in the folder of its job.
try_mutant() {
  local folder=$1 source=$2 line=$3 column=$4 from=$5 to=$6 name=$7 verdict=survived program programs own sanitized=
  mkdir -p "$folder/XOV_Graphics"
  ln -sfn "$PWD/resources" "$folder/XOV_Graphics/resources"
  awk -v line="$line" -v column="$column" -v from="$from" -v to="$to" '
    NR == line { $0 = substr($0, 1, column - 1) to substr($0, column + length(from)) } { print }' "$source" >"$folder/changed.cpp"
  [ -n "$(compile_command "$source")" ] || { echo "$source is not compiled in $build" >&2; return 1; }
  read -ra programs < <(programs_of "$source")
  own=$(own_suites "$source")
  if ! compile_mutant "$folder" "$source"; then
    verdict=invalid
  else
    for program in "${programs[@]}"; do
      link_mutant "$folder" "$source" "$program" || return 1
      [ -z "$own" ] || verdict=$(verdict_of "$program" "$folder" "$own-$(slow_tests "$program")")
      [ "$verdict" != survived ] || verdict=$(verdict_of "$program" "$folder" "*-$(slow_tests "$program")")
      own=
      [ "$verdict" = survived ] || break
    done
    if [ "$verdict" = survived ] && [ -n "$again" ]; then
      program=${programs[0]} sanitized="-fsanitize=address,undefined -fno-sanitize-recover=all -D_GLIBCXX_ASSERTIONS"
      compile_mutant "$folder" "$source" && link_mutant "$folder" "$source" "$program" || return 1
      verdict=$(verdict_of "$program" "$folder" "*-$(slow_tests "$program")")
    fi
  fi
  printf '%s\t%s\n' "$verdict" "$name" | tee -a "$work/results"
}

explained() { grep -v "^#" "$equal" || true; }
survivors() { sed -n 's/^survived\t//p' "$work/results" | { grep -vxFf <(explained) || true; }; }

if [ -n "$again" ]; then
  survivors >"$work/again"
  cut -f 1 "$work/again" | sort -u | while read -r source; do
    [ -e "$source" ] || source=src/XOV_Graphics/$source
    spots "$source"
  done | awk -F '\t' -v OFS='\t' 'FILENAME == ARGV[1] { asked[$0] = 1; next } asked[$6 OFS $7]' "$work/again" - >"$work/drawn"
  sed 's/^/survived\t/' "$work/again" | { grep -vxFf - "$work/results" || true; } >"$work/others"
  mv "$work/others" "$work/results"
else
  for place; do
    [ -e "$place" ] || place=src/XOV_Graphics/$place
    find "$place" -name '*.cpp' | sort | while read -r source; do spots "$source"; done |
      shuf --random-source=<(awk -v seed="$seed" 'BEGIN { srand(seed); for (;;) printf "%c", 256 * rand() }') -n "$count"
  done | awk -F '\t' -v OFS='\t' 'FILENAME == ARGV[1] { known[$2 OFS $3] = 1; next } !known[$6 OFS $7]++' "$work/results" - >"$work/drawn"
fi

# Each program as it is: how it is linked, and the seconds of processor that it takes.
read -ra programs < <(cut -f 1 "$work/drawn" | sort -u | while read -r source; do programs_of "$source"; done | tr ' ' '\n' | sort -u | paste -sd' ')
[ ${#programs[@]} = 0 ] || ninja -C "$build" "${programs[@]}" >"$work/build.log" 2>&1 || { tail -5 "$work/build.log" >&2; exit 1; }
for program in "${programs[@]}"; do
  file=$(find "$build" -type f -name "$program" -perm -u+x)
  [ "$work/$program.seconds" -nt "$file" ] && continue
  link_command "$program" >"$work/$program.link"
  TIMEFORMAT=%U
  seconds=$({ time "$file" --gtest_brief=1 --gtest_filter="*-$(slow_tests "$program")" >"$work/$program.log" 2>&1; } 2>&1) ||
    { echo "$program fails as it is: $work/$program.log" >&2; exit 1; }
  echo $((${seconds%.*} + 2)) >"$work/$program.seconds"
done

job=0
while IFS=$'\t' read -r source line column from to file text; do
  while [ "$(jobs -rp | wc -l)" -ge "$jobs" ]; do wait -n || exit 1; done
  job=$((job + 1))
  {
    try_mutant "$work/job.$job" "$source" "$line" "$column" "$from" "$to" "$file"$'\t'"$text" && rm -rf "$work/job.$job"
  } </dev/null &
done <"$work/drawn"
wait

echo
awk -F '\t' '{ n[$1]++ } END { for (verdict in n) printf "%s %d  ", verdict, n[verdict]; print "" }' "$work/results"
survivors
