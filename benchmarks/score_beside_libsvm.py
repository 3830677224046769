#!/usr/bin/env python3
"""score_beside_libsvm.py BREVIX [ROWS]: `brevix score` on iris rows beside svm-predict with the same model.

Both read a table from a file and write every row's prediction to a file, in turns, five times. brevix runs on one
thread and on all. Ends with exit code 1 where a prediction differs.
"""
import os
import pathlib
import resource
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
MODEL = ROOT / "examples/iris/model.pmml"
CATEGORIES = ["setosa", "versicolor", "virginica"]


def measure(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.monotonic()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return time.monotonic() - start, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def demand_same(scores, labels):
    with open(scores) as ours, open(labels) as theirs:
        next(ours)
        for row, (mine, other) in enumerate(zip(ours, theirs), 1):
            if mine.split(",")[0] != CATEGORIES[int(float(other))]:
                sys.exit(f"row {row}: brevix says {mine.strip()}, svm-predict {other.strip()}")


def main():
    brevix, rows = sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else "1000000"
    with tempfile.TemporaryDirectory() as folder:
        table, scores, labels = folder + "/rows.csv", folder + "/scores.csv", folder + "/labels"
        with open(table, "w") as out:
            subprocess.run([sys.executable, ROOT / "examples/generate/make_rows.py", rows], check=True, stdout=out)
        subprocess.run([sys.executable, ROOT / "benchmarks/libsvm_files.py", MODEL, table, folder], check=True)
        score = [brevix, "score", str(MODEL), table, "-o", scores, "--quiet", "--no-progress", "--threads"]
        commands = {
            "svm-predict": ["svm-predict", "-q", folder + "/rows.svm", folder + "/model.svm", labels],
            "brevix, 1 thread": score + ["1"],
            "brevix, all threads": score + [str(os.cpu_count())],
        }
        times = {name: [] for name in commands}
        for _ in range(5):
            for name, command in commands.items():
                times[name].append(measure(command))
        demand_same(scores, labels)
    medians = {name: [statistics.median(column) for column in zip(*runs)] for name, runs in times.items()}
    elapsed, processor = medians["svm-predict"]
    print("| | seconds | ratio | processor seconds | ratio |\n|---|---:|---:|---:|---:|")
    for name, (seconds, used) in medians.items():
        print(f"| {name} | {seconds:.2f} | {elapsed / seconds:.1f} | {used:.2f} | {processor / used:.1f} |")


main()
