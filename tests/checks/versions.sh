#!/bin/bash
# Holds every place that names the version to the one of the root's project(): versions.sh TREE
cd "$1" || exit 1
version=$(sed -n 's/^  VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
faults=0

# names FILE PATTERN: a line of the file matches, with VERSION for the number, and MINOR for the first two parts of it.
names() {
  local pattern=${2//VERSION/${version//./[.]}} minor=${version%.*}
  pattern=${pattern//MINOR/${minor//./[.]}}
  grep -qE "$pattern" "$1" && return
  echo "$1 does not name version $version: no line matches '$pattern'"
  faults=$((faults + 1))
}

[[ $version =~ ^[0-9]+[.][0-9]+[.][0-9]+$ ]] || {
  echo "CMakeLists.txt: no version but '$version'"
  exit 1
}
names packaging/debian/changelog '^xov-graphics \(VERSION-[0-9]+\) '
names packaging/fedora/xov-graphics.spec '^Version: +VERSION$'
names packaging/conda/meta.yaml '^\{% set version = "VERSION" %\}$'
names CITATION.cff '^version: VERSION$'
names apps/desk/freedesktop/org.xov.Desk.metainfo.xml '<release version="VERSION" '
names README.md 'find_package\(XOV_Graphics MINOR CONFIG'
names CHANGELOG.md '^## VERSION \('

released=$(sed -n 's/^date-released: //p' CITATION.cff)
[ "$(sed -n 's/^## [0-9.]* (\([0-9-]*\))$/\1/p' CHANGELOG.md | head -n 1)" = "$released" ] ||
  grep -qE '^## [0-9.]+ \(unreleased\)$' CHANGELOG.md || {
  echo "CITATION.cff is of $released, CHANGELOG.md of another day"
  faults=$((faults + 1))
}
exit $((faults > 0))
