#!/usr/bin/env bash
# Times `tsaw create` on a generated template of FILES files of about 8 KB (most of them Delphi
# sources full of variable references and template directives, some binary) against `cp -r` of
# the same tree, and measures the peak memory of the run at FILES and at FILES/5 files.
# Usage: scripts/bench_create.sh <path-to-tsaw> [FILES]
set -euo pipefail

if [ $# -lt 1 ]; then
  echo "usage: $0 <path-to-tsaw> [FILES]" >&2
  exit 2
fi
tsaw=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
files=${2:-5000}
work="$(mktemp -d "${TMPDIR:-/tmp}/tsaw-bench-XXXXXX")"
trap 'rm -rf "$work"' EXIT
export XDG_DATA_HOME="$work/data" SOURCE_DATE_EPOCH=1700000000

# make_root ROOT COUNT: a framework root whose one template holds COUNT files.
make_root() {
  python3 - "$1" "$2" <<'PY'
import os, random, sys
root, count = sys.argv[1], int(sys.argv[2])
wizard = os.path.join(root, "TSA", "Wizard")
tpl = os.path.join(wizard, "Templates", "Bench", "Big")
os.makedirs(os.path.join(wizard, "Jobs"), exist_ok=True)
os.makedirs(tpl, exist_ok=True)
targets = ["Delphi.5.Win32", "Delphi.6.Win32", "Delphi.7.Win32", "Delphi.8.VclNet", "Delphi.8.NetFcl",
           "Delphi.2005.Win32", "Delphi.2005.VclNet", "Delphi.2005.NetFcl", "Delphi.2006.Win32",
           "Delphi.2006.VclNet", "Delphi.2006.NetFcl", "Delphi.2007.Win32", "Delphi.2007.VclNet",
           "Delphi.2007.NetFcl", "TurboDelphi.2006.Win32", "TurboDelphi.2006.VclNet",
           "TurboDelphi.2006.NetFcl", "Chrome.NetFcl"]
with open(os.path.join(tpl, "Template.ini"), "w") as ini:
    ini.write("[Template]\nName=Big\nPrefix=T900\nAuthor=Bench\nPurpose=Bench\nDesc=Bench\nPluginCount=2\n")
    ini.write("[Default Values]\nProduct.Name=Bench Product\nProjects.Prefix=Bench\n")
    ini.write("Output.BaseFolder=%s\n" % os.path.join(root, "out"))
    for key in targets:
        ini.write("%s=%s\n" % (key, "R" if key == "Delphi.7.Win32" else "D"))
rng = random.Random(1)
block = ("  {$IFDEF ddUseTLG}Log('#Product.Name# vrProjects_Prefix');{$ENDIF}\n"
         "  {$IFNDEF ddLogComments}// #Company.Name# by #Author#{$ELSE}x := 1;{$ENDIF}\n"
         "  Result := vrHost_ProjectName + '#Manager.DeepName#'; { plain code line padding }\n")
pas = "unit vrProjects_Prefix_Unit;\ninterface\nimplementation\n" + block * 40 + "end.\n"
for i in range(count):
    folder = os.path.join(tpl, "Delphi 7", "Win32", "Host", "Units%02d" % (i // 100))
    os.makedirs(folder, exist_ok=True)
    kind = i % 10
    if kind == 9:
        with open(os.path.join(folder, "data%05d.bin" % i), "wb") as f:
            f.write(bytes(rng.getrandbits(8) for _ in range(8192)))
    elif kind == 8:
        with open(os.path.join(folder, "Note%05d.txt" % i), "w") as f:
            f.write(("#Product.Name# note line without much else to say about it\n") * 130)
    else:
        with open(os.path.join(folder, "T900_Unit%05d.pas" % i), "w") as f:
            f.write(pas)
PY
}

# peak_and_time CMD...: runs CMD, prints "<seconds> <peak KB>".
peak_and_time() {
  if [ -x /usr/bin/time ]; then
    /usr/bin/time -f "%e %M" -o "$work/time.txt" "$@" > /dev/null
    cat "$work/time.txt"
  else
    python3 - "$@" <<'PY'
import resource, subprocess, sys, time
start = time.monotonic()
subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL, check=True)
print("%.2f %d" % (time.monotonic() - start, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss))
PY
  fi
}

bench() {
  local count=$1 root="$work/root$1"
  make_root "$root" "$count"
  local tree="$root/TSA/Wizard/Templates/Bench/Big"
  sync
  read -r cp_s _ < <(peak_and_time cp -r "$tree" "$work/cp$count")
  read -r create_s create_kb < <(peak_and_time "$tsaw" --root "$root" create --template Bench/Big)
  local size
  size=$(du -sh "$tree" | cut -f1)
  python3 - "$count" "$size" "$cp_s" "$create_s" "$create_kb" <<'PY'
import sys
count, size, cp_s, create_s, kb = sys.argv[1], sys.argv[2], float(sys.argv[3]), float(sys.argv[4]), int(sys.argv[5])
ratio = create_s / cp_s if cp_s > 0 else float("inf")
print("%6s files (%s): cp -r %.2f s, tsaw create %.2f s (%.1fx cp -r), peak memory %.1f MB"
      % (count, size, cp_s, create_s, ratio, kb / 1024.0))
PY
}

bench $((files / 5))
bench "$files"
