#!/usr/bin/env bash
# Times `tsaw create` on the benchmark workload with and without recording the generation, and
# `tsaw update` of the same Project Set after 50 of its files were edited. Each figure is the
# median of RUNS runs (wall time, and user + system CPU time, which a loaded machine disturbs less).
# Usage: scripts/bench_update.sh <path-to-tsaw> [FILES] [RUNS] [make-workload.py]
set -euo pipefail

if [ $# -lt 1 ]; then
  echo "usage: $0 <path-to-tsaw> [FILES] [RUNS] [make-workload.py]" >&2
  exit 2
fi
tsaw=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
files=${2:-5000}
runs=${3:-3}
here=$(cd "$(dirname "$0")/.." && pwd)
workload=${4:-$here/../shared/bench/make-workload.py}
if [ ! -f "$workload" ]; then
  echo "$0: no workload generator at $workload (give its path as the fourth argument)" >&2
  exit 2
fi
work="$(mktemp -d "${TMPDIR:-/tmp}/tsaw-bench-update-XXXXXX")"
trap 'rm -rf "$work"' EXIT
export XDG_DATA_HOME="$work/data" SOURCE_DATE_EPOCH=1700000000

python3 "$workload" --files "$files" --size 8000 --plugins 4 --out "$work/wl" > /dev/null
root="$work/wl/ours"
job="$root/TSA/Wizard/Jobs/Bench.ini"

# timed NAME CMD...: runs CMD and appends "<wall> <user+sys>" to $work/NAME.
timed() {
  local name=$1
  shift
  /usr/bin/time -f "%e %U %S" -o "$work/time.txt" "$@" > /dev/null 2> "$work/stderr.txt" || {
    local status=$?
    [ "$status" -eq 3 ] || { cat "$work/stderr.txt" >&2; exit 1; }
  }
  awk '{ printf "%s %.2f\n", $1, $2 + $3 }' "$work/time.txt" >> "$work/$name"
}

# median NAME COLUMN
median() { sort -n -k"$2" "$work/$1" | awk -v c="$2" '{ v[NR] = $c } END { print v[int((NR + 1) / 2)] }'; }

# Every creation goes to a folder of its own and nothing is deleted until the end: on ext4,
# creating files soon after deleting many costs the kernel several times more, which would
# swamp what is measured here.
for i in $(seq "$runs"); do
  timed create-plain "$tsaw" --root "$root" create --job "$job" --no-record --set "Output.BaseFolder=$work/plain$i"
  out="$work/recorded$i"
  XDG_STATE_HOME="$work/state" timed create-recorded "$tsaw" --root "$root" create --job "$job" \
    --set "Output.BaseFolder=$out"
done

# 50 edited files of the last recorded creation, then the update (the template is unchanged, so
# every file is compared and kept; the store gains only the update's list of files).
export XDG_STATE_HOME="$work/state"
mapfile -t edited < <(find "$out" -name '*.pas' | sort | head -50)
for file in "${edited[@]}"; do printf '// edited by the developer\r\n' >> "$file"; done
for i in $(seq "$runs"); do
  timed update "$tsaw" --root "$root" update --job "$job" --set "Output.BaseFolder=$out"
done

plain_wall=$(median create-plain 1) plain_cpu=$(median create-plain 2)
rec_wall=$(median create-recorded 1) rec_cpu=$(median create-recorded 2)
python3 - "$files" "$runs" "$plain_wall" "$plain_cpu" "$rec_wall" "$rec_cpu" "$(median update 1)" "$(median update 2)" <<'PY'
import sys
files, runs = sys.argv[1], sys.argv[2]
pw, pc, rw, rc, uw, uc = map(float, sys.argv[3:])
print("%s files, median of %s runs:" % (files, runs))
print("  tsaw create --no-record   %6.2f s wall %6.2f s CPU" % (pw, pc))
print("  tsaw create (recording)   %6.2f s wall %6.2f s CPU  (%+.0f %% wall, %+.0f %% CPU)"
      % (rw, rc, 100 * (rw - pw) / pw if pw else 0, 100 * (rc - pc) / pc if pc else 0))
print("  tsaw update, 50 edited    %6.2f s wall %6.2f s CPU" % (uw, uc))
PY
