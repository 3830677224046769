#!/usr/bin/python3
"""ratios.py RESULT.json: the medians of a run with repetitions, each beside its baselines, as a table in Markdown.

A baseline is named after its subject: BM_Subject_baseline/30 stands beside BM_Subject/30; or it is in BASELINES. The
ratio is the subject's median of processor time over the baseline's: below 1, the subject is faster.
"""

import json
import sys

BASELINES = {"BM_BuildDom_": "BM_Translate_"}  # first words of a baseline and of its subject


def medians(path):
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    if any(run.get("error_occurred") for run in runs):
        sys.exit("a benchmark failed")
    found = {run["run_name"]: (run["cpu_time"], run["time_unit"]) for run in runs
             if run.get("aggregate_name") == "median"}
    if not found:
        sys.exit("no medians: run with --benchmark_repetitions=5")
    return found


def baselines(subject, names):
    family, _, argument = subject.partition("/")
    for name in names:
        other_family, _, other_argument = name.partition("/")
        if other_argument != argument:
            continue
        if other_family.startswith(family + "_"):
            yield name, other_family[len(family) + 1:]
        for words, its_subject in BASELINES.items():
            if other_family.startswith(words) and other_family.replace(words, its_subject, 1) == family:
                yield name, words.removeprefix("BM_").rstrip("_")


def in_order(name):
    family, _, argument = name.partition("/")
    return family, int(argument) if argument.isdecimal() else 0, argument


def short(time):
    return f"{time:.0f}" if time >= 100 else f"{time:.3g}"


def main(arguments):
    if len(arguments) != 1:
        sys.exit("usage: ratios.py RESULT.json")
    found = medians(arguments[0])
    print("| benchmark | median | baseline | its median | ratio |\n|---|---:|---|---:|---:|")
    for subject in sorted(found, key=in_order):
        time, unit = found[subject]
        for name, kind in sorted(baselines(subject, found)):
            other, other_unit = found[name]
            if other_unit != unit:
                sys.exit(f"{subject} and {name} have different units")
            print(f"| `{subject.removeprefix('BM_')}` | {short(time)} {unit} | `{kind}` | {short(other)} {unit} "
                  f"| {time / other:.2f} |")


if __name__ == "__main__":
    main(sys.argv[1:])
