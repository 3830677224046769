#!/usr/bin/env python3
"""wide_model.py FOLDER [ROWS]: a large model and a table for score_beside_libsvm.py, FOLDER/model.pmml and rows.csv.

784 fields, 6000 support vectors, 10 categories and so 45 machines, radial basis; numbers are random eighths, the same in
every run.
"""
import itertools
import random
import sys

FIELDS, VECTORS, CATEGORIES, GAMMA = 784, 6000, 10, 0.01


def names():
    return [f"x{k}" for k in range(1, FIELDS + 1)]


def write_model(out, draw):
    categories = [f"c{c}" for c in range(CATEGORIES)]
    print('<PMML xmlns="http://www.dmg.org/PMML-4_4" version="4.4"><Header/><DataDictionary>', file=out)
    for name in names():
        print(f'<DataField name="{name}" optype="continuous" dataType="double"/>', file=out)
    print('<DataField name="y" optype="categorical" dataType="string">', file=out)
    print(*[f'<Value value="{name}"/>' for name in categories], "</DataField></DataDictionary>", file=out)
    print('<SupportVectorMachineModel functionName="classification" svmRepresentation="SupportVectors"'
          ' classificationMethod="OneAgainstOne"><MiningSchema>', file=out)
    print(*[f'<MiningField name="{name}"/>' for name in names()], '<MiningField name="y" usageType="target"/>',
          f'</MiningSchema><RadialBasisKernelType gamma="{GAMMA}"/>', file=out)
    print(f'<VectorDictionary numberOfVectors="{VECTORS}"><VectorFields numberOfFields="{FIELDS}">', file=out)
    print(*[f'<FieldRef field="{name}"/>' for name in names()], "</VectorFields>", file=out)
    indices = " ".join(map(str, range(1, FIELDS + 1)))
    for vector in range(VECTORS):
        entries = " ".join(draw() for _ in range(FIELDS))
        print(f'<VectorInstance id="v{vector}"><REAL-SparseArray n="{FIELDS}"><Indices>{indices}</Indices>'
              f"<REAL-Entries>{entries}</REAL-Entries></REAL-SparseArray></VectorInstance>", file=out)
    print("</VectorDictionary>", file=out)
    # A vector belongs to the category that its number leaves as a remainder; a machine says its target below 0.
    for i, j in itertools.combinations(range(CATEGORIES), 2):
        members = [v for v in range(VECTORS) if v % CATEGORIES in (i, j)]
        print(f'<SupportVectorMachine targetCategory="c{i}" alternateTargetCategory="c{j}"><SupportVectors>', file=out)
        print(*[f'<SupportVector vectorId="v{v}"/>' for v in members], '</SupportVectors><Coefficients '
              f'absoluteValue="{draw()}">', file=out)
        signs = ["-" if v % CATEGORIES == i else "" for v in members]
        print(*[f'<Coefficient value="{sign}{draw()}"/>' for sign in signs],
              "</Coefficients></SupportVectorMachine>", file=out)
    print("</SupportVectorMachineModel></PMML>", file=out)


def main():
    folder, rows = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 1000
    source = random.Random(784)
    draw = lambda: str(source.randrange(1, 9) / 8)
    with open(folder + "/model.pmml", "w") as out:
        write_model(out, draw)
    with open(folder + "/rows.csv", "w") as out:
        print(*names(), sep=",", file=out)
        for _ in range(rows):
            print(*[draw() for _ in range(FIELDS)], sep=",", file=out)


main()
