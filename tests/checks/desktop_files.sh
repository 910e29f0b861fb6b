#!/bin/sh
# What tells a desktop of the program: desktop_files.sh TREE WORK_FOLDER
# Exits 77, which ctest counts as skipped, where none of the tools is installed.
set -u
folder=$1/apps/desk/freedesktop
work=$2
looked=0

fail() { echo "FAILED: $1"; exit 1; }

if command -v desktop-file-validate >/dev/null 2>&1; then
  looked=1
  said=$(desktop-file-validate "$folder/org.xov.Desk.desktop" 2>&1) && [ -z "$said" ] || fail "$said"
fi
if command -v appstreamcli >/dev/null 2>&1; then
  looked=1
  said=$(appstreamcli validate --no-net "$folder/org.xov.Desk.metainfo.xml" 2>&1) || fail "$said"
fi
if command -v update-mime-database >/dev/null 2>&1; then
  looked=1
  rm -rf "$work"
  mkdir -p "$work/packages"
  cp "$folder/org.xov.Desk.mime.xml" "$work/packages/org.xov.Desk.xml"
  said=$(update-mime-database "$work" 2>&1) || fail "$said"
  grep -q '\*\.mseed' "$work/globs" || fail "no glob of miniSEED files: $said"
fi
[ $looked = 1 ] || { echo "skipped: neither desktop-file-validate nor appstreamcli is installed"; exit 77; }

# Each kind of file of the one is known to the others.
types=$(sed -n 's/^MimeType=//p' "$folder/org.xov.Desk.desktop" | tr ';' '\n' | grep '^application/')
[ -n "$types" ] || fail "the desktop entry names no kind of file"
for type in $types; do
  grep -q "type=\"$type\"" "$folder/org.xov.Desk.mime.xml" || fail "$type is not described"
  grep -q ">$type<" "$folder/org.xov.Desk.metainfo.xml" || fail "$type is not in the metadata"
done
echo "desktop files are as they should be"
