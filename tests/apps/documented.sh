#!/bin/bash
# Runs every command line that documents show as code, each in a fresh copy of the example data, and looks at what it
# leaves behind:
#   documented.sh XOV_PROGRAM EXAMPLE_DATA DOCUMENT...
# A line that ends in & begins to serve, and goes on until all lines have run; one that ends in \ goes on in the next.
# In Markdown, code is what is indented by four blanks or fenced; in a man page, what .Dl shows.
# A picture that a line writes has to look like the one of that name in images/ beside the document, if there is one.
# Of the guide, no picture lies there that no line makes or that has more than 60 KB. With XOV_NEW_PICTURES=1 in the environment the pictures in
# images/ are replaced instead where they look otherwise. What reads --like-this in a document's prose has to be an
# option of a command.
set -u
xov=$1 data=$2
shift 2
least=20 # lines; fewer mean that they are not found
folder=$(mktemp -d)
servers=()
leave() {
  local server
  for server in "${servers[@]}"; do
    kill -- "-$server" 2>/dev/null # the group, with what the line has started
  done
  rm -rf "$folder"
}
trap leave EXIT
mkdir "$folder/bin"
ln -s "$xov" "$folder/bin/xov"
export PATH=$folder/bin:$PATH
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM

# "FILE<tab>LINE" of each command line.
command_lines() {
  awk '
    function show() { if (line ~ /\\$/) sub(/ *\\$/, "", line); else { print FILENAME "\t" line; line = "" } }
    line != "" { sub(/^ +/, ""); line = line " " $0; show(); next }
    /^```/ { fenced = !fenced }
    /^    xov( |$)/ { sub(/^ +/, ""); line = $0; show(); next }
    /^\.Dl xov( |$)/ { sub(/^\.Dl /, ""); gsub(/\\&/, ""); line = $0; show(); next }
    fenced && /^xov( |$)/ { line = $0; show() }' "$@"
}

# The options that prose names in backticks and that no command has.
unknown_options() {
  local command
  awk '/^```/ { fenced = !fenced; next } !fenced && !/^    /' "$@" | grep -oE '`(xov[^`]* )?--[a-z][^`]*`' |
    grep -oE '(`| )--[a-z0-9-]+' | tr -d '` ' | sort -u >"$folder/named"
  for command in '' $("$xov" --help | awk '/^Subcommands/ { on = 1; next } on && /^  [a-z]/ { print $1 }'); do
    "$xov" $command --help
  done | grep -oE -- '--[a-z0-9-]+' | sort -u >"$folder/options"
  comm -23 "$folder/named" "$folder/options"
}

# The file that a line writes: what it names, as a pattern where the name has fields, or a picture named after the
# command.
output_of() {
  local words=($1) i
  for ((i = 0; i < ${#words[@]}; i++)); do
    [[ ${words[i]} == -o || ${words[i]} == --output ]] && sed "s/'//g; s/{[a-z]*}/*/g" <<<"${words[i + 1]}" && return
  done
  case ${words[1]} in
    info | resources | help) ;;
    hist) [[ $1 == *' --dump'* ]] || echo hist.png ;;
    *) echo "${words[1]}.png" ;;
  esac
}

# Fails where the picture is another one than that of the document.
compare_picture() {
  local made=$1 kept=$2 off
  cmp -s "$made" "$kept" && return
  # Levels that libraries of the system round otherwise are no other picture: a pixel in 5000 may be more than 8 off.
  off=$(compare -metric AE -fuzz 3.2% "$made" "$kept" null: 2>&1) || true
  if [[ $off =~ ^[0-9]+$ ]] && ((off * 5000 <= $(identify -format '%w*%h' "$kept"))); then return; fi
  [ -n "${XOV_NEW_PICTURES-}" ] && cp "$made" "$kept" && return
  echo "draws another picture than $kept: $off pixels; XOV_NEW_PICTURES=1 replaces it"
  return 1
}

# Begins to serve, in a copy of the data of its own.
serve() {
  local place=$folder/served${#servers[@]}
  cp -r "$data" "$place"
  (cd "$place" && exec setsid bash -c "${1%&}" >"$place.out" 2>"$folder/err" </dev/null) &
  servers+=($!)
  for _ in $(seq 200); do
    grep -q 'serving on port' "$place.out" && return
    kill -0 $! 2>/dev/null || break
    sleep 0.05
  done
  echo "does not serve"
  return 1
}

# Fails with what is wrong.
try() {
  local line=$1 images=$2 output status=0
  rm -rf "$folder/data"
  cp -r "$data" "$folder/data"
  (cd "$folder/data" && bash -o pipefail -c "$line" >"$folder/out" 2>"$folder/err" </dev/null) || status=$?
  [ "$status" = 0 ] || { echo "exit status $status"; return 1; }
  sed -i '/: connected, SeedLink [34]$/d' "$folder/err"
  [ ! -s "$folder/err" ] || { echo "something on standard error"; return 1; }
  output=$(output_of "$line")
  if [ -n "$output" ]; then
    # shellcheck disable=SC2086 # a pattern
    [ -s "$(ls -d "$folder/data/"$output 2>/dev/null | head -1)" ] || { echo "no file $output"; return 1; }
    if [ -e "$images/$output" ]; then
      echo "$images/$output" >>"$folder/compared"
      compare_picture "$folder/data/$output" "$images/$output" || return 1
    fi
  else
    [ -s "$folder/out" ] || { echo "nothing printed"; return 1; }
  fi
}

count=0 bad=0
: >"$folder/compared"
while IFS=$'\t' read -r document line; do
  count=$((count + 1))
  if [[ $line == *\& ]]; then
    serve "$line" >"$folder/problem" && continue
    problem=$(cat "$folder/problem")
  elif problem=$(try "$line" "$(dirname "$document")/images"); then
    continue
  fi
  bad=$((bad + 1))
  printf '%s: %s\n  %s\n' "$document" "$line" "$problem"
  sed 's/^/  /' "$folder/err"
done < <(command_lines "$@")

for document in "$@"; do
  case $document in */docs/guide/*) ls -d "$(dirname "$document")"/images/* 2>/dev/null ;; esac
done | sort -u >"$folder/pictures"
while IFS= read -r picture; do
  [ "$(stat -c %s "$picture")" -gt 61440 ] || continue
  bad=$((bad + 1))
  echo "$picture: more than 60 KB"
done <"$folder/pictures"
while IFS= read -r picture; do
  bad=$((bad + 1))
  echo "$picture: no command line of the page makes it"
done < <(sort -u "$folder/compared" | comm -23 "$folder/pictures" -)
prose=()
for document in "$@"; do
  [[ $document != *.md ]] || prose+=("$document")
done
while IFS= read -r option; do
  bad=$((bad + 1))
  echo "$option: no command has this option"
done < <(unknown_options "${prose[@]}")
echo "$count command lines, $bad of them bad"
[ "$bad" = 0 ] && [ "$count" -ge "$least" ]
