#!/bin/bash
# Uses the packages as their users do; the programs, the Python module and the library are found as the environment says:
#   trial.sh TREE OUTPUT-FOLDER
# TREE gives the files that are drawn and README's host program. What is drawn stays in the output folder.
set -eu
tree=$1 output=$2
mkdir -p "$output"
cd "$output"
mkdir -pm 700 runtime
export XDG_RUNTIME_DIR=$output/runtime

expect() {
  [ "$1" = "$2" ] || {
    echo "$3: '$1', not '$2'"
    exit 1
  }
}
# is KIND FILE: of the right kind, and more than an empty plot.
is() {
  case $(file -b "$2") in "$1"*) ;; *)
    echo "$2: $(file -b "$2"), not $1"
    exit 1
    ;;
  esac
  [ "$(wc -c <"$2")" -gt "${3-4000}" ] || {
    echo "$2 has but $(wc -c <"$2") bytes"
    exit 1
  }
}

version=$(sed -n 's/^  VERSION \([0-9.]*\)$/\1/p' "$tree/CMakeLists.txt")
expect "$(xov --version)" "xov $version" "xov --version"
xov_resources --help | grep -q -- --packages

records=$tree/tests/fuzz/mseed/corpus/two-channels.mseed
xov section "$records" -o section.pdf
is 'PDF document' section.pdf
# Maps are drawn from the package of data; TIFF files through a plugin of Qt, which also reads one of the base maps.
xov map --plates types -o map.png 2>notes || cat notes
is 'PNG image' map.png 100000
for image in 1 2 3 4 10; do xov map --image $image --size 300 161 -o "map-$image.tif" 2>>notes; done
is 'TIFF image' map-2.tif 50000
expect "$(cat notes)" '' "notes on maps"
xov resources >resources
expect "$(grep -c 'XOV_Graphics/resources/' resources)" "$(find "$tree/resources" -type f ! -name README.md | wc -l)" "resources found"

# The program of README is its first block of C++, built with what README says.
mkdir -p host
awk '/^```cpp/ {inside = 1; next} /^```/ {inside = 0; if (n) exit} inside {print; ++n}' "$tree/README.md" >host/main.cpp
{
  echo 'cmake_minimum_required(VERSION 3.25)'
  echo 'project(host LANGUAGES CXX)'
  echo 'add_executable(host main.cpp)'
  sed -n 's/^    \(find_package(XOV_Graphics\|target_link_libraries(host\)/\1/p' "$tree/README.md"
} >host/CMakeLists.txt
expect "$(grep -c XOV host/CMakeLists.txt)" 2 "README's lines for CMake"
cmake -S host -B host/build -G Ninja -DCMAKE_BUILD_TYPE=Release >host/log
cmake --build host/build >>host/log
# Its window stays open until somebody closes it.
status=0
timeout 2 host/build/host "$records" || status=$?
expect "$status" 124 "README's host program"

# Debian's own, which the package is for.
/usr/bin/python3 - "$version" "$records" <<'PYTHON'
import sys
import numpy
import xov
version, records = sys.argv[1:]
assert xov.__version__ == version, xov.__version__
xov.section(records).save("python-file.pdf")
seconds = numpy.arange(2000) * 0.05
xov.section(xov.Record(numpy.sin(seconds), delta=0.05, station="SINE")).save("python-array.png")
PYTHON
cmp python-file.pdf section.pdf
is 'PNG image' python-array.png
echo "All works."
