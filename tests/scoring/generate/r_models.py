"""The models that R trained, in the dialects in which R's exporters write them."""

import itertools
import json
import re
import subprocess
import tempfile
from pathlib import Path

from pmml import (
    E,
    Machine,
    Svm,
    call,
    categorical,
    const,
    continuous,
    derived,
    document,
    linear,
    mining,
    norm_discrete,
    output,
    polynomial,
    radial,
    sigmoid,
    z_score,
)
from publish import publish

HERE = Path(__file__).resolve().parent


def numbers(value):
    return [numbers(each) if isinstance(each, list) else float(each) for each in value]


class Dump:
    """What train.R wrote of one model."""

    def __init__(self, path):
        self.raw = json.loads(path.read_text())
        self.trainer = tuple(self.raw["trainer"][0].split())
        self.target = self.raw["target"][0]
        self.levels = self.raw["levels"] or []
        names = list(self.raw["cases"])
        self.cases = [dict(zip(names, row)) for row in zip(*self.raw["cases"].values())]
        for case in self.cases:
            for name, text in case.items():
                case[name] = tidy(text)
        self.inputs = names

    def number(self, key):
        return float(self.raw[key][0])

    def numbers(self, key):
        return numbers(self.raw[key] or [])

    def texts(self, key):
        return self.raw[key] or []


def tidy(text):
    try:
        number = float(text)
    except ValueError:
        return text
    return repr(number)[:-2] if repr(number).endswith(".0") else repr(number)


# ---- e1071 -----------------------------------------------------------------------------------------


def e1071_kernel(dump):
    gamma, coef0, degree = (dump.number(key) for key in ("gamma", "coef0", "degree"))
    return {
        "linear": linear,
        "polynomial": lambda: polynomial(gamma, coef0, degree),
        "radial": lambda: radial(gamma),
        "sigmoid": lambda: sigmoid(gamma, coef0),
    }[dump.raw["kernel"][0]]()


def e1071_pair_machines(dump, ids, probabilities):
    """LIBSVM: rows of coefficients by opponent, vectors grouped by label; a positive one is for the first label."""
    labels, counts = dump.texts("labels"), [int(each) for each in dump.numbers("counts")]
    coefficients = dump.numbers("coefficients")
    starts = [sum(counts[:i]) for i in range(len(counts))]
    machines = []
    for k, (i, j) in enumerate(itertools.combinations(range(len(labels)), 2)):
        if dump.texts("pairs")[k] != f"{labels[i]}/{labels[j]}":
            raise ValueError("the pairs are in another order than the labels")
        terms = [(ids[s], coefficients[j - 1][s]) for s in range(starts[i], starts[i] + counts[i])]
        terms += [(ids[s], coefficients[i][s]) for s in range(starts[j], starts[j] + counts[j])]
        pair = None
        if probabilities:
            pair = (labels[i], labels[j], dump.numbers("prob_a")[k], dump.numbers("prob_b")[k])
        machines.append(
            Machine(
                [each for each in terms if each[1] != 0],
                -dump.numbers("rho")[k],
                target=labels[j],
                alternate=labels[i],
                probability=pair,
            )
        )
    return machines


def factor_column(dump, column, factors):
    """The factor and level that a column of R's model matrix such as `tensionM` or `education12..yrs` stands for."""
    pairs = [(name, level) for name, levels in factors.items() for level in levels]
    return next((pair for pair in pairs if column in ("".join(pair), re.sub(r"[^\w.]", ".", "".join(pair)))), None)


def e1071_columns(dump, columns, factors):
    """One derived field per column: a scaled number, or an indicator of a factor's level."""
    center = dict(zip(dump.texts("scaled"), dump.numbers("center")))
    scale = dict(zip(dump.texts("scaled"), dump.numbers("scale")))
    local, fields = [], []
    for column in columns:
        pair = factor_column(dump, column, factors)
        if pair is not None:
            name = f"derived_{pair[0]}{pair[1]}"
            local.append(derived(name, norm_discrete(*pair)))
        elif column in center:
            name = f"algorithm_derived_{column}"
            local.append(derived(name, z_score(column, center[column], scale[column])))
        else:
            name = column
        fields.append(name)
    return local, fields


def e1071_output(dump, kind):
    if kind == "regression":
        return [output(f"Predicted_{dump.target}", optype="continuous", data_type="double")]
    first = output(f"Predicted_{dump.target}", optype="categorical", data_type="string")
    return [
        first,
        *(
            output(f"Probability_{level}", "probability", optype="continuous", data_type="double", value=level)
            for level in dump.levels
        ),
    ]


