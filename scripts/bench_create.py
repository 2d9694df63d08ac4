#!/usr/bin/env python3
"""Times `tsaw create` against `cp -r` of the same template tree.

Usage: scripts/bench_create.py TSAW [--pairs N] [--work DIR] [--rows]

The workloads come from the shared workload generator (make-workload.py, found
beside the repository as ../shared/bench/, or named by $TSAW_WORKLOAD_TOOL).
They are made once and kept under --work, since they are deterministic.

For the main workload (5,000 files of about 8 KB, 20 plug-ins) it prints the
ratio of tsaw's time to cp's over N pairs of runs (median, min, max; wall and
user+sys CPU) and the peak memory of the run.  Each pair writes into fresh
folders of one series, and nothing is deleted until the series ends: on ext4,
creating files right after deleting many of them is several times slower (for
some minutes the kernel passes over the inodes freed last when it looks for a
free one).  cp and tsaw take turns at going first in a pair.

The runs are made with --no-record, so that they time the creation itself.  In
the same rounds tsaw also runs with the default, which records the generation
for `tsaw update`; the cost of recording is the median of each round's
recorded / --no-record ratio, so that a machine slowing down or speeding up
during the series does not enter it.  The generation store lives in the
scratch folder and goes with it.

With --rows it also prints the scaling rows: 1,000, 5,000 and 20,000 files,
and 200 files with 1 and with 999 plug-ins.
"""

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))


def workload_tool():
    tool = os.environ.get("TSAW_WORKLOAD_TOOL")
    if tool:
        return tool
    return os.path.join(HERE, "..", "..", "shared", "bench", "make-workload.py")


def make_workload(work, files, plugins, size=8192):
    """The folder of a workload, made unless an earlier run made it."""
    folder = os.path.join(work, "w%d-%d-%d" % (files, size, plugins))
    if os.path.exists(os.path.join(folder, "workload.json")):
        return folder
    print("  (making the workload of %d files, %d plug-ins)" % (files, plugins), flush=True)
    subprocess.run([sys.executable, workload_tool(), "--files", str(files), "--size", str(size),
                    "--plugins", str(plugins), "--out", folder, "--force"],
                   check=True, stdout=subprocess.DEVNULL)
    return folder


