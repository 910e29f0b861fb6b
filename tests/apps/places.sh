#!/bin/bash
# Draws the gallery's pictures again as they are drawn elsewhere, and compares them byte for byte with those of the C
# locale in UTC: in twelve locales (digits, separators of decimals and groups, the Turkish i), five zones, and without the
# variables of a desktop; and without any twin of Helvetica, where lines and boxes must lie as they did.
#   places.sh XOV_PROGRAM EXAMPLE_DATA          each picture in one other place, chosen in turn
#   places.sh XOV_PROGRAM EXAMPLE_DATA --all    each picture in every place
# Locales that are not installed are made with localedef in a folder of our own; where that is not possible Qt still
# takes them from their names, and the C library stays with C.
set -u
xov=$(realpath "$1") data=$(realpath "$2") all=${3-}
root=$(cd "$(dirname "$0")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$folder

locales=(ar_EG fa_IR tr_TR de_DE fr_FR ru_RU hi_IN zh_CN ja_JP th_TH my_MM sw_KE)
zones=(Asia/Kathmandu America/St_Johns Pacific/Apia Africa/Monrovia No/Such_Zone)

export LOCPATH=$folder/locales
mkdir "$LOCPATH"
made=0
if command -v localedef >/dev/null && [ -d /usr/share/i18n/locales ]; then
  for locale in "${locales[@]}"; do
    localedef -i "$locale" -f UTF-8 "$LOCPATH/$locale.UTF-8" >/dev/null 2>&1 && made=$((made + 1))
  done
fi
echo "$made of ${#locales[@]} locales are known to the C library"

# Fonts of other proportions only: a folder with copies of one family that is no twin.
mkdir "$folder/fonts"
fc-list ':family=C059' file 2>/dev/null | sed 's/: *$//' | while read -r font; do cp "$font" "$folder/fonts/"; done
cat >"$folder/fonts.conf" <<CONF
<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig><dir>$folder/fonts</dir><cachedir>$folder/font-cache</cachedir></fontconfig>
CONF

# draw OUTPUT VARIABLE=VALUE... -- WORDS...: the same words elsewhere.
draw() {
  local output=$1 elsewhere=()
  shift
  while [ "$1" != -- ]; do
    elsewhere+=("$1")
    shift
  done
  shift
  (cd "$data" && env "${elsewhere[@]}" "$xov" "$@" -o "$output" 2>"$output.errors") || {
    echo "FAILED: ${elsewhere[*]} xov $*: $(cat "$output.errors")"
    return 1
  }
}

# What lies where, without texts.
lines_of() { sed -E 's,<text[^>]*>[^<]*</text>,,g' "$1" | grep -oE '<(path|rect|line|polyline|polygon|circle)[^>]*>'; }
# The texts, wherever they are; without names of phases, which are left out where letters of another width leave them no
# room beside each other.
texts_of() { grep -oE '<text[^>]*>[^<]*</text>' "$1" | sed -E 's,<[^>]*>,,g' | grep -vxE 'P|S|LQ|LR' | sort; }

bad=0 compared=0 row=0 turn=0 short_maps=0
while IFS='|' read -r name _ arguments; do
  words=()
  cd "$data" && eval "words=($arguments)"
  plain=$folder/$name.svg
  case $arguments in *--image*|*--topo*) short=$((short_maps >= 1)) short_maps=1 ;; *) short=0 ;; esac
  [ -z "$all" ] && [ "$short" = 1 ] && continue # a large picture takes as long as ten others
  turn=$((turn + 1))
  [ -z "$all" ] && [ $((turn % 2)) = 0 ] && continue
  draw "$plain" LC_ALL=C TZ=UTC -- "${words[@]}" || { bad=$((bad + 1)); continue; }
  places=()
  for locale in "${locales[@]}"; do places+=("LC_ALL=$locale.UTF-8 TZ=UTC"); done
  for zone in "${zones[@]}"; do places+=("LC_ALL=C TZ=$zone"); done
  places+=("-u HOME -u XDG_RUNTIME_DIR -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_CACHE_HOME LC_ALL=C TZ=UTC")
  [ -n "$all" ] || places=("${places[$((row % ${#places[@]}))]}")
  row=$((row + 1))
  for place in "${places[@]}"; do
    case $place,$arguments in
      *"TZ="[A-TV-Z]*,*--zone-name*|*"TZ="[A-TV-Z]*,monitor*) continue ;; # these show the zone's own time
    esac
    other=$folder/other.svg
    # shellcheck disable=SC2086 # several words
    draw "$other" $place -- "${words[@]}" || { bad=$((bad + 1)); continue; }
    compared=$((compared + 1))
    cmp -s "$plain" "$other" && continue
    echo "FAILED: $name is another picture with $place"
    diff <(tr '>' '\n' <"$plain") <(tr '>' '\n' <"$other") | head -4
    bad=$((bad + 1))
  done
  if [ -n "$(ls "$folder/fonts")" ] && { [ -n "$all" ] || [ $((row % 6)) = 0 ]; }; then
    draw "$folder/other.svg" LC_ALL=C TZ=UTC FONTCONFIG_FILE="$folder/fonts.conf" -- "${words[@]}" || bad=$((bad + 1))
    compared=$((compared + 1))
    cmp -s <(texts_of "$plain") <(texts_of "$folder/other.svg") || { echo "FAILED: $name has other texts without Helvetica"; bad=$((bad + 1)); }
    # Boxes around texts are as wide as these; all else lies where it lay.
    lines_of "$plain" >"$folder/lines" && lines_of "$folder/other.svg" >"$folder/other-lines"
    case $arguments in
      *--legend*|*-labels*|fk*|map*|spectrum*|monitor*)
        [ "$(wc -l <"$folder/lines")" = "$(wc -l <"$folder/other-lines")" ] ;;
      *) [ -s "$folder/lines" ] && cmp -s "$folder/lines" "$folder/other-lines" ;;
    esac || { echo "FAILED: the lines of $name lie elsewhere without Helvetica"; bad=$((bad + 1)); }
  fi
done < <("$root/scripts/gallery.sh" --rows)
[ "$compared" -ge 15 ] || { echo "FAILED: only $compared pictures were compared"; bad=$((bad + 1)); }
echo "$compared pictures compared, $bad differ"
[ "$bad" = 0 ]