def e1071(
    folder,
    name,
    *,
    dense=True,
    version="4.4.1",
    integers=(),
    factors=None,
    probabilities=False,
    extra_cases=(),
    transformations=None,
    wrap=None,
    levels_declared=True,
    extra_output=(),
):
    dump, factors = Dump(folder / f"{name}.json"), factors or {}
    vectors, kind = dump.numbers("vectors"), int(dump.number("kind"))
    ids = dump.texts("ids") or [str(i + 1) for i in range(len(vectors))]
    columns = dump.texts("columns") or dump.inputs
    local, fields = e1071_columns(dump, columns, factors)
    function = "classification" if kind < 2 else "regression"
    attributes = {
        "modelName": "LIBSVM_Model",
        "algorithmName": "supportVectorMachine",
        "svmRepresentation": "SupportVectors",
    }
    dictionary = [
        categorical(each, factors[each])
        if each in factors
        else continuous(each, data_type="integer" if each in integers else "double")
        for each in dump.inputs
    ]
    schema = [mining(each) for each in dump.inputs]
    targets = None
    trainer = {}
    if dump.target:
        levels = dump.levels if function == "classification" and levels_declared else ()
        target = categorical(dump.target, levels) if function == "classification" else continuous(dump.target)
        dictionary.insert(0, target)
        schema.insert(0, mining(dump.target, "predicted"))
    if function == "classification":
        attributes["classificationMethod"] = "OneAgainstOne"
        machines = e1071_pair_machines(dump, ids, probabilities)
        trainer |= {f"decision_{k}": column for k, column in enumerate(zip(*dump.numbers("decisions")), 1)}
        if probabilities:
            labels = dump.texts("labels")
            trainer |= {
                f"probability_{label}": column for label, column in zip(labels, zip(*dump.numbers("probabilities")))
            }
            # R predicts by votes, the document's probabilities by the most probable category.
            by_name = [dict(zip(labels, row)) for row in dump.numbers("probabilities")]
            trainer[f"predicted_{dump.target}"] = [max(dump.levels, key=row.get) for row in by_name]
        else:
            trainer[f"predicted_{dump.target}"] = dump.texts("predicted")
    else:
        machines = [Machine(list(zip(ids, dump.numbers("coefficients")[0])), -dump.number("rho"))]
        y_scale = dump.numbers("y_scale")
        if kind == 2:
            trainer["decision_1"] = [row[0] for row in dump.numbers("decisions")]
        elif y_scale:
            targets = [
                E(
                    "Target",
                    {"field": dump.target, "rescaleFactor": y_scale[0], "rescaleConstant": dump.number("y_center")},
                )
            ]
            trainer[f"predicted_{dump.target}"] = dump.numbers("predicted")
        else:
            trainer[f"predicted_{dump.target}"] = dump.numbers("predicted")
    out = [*(e1071_output(dump, function) if dump.target else []), *extra_output]
    svm = Svm(
        function,
        schema,
        e1071_kernel(dump),
        fields,
        dict(zip(ids, vectors)),
        machines,
        attributes,
        out,
        targets,
        local or None,
        dense,
    )
    model = wrap(svm) if wrap else svm
    publish(
        name,
        document(version, ("SVM exporter for R", "2.5"), dictionary, model, transformations),
        [*dump.cases, *extra_cases],
        trainer,
    )


def anomaly(svm):
    schema = [mining(each.get("name")) for each in svm.schema]
    return E(
        "AnomalyDetectionModel",
        {"modelName": "svm", "functionName": "regression", "algorithmType": "ocsvm"},
        E("MiningSchema", None, *schema),
        svm.element(),
    )


# ---- kernlab ---------------------------------------------------------------------------------------


def kernlab_kernel(dump):
    given = {name: float(value[0]) for name, value in dump.raw["parameters"].items()}
    return {
        "rbfkernel": lambda: radial(given["sigma"]),
        "polykernel": lambda: polynomial(given["scale"], given["offset"], given["degree"]),
        "tanhkernel": lambda: sigmoid(given["scale"], given["offset"]),
    }[dump.raw["kernel"][0]]()


