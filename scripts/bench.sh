#!/usr/bin/env bash
# Runs every benchmark program built in <build-dir> (those named *_bench) and prints their figures.
# Usage: scripts/bench.sh <build-dir>
set -euo pipefail

if [ $# -ne 1 ]; then
  echo "usage: $0 <build-dir>" >&2
  exit 2
fi
build=$1

mapfile -t programs < <(find "$build" -type f -name '*_bench' -perm -u+x | sort)
if [ ${#programs[@]} -eq 0 ]; then
  echo "$0: no benchmark programs in $build (configure with -DTSAW_BUILD_BENCHMARKS=ON)" >&2
  exit 1
fi
for program in "${programs[@]}"; do
  echo "=== $(basename "$program")"
  "$program"
  echo
done
