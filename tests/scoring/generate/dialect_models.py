"""Models in other exporters' dialects, and small ones that show one chapter of the standard each.

Where a machine is trained, scikit-learn's answers are held against the evaluator's. The others have invented coefficients
(a random generator with a fixed seed); of them the evaluator alone says what is expected.
"""

import itertools
import xml.etree.ElementTree as ET

import numpy as np
from sklearn.datasets import load_breast_cancer
from sklearn.svm import SVC

from pmml import (
    E,
    Machine,
    Svm,
    call,
    categorical,
    const,
    continuous,
    derived,
    discretize,
    document,
    interval,
    linear,
    map_values,
    mining,
    norm_continuous,
    norm_discrete,
    output,
    polynomial,
    radial,
    ref,
    shortest,
    sigmoid,
)
from publish import evaluate_tree, publish

KNIME = ("KNIME", "4.5.2")
HAND = ("hand", "1")


def invented(seed, width, count, machines, size=1.0):
    """Vectors and terms with numbers of a few digits."""
    draw = np.random.default_rng(seed)
    vectors = {f"v{i}": np.round(draw.normal(0, size, width), 3).tolist() for i in range(1, count + 1)}
    terms = [
        [(name, round(float(value), 3)) for name, value in zip(vectors, draw.normal(0, 1, count))]
        for _ in range(machines)
    ]
    return vectors, terms, np.round(draw.normal(0, 0.5, machines), 3).tolist()


def regression(seed, columns, count=6, kernel=None):
    """One machine over so many columns: the keyword arguments of Svm that follow from it."""
    vectors, terms, biases = invented(seed, len(columns), count, 1)
    return {
        "kernel": radial(0.21875) if kernel is None else kernel,
        "columns": columns,
        "vectors": vectors,
        "machines": [Machine(terms[0], biases[0])],
    }


def grid(**columns):
    """One case for each combination of texts."""
    return [dict(zip(columns, each)) for each in itertools.product(*columns.values())]


def zipped(**columns):
    return [dict(zip(columns, each)) for each in zip(*columns.values())]


# ---- dialects --------------------------------------------------------------------------------------


def cancer():
    data = load_breast_cancer()
    return ["mean radius", "mean texture", "mean smoothness"], data.data[:, [0, 1, 4]], data.target


def knime():
    """Two machines for two categories, each the other's negative; columns normalised as `name*`, intervals declared."""
    names, x, y = cancer()
    low, high = x[::6].min(axis=0), x[::6].max(axis=0)
    z = (x - low) / (high - low)
    estimator = SVC(kernel="poly", degree=2, gamma=1.125, coef0=0.75, C=2).fit(z[::6], y[::6])
    ids = [str(i) for i in range(len(estimator.support_))]
    machine = Machine(list(zip(ids, estimator.dual_coef_[0])), estimator.intercept_[0], target="malignant")
    other = machine.negated()
    other.target = "benign"
    local = [
        derived(f"{name}*", norm_continuous(name, [(low[i], 0.0), (high[i], 1.0)]), displayName=name)
        for i, name in enumerate(names)
    ]
    fields = [continuous(name, interval("closedClosed", low[i], high[i])) for i, name in enumerate(names)]
    fields.append(categorical("diagnosis", ["benign", "malignant"]))
    schema = [mining(name, invalidValueTreatment="asIs") for name in names]
    schema.append(mining("diagnosis", "predicted", invalidValueTreatment="asIs"))
    svm = Svm(
        "classification",
        schema,
        polynomial(1.125, 0.75, 2),
        [f"{name}*" for name in names],
        dict(zip(ids, estimator.support_vectors_.tolist())),
        [machine, other],
        {
            "modelName": "SVM",
            "algorithmName": "Sequential Minimal Optimization (SMO)",
            "svmRepresentation": "SupportVectors",
        },
        local=local,
    )
    cases = [{name: shortest(value) for name, value in zip(names, row)} for row in x[::15]]
    decisions = estimator.decision_function(z[::15])
    publish(
        "knime_two_machines",
        document("4.2", KNIME, fields, svm),
        cases,
        {
            "decision_1": decisions.tolist(),
            "decision_2": (-decisions).tolist(),
            "predicted_diagnosis": [["malignant", "benign"][each] for each in estimator.predict(z[::15])],
        },
        writes_decisions=False,
    )


def knime_own_machines():
    """Two machines for two categories, each with coefficients of its own, the largest wins."""
    vectors, terms, biases = invented(71, 3, 7, 2)
    machines = [Machine(each, bias, target=name) for each, bias, name in zip(terms, biases, ("left", "right"))]
    svm = Svm(
        "classification",
        [mining("a"), mining("b"), mining("c"), mining("side", "target")],
        radial(0.4375),
        ["a", "b", "c"],
        vectors,
        machines,
        {"classificationMethod": "OneAgainstAll", "maxWins": "true"},
        dense=True,
    )
    fields = [continuous("a"), continuous("b"), continuous("c"), categorical("side", ["right", "left"])]
    publish(
        "knime_own_machines",
        document("4.1", KNIME, fields, svm),
        grid(a=["-1.5", "-0.25", "0.5", "1.75"], b=["-1", "0.375", "2"], c=["-0.75", "0.625", "1.25"]),
        writes_decisions=False,
    )


