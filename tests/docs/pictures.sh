#!/bin/sh
# Each view that Qt Designer knows has an example of about forty lines, whose picture and text stand on its page, and the
# picture shows something: pictures.sh TREE SITE. 77: no tool for it.
set -eu
tree=$1 site=$2
command -v identify >/dev/null || exit 77
views=$(sed -n 's|^#include <XOV_Graphics/views/.*/\(.*\)\.h>$|\1|p' "$tree/designer/DesignerViews.cpp")
[ "$(echo "$views" | wc -l)" -gt 20 ]
for view in $views; do
  example=$tree/examples/views/$view.cpp
  [ -f "$example" ] || { echo "$view has no example"; exit 1; }
  lines=$(wc -l <"$example")
  [ "$lines" -le 50 ] || { echo "$example has $lines lines, which are no forty"; exit 1; }
  # Doxygen writes an underline within a name twice.
  page=$site/classxov_1_1$(echo "$view" | sed 's/_/__/g').html
  grep -q "src=\"view-$view.png\"" "$page" || { echo "$page shows no picture"; exit 1; }
  grep -q 'class="fragment"' "$page" || { echo "$page has no program"; exit 1; }
  grep -q "href=\"classxov_1_1$view.html\"" "$site/gallery.html" || { echo "$view is not in the gallery"; exit 1; }
  colors=$(identify -format %k "$site/view-$view.png")
  [ "$colors" -ge 2 ] || { echo "$site/view-$view.png is of one colour"; exit 1; }
done
