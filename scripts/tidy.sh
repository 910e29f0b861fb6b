#!/bin/bash
# Runs clang-tidy with .clang-tidy over the sources of the library, the programs, the examples and the plugin for
# Designer; files that have not changed since they last passed, nor any header of ours that they include, are left out.
# Fails with the findings.
#   scripts/tidy.sh          what changed
#   scripts/tidy.sh --all    everything
#   scripts/tidy.sh --slow   everything, with the checks that take longer than all the others together
set -euo pipefail
cd "$(dirname "$0")/.."
export tool=${CLANG_TIDY:-clang-tidy-14}
export build=build/tidy

export more=
case ${1-} in
  '') ;;
  --all) rm -rf "$build/passed" ;;
  --slow) rm -rf "$build/passed"; more=,performance-unnecessary-value-param ;;
  *) echo "usage: scripts/tidy.sh [--all | --slow]" >&2; exit 2 ;;
esac
command -v "$tool" >/dev/null || { echo "$tool is not installed" >&2; exit 77; }

# Only for compile_commands.json: a precompiled header of g++ means nothing to clang.
mkdir -p "$build/passed"
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DXOV_PCH=OFF -DXOV_APPS=ON -DXOV_EXAMPLES=ON \
  -DXOV_TESTS=OFF >"$build/configure.log" 2>&1 || { cat "$build/configure.log" >&2; exit 1; }

own_sources() {
  sed -n "s|^ *\"file\": \"$PWD/\(.*\)\",*\$|\1|p" "$build/compile_commands.json" | grep -E "^(src|apps|examples|designer)/" | sort -u
}

own_includes() {
  grep -rHoE '^#include ["<](XOV_Graphics|apps)/[^">]*' --include='*.h' --include='*.cpp' src apps examples designer |
    sed -E 's,^([^:]*):#include ["<],\1 ,; s, XOV_Graphics/, src/XOV_Graphics/,'
}

# Each source, followed by all headers of ours that it reaches, one line a source.
with_headers() {
  awk '
    NR == FNR { includes[$1] = includes[$1] " " $2; next }
    function reach(file,   some, i, n) {
      if (file in seen) return
      seen[file] = 1
      line = line " " file
      n = split(includes[file], some, " ")
      for (i = 1; i <= n; i++) reach(some[i])
    }
    { split("", seen); line = ""; reach($1); print substr(line, 2) }' <(own_includes 2>/dev/null || true) -
}

stamp_of() { echo "$build/passed/${1//\//_}"; }

changed() {
  local source headers stamp
  while read -r source headers; do
    stamp=$(stamp_of "$source")
    # shellcheck disable=SC2086 # a list of paths
    if [ ! -e "$stamp" ] || [ -n "$(find .clang-tidy "$source" $headers -newer "$stamp" 2>/dev/null)" ]; then
      echo "$source"
    fi
  done
}

# Most of the time goes into Qt's headers, so sources are looked at forty at a time, as one that includes them, which is
# several times as fast, with the flags of all sources. One line a batch.
batches() { awk -v most=40 -f cmake/batches.awk; }

# The flags that any source is compiled with, each once, quoted as a shell takes them.
all_flags() {
  sed -nE 's|^ *"command": "[^ ]+ (.*) -o [^ ]+ -c [^ ]+".*|\1|p' "$build/compile_commands.json" |
    sed -E 's,\\(.),\1,g; s,-isystem ,-isystem,g' | tr ' ' '\n' | awk '!seen[$0]++' | tr '\n' ' '
}

# The stamp bears the time before the run, so that a file that is edited meanwhile is looked at again.
tidy_one() {
  local source=$1 name=${1//\//_}
  touch "$build/$name.started"
  if "$tool" --quiet -p "$build" --checks="${more#,}" "$source" >"$build/$name.log" 2>&1; then
    mv "$build/$name.started" "$(stamp_of "$source")"
  else
    grep -v 'warnings* generated\.$\|^Suppressed\|^Use -header-filter' "$build/$name.log"
    return 1
  fi
}

# A batch that fails says little: names of two files may clash. Each of its files is then looked at alone.
tidy_batch() {
  local status=0 source flags together=$build/batch-${1//\//_}
  touch "$together.started"
  printf "#include \"$PWD/%s\"\n" "$@" >"$together"
  eval "flags=($(cat "$build/flags"))"
  if "$tool" --quiet --checks="-bugprone-suspicious-include$more" "$together" -- "${flags[@]}" \
    >"$together.log" 2>&1; then
    for source; do
      touch -r "$together.started" "$(stamp_of "$source")"
    done
  else
    for source; do
      tidy_one "$source" || status=1
    done
  fi
  return "$status"
}
export -f stamp_of tidy_one tidy_batch

all_flags >"$build/flags"
own_sources >"$build/sources"
with_headers <"$build/sources" | changed >"$build/todo"
# shellcheck disable=SC2016 # the inner shell expands it
batches <"$build/todo" | xargs -r -L 1 -P "$(nproc)" bash -c 'tidy_batch "$@"' tidy