def timed(argv, env=None):
    """Runs argv; returns (wall seconds, user+sys seconds, peak KB)."""
    start = time.perf_counter()
    process = subprocess.Popen(argv, env=env, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - start
    stderr = process.stderr.read().decode(errors="replace")
    process.stderr.close()
    if os.waitstatus_to_exitcode(status) != 0:
        sys.exit("bench: %s failed:\n%s" % (" ".join(argv), stderr))
    return wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss


def series(tsaw, folder, pairs, scratch, record=False):
    """N rounds of cp -r and tsaw create --no-record (and, with `record`, tsaw create) into fresh
    folders; the figures of each run, by kind."""
    target = os.path.join(scratch, "series")
    os.makedirs(target)
    env = dict(os.environ, XDG_DATA_HOME=os.path.join(scratch, "data"),
               XDG_STATE_HOME=os.path.join(scratch, "state"), SOURCE_DATE_EPOCH="1700000000")
    root = os.path.join(folder, "ours")
    job = os.path.join(root, "TSA", "Wizard", "Jobs", "Bench.ini")
    runs = {"cp": [], "tsaw": [], "recorded": []}

    def copy(i):
        runs["cp"].append(timed(["cp", "-r", os.path.join(folder, "plain"), os.path.join(target, "cp%d" % i)]))

    def create(kind, options):
        return lambda i: runs[kind].append(
            timed([tsaw, "--root", root, "create", "--job", job] + options
                  + ["--set", "Output.BaseFolder=" + os.path.join(target, "%s%d" % (kind, i))], env))

    kinds = [copy, create("tsaw", ["--no-record"])] + ([create("recorded", [])] if record else [])
    for i in range(pairs):
        # Each goes first in turn, so that none always meets the file system's state another left.
        for k in range(len(kinds)):
            kinds[(i + k) % len(kinds)](i)
    shutil.rmtree(target)
    return runs


def ratios(cp_runs, tsaw_runs, which):
    return [t[which] / c[which] for c, t in zip(cp_runs, tsaw_runs) if c[which] > 0]


def megabytes(folder):
    total = 0
    for base, _, names in os.walk(os.path.join(folder, "plain")):
        total += sum(os.path.getsize(os.path.join(base, name)) for name in names)
    return total / 1e6


def main_workload(tsaw, work, pairs, scratch):
    folder = make_workload(work, 5000, 20)
    runs = series(tsaw, folder, pairs, scratch, record=True)
    cp_runs, tsaw_runs, recorded_runs = runs["cp"], runs["tsaw"], runs["recorded"]
    wall, cpu = ratios(cp_runs, tsaw_runs, 0), ratios(cp_runs, tsaw_runs, 1)
    size = megabytes(folder)
    median_tsaw = statistics.median(t[0] for t in tsaw_runs)
    print("tsaw create vs cp -r: 5,000 files (%.1f MB), 20 plug-ins, %d rounds" % (size, pairs))
    print("  wall  ratio median %.2fx  min %.2fx  max %.2fx   (tsaw %.3f s, cp %.3f s)"
          % (statistics.median(wall), min(wall), max(wall), median_tsaw,
             statistics.median(c[0] for c in cp_runs)))
    print("  cpu   ratio median %.2fx  min %.2fx  max %.2fx   (tsaw %.3f s, cp %.3f s user+sys)"
          % (statistics.median(cpu), min(cpu), max(cpu), statistics.median(t[1] for t in tsaw_runs),
             statistics.median(c[1] for c in cp_runs)))
    print("  peak RSS %.1f MB; %.0f MB/s of template" % (max(t[2] for t in tsaw_runs) / 1024.0,
                                                        size / median_tsaw))
    cost = [100 * (r - 1) for r in ratios(tsaw_runs, recorded_runs, 0)]
    cpu_cost = [100 * (r - 1) for r in ratios(tsaw_runs, recorded_runs, 1)]
    print("  recorded for tsaw update (the default): wall ratio median %.2fx, peak RSS %.1f MB;"
          % (statistics.median(ratios(cp_runs, recorded_runs, 0)), max(t[2] for t in recorded_runs) / 1024.0))
    print("    recording costs %+.1f %% wall (median of the rounds; min %+.1f %%, max %+.1f %%), %+.1f %% cpu"
          % (statistics.median(cost), min(cost), max(cost), statistics.median(cpu_cost)))


def scaling_rows(tsaw, work, pairs, scratch):
    print("scaling (median of %d pairs):" % pairs)
    print("  %-22s %9s %9s %7s %9s %9s" % ("workload", "tsaw s", "cp s", "ratio", "us/file", "peak MB"))
    for files, plugins in ((1000, 20), (5000, 20), (20000, 20), (200, 1), (200, 999)):
        folder = make_workload(work, files, plugins)
        runs = series(tsaw, folder, pairs, scratch)
        cp_runs, tsaw_runs = runs["cp"], runs["tsaw"]
        tsaw_s = statistics.median(t[0] for t in tsaw_runs)
        print("  %-22s %9.3f %9.3f %6.2fx %9.1f %9.1f"
              % ("%d files x %d plug-ins" % (files, plugins), tsaw_s,
                 statistics.median(c[0] for c in cp_runs), statistics.median(ratios(cp_runs, tsaw_runs, 0)),
                 1e6 * tsaw_s / files, max(t[2] for t in tsaw_runs) / 1024.0))


def main():
    parser = argparse.ArgumentParser(description="Time tsaw create against cp -r.")
    parser.add_argument("tsaw")
    parser.add_argument("--pairs", type=int, default=5)
    parser.add_argument("--work", default=os.path.join(os.environ.get("TMPDIR", "/tmp"), "tsaw-bench-workloads"))
    parser.add_argument("--rows", action="store_true", help="also print the scaling rows")
    args = parser.parse_args()
    tsaw = os.path.abspath(args.tsaw)
    os.makedirs(args.work, exist_ok=True)
    scratch = os.path.join(args.work, "run-%d" % os.getpid())
    try:
        os.makedirs(scratch)
        main_workload(tsaw, args.work, args.pairs, scratch)
        if args.rows:
            scaling_rows(tsaw, args.work, max(1, args.pairs // 2 + 1), scratch)
    finally:
        shutil.rmtree(scratch, ignore_errors=True)


if __name__ == "__main__":
    main()
