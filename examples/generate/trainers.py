"""The two trainers behind one shape: what each of them fitted, and what it answers, with nothing recomputed."""

import ctypes
import itertools
import warnings
from dataclasses import dataclass

import numpy as np
import sklearn
import svm
import svmutil
from sklearn.multiclass import OneVsRestClassifier
from sklearn.svm import SVC

from pmml_writer import Kernel

SCIKIT_LEARN = ("scikit-learn", sklearn.__version__)
_LIBSVM_NUMBER = ctypes.c_int.in_dll(svm.libsvm, "libsvm_version").value
LIBSVM = ("LIBSVM", f"{_LIBSVM_NUMBER // 100}.{_LIBSVM_NUMBER % 100:02}")
LIBSVM_KERNELS = {"linear": 0, "poly": 1, "rbf": 2, "sigmoid": 3}


@dataclass
class Fitted:
    """Terms are pairs (training row, coefficient); a positive decision of machine k speaks for positive[k]."""

    application: tuple
    terms: list
    biases: list
    positive: list  # category index per machine
    negative: list  # category index per machine; -1 for the rest
    predicted: np.ndarray  # category index per row; the value itself for regression
    decisions: np.ndarray  # rows x machines
    probabilities: np.ndarray = None  # rows x categories
    sigmoid: list = None  # (A, B) per machine
    laplace: float = None  # scale of the residuals


def kernel_arguments(kernel):
    """The kernel's parameters that are given, by the names which scikit-learn uses."""
    values = {"gamma": kernel.gamma, "coef0": kernel.coef0, "degree": kernel.degree}
    return {name: value for name, value in values.items() if value is not None}


def kernel_matrix(kernel: Kernel, x, y):
    if kernel.name == "rbf":
        return np.exp(-kernel.gamma * ((x[:, None, :] - y[None, :, :]) ** 2).sum(axis=2))
    dot = x @ y.T
    if kernel.name == "linear":
        return dot
    inner = kernel.gamma * dot + kernel.coef0
    return np.tanh(inner) if kernel.name == "sigmoid" else inner**kernel.degree


def pair_terms(coefficients, counts, rows):
    """Unpacks the shared coefficient table of a one-against-one model: one list of terms per pair of categories."""
    ends = np.cumsum(counts)
    spans = [range(end - count, end) for end, count in zip(ends, counts)]
    pairs = []
    for i, j in itertools.combinations(range(len(counts)), 2):
        terms = [(rows[s], coefficients[j - 1][s]) for s in spans[i]]
        terms += [(rows[s], coefficients[i][s]) for s in spans[j]]
        pairs.append([(row, float(value)) for row, value in terms if value != 0])
    return pairs


def sklearn_one_against_one(x, y, training, kernel, cost):
    machine = SVC(kernel=kernel.name, C=cost, decision_function_shape="ovo", **kernel_arguments(kernel))
    machine.fit(x[training], y[training])
    rows = [training[s] for s in machine.support_]
    decisions = machine.decision_function(x)
    if len(machine.classes_) == 2:  # here scikit-learn turns the sign: positive speaks for the second category
        terms = [[(row, float(value)) for row, value in zip(rows, machine.dual_coef_[0])]]
        return Fitted(SCIKIT_LEARN, terms, list(machine.intercept_), [1], [0], machine.predict(x), decisions[:, None])
    pairs = list(itertools.combinations(range(len(machine.classes_)), 2))
    return Fitted(SCIKIT_LEARN, pair_terms(machine.dual_coef_, machine.n_support_, rows), list(machine.intercept_),
                  [i for i, _ in pairs], [j for _, j in pairs], machine.predict(x), decisions)


def sklearn_one_against_all(x, y, training, kernel, cost):
    ensemble = OneVsRestClassifier(SVC(kernel=kernel.name, C=cost, **kernel_arguments(kernel)))
    ensemble.fit(x[training], y[training])
    terms = [[(training[s], float(value)) for s, value in zip(each.support_, each.dual_coef_[0])]
             for each in ensemble.estimators_]
    categories = range(len(ensemble.classes_))
    return Fitted(SCIKIT_LEARN, terms, [each.intercept_[0] for each in ensemble.estimators_],
                  list(categories), [-1 for _ in categories], ensemble.predict(x), ensemble.decision_function(x))


def libsvm_model(x, y, training, kernel, cost, options):
    """Trains with -b 1. LIBSVM shuffles its folds with the C library's rand(), so that is seeded here."""
    arguments = f"-q -b 1 -t {LIBSVM_KERNELS[kernel.name]} -c {cost!r} {options}"
    flags = {"gamma": "-g", "coef0": "-r", "degree": "-d"}
    for name, value in kernel_arguments(kernel).items():
        arguments += f" {flags[name]} {value!r}"
    ctypes.CDLL(None).srand(1)
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", DeprecationWarning)
        return svmutil.svm_train(y[training].tolist(), x[training].tolist(), arguments)


def libsvm_answers(model, x, predict, width):
    """One row of numbers and one label per case, from svm_predict_values or svm_predict_probability."""
    buffer = (ctypes.c_double * max(width, 1))()
    labels, rows = [], []
    for case in x.tolist():
        nodes = (svm.svm_node * (len(case) + 1))()
        for index, value in enumerate(case):
            nodes[index] = svm.svm_node(index + 1, value)
        nodes[len(case)] = svm.svm_node(-1, 0)
        labels.append(predict(model, nodes, buffer))
        rows.append(buffer[:width])
    return np.array(labels), np.array(rows)


def libsvm_coefficients(model, training):
    rows = [training[s - 1] for s in model.get_sv_indices()]
    return np.array(model.get_sv_coef()).T, rows


def libsvm_probability(x, y, training, kernel, cost):
    model = libsvm_model(x, y, training, kernel, cost, "-s 0")
    count = model.get_nr_class()
    if model.get_labels() != list(range(count)):
        raise ValueError("the training rows must show the categories in category order")
    pairs = list(itertools.combinations(range(count), 2))
    coefficients, rows = libsvm_coefficients(model, training)
    _, decisions = libsvm_answers(model, x, svm.libsvm.svm_predict_values, len(pairs))
    predicted, probabilities = libsvm_answers(model, x, svm.libsvm.svm_predict_probability, count)
    return Fitted(LIBSVM, pair_terms(coefficients, model.nSV[:count], rows), [-rho for rho in model.rho[:len(pairs)]],
                  [i for i, _ in pairs], [j for _, j in pairs], predicted.astype(int), decisions, probabilities,
                  list(zip(model.probA[:len(pairs)], model.probB[:len(pairs)])))


def libsvm_regression(x, y, training, kernel, cost, epsilon):
    model = libsvm_model(x, y, training, kernel, cost, f"-s 3 -p {epsilon!r}")
    coefficients, rows = libsvm_coefficients(model, training)
    terms = [(row, float(value)) for row, value in zip(rows, coefficients[0])]
    predicted, decisions = libsvm_answers(model, x, svm.libsvm.svm_predict_values, 1)
    return Fitted(LIBSVM, [terms], [-model.rho[0]], [-1], [-1], predicted, decisions,
                  laplace=model.get_svr_probability())
