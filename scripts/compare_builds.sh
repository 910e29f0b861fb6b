#!/bin/bash
# Compares the library, the programs and the packages of two builds, byte by byte:
#   scripts/compare_builds.sh BUILD PACKAGES OTHER-BUILD OTHER-PACKAGES
set -u
build=$1 packages=$2 other_build=$3 other_packages=$4
same=0 different=0

compare() {
  if cmp "$1" "$2"; then
    same=$((same + 1))
  else
    different=$((different + 1))
  fi
}

mapfile -t binaries < <(cd "$build" && find . -type f \( -name 'libXOV_Graphics.so.*' -o -name xov -o -name xov_resources \
  -o -name '_core*.so' -o -name 'libxov_designer.so' \))
[ ${#binaries[@]} -ge 3 ] || {
  echo "$build: only '${binaries[*]}'"
  exit 1
}
for binary in "${binaries[@]}"; do compare "$build/$binary" "$other_build/$binary"; done
for package in "$packages"/*.deb; do compare "$package" "$other_packages/$(basename "$package")"; done
echo "$same files are the same, $different differ"
[ "$different" = 0 ]
