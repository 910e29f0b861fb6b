#!/bin/bash
# What people start by hand, and no test runs as a whole, is at least a script that bash takes: scripts_parse.sh TREE
cd "$1" || exit 1
bad=0
for script in run test bench/run scripts/*.sh; do
  bash -n "$script" || bad=1
done
exit $bad