def alternate_on_model():
    """PMML 3.0: the alternative category of the one machine stands on the model; a threshold too."""
    names, x, y = cancer()
    estimator = SVC(kernel="rbf", gamma=0.03125, C=1.5).fit(x[1::7], y[1::7])
    ids = [f"row{i}" for i in estimator.support_]
    shift = 0.375
    machine = Machine(list(zip(ids, estimator.dual_coef_[0])), estimator.intercept_[0] + shift, target="malignant")
    svm = Svm(
        "classification",
        [mining("diagnosis", "predicted"), *map(mining, names)],
        radial(0.03125),
        names,
        dict(zip(ids, estimator.support_vectors_.tolist())),
        [machine],
        {
            "modelName": "binary",
            "alternateBinaryTargetCategory": "benign",
            "threshold": shift,
            "svmRepresentation": "SupportVectors",
        },
    )
    fields = [categorical("diagnosis", ["malignant", "benign"]), *map(continuous, names)]
    cases = [{name: shortest(value) for name, value in zip(names, row)} for row in x[::15]]
    publish(
        "alternate_on_model",
        document("3.0", ("miner", "3.0"), fields, svm),
        cases,
        {
            "decision_1": (estimator.decision_function(x[::15]) + shift).tolist(),
            "predicted_diagnosis": [["malignant", "benign"][each] for each in estimator.predict(x[::15])],
        },
    )


def fields_of_version_two():
    """Fields without a dataType, the derived ones in the TransformationDictionary."""
    dictionary = [
        derived("u", norm_continuous("x", [(0.0, -1.25), (8.0, 0.75)])),
        derived("k", norm_discrete("kind", "b")),
    ]
    for each in dictionary:
        del each.attrib["dataType"]
    fields = [
        E("DataField", {"name": "y", "optype": "continuous"}),
        E("DataField", {"name": "x", "optype": "continuous"}),
        E("DataField", {"name": "kind", "optype": "categorical"}, *(E("Value", {"value": v}) for v in "abc")),
    ]
    svm = Svm(
        "regression",
        [
            E("MiningField", {"name": "y", "usageType": "predicted"}),
            E("MiningField", {"name": "x"}),
            E("MiningField", {"name": "kind"}),
        ],
        **regression(73, ["u", "k"]),
    )
    publish(
        "fields_of_version_two",
        document("2.1", ("miner", "2.1"), fields, svm, dictionary),
        [*grid(x=["-4", "0", "2.5", "8", "11", ""], kind=["a", "b", "c", "d"]), {"x": "2", "kind": ""}],
    )


def pairs_without_method():
    """All pairs of four categories, no classificationMethod, and a target that declares no values."""
    vectors, terms, biases = invented(79, 2, 9, 6)
    machines = [
        Machine(each, bias, target=b, alternate=a)
        for each, bias, (a, b) in zip(
            terms, biases, itertools.combinations(["spring", "summer", "autumn", "winter"], 2)
        )
    ]
    svm = Svm(
        "classification",
        [mining("season", "target"), mining("t"), mining("rain")],
        radial(0.53125),
        ["t", "rain"],
        vectors,
        machines,
        output=[
            output("season name", data_type="string", optype="categorical"),
            output("P(winter)", "probability", value="winter", data_type="double"),
            output("P", "probability", data_type="double"),
            output("sure", "confidence", data_type="double"),
        ],
    )
    publish(
        "pairs_without_method",
        document("4.3", HAND, [categorical("season"), continuous("t"), continuous("rain")], svm),
        grid(t=["-1.5", "-0.5", "0.25", "0.75", "1.5"], rain=["-1.25", "-0.25", "0.125", "0.875", "1.625"]),
    )


def thresholds():
    """Thresholds of machines before that of the model, maxWins, decisions exactly at a threshold."""
    vectors = {"v1": [1.0, 0.0], "v2": [0.0, 1.0]}
    machines = [
        Machine([("v1", 1.0), ("v2", 0.5)], 0.0, "a", "b", threshold=0.75),
        Machine([("v1", -0.5), ("v2", 1.0)], 0.25, "a", "c"),
        Machine([("v1", 0.25), ("v2", -2.0)], 0.5, "b", "c", threshold=-0.5),
    ]
    fields = [categorical("class", ["c", "a", "b"]), continuous("x"), continuous("y")]
    for name, wins in (("thresholds_smallest", None), ("thresholds_largest", "true")):
        svm = Svm(
            "classification",
            [mining("class", "target"), mining("x"), mining("y")],
            linear(),
            ["x", "y"],
            vectors,
            machines,
            {"classificationMethod": "OneAgainstOne", "threshold": 0.125, "maxWins": wins},
        )
        publish(
            name,
            document("4.4", HAND, fields, svm),
            grid(x=["-1", "-0.5", "0", "0.5", "0.75", "2"], y=["-0.375", "-0.125", "0", "0.125", "0.5", "1"]),
        )


def zero_vectors():
    """A support vector at the origin: dense; sparse with empty lists; sparse without lists."""
    fields = [continuous("y"), continuous("a"), continuous("b")]
    for form in ("dense", "empty", "absent"):
        parts = regression(167, ["a", "b"], 4, radial(0.46875))
        parts["vectors"]["v2"] = [0.0, 0.0]
        svm = Svm("regression", [mining("y", "target"), mining("a"), mining("b")], dense=form == "dense", **parts)
        tree = document("4.4", HAND, fields, svm)
        if form == "absent":
            sparse = tree.find(".//VectorInstance[@id='v2']/REAL-SparseArray")
            sparse[:] = []
            sparse.text = None
        publish(f"zero_vector_{form}", tree, grid(a=NUMBERS[::2], b=NUMBERS[1::2]))


def kernel_defaults():
    """Kernels without their parameters: gamma, coef0 and degree are 1."""
    fields = [continuous("y"), continuous("a"), continuous("b")]
    for tag in ("RadialBasisKernelType", "PolynomialKernelType", "SigmoidKernelType"):
        svm = Svm(
            "regression", [mining("y", "target"), mining("a"), mining("b")], **regression(179, ["a", "b"], 5, E(tag))
        )
        publish(
            f"kernel_defaults_{tag.removesuffix('KernelType').lower()}",
            document("4.4", HAND, fields, svm),
            grid(a=NUMBERS[::2], b=NUMBERS[1::2]),
        )


