#!/bin/bash
# Every function that reads what comes from outside is called by a fuzz target, or stands in tests/fuzz/behind.txt with
# the target that reads the same bytes without it; and every view is drawn by one: fuzzed.sh TREE
#
# Such functions are those of headers whose names begin with read, parse, scan, open, outline, summarize, decode, import
# or from, and which give a Result or an optional.
set -u
cd "$1" || exit 1

targets=$(sed -n 's/^ *xov_fuzz(\([a-z0-9_]*\).*/\1/p; s/^ *xov_fuzz_views(\([a-z]*\) .*/views_\1/p' tests/fuzz/*/CMakeLists.txt)
words='read|parse|scan|open|outline|summarize|decode|import|from'
given='(XOV_EXPORT |static |\[\[nodiscard\]\] )*(Result|std::optional|std::vector<Result)<[^()]*>+ '

reading_functions() {
  grep -rhoP "^ *$given\K($words|parsed)[A-Za-z0-9]*(?=\()" src/XOV_Graphics apps/desk apps/xov apps/resources --include=*.h
}

failed=0
while read -r name; do
  # A name alone is that of a class's own function: its class stands in front of it where it is called.
  call="\\b$name(<|\\()"
  if [[ $name =~ ^(read|parse|fromJson)$ ]]; then call="::$name\\("; fi
  grep -rqP "$call" tests/fuzz --include=*.cpp --include=*.h && continue
  grep -rqP "\\b$name\\b" tests/fuzz --include=*.cpp && continue # by its address
  target=$(sed -n "s/^$name \([a-z0-9_]*\)\( .*\)*$/\1/p" tests/fuzz/behind.txt)
  [ -n "$target" ] && grep -qx "$target" <<<"$targets" && continue
  echo "$name: no fuzz target reads what it reads"
  failed=1
done < <(reading_functions | sort -u)

while read -r name _; do
  [ -z "$name" ] || [[ $name == \#* ]] || grep -qx "$name" < <(reading_functions) || {
    echo "tests/fuzz/behind.txt: there is no $name"
    failed=1
  }
done <tests/fuzz/behind.txt

views=$(sed -n '/^using AllViews/,/;/p' tests/views/all/AllViews.h | grep -oE '\b[A-Za-z0-9]+(View|View0[12]|Plot)\b' | sort -u)
for view in $views; do
  grep -qw "$view" tests/fuzz/views/CMakeLists.txt && continue
  echo "$view: no fuzz target draws it"
  failed=1
done
exit $failed
