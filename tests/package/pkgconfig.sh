#!/bin/sh
# Builds and runs a program with nothing but the compiler and pkg-config:
#   pkgconfig.sh COMPILER PREFIX SOURCES PROGRAM [--static]
# SOURCES is the folder of this file. A static library brings its needs along; its own resources lie beside the program.
set -eu
compiler=$1 prefix=$2 sources=$3 program=$4 static=${5-}

file=$(find "$prefix" -name XOV_Graphics.pc)
PKG_CONFIG_PATH=$(dirname "$file")
export PKG_CONFIG_PATH
library_folder=$(pkg-config --variable=libdir XOV_Graphics)
resources=$(pkg-config --variable=resources XOV_Graphics)
mkdir -p "$(dirname "$program")"

# shellcheck disable=SC2046,SC2086 # the flags are words to split
"$compiler" -std=c++20 -I"$sources/host_headers" "$sources/consumer/main.cpp" -o "$program" \
  $(pkg-config $static --cflags --libs XOV_Graphics) -Wl,-rpath,"$library_folder"
if [ -n "$static" ]; then
  resources_beside=$(dirname "$program")/XOV_Graphics/resources
  mkdir -p "$(dirname "$resources_beside")"
  rm -rf "$resources_beside"
  cp -r "$resources" "$resources_beside"
  resources=$resources_beside
fi
"$program" "$resources"