def prefixed():
    """Elements with a prefix, ISO-8859-1, categories that are not ASCII, comments."""
    fields = [categorical("Größe", ["groß", "klein <1>", "ähnlich"]), continuous("Länge"), continuous("Höhe (m)")]
    vectors, terms, biases = invented(157, 2, 5, 3)
    machines = [
        Machine(each, bias, target=b, alternate=a)
        for each, bias, (a, b) in zip(terms, biases, itertools.combinations(["groß", "klein <1>", "ähnlich"], 2))
    ]
    svm = Svm(
        "classification",
        [mining("Größe", "target"), mining("Länge"), mining("Höhe (m)")],
        polynomial(0.5, 0.75, 3),
        ["Länge", "Höhe (m)"],
        vectors,
        machines,
        {"classificationMethod": "OneAgainstOne"},
        output=[output("Größe (vorhergesagt)", data_type="string", optype="categorical")],
    )
    tree = document("4.4", HAND, fields, svm)
    root = tree.getroot()
    root.attrib["xmlns:pmml"] = root.attrib.pop("xmlns")
    root.insert(1, ET.Comment(" no <DataDictionary> here "))
    for element in list(root.iter()):
        if isinstance(element.tag, str):
            element.tag = f"pmml:{element.tag}"
            if element.tag in ("pmml:VectorDictionary", "pmml:Coefficients"):
                element.insert(1, ET.Comment(" between elements "))
    publish(
        "prefixed_names",
        tree,
        [{"Länge": a, "Höhe (m)": b} for a, b in itertools.product(NUMBERS[::2], NUMBERS[1::2])],
        encoding="ISO-8859-1",
    )


def outer_transformations():
    """Derived fields of the document and of a MiningModel, which the segment names in its MiningSchema."""
    dictionary = [derived("root a", call("sqrt", call("abs", "a")))]
    outer = [derived("scaled b", norm_continuous("b", [(-1.5, 0.0), (2.0, 1.0)]))]
    inner = [derived("both", call("*", "root a", "scaled b"))]
    svm = Svm(
        "regression",
        [mining("y", "target"), mining("root a"), mining("scaled b")],
        local=inner,
        output=[output("score", data_type="double")],
        **regression(163, ["root a", "scaled b", "both"]),
    )
    schema = [mining("y", "target"), mining("a", missingValueReplacement="0.75"), mining("b")]
    wrapped = E(
        "MiningModel",
        {"functionName": "regression"},
        E("MiningSchema", None, *schema),
        E(
            "Output",
            None,
            output("doubled", "transformedValue", call("*", "score", const(2, "double")), data_type="double"),
        ),
        E("LocalTransformations", None, *outer),
        E("Segmentation", {"multipleModelMethod": "selectFirst"}, E("Segment", None, E("True"), svm.element())),
    )
    fields = [continuous("y"), continuous("a"), continuous("b")]
    publish(
        "outer_transformations",
        document("4.4", HAND, fields, wrapped, dictionary),
        [*grid(a=NUMBERS[::2], b=NUMBERS[1::2]), {"a": "", "b": "1"}, {"a": "1", "b": ""}],
    )


# ---- fields ----------------------------------------------------------------------------------------


def treatments():
    """Outliers, missing and invalid values of all kinds in the mining schema, then all outliers of NormContinuous."""
    valid = ["low", "mid", "high"]
    kinds = ["returned", "kept", "lost", "given"]
    fields = [
        continuous("y"),
        continuous("plain"),
        continuous("gone"),
        continuous("clipped"),
        continuous("filled"),
        continuous("strict"),
        *(categorical(each, valid) for each in kinds),
    ]
    fields[4].append(E("Value", {"value": "-99", "property": "missing"}))
    fields[6].append(E("Value", {"value": "n/a", "property": "missing"}))
    fields[6].append(E("Value", {"value": "bad", "property": "invalid"}))
    schema = [
        mining("y", "target"),
        mining("plain", outliers="asIs", lowValue=-2, highValue=2),
        mining("gone", outliers="asMissingValues", lowValue=-2, highValue=2, missingValueReplacement="0.625"),
        mining("clipped", outliers="asExtremeValues", lowValue=-1.5, highValue=1.25),
        mining("filled", missingValueReplacement="-0.375", missingValueTreatment="asValue"),
        mining("strict", missingValueTreatment="returnInvalid", outliers="asMissingValues", lowValue=0, highValue=1),
        mining("returned", invalidValueTreatment="returnInvalid", missingValueReplacement="mid"),
        mining("kept", invalidValueTreatment="asIs"),
        mining("lost", invalidValueTreatment="asMissing", missingValueReplacement="high"),
        mining("given", invalidValueTreatment="asValue", invalidValueReplacement="low", missingValueReplacement="mid"),
    ]
    points = [(-1.0, -0.5), (0.5, 0.25), (1.5, 2.0)]
    local = [
        derived("extrapolated", norm_continuous("plain", points)),
        derived("clipped norm", norm_continuous("plain", points, outliers="asExtremeValues")),
        derived("lost norm", norm_continuous("plain", points, outliers="asMissingValues", mapMissingTo=-0.125)),
        *(derived(f"{each} {value}", norm_discrete(each, value)) for each in kinds for value in ("low", "mid")),
    ]
    local[-1][0].set("mapMissingTo", "0.25")
    columns = ["gone", "clipped", "filled", "strict", *(each.get("name") for each in local)]
    svm = Svm("regression", schema, local=local, **regression(83, columns, kernel=linear()))
    base = {
        "plain": "0.75",
        "gone": "0.5",
        "clipped": "-0.25",
        "filled": "1.125",
        "strict": "0.25",
        "returned": "low",
        "kept": "mid",
        "lost": "low",
        "given": "high",
    }
    changes = [
        *({"plain": v} for v in ("-7.5", "-1", "0.5", "1", "1.5", "2.5", "1e3", "", "abc")),
        *({"gone": v} for v in ("-2", "-2.0000001", "2", "7", "")),
        *({"clipped": v} for v in ("-1.5", "-9", "1.25", "1.3", "", "NaN")),
        *({"filled": v} for v in ("", "-99", "99", "?")),
        *({"strict": v} for v in ("0", "1", "1.25", "")),
        *({"returned": v} for v in ("high", "n/a", "bad", "other", "")),
        *({"kept": v} for v in ("other", "")),
        *({"lost": v} for v in ("other", "", "mid")),
        *({"given": v} for v in ("other", "", "mid")),
        {"gone": "3", "clipped": "3", "filled": "", "lost": "x", "given": "y", "kept": "z"},
    ]
    publish("treatments", document("4.4", HAND, fields, svm), [base, *(base | each for each in changes)])


