#!/usr/bin/python3
"""Trains the example models and writes model.pmml, cases.csv and expected.csv of each; README.md says how to rerun it.

Every row of a data set becomes a case; the machines are trained on two rows of every three, so that a third of the
cases are new to them.
"""

import csv
import sys
from pathlib import Path

import numpy as np
from sklearn.datasets import load_breast_cancer, load_diabetes, load_digits, load_iris, load_wine

import trainers
from pmml_writer import Column, DataField, Kernel, Machine, Model, shortest, write_pmml

EXAMPLES = Path(__file__).resolve().parent.parent


def training_rows(x):
    return [row for row in range(len(x)) if row % 3 != 2]


def numeric_fields(names):
    return [DataField(str(name)) for name in names]


def machine_categories(fitted, k, categories, max_wins):
    """Target and alternate of machine k, so that a positive decision picks the category it speaks for."""
    positive = categories[fitted.positive[k]]
    if fitted.negative[k] < 0:
        return positive, None
    negative = categories[fitted.negative[k]]
    return (positive, negative) if max_wins else (negative, positive)


def build_machines(fitted, categories, max_wins):
    machines = []
    for k, terms in enumerate(fitted.terms):
        machine = Machine([(f"r{row + 1}", value) for row, value in terms], fitted.biases[k],
                          standard_deviation=fitted.laplace)
        if categories:
            machine.target, machine.alternate = machine_categories(fitted, k, categories, max_wins)
        if fitted.sigmoid:
            machine.probability = (categories[fitted.positive[k]], categories[fitted.negative[k]], *fitted.sigmoid[k])
        machines.append(machine)
    return machines


def decision_scales(fitted, x, kernel):
    """Per row and machine: the sum of |coefficient * K| plus |bias|, the size against which rounding is judged."""
    scales = []
    for terms, bias in zip(fitted.terms, fitted.biases):
        rows, coefficients = zip(*terms)
        products = trainers.kernel_matrix(kernel, x, x[list(rows)]) * np.array(coefficients)
        scales.append(np.abs(products).sum(axis=1) + abs(bias))
    return np.array(scales).T


def write_table(path, header, rows):
    with open(path, "w", encoding="utf-8", newline="") as out:
        writer = csv.writer(out, lineterminator="\n")
        writer.writerow(header)
        writer.writerows([cell if isinstance(cell, str) else shortest(cell) for cell in row] for row in rows)


def write_expected(path, fitted, scales, categories):
    header = ["predicted"]
    for k in range(1, len(fitted.terms) + 1):
        header += [f"decision_{k}", f"scale_{k}"]
    header += [f"probability_{category}" for category in categories or [] if fitted.probabilities is not None]
    header += ["stddev"] if fitted.laplace is not None else []
    rows = []
    for r, predicted in enumerate(fitted.predicted):
        row = [categories[predicted] if categories else predicted]
        for decision, scale in zip(fitted.decisions[r], scales[r]):
            row += [decision, float(f"{scale:.6g}")]
        row += list(fitted.probabilities[r]) if fitted.probabilities is not None else []
        row += [fitted.laplace] if fitted.laplace is not None else []
        rows.append(row)
    write_table(path, header, rows)


def write_example(name, fitted, kernel, x, target, inputs, *, columns=None, cases=None, case_header=None,
                  one_against_one=False, max_wins=False):
    """`x` holds the vector space's columns; `cases` the table, where it is not the same."""
    used = sorted({row for terms in fitted.terms for row, _ in terms})
    model = Model(name, fitted.application, target, inputs, columns or [Column(each.name) for each in inputs], kernel,
                  {f"r{row + 1}": x[row] for row in used},
                  build_machines(fitted, target.categories, max_wins), one_against_one, max_wins)
    folder = EXAMPLES / name
    folder.mkdir(exist_ok=True)
    write_pmml(model, folder / "model.pmml")
    write_table(folder / "cases.csv", case_header or [each.name for each in inputs], x if cases is None else cases)
    write_expected(folder / "expected.csv", fitted, decision_scales(fitted, x, kernel), target.categories)
    print(f"{name}: {len(x)} cases, {len(model.machines)} machines, {len(used)} vectors")


def iris():
    data = load_iris()
    kernel = Kernel("rbf", gamma=0.3125)
    fitted = trainers.sklearn_one_against_one(data.data, data.target, training_rows(data.data), kernel, 2.5)
    write_example("iris", fitted, kernel, data.data, DataField("species", data.target_names.tolist()),
                  numeric_fields(data.feature_names), one_against_one=True)


