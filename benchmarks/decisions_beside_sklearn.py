#!/usr/bin/env python3
"""decisions_beside_sklearn.py BREVIX [ROWS]: `brevix score` beside scikit-learn's batch `decision_function`.

One run for each of two models, trained here on random numbers: 4 columns with three classes, and 784 columns with ten. Both
score the same rows, in turns, five times. scikit-learn has the rows as a matrix in memory and gives decision values;
brevix runs on one thread, reads a table from a file, and writes labels and shares of votes to one. Ends with exit code 1
where a prediction differs. Needs numpy and scikit-learn (Debian: python3-sklearn).
"""
import csv
import os
import statistics
import subprocess
import sys
import tempfile
import time
import xml.sax.saxutils

import numpy
from sklearn.svm import SVC


def write_model(path, model, columns):
    # scikit-learn's decision value of a pair (i, j) is positive for i: its negative is for j.
    counts = numpy.concatenate([[0], numpy.cumsum(model.n_support_)])
    classes = [str(name) for name in model.classes_]
    with open(path, "w") as out:
        print('<PMML version="4.2" xmlns="http://www.dmg.org/PMML-4_2"><Header/><DataDictionary>', file=out)
        for column in columns:
            print(f'<DataField name="{column}" optype="continuous" dataType="double"/>', file=out)
        print('<DataField name="class" optype="categorical" dataType="string">', file=out)
        for name in classes:
            print(f'<Value value="{xml.sax.saxutils.escape(name)}"/>', file=out)
        print('</DataField></DataDictionary><SupportVectorMachineModel functionName="classification" '
              'maxWins="true" classificationMethod="OneAgainstOne" svmRepresentation="SupportVectors"><MiningSchema>',
              file=out)
        for column in columns:
            print(f'<MiningField name="{column}"/>', file=out)
        print(f'<MiningField name="class" usageType="target"/></MiningSchema>'
              f'<RadialBasisKernelType gamma="{model._gamma!r}"/>'
              f'<VectorDictionary numberOfVectors="{len(model.support_)}"><VectorFields '
              f'numberOfFields="{len(columns)}">', file=out)
        for column in columns:
            print(f'<FieldRef field="{column}"/>', file=out)
        print('</VectorFields>', file=out)
        indices = " ".join(str(k + 1) for k in range(len(columns)))
        for v, vector in enumerate(model.support_vectors_):
            entries = " ".join(repr(float(x)) for x in vector)
            print(f'<VectorInstance id="{v}"><REAL-SparseArray n="{len(columns)}"><Indices>{indices}</Indices>'
                  f'<REAL-Entries>{entries}</REAL-Entries></REAL-SparseArray></VectorInstance>', file=out)
        print('</VectorDictionary>', file=out)
        pair = 0
        for i in range(len(classes)):
            for j in range(i + 1, len(classes)):
                vectors = [*range(counts[i], counts[i + 1]), *range(counts[j], counts[j + 1])]
                weights = [float(model.dual_coef_[j - 1 if v < counts[i + 1] else i, v]) for v in vectors]
                print(f'<SupportVectorMachine targetCategory="{classes[i]}" alternateTargetCategory="{classes[j]}" '
                      f'threshold="0"><SupportVectors>', file=out)
                print("".join(f'<SupportVector vectorId="{v}"/>' for v in vectors), file=out)
                print(f'</SupportVectors><Coefficients absoluteValue="{float(model.intercept_[pair])!r}">', file=out)
                print("".join(f'<Coefficient value="{w!r}"/>' for w in weights), file=out)
                print('</Coefficients></SupportVectorMachine>', file=out)
                pair += 1
        print('</SupportVectorMachineModel></PMML>', file=out)


def make_subject(folder, name, columns, classes, trained, rows):
    random = numpy.random.default_rng(7)
    centres = random.uniform(0.3, 0.7, (classes, columns))
    targets = random.integers(0, classes, trained)
    examples = numpy.round(centres[targets] + random.normal(0.0, 0.2, (trained, columns)), 3)
    model = SVC(kernel="rbf", gamma=1.0 / columns, C=10.0, decision_function_shape="ovo")
    model.fit(examples, numpy.array([f"class{k}" for k in targets]))
    model._gamma = float(model._gamma)
    cases = numpy.round(centres[random.integers(0, classes, rows)] + random.normal(0.0, 0.2, (rows, columns)), 3)
    names = [f"x{k}" for k in range(columns)]
    write_model(f"{folder}/{name}.pmml", model, names)
    with open(f"{folder}/{name}.csv", "w", newline="") as out:
        writer = csv.writer(out)
        writer.writerow(names)
        writer.writerows(cases.tolist())
    return model, cases


def elapsed(action):
    start = time.monotonic()
    action()
    return time.monotonic() - start


def compare(brevix, folder, name, model, cases):
    table, scores = f"{folder}/{name}.csv", f"{folder}/{name}.out"
    command = [brevix, "score", f"{folder}/{name}.pmml", table, "-o", scores, "--quiet", "--no-progress", "--threads", "1"]
    times = [(elapsed(lambda: model.decision_function(cases)), elapsed(lambda: subprocess.run(command, check=True)))
             for _ in range(5)]
    with open(scores, newline="") as rows:
        ours = [row["predicted_class"] for row in csv.DictReader(rows)]
    if ours != model.predict(cases).tolist():
        sys.exit(f"{name}: brevix predicts something else")
    theirs, mine = (statistics.median(column) / len(cases) * 1e6 for column in zip(*times))
    print(f"| {name} | {len(model.support_)} | {len(cases)} | {theirs:.2f} | {mine:.2f} | {theirs / mine:.1f} |")


def main():
    os.environ["OMP_NUM_THREADS"] = "1"
    brevix, rows = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 100000
    print("| model | vectors | rows | decision_function, us a row | brevix score, us a row | ratio |")
    print("|---|---:|---:|---:|---:|---:|")
    with tempfile.TemporaryDirectory() as folder:
        for name, columns, classes, trained, count in (("4 columns", 4, 3, 400, rows), ("784 columns", 784, 10, 2000, rows // 50)):
            subject = name.replace(" ", "_")
            compare(brevix, folder, subject, *make_subject(folder, subject, columns, classes, trained, count))


main()