def intervals():
    """Interval with every closure, several to a field, open sides; what is outside is invalid."""
    margins = {"oo": "openOpen", "oc": "openClosed", "co": "closedOpen", "cc": "closedClosed"}
    fields = [
        continuous("y"),
        *(continuous(name, interval(closure, -1, 1.5)) for name, closure in margins.items()),
        continuous("two", interval("closedOpen", -2, -1), interval("openClosed", 1, 2.5)),
        continuous("above", interval("openOpen", 0)),
        continuous("below", interval("openClosed", None, 10), data_type="integer"),
    ]
    schema = [
        mining("y", "target"),
        mining("oo"),
        mining("oc", invalidValueTreatment="asMissing", missingValueReplacement="0.25"),
        mining("co", invalidValueTreatment="asIs"),
        mining("cc", invalidValueTreatment="asValue", invalidValueReplacement="-0.5"),
        mining("two"),
        mining("above", invalidValueTreatment="asMissing"),
        mining("below"),
    ]
    svm = Svm(
        "regression",
        schema,
        **regression(89, ["oo", "oc", "co", "cc", "two", "above", "below"], kernel=polynomial(0.25, 0.875, 2)),
    )
    base = {"oo": "0.5", "oc": "-0.75", "co": "1.25", "cc": "-0.125", "two": "2", "above": "0.375", "below": "3"}
    changes = [{name: value} for name in margins for value in ("-1", "1.5", "-1.5", "1.5000001", "-0.9999999")]
    changes += [{"two": v} for v in ("-2", "-1", "-1.5", "0", "1", "2.5", "2.6")]
    changes += [{"above": v} for v in ("0", "1e-300", "25")] + [{"below": v} for v in ("10", "11", "-400")]
    publish("intervals", document("4.4", HAND, fields, svm), [base, *(base | each for each in changes)])


def predictors():
    """CategoricalPredictor of raw texts, whole numbers and derived texts, beside FieldRef with mapMissingTo."""
    columns = [
        E("CategoricalPredictor", {"name": "colour", "value": "red", "coefficient": 1}),
        E("CategoricalPredictor", {"name": "colour", "value": "deep blue, dark", "coefficient": 1}),
        "width",
        ref("height", mapMissingTo="0.75"),
        E("CategoricalPredictor", {"name": "doors", "value": "5", "coefficient": 1}),
        E("CategoricalPredictor", {"name": "class", "value": "wide", "coefficient": 1}),
    ]
    local = [
        derived(
            "class",
            discretize("width", [("narrow", "openOpen", None, 0.5), ("wide", "closedOpen", 0.5, None)]),
            data_type="string",
            optype="categorical",
        )
    ]
    local[0].extend([E("Value", {"value": "narrow"}), E("Value", {"value": "wide"})])
    fields = [
        categorical("colour", ["red", "green", "deep blue, dark"]),
        continuous("width"),
        continuous("height"),
        categorical("doors", ["3", "5"], data_type="integer"),
        continuous("y"),
    ]
    svm = Svm(
        "regression",
        [
            mining("colour"),
            mining("width"),
            mining("height"),
            mining("doors"),
            mining("y", "target"),
        ],
        local=local,
        **regression(97, columns),
    )
    cases = grid(
        colour=["red", "green", "deep blue, dark"],
        width=["-0.5", "0.5", "1.25"],
        height=["0.25", "1.5"],
        doors=["3", "5"],
    )
    publish(
        "categorical_predictors",
        document("4.4", HAND, fields, svm),
        [
            *cases,
            {"colour": "Red", "width": "1", "height": "1", "doors": "3"},
            {"colour": "red", "width": "1", "height": "1", "doors": "4"},
            {"colour": "red", "width": "", "height": "1", "doors": "5"},
            {"colour": "", "width": "1", "height": "1", "doors": "5"},
        ],
    )


def usages():
    """Fields of every usageType, in an order of their own; Extension elements everywhere; statistics beside it all."""
    svm = Svm(
        "regression",
        [
            mining("b"),
            mining("id", "supplementary"),
            mining("w", "analysisWeight"),
            mining("y", "target"),
            mining("a", importance=0.5),
            mining("g", "group"),
            mining("o", "order"),
            mining("f", "frequencyWeight"),
        ],
        **regression(101, ["a", "b"], kernel=sigmoid(0.375, -0.25)),
    )
    fields = [
        categorical("g"),
        continuous("a"),
        continuous("w"),
        continuous("y"),
        continuous("b"),
        categorical("id"),
        continuous("f", data_type="integer"),
        continuous("o"),
    ]
    element = svm.element()
    element.insert(1, E("ModelStats", None, E("UnivariateStats", {"field": "a"}, E("NumericInfo", {"mean": 0.25}))))
    element.insert(
        2, E("ModelExplanation", None, E("PredictiveModelQuality", {"targetField": "y", "dataUsage": "test"}))
    )
    tree = document("4.4", HAND, fields, element)
    tree.getroot().insert(1, E("MiningBuildTask", None, E("Extension", {"name": "SupportVectorMachineModel"})))
    for parent in list(tree.getroot().iter()):
        if parent.tag in (
            "DataDictionary",
            "MiningSchema",
            "VectorDictionary",
            "VectorFields",
            "VectorInstance",
            "SupportVectors",
            "Coefficients",
            "DataField",
            "MiningField",
        ):
            parent.insert(0, E("Extension", {"extender": "someone", "name": "note", "value": "7"}))
    publish("usage_types", tree, grid(a=["-1.25", "0", "0.5", "3"], b=["-2", "0.125", "1", "1.75", "2.5"]))