def kernlab(folder, name, *, integers=(), extra_cases=(), version="4.2"):
    """Vectors of each machine of their own; a positive decision is for the second level of its pair."""
    dump = Dump(folder / f"{name}.json")
    vectors, machines = {}, []
    pairs = list(itertools.combinations(dump.levels, 2)) or [(None, None)]
    for (first, second), rows, coefficients, b in zip(
        pairs, dump.numbers("vectors"), dump.numbers("coefficients"), dump.numbers("rho")
    ):
        ids = [str(len(vectors) + i + 1) for i in range(len(rows))]
        vectors |= dict(zip(ids, rows))
        machines.append(Machine(list(zip(ids, coefficients)), -b, target=first, alternate=second))
    local, fields = e1071_columns(dump, dump.texts("columns"), {})
    local = [derived(each.get("name").removeprefix("algorithm_"), each[0]) for each in local]
    fields = [each.removeprefix("algorithm_") for each in fields]
    attributes = {
        "modelName": "ksvm_model",
        "algorithmName": "supportVectorMachine",
        "svmRepresentation": "SupportVectors",
    }
    regression, targets = not dump.levels, None
    if regression:
        target, function = continuous(dump.target), "regression"
        targets = [
            E(
                "Target",
                {
                    "field": dump.target,
                    "rescaleConstant": dump.number("y_center"),
                    "rescaleFactor": dump.number("y_scale"),
                },
            )
        ]
        trainer = {f"predicted_{dump.target}": dump.numbers("predicted")}
    else:
        target, function = categorical(dump.target, dump.levels), "classification"
        attributes |= {"classificationMethod": "OneAgainstOne", "maxWins": "false"}
        trainer = {f"predicted_{dump.target}": dump.texts("predicted")}
        trainer |= {f"decision_{k}": column for k, column in enumerate(zip(*dump.numbers("decisions")), 1)}
    dictionary = [
        target,
        *(continuous(each, data_type="integer" if each in integers else "double") for each in dump.inputs),
    ]
    svm = Svm(
        function,
        [mining(dump.target, "predicted"), *(mining(each) for each in dump.inputs)],
        kernlab_kernel(dump),
        fields,
        vectors,
        machines,
        attributes,
        e1071_output(dump, function),
        targets,
        local or None,
    )
    publish(
        name,
        document(version, ("SVM exporter for R", "1.4"), dictionary, svm, []),
        [*dump.cases, *extra_cases],
        trainer,
    )


def iris_case(*texts):
    return dict(zip(("Sepal.Length", "Sepal.Width", "Petal.Length", "Petal.Width"), texts))


def main():
    with tempfile.TemporaryDirectory() as temporary:
        subprocess.run(["Rscript", str(HERE / "train.R"), temporary], check=True)
        folder = Path(temporary)
        far = [iris_case("12.5", "-3", "0", "31.25"), iris_case("5.1", "", "1.4", "0.2"), iris_case("x", "3", "4", "1")]
        e1071(folder, "r_iris_radial", extra_cases=far)
        e1071(folder, "r_iris_polynomial", dense=False, version="4.1", levels_declared=True)
        e1071(folder, "r_iris_probability", dense=False, version="4.3", probabilities=True, extra_cases=far)
        e1071(folder, "r_chickwts_unscaled", dense=False, version="4.0", integers=("weight",))
        e1071(
            folder,
            "r_mtcars_linear",
            integers=("cyl", "hp"),
            extra_cases=[{"cyl": "5", "disp": "100.5", "hp": "", "wt": "2"}],
        )
        e1071(
            folder,
            "r_warpbreaks_factors",
            factors={"wool": ["A", "B"], "tension": ["L", "M", "H"]},
            extra_cases=[{"wool": "C", "tension": "L"}, {"wool": "A", "tension": ""}],
        )
        e1071(folder, "r_toothgrowth_mixed", factors={"supp": ["OJ", "VC"]}, transformations=[])
        e1071(
            folder,
            "r_infert_probability",
            probabilities=True,
            version="4.3",
            factors={"education": ["0-5yrs", "6-11yrs", "12+ yrs"]},
            integers=("age", "parity", "induced"),
        )
        score = [
            output("anomalyScore", optype="continuous", data_type="double"),
            output(
                "anomaly",
                "decision",
                call("lessThan", "anomalyScore", const(0, "double")),
                optype="categorical",
                data_type="boolean",
            ),
        ]
        e1071(folder, "r_one_class", wrap=anomaly, extra_output=score)
        kernlab(folder, "ksvm_iris_radial", extra_cases=far)
        kernlab(folder, "ksvm_cars_polynomial")
        kernlab(folder, "ksvm_air_regression", integers=("Solar.R", "Temp"), version="3.2")
        kernlab(folder, "ksvm_iris_tanh", version="4.0")


if __name__ == "__main__":
    main()
