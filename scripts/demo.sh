#!/usr/bin/env bash
# The main job on the shipped sample data: `tsaw create` with the shipped sample Job on a temporary
# framework root seeded from the sample (never your own root or trash), then the Project Set's tree
# and the report; last, the template preprocessor on one shipped unit with logging on and off.
# Usage: scripts/demo.sh <path-to-tsaw>
set -euo pipefail

if [ $# -ne 1 ]; then
  echo "usage: $0 <path-to-tsaw>" >&2
  exit 2
fi
tsaw=$1
here="$(cd "$(dirname "$0")/.." && pwd)"
sample="$(cd "$(dirname "$tsaw")/.." && pwd)/share/tsaw/sample"
[ -d "$sample/TSA" ] || sample="$here/sample"

root="$(mktemp -d "${TMPDIR:-/tmp}/tsaw-demo-XXXXXX")"
trap 'rm -rf "$root"' EXIT
cp -r "$sample/TSA" "$root/TSA"
export XDG_DATA_HOME="$root/data"  # a trash of its own for the demo

echo "=== tsaw create --job Job.001.ini (root: a temporary copy of the sample data)"
"$tsaw" --root "$root" create --job "$root/TSA/Wizard/Jobs/Job.001.ini" \
  --set "Output.BaseFolder=$root/Projects"
echo
echo "=== The Project Set"
(cd "$root/Projects" && find . -mindepth 1 | sort | sed 's|^\./||')
echo
echo "=== Report.txt"
tr -d '\r' < "$root/TSA/Wizard/Report.txt"
echo

unit="$here/sample/demo/MainUnit.pas"
run() {
  local title=$1
  shift
  echo "=== MainUnit.pas, $title: tsaw preprocess $* MainUnit.pas"
  "$tsaw" preprocess "$@" "$unit" | tr -d '\r'
  echo
}
run "logging on" -D ddUseTLG=1 -D ddLogComments=1
run "logging off" -D ddUseTLG=0 -D ddLogComments=0
