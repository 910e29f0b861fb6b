#!/bin/bash
# Makes the Debian packages in build/packages, hardened and with debugging information left out, and looks at them:
#   scripts/packages.sh [--install] [--clean-root] [--twice]
#   --install      installs first what building needs
#   --clean-root   tries them in a Debian 12 of their own, made by debootstrap (as root, with a network; kept in
#                  build/clean-root for the next time)
#   --twice        builds what is committed in another folder, too, without any cache of objects, and compares every byte
# ./test does a short form of this with its own build: tests/package/packages.sh.
set -u
cd "$(dirname "$0")/.." || exit 1
root=$PWD
. scripts/setup.sh
# It would show in the packages.
umask 022

clean_root='' twice=''
for option in "$@"; do
  case $option in
    --install) install_missing "${compile_packages[@]}" pybind11-dev python3-dev qt6-tools-dev doxygen dpkg-dev file lintian ;;
    --clean-root) clean_root=yes ;;
    --twice) twice=yes ;;
    *)
      sed -n '2,8s/^# \{0,1\}//p' scripts/packages.sh
      exit 1
      ;;
  esac
done

# build_packages NAME SOURCES BUILD PACKAGES
build_packages() {
  must "configure-$1" "Configure ($1)" cmake -S "$2" -B "$3" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_SKIP_INSTALL_RPATH=ON -DCMAKE_COMPILE_WARNING_AS_ERROR=ON -DXOV_TESTS=OFF -DXOV_EXAMPLES=ON -DXOV_HARDENED=ON \
    -DXOV_BATCHES=8 -DXOV_PYTHON=ON -DPython3_EXECUTABLE=/usr/bin/python3
  must "build-$1" "Build ($1)" cmake --build "$3" --parallel "$jobs"
  must "docs-$1" "Build the documentation ($1)" cmake --build "$3" --target docs
  rm -rf "$4"
  must "pack-$1" "Pack ($1)" cpack --config "$3/CPackConfig.cmake" -B "$4"
  rm -rf "$4"/_CPack_Packages
}

packages=$root/build/packages
build_packages packages "$root" "$root/build/pack" "$packages"
(cd "$packages" && ls -s --block-size=1K ./*.deb)

must lintian "Look at them (lintian)" lintian --fail-on error --tag-display-limit 0 "$packages"/*.deb
grep -E '^[EW]:' "$logs/lintian.log"

if [ -n "$twice" ]; then
  # The longer path shows what depends on its length.
  other=$(mktemp -d "${TMPDIR:-/tmp}/xov-in-another-folder-XXXXXX") || exit 1
  trap 'rm -rf "$other"' EXIT
  mkdir "$other/sources" && git archive HEAD | tar -x -C "$other/sources" || exit 1
  [ -z "$(git status --porcelain)" ] || echo "  Note: what is not committed is in the first packages alone."
  CCACHE_DISABLE=1 build_packages packages-again "$other/sources" "$other/somewhere/build" "$other/packages"
  must compare "Compare both, byte by byte" scripts/compare_builds.sh "$root/build/pack" "$packages" \
    "$other/somewhere/build" "$other/packages"
  cat "$logs/compare.log"
fi

[ -z "$clean_root" ] || must clean-root "Try them in a Debian of their own" tests/package/clean_root.sh "$packages" "$root" \
  "$root/build/clean-root"
