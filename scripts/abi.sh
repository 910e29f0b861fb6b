#!/bin/bash
# What a program that was built with one version of the library would notice of another, as abidiff tells it:
#   scripts/abi.sh OLD [NEW]
# Each is a commit, which is built in build/abi/ (a debug build of the library alone), or a folder with a library that holds
# debugging information and the headers beside it in include/ or src/; without NEW the tree as it is. 0 when programs go on
# as they are, 1 when they must be built anew, 2 when there is nothing to compare.
set -u
called_from=$PWD
cd "$(dirname "$0")/.." || exit 2
root=$PWD

[ $# -ge 1 ] && [ $# -le 2 ] || {
  sed -n '2,6s/^# \{0,1\}//p' "scripts/abi.sh"
  exit 2
}
command -v abidiff >/dev/null || {
  echo "There is no abidiff here (Debian: abigail-tools)" >&2
  exit 2
}

# built NAME SOURCES: the library of these sources, in build/abi/NAME.
built() {
  local folder=$root/build/abi/$1
  {
    cmake -S "$2" -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DXOV_APPS=OFF -DXOV_EXAMPLES=OFF -DXOV_TESTS=OFF \
      -DXOV_DESIGNER=OFF -DXOV_BATCHES=8 && cmake --build "$folder" --target XOV_Graphics
  } >"$folder.log" 2>&1 </dev/null || {
    tail -n 20 "$folder.log" >&2
    exit 2
  }
}

# prepare SIDE WHAT: sets library[SIDE] and headers[SIDE].
declare -A library headers
mkdir -p build/abi
prepare() {
  local side=$1 what=$2 commit sources
  if [ -n "$what" ] && [ -d "$called_from/$what" ]; then what=$called_from/$what; fi
  if [ -d "$what" ]; then
    library[$side]=$(find "$what" -name 'libXOV_Graphics.so*' -type f | head -n 1)
    headers[$side]=$(find "$what" -maxdepth 2 \( -path '*/include/XOV_Graphics' -o -path '*/src/XOV_Graphics' \) | head -n 1)
  else
    commit=tree sources=$root
    if [ -n "$what" ]; then
      commit=$(git rev-parse --short "$what^{commit}") || exit 2
      sources=$root/build/abi/$commit.sources
      rm -rf "$sources"
      mkdir -p "$sources" && git archive "$commit" | tar -x -C "$sources" || exit 2
    fi
    echo "Building $commit"
    built "$commit" "$sources"
    library[$side]=$(find "build/abi/$commit" -maxdepth 1 -name 'libXOV_Graphics.so*' -type f)
    headers[$side]=$sources/src/XOV_Graphics
  fi
  [ -n "${library[$side]}" ] && [ -n "${headers[$side]}" ] || {
    echo "$what: no library with headers" >&2
    exit 2
  }
}
prepare old "$1"
prepare new "${2-}"

# Functions and variables that are exported, and the types that public headers show of them.
abidiff --headers-dir1 "${headers[old]}" --headers-dir2 "${headers[new]}" --drop-private-types \
  "${library[old]}" "${library[new]}"
status=$?
# abidiff's bits: 1 and 2 that it failed, 4 a change, 8 a change that breaks programs.
[ $((status & 3)) = 0 ] || exit 2
if [ $((status & 8)) != 0 ]; then
  echo "Programs must be built anew."
  exit 1
fi
[ $((status & 4)) = 0 ] && echo "Nothing has changed." || echo "See above whether a program that uses what has changed goes on."
