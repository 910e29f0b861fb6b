#!/bin/bash
# Runs every command line that documents show as code, each in a fresh copy of the example data, and looks at what it
# leaves behind:
#   documented.sh XOV_PROGRAM EXAMPLE_DATA DOCUMENT...
# A line that ends in & begins to serve, and goes on until all lines have run.
# In Markdown, code is what is indented by four blanks or fenced; in a man page, what .Dl shows.
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

command_lines() {
  awk '
    /^```/ { fenced = !fenced }
    /^    xov( |$)/ { sub(/^ +/, ""); print; next }
    /^\.Dl xov( |$)/ { sub(/^\.Dl /, ""); gsub(/\\&/, ""); print; next }
    fenced && /^xov( |$)/ { print }' "$@"
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
    *) echo "${words[1]}.png" ;;
  esac
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
  local line=$1 output status=0
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
  else
    [ -s "$folder/out" ] || { echo "nothing printed"; return 1; }
  fi
}

count=0 bad=0
while IFS= read -r line; do
  count=$((count + 1))
  if [[ $line == *\& ]]; then
    serve "$line" >"$folder/problem" && continue
    problem=$(cat "$folder/problem")
  elif problem=$(try "$line"); then
    continue
  fi
  bad=$((bad + 1))
  printf '%s\n  %s\n' "$line" "$problem"
  sed 's/^/  /' "$folder/err"
done < <(command_lines "$@")
echo "$count command lines, $bad of them bad"
[ "$bad" = 0 ] && [ "$count" -ge "$least" ]