def no_target():
    """A regression whose schema names no target: only the Output says how its result is called."""
    svm = Svm(
        "regression",
        [mining("a"), mining("b")],
        **regression(181, ["a", "b"], kernel=radial(0.59375)),
        output=[output("score", data_type="double", optype="continuous")],
    )
    publish(
        "no_target",
        document("4.2", HAND, [continuous("a"), continuous("b")], svm),
        grid(a=NUMBERS[::2], b=NUMBERS[1::2]),
    )


# ---- transformations -------------------------------------------------------------------------------


def define(name, parameters, body, data_type="double"):
    fields = [E("ParameterField", {"name": each, "optype": "continuous", "dataType": "double"}) for each in parameters]
    return E("DefineFunction", {"name": name, "optype": "continuous", "dataType": data_type}, *fields, body)


def defined_functions():
    """DefineFunction that calls another one; derived fields on derived fields, in an order that reads ahead."""
    dictionary = [
        define("standardised", ["v", "m", "s"], call("/", call("-", "v", "m"), "s")),
        define(
            "bell",
            ["v", "m"],
            call(
                "exp",
                call(
                    "*",
                    const(-0.5, "double"),
                    call("pow", call("standardised", "v", "m", const(2, "double")), const(2, "integer")),
                ),
            ),
        ),
        derived("zx", call("standardised", "x", const(1.5, "double"), const(0.75, "double"))),
        derived("sum of both", call("+", "zx", "later")),
        derived("later", call("bell", "w", "x")),
    ]
    local = [
        derived("last", call("*", "first", "sum of both")),
        derived("first", call("-", "deep", const(0.25, "double"))),
        derived("deep", call("max", "zx", "later", const(-0.5, "double"))),
        derived("alias", ref("first", mapMissingTo="9.5")),
    ]
    svm = Svm(
        "regression",
        [mining("y", "target"), mining("x"), mining("w", missingValueReplacement="0.5")],
        local=local,
        **regression(103, ["last", "sum of both", "alias"]),
    )
    publish(
        "defined_functions",
        document("4.4", HAND, [continuous("y"), continuous("x"), continuous("w")], svm, dictionary),
        grid(x=["-2", "0", "1.5", "2.75", ""], w=["-1.25", "0", "0.375", "4", ""]),
    )


def mathematics():
    """The functions of numbers: arithmetic, rounding, trigonometry, distributions."""
    x, p = "x", "p"
    table = {
        "log10": call("log10", "big"),
        "ln": call("ln", "big"),
        "sqrt": call("sqrt", "big"),
        "abs": call("abs", x),
        "exp": call("exp", x),
        "pow": call("pow", "big", x),
        "threshold": call("threshold", x, const(0.5, "double")),
        "floor": call("floor", x),
        "ceil": call("ceil", x),
        "round": call("round", x),
        "rint": call("rint", x),
        "modulo": call("modulo", x, const(1.25, "double")),
        "negative modulo": call("modulo", x, const(-2, "double")),
        "hypot": call("hypot", x, p),
        "expm1": call("expm1", x),
        "ln1p": call("ln1p", p),
        "sin": call("sin", x),
        "cos": call("cos", x),
        "tan": call("tan", p),
        "asin": call("asin", p),
        "acos": call("acos", p),
        "atan": call("atan", x),
        "sinh": call("sinh", x),
        "cosh": call("cosh", p),
        "tanh": call("tanh", x),
        "stdNormalCDF": call("stdNormalCDF", x),
        "stdNormalPDF": call("stdNormalPDF", x),
        "stdNormalIDF": call("stdNormalIDF", p),
        "normalCDF": call("normalCDF", x, const(0.5, "double"), const(1.75, "double")),
        "normalPDF": call("normalPDF", x, p, const(1.25, "double")),
        "normalIDF": call("normalIDF", p, x, const(0.75, "double")),
        "erf": call("erf", x),
        "min": call("min", x, p, "gap"),
        "max": call("max", x, p, "gap"),
        "sum": call("sum", x, p, "gap"),
        "avg": call("avg", x, p, "gap"),
        "median": call("median", x, p, "gap"),
        "product": call("product", x, "gap"),
        "difference": call("-", call("*", x, p), call("/", x, p)),
    }
    local = [derived(f"f({name})", inner) for name, inner in table.items()]
    svm = Svm(
        "regression",
        [mining("y", "target"), mining(x), mining(p), mining("big"), mining("gap")],
        local=local,
        output=[output(name, "transformedValue", ref(f"f({name})"), data_type="double") for name in table],
        **regression(107, [each.get("name") for each in local], 4, radial(0.001953125)),
    )
    cases = [
        {"x": x, "p": p, "big": big, "gap": gap}
        for x, (p, big, gap) in zip(
            ["-3.7", "-1.25", "-0.4", "0.1", "0.5", "0.75", "1.3", "2.25", "2.6", "4.45", "-2.5000001", "1e-9", "-0.75"]
            * 2,
            itertools.cycle(
                [
                    ("0.25", "2.5", "1.5"),
                    ("0.975", "1000", ""),
                    ("0.0125", "0.0375", "-0.5"),
                    ("0.5", "17.25", "0"),
                    ("1e-6", "1", ""),
                ]
            ),
        )
    ]
    publish(
        "mathematics",
        document(
            "4.4", HAND, [continuous("y"), continuous(x), continuous(p), continuous("big"), continuous("gap")], svm
        ),
        cases,
    )


