#!/usr/bin/env python3
"""score_beside_libsvm.py BREVIX [ROWS | FOLDER]: `brevix score` beside svm-predict with the same model, on iris rows or on
FOLDER's rows.csv with its model.pmml (wide_model.py makes one).

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
sys.path.insert(0, str(ROOT / "benchmarks"))
import libsvm_files


def measure(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.monotonic()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return time.monotonic() - start, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def demand_same(scores, labels, categories):
    with open(scores) as ours, open(labels) as theirs:
        next(ours)
        for row, (mine, other) in enumerate(zip(ours, theirs), 1):
            if mine.split(",")[0] != categories[int(float(other))]:
                sys.exit(f"row {row}: brevix says {mine.strip()}, svm-predict {other.strip()}")


def prepare(wanted, folder):
    if os.path.isdir(wanted):
        return wanted + "/model.pmml", wanted + "/rows.csv"
    table = folder + "/rows.csv"
    with open(table, "w") as out:
        subprocess.run([sys.executable, ROOT / "examples/generate/make_rows.py", wanted], check=True, stdout=out)
    return str(ROOT / "examples/iris/model.pmml"), table


def main():
    brevix, wanted = sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else "1000000"
    with tempfile.TemporaryDirectory() as folder:
        scores, labels = folder + "/scores.csv", folder + "/labels"
        model, table = prepare(wanted, folder)
        subprocess.run([sys.executable, ROOT / "benchmarks/libsvm_files.py", model, table, folder], check=True)
        score = [brevix, "score", model, table, "-o", scores, "--quiet", "--no-progress", "--threads"]
        commands = {
            "svm-predict": ["svm-predict", "-q", folder + "/rows.svm", folder + "/model.svm", labels],
            "brevix, 1 thread": score + ["1"],
            "brevix, all threads": score + [str(os.cpu_count())],
        }
        times = {name: [] for name in commands}
        for _ in range(5):
            for name, command in commands.items():
                # A file that replaces another waits for the disk.
                pathlib.Path(labels if name == "svm-predict" else scores).unlink(missing_ok=True)
                times[name].append(measure(command))
        demand_same(scores, labels, libsvm_files.read_model(model)[0])
    medians = {name: [statistics.median(column) for column in zip(*runs)] for name, runs in times.items()}
    elapsed, processor = medians["svm-predict"]
    print("| | seconds | ratio | processor seconds | ratio |\n|---|---:|---:|---:|---:|")
    for name, (seconds, used) in medians.items():
        print(f"| {name} | {seconds:.2f} | {elapsed / seconds:.1f} | {used:.2f} | {processor / used:.1f} |")


main()
