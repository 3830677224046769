#!/usr/bin/python3
"""Scores every example's cases.csv from its model.pmml alone and compares with what the trainer said in expected.csv.

It shares no code with the scripts that wrote the files. Decisions must agree within 1e-12 of the scale that the table
gives, predictions exactly, probabilities within PROBABILITY_TOLERANCE. Exits with 1 when anything differs.
"""

import csv
import math
import sys
import xml.etree.ElementTree as ET
from pathlib import Path

import numpy as np

EXAMPLES = Path(__file__).resolve().parent.parent
PMML = "{http://www.dmg.org/PMML-4_4}"
EXTENDER = "ZARN"
DECISION_TOLERANCE = 1e-12
PROBABILITY_TOLERANCE = 1e-10


def read_table(path):
    with open(path, encoding="utf-8", newline="") as file:
        rows = csv.DictReader(file, strict=True)
        return rows.fieldnames, list(rows)


def number_list(text):
    return [float(token) for token in text.split()]


class Document:
    """What a scorer needs of a document, read element by element."""

    def __init__(self, path):
        root = ET.parse(path).getroot()
        self.model = root.find(PMML + "SupportVectorMachineModel")
        self.categories = {field.get("name"): [value.get("value") for value in field.findall(PMML + "Value")]
                           for field in root.iter(PMML + "DataField")}
        roles = {field.get("name"): field.get("usageType") for field in self.model.iter(PMML + "MiningField")}
        self.target = next(name for name, role in roles.items() if role == "target")
        self.columns = list(self.model.find(f"{PMML}VectorDictionary/{PMML}VectorFields"))
        self.vectors = {each.get("id"): self._vector(each) for each in self.model.iter(PMML + "VectorInstance")}
        self.machines = self.model.findall(PMML + "SupportVectorMachine")
        self.max_wins = self.model.get("maxWins") == "true"
        self.threshold = float(self.model.get("threshold", "0"))
        self.one_against_one = self.model.get("classificationMethod") == "OneAgainstOne"
        self.extensions = [self._extension(machine) for machine in self.machines]

    def _vector(self, instance):
        array = instance.find(PMML + "REAL-SparseArray")
        indices = [int(token) - 1 for token in array.find(PMML + "Indices").text.split()]
        entries = number_list(array.find(PMML + "REAL-Entries").text)
        if len(indices) != len(entries) or sorted(set(indices)) != indices or int(array.get("n")) != len(self.columns):
            raise ValueError(f"vector {instance.get('id')} is malformed")
        vector = np.zeros(len(self.columns))
        vector[indices] = entries
        return vector

    @staticmethod
    def _extension(machine):
        first = machine.find(PMML + "Extension")
        return first if first is not None and first.get("extender") == EXTENDER else None

    def inputs(self, rows):
        """One row of the vector space per case."""
        return np.array([[self._entry(column, row) for column in self.columns] for row in rows])

    def _entry(self, column, row):
        if column.tag == PMML + "FieldRef":
            return float(row[column.get("field")])
        text = row[column.get("name")]
        if text not in self.categories[column.get("name")]:
            raise ValueError(f"'{text}' is no category of {column.get('name')}")
        return float(text == column.get("value"))

    def kernel(self, cases, vector):
        for tag, kernel in {"LinearKernelType": lambda _: cases @ vector,
                            "PolynomialKernelType": lambda p: (p("gamma") * (cases @ vector) + p("coef0")) ** p("degree"),
                            "RadialBasisKernelType": lambda p: np.exp(-p("gamma") * ((cases - vector) ** 2).sum(axis=1)),
                            "SigmoidKernelType": lambda p: np.tanh(p("gamma") * (cases @ vector) + p("coef0"))}.items():
            element = self.model.find(PMML + tag)
            if element is not None:
                return kernel(lambda name: float(element.get(name, "1")))
        raise ValueError("the document names no kernel")

    def decisions(self, cases):
        """Cases by machines, and the same sums taken of absolute values."""
        kernels = {name: self.kernel(cases, vector) for name, vector in self.vectors.items()}
        sums, sizes = [], []
        for machine in self.machines:
            names = [each.get("vectorId") for each in machine.iter(PMML + "SupportVector")]
            values = [float(each.get("value")) for each in machine.iter(PMML + "Coefficient")]
            bias = float(machine.find(PMML + "Coefficients").get("absoluteValue"))
            if not names or len(names) != len(values):
                raise ValueError("a machine needs one coefficient per support vector, and one at least")
            products = np.array([kernels[name] * value for name, value in zip(names, values)])
            sums.append(products.sum(axis=0) + bias)
            sizes.append(np.abs(products).sum(axis=0) + abs(bias))
        return np.array(sums).T, np.array(sizes).T