def texts():
    """The functions of texts, dates and times, by way of MapValues and Output."""
    table = {
        "upper": call("uppercase", "name"),
        "lower": call("lowercase", "name"),
        "start": call("substring", "name", const(1, "integer"), const(3, "integer")),
        "trimmed": call("trimBlanks", "name"),
        "joined": call("concat", "name", const("-", "string"), "code"),
        "replaced": call("replace", "name", const("[aeiou]+", "string"), const("_", "string")),
        "number": call("formatNumber", "amount", const("%8.3f", "string")),
        "date": call("formatDatetime", "day", const("%d/%m/%Y", "string")),
        "week day": call("formatDatetime", "day", const("%j", "string")),
    }
    numbers = {
        "length": call("stringLength", "name"),
        "days": call("dateDaysSinceYear", "day", const(1960, "integer")),
        "seconds": call("dateSecondsSinceYear", "moment", const(2000, "integer")),
        "seconds of day": call("dateSecondsSinceMidnight", "moment"),
        "matches": call(
            "if", call("matches", "name", const("^[A-M].*n$", "string")), const(1, "integer"), const(0, "integer")
        ),
    }
    local = [
        *(derived(f"t {name}", inner, data_type="string", optype="categorical") for name, inner in table.items()),
        *(derived(f"n {name}", inner, data_type="integer") for name, inner in numbers.items()),
        derived("has start", norm_discrete("t start", "Joh")),
        derived("of lower", norm_discrete("t lower", "anna lee")),
        derived("half length", call("/", "n length", const(8, "double"))),
        derived("years", call("/", "n days", const(7305, "double"))),
        derived("decades", call("/", "n seconds", const(315576000, "double"))),
        derived("clock", call("/", "n seconds of day", const(86400, "double"))),
    ]
    fields = [
        continuous("y"),
        categorical("name"),
        categorical("code"),
        continuous("amount"),
        categorical("day", data_type="date", optype="ordinal"),
        categorical("moment", data_type="dateTime", optype="ordinal"),
    ]
    svm = Svm(
        "regression",
        [mining("y", "target"), *map(mining, ["name", "code", "amount", "day", "moment"])],
        local=local,
        output=[
            output(name, "transformedValue", ref(f"t {name}"), data_type="string", optype="categorical")
            for name in table
        ],
        **regression(109, ["has start", "of lower", "half length", "years", "decades", "clock", "n matches"]),
    )
    names = ["John", "Anna Lee", " Mary ann", "Evelyn", "aeiou", "Zo\u00eb", "\u00c5se Johansson", "Ob la di"]
    days = ["1960-01-01", "2000-02-29", "1999-12-31", "2024-03-01", "1959-12-31", "1904-02-29", "2100-03-01"]
    moments = ["2000-01-01T00:00:00", "1999-12-31T23:59:59", "2016-02-29T12:34:56", "2038-01-19T03:14:07"]
    amounts = ["1234.5678", "-0.0625", "0", "99999.9995", "3"]
    cases = [
        {"name": n, "code": c, "amount": a, "day": d, "moment": m}
        for _, n, c, a, d, m in zip(
            range(28),
            itertools.cycle(names),
            itertools.cycle(["x1", "Y", "z z"]),
            itertools.cycle(amounts),
            itertools.cycle(days),
            itertools.cycle(moments),
        )
    ]
    cases += [cases[0] | {"day": "1900-02-29"}, cases[0] | {"moment": "2001-13-01T00:00:00"}, cases[0] | {"day": ""}]
    publish("texts_and_dates", document("4.4", HAND, fields, svm), cases)


def conditions():
    """Comparisons, logic, if, isIn, missing values, mapMissingTo and defaultValue of Apply, results that do not exist."""
    double = lambda value: const(value, "double")
    flag = lambda condition: call("if", condition, double(1), double(0))
    table = {
        "missing": flag(call("isMissing", "a")),
        "there": flag(call("isNotMissing", "b")),
        "equal": flag(call("equal", "a", double(1.5))),
        "unequal": flag(call("notEqual", "colour", const("red", "string"))),
        "less": flag(call("lessThan", "a", "b")),
        "at most": flag(call("lessOrEqual", "a", "b")),
        "more": flag(call("greaterThan", "a", "b")),
        "at least": flag(call("greaterOrEqual", "a", "b")),
        "in": flag(call("isIn", "colour", const("red", "string"), const("blue", "string"))),
        "not in": flag(call("isNotIn", "a", double(0.5), double(1.5), double(-2))),
        "logic": flag(
            call(
                "or",
                call("and", call("lessThan", "a", double(0)), call("greaterThan", "b", double(0))),
                call("not", call("equal", "colour", const("green", "string"))),
            )
        ),
    }
    safe = {
        "mapped": call("-", "a", "b", mapMissingTo="-1.75"),
        "default": call("*", "a", "b", defaultValue="3.25"),
        "logarithm": call("ln", "b", invalidValueTreatment="asMissing", defaultValue="-5.5"),
        "ratio": call("/", double(1), "b", invalidValueTreatment="asMissing", defaultValue="100", mapMissingTo="50"),
        "filled": call("if", call("isMissing", "a"), double(0.375), "a"),
        "branch": call(
            "if", call("isMissing", "b"), double(-0.25), call("if", call("lessThan", "b", double(1)), "b", double(1))
        ),
        "no else": call("if", call("isNotMissing", "a"), "filled", defaultValue="2.125"),
    }
    local = [derived(name, inner) for name, inner in (table | safe).items()]
    svm = Svm(
        "regression",
        [mining("y", "target"), mining("a"), mining("b"), mining("colour")],
        local=local,
        **regression(113, ["missing", "there", "in", "unequal", *safe], kernel=linear()),
    )
    strict = Svm(
        "regression",
        [mining("y", "target"), mining("a"), mining("b"), mining("colour")],
        local=local,
        **regression(127, list(table), kernel=linear()),
    )
    fields = [continuous("y"), continuous("a"), continuous("b"), categorical("colour", ["red", "green", "blue"])]
    publish(
        "conditions_missing",
        document("4.4", HAND, fields, svm),
        grid(a=["-2", "0", "1.5", ""], b=["-1", "0", "0.5", "2.5", ""], colour=["red", "green"]),
    )
    publish(
        "conditions",
        document("4.4", HAND, fields, strict),
        [
            *grid(a=["-2", "0.5", "1.5"], b=["-2", "0.5", "1.5", "3"], colour=["red", "green", "blue"]),
            {"a": "", "b": "1", "colour": "red"},
            {"a": "1", "b": "1", "colour": ""},
        ],
    )


