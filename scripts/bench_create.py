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

The runs are made with --no-record, so that they time the creation itself; one
more series times the default, which also records the generation for `tsaw
update`.

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
    """N pairs of cp -r and tsaw create into fresh folders; the figures of each run."""
    target = os.path.join(scratch, "series")
    os.makedirs(target)
    env = dict(os.environ, XDG_DATA_HOME=os.path.join(scratch, "data"), SOURCE_DATE_EPOCH="1700000000")
    root = os.path.join(folder, "ours")
    job = os.path.join(root, "TSA", "Wizard", "Jobs", "Bench.ini")
    cp_runs, tsaw_runs = [], []
    for i in range(pairs):
        copy = lambda: cp_runs.append(
            timed(["cp", "-r", os.path.join(folder, "plain"), os.path.join(target, "cp%d" % i)]))
        create = lambda: tsaw_runs.append(
            timed([tsaw, "--root", root, "create", "--job", job] + ([] if record else ["--no-record"])
                  + ["--set", "Output.BaseFolder=" + os.path.join(target, "ours%d" % i)], env))
        # Each goes first in every other pair, so that neither always meets the file system's
        # state the other left.
        for run in ((copy, create) if i % 2 == 0 else (create, copy)):
            run()
    shutil.rmtree(target)
    return cp_runs, tsaw_runs


def ratios(cp_runs, tsaw_runs, which):
    return [t[which] / c[which] for c, t in zip(cp_runs, tsaw_runs) if c[which] > 0]


def megabytes(folder):
    total = 0
    for base, _, names in os.walk(os.path.join(folder, "plain")):
        total += sum(os.path.getsize(os.path.join(base, name)) for name in names)
    return total / 1e6


def main_workload(tsaw, work, pairs, scratch):
    folder = make_workload(work, 5000, 20)
    cp_runs, tsaw_runs = series(tsaw, folder, pairs, scratch)
    wall, cpu = ratios(cp_runs, tsaw_runs, 0), ratios(cp_runs, tsaw_runs, 1)
    size = megabytes(folder)
    median_tsaw = statistics.median(t[0] for t in tsaw_runs)
    print("tsaw create vs cp -r: 5,000 files (%.1f MB), 20 plug-ins, %d pairs" % (size, pairs))
    print("  wall  ratio median %.2fx  min %.2fx  max %.2fx   (tsaw %.3f s, cp %.3f s)"
          % (statistics.median(wall), min(wall), max(wall), median_tsaw,
             statistics.median(c[0] for c in cp_runs)))
    print("  cpu   ratio median %.2fx  min %.2fx  max %.2fx   (tsaw %.3f s, cp %.3f s user+sys)"
          % (statistics.median(cpu), min(cpu), max(cpu), statistics.median(t[1] for t in tsaw_runs),
             statistics.median(c[1] for c in cp_runs)))
    print("  peak RSS %.1f MB; %.0f MB/s of template" % (max(t[2] for t in tsaw_runs) / 1024.0,
                                                        size / median_tsaw))
    cp_runs, tsaw_runs = series(tsaw, folder, 3, scratch, record=True)
    print("  recorded for tsaw update (the default), 3 pairs: wall ratio median %.2fx, cpu %.2fx, peak RSS %.1f MB"
          % (statistics.median(ratios(cp_runs, tsaw_runs, 0)), statistics.median(ratios(cp_runs, tsaw_runs, 1)),
             max(t[2] for t in tsaw_runs) / 1024.0))


def scaling_rows(tsaw, work, pairs, scratch):
    print("scaling (median of %d pairs):" % pairs)
    print("  %-22s %9s %9s %7s %9s %9s" % ("workload", "tsaw s", "cp s", "ratio", "us/file", "peak MB"))
    for files, plugins in ((1000, 20), (5000, 20), (20000, 20), (200, 1), (200, 999)):
        folder = make_workload(work, files, plugins)
        cp_runs, tsaw_runs = series(tsaw, folder, pairs, scratch)
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
