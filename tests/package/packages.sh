#!/bin/bash
# Packs a build as Debian packages, twice, unpacks them into a folder and uses what lies there, as trial.sh does:
#   packages.sh BUILD TREE SCRATCH-FOLDER
# Installing and removing them for real is the matter of clean_root.sh.
set -eu
build=$1 tree=$2 scratch=$3
here=$(dirname "$(realpath "$0")")

fail() {
  echo "$*"
  exit 1
}

rm -rf "$scratch"
mkdir -p "$scratch/root"
# The mask of whoever runs this would show in the archives' own members.
umask 022
for time in first second; do
  cpack --config "$build/CPackConfig.cmake" -B "$scratch/$time" -D CPACK_DEBIAN_COMPRESSION_TYPE=gzip >>"$scratch/log" 2>&1 ||
    fail "$(tail -n 20 "$scratch/log")"
done
packages=("$scratch"/first/*.deb)
for package in "${packages[@]}"; do
  cmp "$package" "$scratch/second/$(basename "$package")" || fail "Two packings of the same build differ."
  dpkg-deb -x "$package" "$scratch/root"
done

# field PACKAGE NAME
field() { dpkg-deb -f "$scratch/first/$1"_[0-9]*.deb "$2"; }
# needs PACKAGE WHAT...: each is the beginning of a relation of its own.
needs() {
  local package=$1 depends what
  depends=$(field "$package" Depends)
  shift
  for what in "$@"; do
    case ", $depends" in *", $what"*) ;; *) fail "$package does not depend on '$what': $depends" ;; esac
  done
}
version=$(field xov Version)
library=$(cd "$scratch/first" && ls | sed -n 's/^\(libxov-graphics[0-9.]*\)_.*[.]deb$/\1/p')
needs "$library" "xov-graphics-data (= $version)" qt6-image-formats-plugins 'fonts-urw-base35 | ' libqt6gui6 libmseed2
needs libxov-graphics-dev "$library (= $version)" 'qt6-base-dev (>= 6.4)'
needs xov "$library (= $version)" libqt6printsupport6
needs python3-xov "$library (= $version)" 'python3 (>= 3.' 'python3 (<< 3.' python3-numpy
dpkg-deb --ctrl-tarfile "$scratch/first/$library"_*.deb | tar -xO ./shlibs | grep -q "^libXOV_Graphics [0-9.]* $library (>= " ||
  fail "$library does not tell what who links it depends on"
for package in xov-graphics-data xov-graphics-doc; do
  [ "$(field $package Architecture)" = all ] || fail "$package is for $(field $package Architecture)"
done

# The reference comes along where it was built.
[ ! -d "$build/docs/html" ] || [ -n "$(find "$scratch/root/usr/share/doc" -path '*/html/index.html')" ] ||
  fail "The documentation has no reference."

# Nothing tells where it was built, on whatever machine.
cd "$scratch/root"
find . -type f ! -name '*.png' ! -name '*.jpg' ! -name '*.tif' -print0 | xargs -0 grep -laF -e "$tree/" -e "$build" >"$scratch/named" &&
  fail "These name the folder they were made in: $(cat "$scratch/named")"
for package in "${packages[@]}"; do
  name=$(dpkg-deb -f "$package" Package)
  for document in copyright changelog.gz changelog.Debian.gz; do
    [ -s "usr/share/doc/$name/$document" ] || fail "$name has no $document"
  done
done

root=$scratch/root
# Where /lib is a link, the library is loaded by another path than the one that it was installed to.
ln -s usr/lib "$root/lib"
folder=$(dirname "$(find -P "$root/usr" -name 'libXOV_Graphics.so.*' -type f)")
map=$(LD_LIBRARY_PATH=$root${folder#"$root/usr"} XOV_DATA_ROOT=$scratch/no-data-root "$root/usr/bin/xov" resources |
  sed -n 's/^natural_wide.jpg .* //p')
[ -f "$map" ] || fail "Behind a link to the library's folder there is no '$map'."

python=$(dirname "$(find "$root" -path '*/xov/_core*.so' -printf '%h\n')")
env PATH="$root/usr/bin:$PATH" PYTHONPATH="$python" CMAKE_PREFIX_PATH="$root/usr" HOME="$scratch/home" XDG_CACHE_HOME="$scratch/home" \
  XOV_DATA_ROOT="$scratch/no-data-root" QT_QPA_PLATFORM=offscreen "$here/trial.sh" "$tree" "$scratch/drawn"
