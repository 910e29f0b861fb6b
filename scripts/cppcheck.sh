#!/bin/bash
# What cppcheck finds in the library and the programs, beside clang-tidy: faults, and what it is sure of of the rest.
# Fails with the findings; 77 where it is not installed.
#   scripts/cppcheck.sh            everything
#   scripts/cppcheck.sh FILE...    some files
set -euo pipefail
cd "$(dirname "$0")/.."
command -v cppcheck >/dev/null || { echo "cppcheck is not installed" >&2; exit 77; }
mkdir -p build/cppcheck
[ $# -gt 0 ] || set -- src apps examples

# Qt's macros come from cppcheck's own library; why something is left out stands in .cppcheck.
exec cppcheck --std=c++20 --language=c++ --quiet --error-exitcode=1 --inline-suppr -j "$(nproc)" \
  --enable=warning,performance,portability --library=qt --cppcheck-build-dir=build/cppcheck \
  --suppressions-list=.cppcheck -I src -I . \
  -D__GNUC__=12 -D__x86_64__ -DXOV_EXPORT= -DXOV_PER_THREAD= "$@"
