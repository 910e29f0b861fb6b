#!/bin/sh
# Brings every source into the format of .clang-format; with --check it changes nothing and fails where one differs.
# The version is pinned, since every version of the tool formats a little differently.
set -eu
cd "$(dirname "$0")/.."
tool=${CLANG_FORMAT:-clang-format-14}

case ${1-} in
  '') how=-i ;;
  --check) how='--dry-run -Werror' ;;
  *) echo "usage: scripts/format.sh [--check]" >&2; exit 2 ;;
esac
command -v "$tool" >/dev/null || { echo "$tool is not installed" >&2; exit 77; }

# shellcheck disable=SC2086 # `how` holds two words
find apps bench cmake designer examples python src tests \
  \( -name '*.h' -o -name '*.cpp' \) -print0 2>/dev/null | xargs -0 "$tool" $how --style=file
