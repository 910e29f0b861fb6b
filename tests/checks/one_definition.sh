#!/bin/bash
# Types of the library have names of their own: two headers that give one name to two types are never seen together by a
# compiler, while the linker keeps one of the functions that are made for both, such as those of a vector of them.
#   one_definition.sh ROOT
set -u
cd "$1/src" || exit 1
# Each name once a header, which may choose between two definitions.
defined=$(grep -roE '^(struct|class|union|enum class|enum) (XOV_EXPORT )?[A-Za-z0-9_]+( final)?( :.*)? ?\{' --include='*.h' . |
  sed -E 's/^([^:]*):(struct|class|union|enum class|enum) (XOV_EXPORT )?([A-Za-z0-9_]+).*/\4 \1/' | sort -u)
[ "$(wc -l <<<"$defined")" -gt 200 ] || { echo "found too few types"; exit 1; }
twice=$(cut -d ' ' -f 1 <<<"$defined" | uniq -d)
[ -z "$twice" ] || { echo "defined in two headers:"; grep -wF "$twice" <<<"$defined"; exit 1; }