def tables():
    """Discretize with every closure and defaults, MapValues of one to three columns, all with mapMissingTo."""
    bins = [
        ("1", "openOpen", None, -1),
        ("2", "closedClosed", -1, 0),
        ("3", "openClosed", 0, 1.5),
        ("4", "openOpen", 2, 3),
        ("5", "closedOpen", 4, None),
    ]
    local = [
        derived(
            "binned",
            discretize("x", bins, defaultValue="-7", mapMissingTo="-9", dataType="integer"),
            data_type="integer",
        ),
        derived(
            "letter",
            discretize("x", [("p", "closedOpen", -3, 0.5), ("q", "closedOpen", 0.5, 9)], mapMissingTo="r"),
            data_type="string",
            optype="categorical",
        ),
        derived(
            "one",
            map_values(
                {"in": "colour"},
                "out",
                [("red", "0.5"), ("blue", "-1.25")],
                defaultValue="0.125",
                mapMissingTo="4.5",
                dataType="double",
            ),
        ),
        derived(
            "three",
            map_values(
                {"c": "colour", "l": "letter", "n": "count"},
                "out",
                [
                    ("red", "p", "1", "2.5"),
                    ("red", "q", "1", "-2.5"),
                    ("blue", "p", "2", "0.75"),
                    ("red", "r", "1", "1.75"),
                    ("blue", "q", "2", "-0.375"),
                ],
                defaultValue="0",
                mapMissingTo="-3.5",
                dataType="double",
            ),
        ),
    ]
    fields = [
        continuous("y"),
        continuous("x"),
        categorical("colour"),
        categorical("count", ["1", "2"], data_type="integer"),
    ]
    svm = Svm(
        "regression",
        [mining("y", "target"), mining("x"), mining("colour"), mining("count")],
        local=local,
        **regression(131, ["binned", "one", "three"], kernel=polynomial(0.125, 1.375, 3)),
    )
    cases = [
        *grid(
            x=["-5", "-1", "0", "0.5", "1.5", "1.75", "2", "2.5", "3", "4", "9.5"],
            colour=["red", "blue"],
            count=["1", "2"],
        )
    ]
    cases += [
        {"x": "", "colour": "red", "count": "1"},
        {"x": "1", "colour": "", "count": "1"},
        {"x": "1", "colour": "mauve", "count": "1"},
        {"x": "1", "colour": "red", "count": ""},
    ]
    publish("tables", document("4.4", HAND, fields, svm), cases)


# ---- targets and output ----------------------------------------------------------------------------

NUMBERS = ["-2.5", "-1.75", "-1", "-0.375", "0", "0.25", "0.625", "1", "1.5", "2.125"]


def targets():
    """min and max, then rescaleFactor, rescaleConstant and castInteger; deviations follow the factor."""
    fields = [continuous("y"), continuous("a"), continuous("b")]
    schema = [mining("y", "target"), mining("a"), mining("b")]
    cases = [*grid(a=NUMBERS[::3], b=NUMBERS), {"a": "1", "b": ""}]
    base = regression(137, ["a", "b"], kernel=polynomial(0.5, 0.25, 2))
    for rounding in ("round", "floor", "ceiling"):
        target = E(
            "Target",
            {
                "field": "y",
                "optype": "continuous",
                "min": -1.5,
                "max": 2.25,
                "rescaleFactor": 13.375,
                "rescaleConstant": -4.71875,
                "castInteger": rounding,
            },
        )
        svm = Svm("regression", schema, targets=[target], output=[output("whole", data_type="double")], **base)
        publish(f"targets_{rounding}", document("4.4", HAND, fields, svm), cases)
    base["machines"] = [Machine(base["machines"][0].terms, base["machines"][0].bias, standard_deviation=0.71875)]
    target = E("Target", {"field": "y", "rescaleFactor": -2.25, "rescaleConstant": 31.5})
    svm = Svm(
        "regression",
        schema,
        targets=[target],
        **base,
        output=[
            output("prediction", data_type="double"),
            output("deviation", "standardError", data_type="double"),
            output("residual", "residual", data_type="double"),
        ],
    )
    publish("targets_deviation", document("4.4", HAND, fields, svm), [each | {"y": "33.25"} for each in cases])


