#!/usr/bin/env bash
# Runs every fuzz harness of the build folder $1 for FUZZ_SECONDS seconds each (default 60),
# FUZZ_JOBS of them side by side (default 1). A crash, a hang (one input over 5 s) or an
# out-of-memory (over 1 GB) fails the script; the input is kept in fuzz/regressions/<harness>/,
# which every build's tests replay. Corpora grow in $1/corpus/<harness>, seeded from fuzz/seeds
# and the sample data.
set -uo pipefail
build=$1
seconds=${FUZZ_SECONDS:-60}
jobs=${FUZZ_JOBS:-1}
root=$(cd "$(dirname "$0")/.." && pwd)
sample="$root/sample"

# harness:file patterns from the sample data that seed it
seeds=(
  "preprocessor:*.pas *.dpr *.inc"
  "ini_file:*.ini *.txt"
  "expansion:"
  "text_decoding:*.txt *.pas *.dfm"
  "template_ini:Template.ini"
  "job_loading:*.ini"
  "dfm_identity:*.dfm"
  "project_settings:*.cfg *.dof *.bdsproj *.dproj"
  "create_run:"
)
dict_of() { case $1 in preprocessor|project_settings) echo directives ;; *) echo variables ;; esac; }

# Fuzzes one harness; its one-line verdict goes to $build/fuzz-<harness>.verdict.
fuzz_one() {
  local entry=$1 harness=${1%%:*}
  local corpus="$build/corpus/$harness" regressions="$root/fuzz/regressions/$harness"
  local log="$build/fuzz-$harness.log" verdict="$build/fuzz-$harness.verdict"
  mkdir -p "$corpus" "$regressions"
  for pattern in ${entry#*:}; do
    find "$sample" -type f -name "$pattern" -size -64k -exec cp -n {} "$corpus/" \; 2>/dev/null
  done
  "$build/fuzz/fuzz_$harness" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=1024 -max_len=16384 \
    -dict="$root/fuzz/dicts/$(dict_of "$harness").dict" -artifact_prefix="$regressions/" \
    "$corpus" "$root/fuzz/seeds/$harness" >"$log" 2>&1
  local result=$? runs
  runs=$(grep -o 'Done [0-9]* runs in [0-9]* second' "$log" | tail -1)
  if [ $result -eq 0 ]; then
    echo "fuzz $harness: ${runs:-no summary}, no finding" >"$verdict"
  else
    echo "fuzz $harness: FINDING (exit $result); the input is in fuzz/regressions/$harness/, see $log" >"$verdict"
  fi
}

running=0
for entry in "${seeds[@]}"; do
  rm -f "$build/fuzz-${entry%%:*}.verdict"
  fuzz_one "$entry" &
  running=$((running + 1))
  if [ "$running" -ge "$jobs" ]; then
    wait -n
    running=$((running - 1))
  fi
done
wait

status=0
for entry in "${seeds[@]}"; do
  verdict="$build/fuzz-${entry%%:*}.verdict"
  if [ -s "$verdict" ]; then cat "$verdict"; else echo "fuzz ${entry%%:*}: no verdict"; fi
  grep -q "no finding" "$verdict" 2>/dev/null || status=1
done
exit $status
