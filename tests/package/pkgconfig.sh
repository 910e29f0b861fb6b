#!/bin/sh
# Builds and runs a program with nothing but the compiler and pkg-config: pkgconfig.sh COMPILER PREFIX SOURCE PROGRAM
set -eu
compiler=$1 prefix=$2 source=$3 program=$4

file=$(find "$prefix" -name XOV_Graphics.pc)
PKG_CONFIG_PATH=$(dirname "$file")
export PKG_CONFIG_PATH
library_folder=$(pkg-config --variable=libdir XOV_Graphics)

# shellcheck disable=SC2046 # the flags are words to split
"$compiler" -std=c++20 "$source" -o "$program" $(pkg-config --cflags --libs XOV_Graphics) \
  -Wl,-rpath,"$library_folder"
"$program"