def defaults():
    """TargetValue with a defaultValue, for rows that cannot be scored because an input is missing."""
    target = E("Target", {"field": "y", "optype": "continuous"}, E("TargetValue", {"defaultValue": 17.375}))
    svm = Svm(
        "regression",
        [mining("y", "target"), mining("a"), mining("b", missingValueReplacement="0.5")],
        targets=[target],
        output=[output("prediction", data_type="double")],
        **regression(191, ["a", "b"]),
    )
    fields = [continuous("y"), continuous("a"), continuous("b")]
    publish(
        "targets_default", document("4.4", HAND, fields, svm), grid(a=[*NUMBERS[::2], "", "x"], b=[*NUMBERS[1::3], ""])
    )


def displays():
    """TargetValue with displayValue, the names of categories as they are shown, probabilities and confidence."""
    vectors, terms, biases = invented(139, 2, 8, 3)
    machines = [
        Machine(each, bias, target=b, alternate=a)
        for each, bias, (a, b) in zip(terms, biases, itertools.combinations("XYZ", 2))
    ]
    target = E(
        "Target",
        {"field": "kind", "optype": "categorical"},
        *(
            E("TargetValue", {"value": value, "displayValue": shown, "priorProbability": prior})
            for value, shown, prior in (("X", "ex", 0.5), ("Y", "why", 0.25), ("Z", "zed & co", 0.25))
        ),
    )
    out = [
        output("label", data_type="string", optype="categorical"),
        output("shown", "predictedDisplayValue", data_type="string", optype="categorical"),
        *(output(f"p{each}", "probability", value=each, data_type="double", optype="continuous") for each in "ZXY"),
        output("best", "probability", data_type="double"),
        output("sure", "confidence", data_type="double"),
        output("percent", "transformedValue", call("*", "best", const(100, "double")), data_type="double"),
        output(
            "deed",
            "decision",
            call(
                "if",
                call("and", call("equal", "label", const("Y", "string")), call("greaterThan", "a", const(0, "double"))),
                const("call", "string"),
                const("wait", "string"),
            ),
            data_type="string",
            optype="categorical",
        ),
        output("doubled", "transformedValue", call("+", "percent", "derived a"), data_type="double"),
    ]
    local = [derived("derived a", call("*", "a", const(1.5, "double")))]
    svm = Svm(
        "classification",
        [mining("kind", "target"), mining("a"), mining("b")],
        radial(0.3125),
        ["derived a", "b"],
        vectors,
        machines,
        {"classificationMethod": "OneAgainstOne"},
        targets=[target],
        output=out,
        local=local,
    )
    fields = [categorical("kind", ["X", "Y", "Z"]), continuous("a"), continuous("b")]
    publish(
        "output_features", document("4.4", HAND, fields, svm), [*grid(a=NUMBERS[::2], b=NUMBERS), {"a": "", "b": "1"}]
    )


def verification():
    """ModelVerification: records with the numbers and names that the model must give."""
    fields = [categorical("kind", ["P", "Q", "R"]), continuous("a"), continuous("b")]
    vectors, terms, biases = invented(149, 2, 6, 3)
    machines = [
        Machine(each, bias, target=b, alternate=a)
        for each, bias, (a, b) in zip(terms, biases, itertools.combinations("PQR", 2))
    ]
    cases = grid(a=NUMBERS[::3], b=NUMBERS[::2])
    classes = Svm(
        "classification",
        [mining("kind", "target"), mining("a"), mining("b")],
        radial(0.25),
        ["a", "b"],
        vectors,
        machines,
        {"classificationMethod": "OneAgainstOne"},
        output=[output("label", data_type="string"), output("pQ", "probability", value="Q", data_type="double")],
    )
    classes.verification = records(
        document("4.4", HAND, fields, classes), cases, {"label": {}, "pQ": {"precision": "1E-9"}}
    )
    publish("verified_classes", document("4.4", HAND, fields, classes), cases)
    fields[0] = continuous("y")
    target = E("Target", {"field": "y", "rescaleFactor": 3.5, "rescaleConstant": 0.25})
    numbers = Svm(
        "regression",
        [mining("y", "target"), mining("a"), mining("b")],
        targets=[target],
        **regression(151, ["a", "b"], kernel=sigmoid(0.75, 0.125)),
    )
    numbers.verification = records(
        document("4.4", HAND, fields, numbers),
        cases,
        {"predicted_y": {"precision": "1E-8", "zeroThreshold": "1E-12"}},
        {"predicted_y": "y"},
    )
    publish("verified_numbers", document("4.4", HAND, fields, numbers), cases)


def records(tree, cases, wanted, names=None):
    """A ModelVerification element; wanted: column -> attributes, names: the field by which a column goes."""
    names = names or {}
    rows = evaluate_tree(tree, cases)
    fields = [E("VerificationField", {"field": each, "column": each}) for each in cases[0]]
    fields += [
        E("VerificationField", {"field": names.get(column, column), "column": names.get(column, column), **attributes})
        for column, attributes in wanted.items()
    ]
    table = [
        E(
            "row",
            None,
            *(E(name, text=text) for name, text in case.items()),
            *(E(names.get(column, column), text=row[column]) for column in wanted),
        )
        for case, row in zip(cases, rows)
    ]
    return E(
        "ModelVerification",
        {"recordCount": len(table), "fieldCount": len(fields)},
        E("VerificationFields", None, *fields),
        E("InlineTable", None, *table),
    )


def main():
    for make in (
        knime,
        knime_own_machines,
        alternate_on_model,
        fields_of_version_two,
        pairs_without_method,
        thresholds,
        zero_vectors,
        kernel_defaults,
        prefixed,
        outer_transformations,
        treatments,
        intervals,
        predictors,
        usages,
        no_target,
        defined_functions,
        mathematics,
        texts,
        conditions,
        tables,
        targets,
        defaults,
        displays,
        verification,
    ):
        make()


if __name__ == "__main__":
    main()