def iris_one_against_all():
    """The table has more than the model's inputs: a running number in front and the true species at the end."""
    data = load_iris()
    kernel = Kernel("rbf", gamma=0.4375)
    fitted = trainers.sklearn_one_against_all(data.data, data.target, training_rows(data.data), kernel, 4.0)
    species = data.target_names.tolist()
    cases = [[row + 1, *values, species[data.target[row]]] for row, values in enumerate(data.data)]
    write_example("iris_one_against_all", fitted, kernel, data.data, DataField("species", species),
                  numeric_fields(data.feature_names), cases=cases,
                  case_header=["flower", *data.feature_names, "species"], max_wins=True)


def breast_cancer():
    data = load_breast_cancer()
    kernel = Kernel("linear")
    fitted = trainers.sklearn_one_against_one(data.data, data.target, training_rows(data.data), kernel, 0.01)
    write_example("breast_cancer", fitted, kernel, data.data, DataField("diagnosis", data.target_names.tolist()),
                  numeric_fields(data.feature_names), max_wins=True)


def breast_cancer_probability():
    data = load_breast_cancer()
    kernel = Kernel("sigmoid", gamma=2.0**-24, coef0=0.25)
    fitted = trainers.libsvm_probability(data.data, data.target, training_rows(data.data), kernel, 100.0)
    write_example("breast_cancer_probability", fitted, kernel, data.data,
                  DataField("diagnosis", data.target_names.tolist()), numeric_fields(data.feature_names),
                  one_against_one=True)


def digits():
    data = load_digits()
    kernel = Kernel("poly", gamma=2.0**-9, coef0=0.5, degree=3)
    fitted = trainers.sklearn_one_against_one(data.data, data.target, training_rows(data.data), kernel, 0.5)
    write_example("digits", fitted, kernel, data.data, DataField("digit", [str(name) for name in data.target_names]),
                  numeric_fields(data.feature_names), one_against_one=True, max_wins=True)


def diabetes():
    data = load_diabetes()
    kernel = Kernel("rbf", gamma=8.0)
    fitted = trainers.libsvm_regression(data.data, data.target, training_rows(data.data), kernel, 100.0, 10.0)
    write_example("diabetes", fitted, kernel, data.data, DataField("progression"), numeric_fields(data.feature_names))


def wine_probability():
    data = load_wine()
    training = training_rows(data.data)
    gamma = float(1 / (data.data.shape[1] * data.data[training].var()))
    kernel = Kernel("rbf", gamma=gamma)
    fitted = trainers.libsvm_probability(data.data, data.target, training, kernel, 10000.0)
    write_example("wine_probability", fitted, kernel, data.data, DataField("cultivar", data.target_names.tolist()),
                  numeric_fields(data.feature_names), one_against_one=True)


WINE_BINS = {"alcohol": ([12.5, 13.5], ["low", "mid", "high, very"]),
             "color_intensity": ([3.5, 6.0], ["pale", "medium", "très foncé"])}


def wine_binned():
    """Two of the measurements are cut into named categories, each of which is a column of its own."""
    data = load_wine()
    inputs, columns, blocks, tables = [], [], [], []
    for name, values in zip(data.feature_names, data.data.T):
        edges, categories = WINE_BINS.get(name, (None, None))
        inputs.append(DataField(name, categories))
        if categories is None:
            columns.append(Column(name))
            blocks.append(values[:, None])
            tables.append(values.tolist())
            continue
        bins = np.digitize(values, edges)
        columns += [Column(name, category) for category in categories]
        blocks.append(np.eye(len(categories))[bins])
        tables.append([categories[index] for index in bins])
    x = np.hstack(blocks)
    kernel = Kernel("linear")
    fitted = trainers.sklearn_one_against_one(x, data.target, training_rows(x), kernel, 0.5)
    write_example("wine_binned", fitted, kernel, x, DataField("cultivar", data.target_names.tolist()), inputs,
                  columns=columns, cases=list(zip(*tables)), one_against_one=True)


MODELS = {each.__name__: each for each in (iris, iris_one_against_all, breast_cancer, breast_cancer_probability,
                                           digits, diabetes, wine_probability, wine_binned)}


def main(names):
    unknown = [name for name in names if name not in MODELS]
    if unknown:
        sys.exit(f"no such model: {', '.join(unknown)}; there are {', '.join(MODELS)}")
    for name in names or MODELS:
        MODELS[name]()


if __name__ == "__main__":
    main(sys.argv[1:])
