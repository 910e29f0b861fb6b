#!/bin/bash
# Installs the packages in a Debian 12 of their own, uses them as trial.sh does, removes them and looks for what is left:
#   clean_root.sh PACKAGES TREE FOLDER [MIRROR]
# As root, with a network the first time: the system and what the packages need are kept in FOLDER. Without MIRROR the
# one of debootstrap. Not a part of ./test.
set -eu
packages=$(realpath "$1") tree=$(realpath "$2")
mkdir -p "$3"
folder=$(realpath "$3")
mirror=(${4+"$4"})
root=$folder/root

[ "$(id -u)" = 0 ] || {
  echo "Only root can make a root." >&2
  exit 1
}

inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
trap 'umount "$root/proc" 2>/dev/null' EXIT

# A fresh one each time, out of what was fetched.
if [ ! -e "$folder/base.tar" ]; then
  rm -rf "$root"
  debootstrap --variant=minbase bookworm "$root" "${mirror[@]}"
  tar -C "$root" -cf "$folder/base.tar.part" . && mv "$folder/base.tar.part" "$folder/base.tar"
fi
rm -rf "$root"
mkdir -p "$root" "$folder/archives"
tar -C "$root" -xf "$folder/base.tar"
mount -t proc proc "$root/proc"
cp /etc/resolv.conf "$root/etc/"
cp -r "$folder/archives/." "$root/var/cache/apt/archives/"
# Debian's own hook would delete what is to be kept.
rm -f "$root/etc/apt/apt.conf.d/docker-clean"

# What they need, by their own word, and what a program is built with; then all that is there before they come.
names=() needs=''
for package in "$packages"/*.deb; do names+=("$(dpkg-deb -f "$package" Package)"); done
for package in "$packages"/*.deb; do needs+="$(dpkg-deb -f "$package" Depends), "; done
needs=$(tr ',' '\n' <<<"$needs" | grep -vE "^ *($(IFS='|' && echo "${names[*]}"))( |$)" | grep '[^ ]' | sort -u | paste -sd ,)
inside apt-get -q update
inside apt-get -q -y --no-install-recommends satisfy "$needs"
inside apt-get -q -y --no-install-recommends install cmake file g++ ninja-build
cp -rn "$root/var/cache/apt/archives/." "$folder/archives/"
inside find / -xdev -path /proc -prune -o -path /var/lib/dpkg -prune -o -path /tmp -prune -o -print | sort >"$folder/before"

mkdir "$root/tmp/packages"
cp "$packages"/*.deb "$root/tmp/packages/"
# Nothing else may be needed: without a network.
inside sh -c 'dpkg -i /tmp/packages/*.deb'

mkdir "$root/tmp/tree" "$root/tmp/drawn"
tar -C "$tree" -c README.md CMakeLists.txt resources tests/fuzz/mseed/corpus tests/package | tar -C "$root/tmp/tree" -x
inside chown 65534 /tmp/drawn
inside setpriv --reuid 65534 --clear-groups env HOME=/tmp/drawn QT_QPA_PLATFORM=offscreen bash /tmp/tree/tests/package/trial.sh \
  /tmp/tree /tmp/drawn
# Python keeps what root imports.
inside env QT_QPA_PLATFORM=offscreen HOME=/tmp python3 -c 'import xov'
# To be looked at.
rm -rf "$folder/drawn"
mv "$root/tmp/drawn" "$folder/"

inside dpkg --purge "${names[@]}"
inside find / -xdev -path /proc -prune -o -path /var/lib/dpkg -prune -o -path /tmp -prune -o -print | sort >"$folder/after"
diff "$folder/before" "$folder/after" || {
  echo "The packages leave these behind (>) or took them away (<)."
  exit 1
}
echo "They were installed, used, and removed without a trace."