def vote(document, categories, decisions):
    """The category of one case without probabilities."""
    if len(categories) > 2 and not document.one_against_one:
        extreme = np.argmax(decisions) if document.max_wins else np.argmin(decisions)
        return document.machines[extreme].get("targetCategory")
    votes = [0] * len(categories)
    for machine, f in zip(document.machines, decisions):
        threshold = float(machine.get("threshold", document.threshold))
        hit = f > threshold if document.max_wins else threshold > f
        chosen = machine.get("targetCategory" if hit else "alternateTargetCategory")
        votes[categories.index(chosen)] += 1
    return categories[votes.index(max(votes))]


def pair_matrix(document, categories, decisions):
    r = np.zeros((len(categories), len(categories)))
    for extension, f in zip(document.extensions, decisions):
        pair = extension.find(PMML + "ResponseCategory")
        i, j = categories.index(pair.get("response")), categories.index(pair.get("nonresponse"))
        sigmoid = extension.find(PMML + "ProbabilityParam")
        x = float(sigmoid.get("A")) * f + float(sigmoid.get("B"))
        p = math.exp(-x) / (1 + math.exp(-x)) if x > 0 else 1 / (1 + math.exp(x))
        r[i, j] = min(max(p, 1e-7), 1 - 1e-7)
        r[j, i] = 1 - r[i, j]
    return r


def couple(r):
    """Pairwise coupling by fixed-point iteration: Wu, Lin and Weng (2004), JMLR 5, algorithm 2."""
    k = len(r)
    if k == 2:
        return np.array([r[0, 1], r[1, 0]])
    q = -r.T * r
    np.fill_diagonal(q, (r**2).sum(axis=0))
    p = np.full(k, 1 / k)
    for _ in range(100):
        for t in range(k):
            p[t] = (p @ q @ p - (q[t] @ p - q[t, t] * p[t])) / q[t, t]
            p /= p.sum()
        if np.abs(q @ p - p @ q @ p).max() < 0.005 / k:
            break
    return p


class Report:
    def __init__(self, name):
        self.name, self.differences, self.worst = name, 0, {}

    def differs(self, row, what, got, wanted):
        self.differences += 1
        if self.differences <= 5:
            print(f"{self.name} row {row}: {what} is {got}, the trainer says {wanted}")

    def near(self, row, what, got, wanted, size, tolerance):
        error = abs(got - wanted) / size
        kind = what.split("_")[0]
        self.worst[kind] = max(self.worst.get(kind, 0), error)
        if not error <= tolerance:
            self.differs(row, what, got, wanted)


def check_row(report, document, row, decisions, sizes, expected):
    for k, (f, size) in enumerate(zip(decisions, sizes), 1):
        scale = float(expected[f"scale_{k}"])
        report.near(row, f"decision_{k}", f, float(expected[f"decision_{k}"]), scale, DECISION_TOLERANCE)
        report.near(row, f"scale_{k}", size, scale, scale, 1e-5)
    categories = document.categories[document.target]
    if document.model.get("functionName") == "regression":
        report.near(row, "predicted", decisions[0], float(expected["predicted"]), float(expected["scale_1"]),
                    DECISION_TOLERANCE)
        deviation = float(document.extensions[0].find(PMML + "StandardDeviation").text)
        report.near(row, "stddev", deviation, float(expected["stddev"]), 1, 0)
        return
    if document.extensions[-1] is None:
        predicted = vote(document, categories, decisions)
    else:
        p = couple(pair_matrix(document, categories, decisions))
        predicted = categories[int(np.argmax(p))]
        for category, value in zip(categories, p):
            report.near(row, f"probability_{category}", value, float(expected[f"probability_{category}"]), 1,
                        PROBABILITY_TOLERANCE)
    if predicted != expected["predicted"]:
        report.differs(row, "predicted", predicted, expected["predicted"])


def expected_header(document):
    header = ["predicted"]
    for k in range(1, len(document.machines) + 1):
        header += [f"decision_{k}", f"scale_{k}"]
    if document.extensions[-1] is not None:
        categories = document.categories[document.target]
        header += [f"probability_{category}" for category in categories] or ["stddev"]
    return header


def check(folder):
    document = Document(folder / "model.pmml")
    report = Report(folder.name)
    _, cases = read_table(folder / "cases.csv")
    header, expected = read_table(folder / "expected.csv")
    if header != expected_header(document) or len(cases) != len(expected) or not cases:
        report.differs(0, "table", f"{header}, {len(expected)} rows", f"{expected_header(document)}, {len(cases)} rows")
        return report
    decisions, sizes = document.decisions(document.inputs(cases))
    for row, wanted in enumerate(expected):
        check_row(report, document, row + 1, decisions[row], sizes[row], wanted)
    worst = ", ".join(f"{kind} {error:.1e}" for kind, error in report.worst.items())
    print(f"{folder.name}: {len(cases)} rows, {report.differences} differences; worst: {worst}")
    return report


def main():
    folders = sorted(path.parent for path in EXAMPLES.glob("*/model.pmml"))
    reports = [check(folder) for folder in folders]
    sys.exit(0 if reports and not any(report.differences for report in reports) else 1)


if __name__ == "__main__":
    main()
