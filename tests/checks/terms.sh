#!/bin/bash
# Every file of the tree has its terms, and NOTICE names what is shipped of others: terms.sh TREE. 77: no tool for it.
cd "$1" || exit 1
for file in resources/*; do
  name=${file##*/}
  [ "$name" = README.md ] || grep -qwF "$name" NOTICE || {
    echo "NOTICE does not say where $file comes from"
    exit 1
  }
done
command -v reuse >/dev/null || exit 77
reuse lint
