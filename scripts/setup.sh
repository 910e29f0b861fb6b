# What ./run and ./test share: installing what is missing on Debian 12, and running one quiet step after another.
# Sourced by bash with the root of the tree as the working folder.
# shellcheck shell=bash disable=SC2034 # the lists are for those who source this

logs=build/log
jobs=$(nproc)

compile_packages=(
  cmake g++ ninja-build pkg-config
  qt6-base-dev qt6-image-formats-plugins
  libbenchmark-dev libcli11-dev libdeflate-dev libgmock-dev libgtest-dev libkissfft-dev libmseed-dev
  fonts-urw-base35)
test_packages=(
  clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev
  xauth xdotool xvfb
  cppcheck gcovr locales
  appstream desktop-file-utils doxygen dpkg-dev file reuse shared-mime-info
  fish imagemagick libtiff-tools mold openssl poppler-utils zsh
  libqt6opengl6-dev qt6-tools-dev
  pybind11-dev python3-dev python3-numpy python3-pytest python3-venv
  python3-distributed python3-lxml python3-matplotlib python3-pyqt6 python3-scipy python3-sqlalchemy)

# Shows how far the running step has come, from the last "[12/80]" of ninja or " 12/80 Test" of ctest in its log.
show_progress() {
  local label=$1 log=$2 started=$SECONDS count
  while kill -0 $$ 2>/dev/null; do
    count=$(tail -c 4000 "$log" 2>/dev/null | grep -aoE '^ *\[?[0-9]+/[0-9]+(\]| Test)' | tail -n 1 | tr -dc '0-9/')
    printf '\r  %-46s %-11s %4d s' "$label" "$count" $((SECONDS - started))
    sleep 0.3
  done
}

# step LOG LABEL COMMAND...: runs a command with its output in build/log/LOG.log and prints one line when it is done.
# The status is the command's; who calls decides what to show of the log.
step() {
  local name=$1 label=$2 started=$SECONDS status=0 watcher='' note=''
  shift 2
  mkdir -p "$logs"
  if [ -t 1 ]; then
    show_progress "$label" "$logs/$name.log" &
    watcher=$!
  fi
  # In the foreground, so that Ctrl-C ends it.
  "$@" >"$logs/$name.log" 2>&1 </dev/null || status=$?
  if [ -n "$watcher" ]; then
    kill "$watcher"
    wait "$watcher" 2>/dev/null
    printf '\r\033[K'
  fi
  [ "$status" = 0 ] || note='  failed'
  printf '  %-58s %4d s%s\n' "$label" $((SECONDS - started)) "$note"
  return "$status"
}

# As step, but a failure shows the end of the log and ends the script.
must() {
  local name=$1
  step "$@" && return
  echo
  tail -n 40 "$logs/$name.log"
  echo
  echo "The whole output: $PWD/$logs/$name.log"
  exit 1
}

# Package lists are fetched only when the ones at hand do not do.
apt_install() {
  local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=120)
  "${apt[@]}" install --no-install-recommends "$@" && return
  "${apt[@]}" update && "${apt[@]}" install --no-install-recommends "$@"
}

# install_missing PACKAGE...
install_missing() {
  local package missing=()
  if ! command -v dpkg-query >/dev/null; then
    echo "  This is no Debian; it needs what these packages hold: $*"
    return
  fi
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} = 0 ] && return
  as_root=()
  if [ "$(id -u)" != 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Missing packages, which only root can install: ${missing[*]}" >&2
      exit 1
    fi
    sudo -v || exit 1 # asks for the password before output goes to a log
    as_root=(sudo)
  fi
  must packages "Install ${#missing[@]} packages" apt_install "${missing[@]}"
}

# build PRESET TARGET...: configures and builds; without targets, everything.
build() {
  local preset=$1
  shift
  must "configure-$preset" "Configure ($preset)" cmake --preset "$preset"
  must "build-$preset" "Build ($preset)" cmake --build --preset "$preset" -j "$jobs" ${1+--target "$@"}
}
