"""Models of scikit-learn pipelines, as a Python exporter writes them: transformers become derived fields."""

import datetime
import itertools

import numpy as np
from sklearn.datasets import load_diabetes, load_iris, load_wine
from sklearn.preprocessing import (
    KBinsDiscretizer,
    MinMaxScaler,
    OneHotEncoder,
    OrdinalEncoder,
    PolynomialFeatures,
    StandardScaler,
)
from sklearn.svm import NuSVC, NuSVR, OneClassSVM, SVC, SVR, LinearSVC, LinearSVR
import sklearn

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
    shortest,
    sigmoid,
)
from publish import publish

APPLICATION = ("SVM exporter for scikit-learn", "0.83")


def machine_kernel(estimator):
    gamma = getattr(estimator, "_gamma", None)
    return {
        "linear": linear,
        "rbf": lambda: radial(gamma),
        "poly": lambda: polynomial(gamma, estimator.coef0, estimator.degree),
        "sigmoid": lambda: sigmoid(gamma, estimator.coef0),
    }[estimator.kernel]()


def vectors_of(estimator):
    ids = [str(index) for index in estimator.support_]
    return ids, dict(zip(ids, estimator.support_vectors_.tolist()))


def pair_machines(estimator, names):
    """Decision > 0 is for the first category of a pair, or, of two categories, for the second."""
    ids, _ = vectors_of(estimator)
    if len(names) == 2:
        terms = list(zip(ids, estimator.dual_coef_[0]))
        return [Machine(terms, estimator.intercept_[0], target=names[0], alternate=names[1])]
    starts = np.concatenate([[0], np.cumsum(estimator.n_support_)])
    machines = []
    for k, (i, j) in enumerate(itertools.combinations(range(len(names)), 2)):
        terms = [(ids[s], estimator.dual_coef_[j - 1][s]) for s in range(starts[i], starts[i + 1])]
        terms += [(ids[s], estimator.dual_coef_[i][s]) for s in range(starts[j], starts[j + 1])]
        machines.append(
            Machine(
                [each for each in terms if each[1] != 0], estimator.intercept_[k], target=names[j], alternate=names[i]
            )
        )
    return machines


def classifier_answers(estimator, x, names, target):
    decisions = estimator.decision_function(x)
    columns = [decisions] if decisions.ndim == 1 else list(decisions.T)
    answers = {f"decision_{k}": column.tolist() for k, column in enumerate(columns, 1)}
    return answers | {f"predicted_{target}": [names[each] for each in estimator.predict(x)]}


def regressor_machine(estimator):
    ids, _ = vectors_of(estimator)
    return Machine(list(zip(ids, estimator.dual_coef_[0])), estimator.intercept_[0])


def rows_of(frame, names):
    """Texts by name, one dict per row; frame: columns of texts or numbers, None and NaN missing."""

    def text(value):
        if value is None or isinstance(value, float) and np.isnan(value):
            return ""
        if isinstance(value, (bool, np.bool_)):
            return "true" if value else "false"
        return value if isinstance(value, str) else shortest(value)

    return [dict(zip(names, map(text, row))) for row in zip(*(frame[name] for name in names))]


def scaled(name, scaler, index, source=None):
    """(x - mean) / deviation, as an expression."""
    return call("/", call("-", source or name, const(scaler.mean_[index])), const(scaler.scale_[index]))


def customers(rows, seed):
    """A table of one's own with the usual types of columns; the same for the same seed."""
    draw = np.random.default_rng(seed)
    age = draw.integers(18, 80, rows)
    income = np.round(np.exp(draw.normal(10.3, 0.5, rows)), 2)
    region = draw.choice(["north", "south", "east", "São Paulo"], rows)
    member = draw.random(rows) < 0.4
    visits = draw.poisson(3, rows)
    joined = [str(datetime.date(2004, 2, 29) + datetime.timedelta(days=int(d))) for d in draw.integers(0, 6000, rows)]
    noise = draw.normal(0, 1, rows)
    worth = 0.03 * age + np.log(income) - 9 + 0.8 * member - 0.5 * (region == "south") + 0.3 * noise
    return {
        "age": age,
        "income": income,
        "region": region,
        "member": member,
        "visits": visits,
        "joined": joined,
        "worth": worth,
        "label": (worth > np.median(worth)).astype(int),
    }


def wine_scaled():
    """StandardScaler by Apply; SVC with three categories, no classificationMethod in the way of OneAgainstOne."""
    data = load_wine()
    names = [each.replace("/", "_") for each in data.feature_names[:6]]
    x = data.data[:, :6]
    scaler = StandardScaler().fit(x[::2])
    z = scaler.transform(x)
    estimator = SVC(kernel="poly", degree=2, gamma=0.40625, coef0=0.625, decision_function_shape="ovo", C=0.75)
    estimator.fit(z[::2], data.target[::2])
    categories = ["class_0", "class_1", "class_2"]
    local = [derived(f"standardScaler({name})", scaled(name, scaler, i)) for i, name in enumerate(names)]
    schema = [mining("class", "target"), *(mining(name, importance=0.25) for name in names)]
    svm = Svm(
        "classification",
        schema,
        machine_kernel(estimator),
        [each.get("name") for each in local],
        vectors_of(estimator)[1],
        pair_machines(estimator, categories),
        {"classificationMethod": "OneAgainstOne"},
        local=local,
        output=[
            output(f"probability({each})", "probability", optype="continuous", data_type="double", value=each)
            for each in categories
        ],
    )
    fields = [categorical("class", categories), *(continuous(name) for name in names)]
    chosen = slice(0, None, 4)
    cases = rows_of(dict(zip(names, x[chosen].T)), names)
    publish(
        "py_wine_scaled",
        document("4.4", APPLICATION, fields, svm),
        cases,
        classifier_answers(estimator, z[chosen], categories, "class"),
    )


def one_hot():
    """OneHotEncoder and StandardScaler in a ColumnTransformer; a linear SVC of two categories."""
    data = customers(120, 5)
    encoder = OneHotEncoder(sparse_output=False).fit(data["region"].reshape(-1, 1))
    numbers = np.column_stack([data["age"], data["income"]])
    scaler = StandardScaler().fit(numbers)
    z = np.hstack([encoder.transform(data["region"].reshape(-1, 1)), scaler.transform(numbers)])
    estimator = SVC(kernel="linear", C=0.5).fit(z, data["label"])
    regions = encoder.categories_[0].tolist()
    local = [derived(f"oneHotEncoder(region, {each})", norm_discrete("region", each)) for each in regions]
    local += [derived(f"standardScaler({name})", scaled(name, scaler, i)) for i, name in enumerate(("age", "income"))]
    answers = ["no", "yes"]
    fields = [
        categorical("buys", answers),
        categorical("region", regions),
        continuous("age", data_type="integer"),
        continuous("income"),
    ]
    svm = Svm(
        "classification",
        [mining("buys", "target"), mining("region"), mining("age"), mining("income")],
        linear(),
        [each.get("name") for each in local],
        vectors_of(estimator)[1],
        pair_machines(estimator, answers),
        {"svmRepresentation": "SupportVectors"},
        local=local,
    )
    names = ["income", "region", "age"]
    cases = rows_of({name: data[name][:40] for name in names}, names)
    cases += [
        {"income": "30000", "region": "west", "age": "30"},
        {"income": "30000", "region": "", "age": "30"},
        {"income": "1e4", "region": "east", "age": "thirty"},
    ]
    publish(
        "py_one_hot",
        document("4.4", APPLICATION, fields, svm),
        cases,
        classifier_answers(estimator, z[:40], answers, "buys"),
    )


def imputer():
    """SimpleImputer: the means and the most frequent text become missingValueReplacement; NuSVC."""
    data = customers(90, 17)
    draw = np.random.default_rng(23)
    age = np.where(draw.random(90) < 0.2, np.nan, data["age"].astype(float))
    income = np.where(draw.random(90) < 0.2, np.nan, data["income"])
    region = np.where(draw.random(90) < 0.2, "", data["region"])
    middle = {"age": float(np.nanmean(age)), "income": float(np.nanmedian(income)), "region": "north"}
    filled = np.column_stack(
        [
            np.where(np.isnan(age), middle["age"], age),
            np.log(np.where(np.isnan(income), middle["income"], income)),
            np.where(region == "", middle["region"], region) == "north",
            np.where(region == "", middle["region"], region) == "south",
        ]
    ).astype(float)
    filled[:, 0] /= 16
    estimator = NuSVC(kernel="sigmoid", gamma=0.03125, coef0=-0.5, nu=0.5).fit(filled, data["label"])
    local = [
        derived("scaled age", call("/", "age", 16)),
        derived("ln(income)", call("ln", "income")),
        derived("region=north", norm_discrete("region", "north")),
        derived("region=south", norm_discrete("region", "south")),
    ]
    local[0][0][1].set("dataType", "double")
    schema = [
        mining("buys", "target"),
        mining("age", missingValueReplacement=middle["age"], missingValueTreatment="asMean"),
        mining("income", missingValueReplacement=middle["income"], missingValueTreatment="asMedian"),
        mining("region", missingValueReplacement="north", missingValueTreatment="asMode"),
    ]
    fields = [
        categorical("buys", ["0", "1"], data_type="integer"),
        continuous("age"),
        continuous("income"),
        categorical("region", sorted(set(data["region"]))),
    ]
    svm = Svm(
        "classification",
        schema,
        machine_kernel(estimator),
        [each.get("name") for each in local],
        vectors_of(estimator)[1],
        pair_machines(estimator, ["0", "1"]),
        local=local,
        dense=True,
    )
    names = ["age", "income", "region"]
    cases = rows_of({"age": age[:45], "income": income[:45], "region": region[:45]}, names)
    publish(
        "py_imputer",
        document("4.4", APPLICATION, fields, svm),
        cases,
        classifier_answers(estimator, filled[:45], ["0", "1"], "buys"),
    )


def polynomial_features():
    """PolynomialFeatures(3) by pow and *; SVR, its target scaled by Targets."""
    data = load_diabetes()
    names, picked = ["bmi", "bp"], [data.feature_names.index("bmi"), data.feature_names.index("bp")]
    x = data.data[:120, picked] * 10
    features = PolynomialFeatures(3, include_bias=False).fit(x)
    z = features.transform(x)
    middle, deviation = float(data.target[:120].mean()), float(data.target[:120].std())
    estimator = SVR(kernel="linear", C=0.5, epsilon=0.25).fit(z[::2], (data.target[:120:2] - middle) / deviation)
    local = []
    for powers in features.powers_:
        factors = [name if power == 1 else call("pow", name, int(power)) for name, power in zip(names, powers) if power]
        inner = factors[0] if len(factors) == 1 else call("*", *factors)
        name = " ".join(f"{each}^{power}" for each, power in zip(names, powers) if power)
        local.append(derived(f"poly({name})", inner if not isinstance(inner, str) else E("FieldRef", {"field": inner})))
    target = E(
        "Target",
        {"field": "progression", "optype": "continuous", "rescaleFactor": deviation, "rescaleConstant": middle},
    )
    svm = Svm(
        "regression",
        [mining("progression", "target"), *map(mining, names)],
        linear(),
        [each.get("name") for each in local],
        vectors_of(estimator)[1],
        [regressor_machine(estimator)],
        targets=[target],
        local=local,
        dense=True,
        output=[
            output("prediction", data_type="double"),
            output("log prediction", "transformedValue", call("ln", "prediction"), data_type="double"),
        ],
    )
    publish(
        "py_polynomial_features",
        document("4.3", APPLICATION, [continuous("progression"), *map(continuous, names)], svm),
        rows_of(dict(zip(names, x[1::3].T)), names),
        {"predicted_progression": (estimator.predict(z[1::3]) * deviation + middle).tolist()},
    )


def k_bins():
    """KBinsDiscretizer by Discretize, one column as a number and one by indicators; NuSVR."""
    data = customers(80, 31)
    x = np.column_stack([data["age"].astype(float), data["income"]])
    bins = KBinsDiscretizer(n_bins=[4, 3], encode="ordinal", strategy="quantile").fit(x)
    codes = bins.transform(x)
    z = np.column_stack([codes[:, 0], codes[:, 1] == 0, codes[:, 1] == 1, codes[:, 1] == 2]).astype(float)
    estimator = NuSVR(kernel="rbf", gamma=0.34375, nu=0.5, C=2).fit(z, data["worth"])

    def edges(index, names):
        inner = [float(edge) for edge in bins.bin_edges_[index][1:-1]]
        low, high = [None, *inner], [*inner, None]
        return [(name, "openOpen" if a is None else "closedOpen", a, b) for name, a, b in zip(names, low, high)]

    local = [
        derived("bin(age)", discretize("age", edges(0, ["0", "1", "2", "3"])), data_type="integer"),
        derived(
            "bin(income)",
            discretize("income", edges(1, ["low", "middle", "high"])),
            data_type="string",
            optype="categorical",
        ),
        *(derived(f"bin(income)={each}", norm_discrete("bin(income)", each)) for each in ("low", "middle", "high")),
    ]
    svm = Svm(
        "regression",
        [mining("worth", "target"), mining("age"), mining("income")],
        machine_kernel(estimator),
        ["bin(age)", *(each.get("name") for each in local[2:])],
        vectors_of(estimator)[1],
        [regressor_machine(estimator)],
        local=local,
    )
    edge_rows = [
        {"age": shortest(edge), "income": shortest(other)}
        for edge, other in zip(bins.bin_edges_[0][1:-1], itertools.cycle(bins.bin_edges_[1][1:-1]))
    ]
    at_edges = np.array([[float(row["age"]), float(row["income"])] for row in edge_rows])
    codes = np.vstack([codes[:40], bins.transform(at_edges)])
    z = np.column_stack([codes[:, 0], codes[:, 1] == 0, codes[:, 1] == 1, codes[:, 1] == 2]).astype(float)
    names = ["age", "income"]
    publish(
        "py_k_bins",
        document("4.4", APPLICATION, [continuous("worth"), continuous("age"), continuous("income")], svm),
        [*rows_of(dict(zip(names, x[:40].T)), names), *edge_rows, {"age": "", "income": "1000"}],
        {"predicted_worth": estimator.predict(z).tolist()},
    )


def ordinal():
    """OrdinalEncoder by MapValues, -1 for what it does not know, a table of two columns beside it; SVR."""
    sizes, colours = ["S", "M", "L", "XL"], ["blue", "red", "green & grey"]
    pairs = list(itertools.product(sizes, colours))
    rank = {pair: 0.25 * i * i - 1.5 * i for i, pair in enumerate(pairs[:-2])}
    draw = np.random.default_rng(3)
    picks = [pairs[i] for i in draw.integers(0, len(pairs), 60)]
    y = np.array([1.5 * sizes.index(a) - colours.index(b) for a, b in picks]) + draw.normal(0, 0.25, 60)
    encoder = OrdinalEncoder(categories=[sizes], handle_unknown="use_encoded_value", unknown_value=-1)
    encoder.fit([[size] for size, _ in picks])

    def encode(rows):
        return np.column_stack(
            [encoder.transform([[size] for size, _ in rows])[:, 0], [rank.get(row, 0.125) for row in rows]]
        )

    estimator = SVR(kernel="poly", degree=2, gamma=0.25, coef0=1.5, C=0.25).fit(encode(picks), y)
    local = [
        derived(
            "ordinal(size)",
            map_values(
                {"input": "size"}, "output", list(zip(sizes, map(str, range(4)))), defaultValue="-1", dataType="integer"
            ),
            data_type="integer",
        ),
        derived(
            "rank",
            map_values(
                {"size": "size", "colour": "colour"},
                "rank",
                [(*pair, shortest(value)) for pair, value in rank.items()],
                defaultValue="0.125",
                mapMissingTo="-2.5",
                dataType="double",
            ),
        ),
    ]
    schema = [mining("price", "target"), mining("size", invalidValueTreatment="asIs"), mining("colour")]
    fields = [continuous("price"), categorical("size", sizes), categorical("colour", colours)]
    svm = Svm(
        "regression",
        schema,
        machine_kernel(estimator),
        ["ordinal(size)", "rank"],
        vectors_of(estimator)[1],
        [regressor_machine(estimator)],
        local=local,
    )
    rows = [*pairs, *picks[:15], ("XXL", "red")]
    cases = [{"size": size, "colour": colour} for size, colour in rows]
    cases += [{"size": "M", "colour": ""}, {"size": "", "colour": "red"}, {"size": "M", "colour": "mauve"}]
    publish(
        "py_ordinal",
        document("4.4", APPLICATION, fields, svm),
        cases,
        {"predicted_price": estimator.predict(encode(rows)).tolist()},
    )


def logarithms():
    """FunctionTransformer(log1p, sqrt, exp) by Apply; LinearSVR, whose weights are the one vector."""
    data = customers(70, 41)
    income, age, visits = data["income"], data["age"].astype(float), data["visits"].astype(float)
    z = np.column_stack([np.log1p(income), np.log10(income), np.sqrt(age), np.exp(-visits / 4.0), np.abs(age - 50)])
    estimator = LinearSVR(C=0.0625, max_iter=200_000, random_state=0).fit(z, data["worth"])
    local = [
        derived("log1p(income)", call("ln1p", "income")),
        derived("log10(income)", call("log10", "income")),
        derived("sqrt(age)", call("sqrt", "age")),
        derived("exp(-visits/4)", call("exp", call("/", call("*", const(-1, "double"), "visits"), const(4, "double")))),
        derived("abs(age-50)", call("abs", call("-", "age", const(50, "double")))),
    ]
    svm = Svm(
        "regression",
        [mining("worth", "target"), mining("income"), mining("age"), mining("visits")],
        linear(),
        [each.get("name") for each in local],
        {"coefficients": estimator.coef_.tolist()},
        [Machine([("coefficients", 1.0)], float(np.ravel(estimator.intercept_)[0]))],
        local=local,
        dense=True,
    )
    names = ["income", "age", "visits"]
    fields = [
        continuous("worth"),
        continuous("income"),
        continuous("age", data_type="integer"),
        continuous("visits", data_type="integer"),
    ]
    publish(
        "py_logarithms",
        document("4.4", APPLICATION, fields, svm),
        rows_of({name: data[name][:40] for name in names}, names),
        {"predicted_worth": estimator.predict(z[:40]).tolist()},
    )


def booleans():
    """Boolean and integer inputs; a boolean target of two categories."""
    data = customers(100, 53)
    z = np.column_stack(
        [data["member"], ~data["member"] & (data["visits"] > 2), data["visits"], data["age"] / 32.0]
    ).astype(float)
    estimator = SVC(kernel="rbf", gamma=0.15625, C=1.75).fit(z, data["label"])
    lively = call("and", call("not", "member"), call("greaterThan", "visits", 2))
    local = [
        derived("member as number", norm_discrete("member", "true")),
        derived("lively", lively, data_type="boolean", optype="categorical"),
        derived("lively as number", call("if", "lively", const(1, "double"), const(0, "double"))),
        derived("age/32", call("/", "age", const(32, "double"))),
    ]
    fields = [
        categorical("happy", ["false", "true"], data_type="boolean"),
        categorical("member", ["true", "false"], data_type="boolean"),
        continuous("visits", data_type="integer"),
        continuous("age", data_type="integer"),
    ]
    svm = Svm(
        "classification",
        [mining("happy", "target"), mining("member"), mining("visits"), mining("age")],
        machine_kernel(estimator),
        ["member as number", "lively as number", "visits", "age/32"],
        vectors_of(estimator)[1],
        pair_machines(estimator, ["false", "true"]),
        local=local,
    )
    names = ["member", "visits", "age"]
    cases = rows_of({name: data[name][:40] for name in names}, names)
    cases += [
        {"member": "maybe", "visits": "3", "age": "40"},
        {"member": "1", "visits": "3", "age": ""},
        {"member": "false", "visits": "", "age": "40"},
    ]
    publish(
        "py_booleans",
        document("4.4", APPLICATION, fields, svm),
        cases,
        classifier_answers(estimator, z[:40], ["false", "true"], "happy"),
    )


def linear_one_against_all():
    """LinearSVC: one machine per category, the largest decision wins."""
    data = load_iris()
    names = ["sepal_length", "sepal_width", "petal_length", "petal_width"]
    estimator = LinearSVC(C=0.5, random_state=0, max_iter=100_000).fit(data.data, data.target)
    categories = [str(each) for each in data.target_names]
    vectors = {f"coef_{i}": row.tolist() for i, row in enumerate(estimator.coef_)}
    machines = [
        Machine([(f"coef_{i}", 1.0)], bias, target=category)
        for i, (bias, category) in enumerate(zip(estimator.intercept_, categories))
    ]
    svm = Svm(
        "classification",
        [mining("species", "target"), *map(mining, names)],
        linear(),
        names,
        vectors,
        machines,
        {"classificationMethod": "OneAgainstAll", "maxWins": "true"},
        dense=True,
        output=[output("class", data_type="string", optype="categorical")],
    )
    fields = [categorical("species", categories), *map(continuous, names)]
    publish(
        "py_linear_one_against_all",
        document("4.4", APPLICATION, fields, svm),
        rows_of(dict(zip(names, data.data[::4].T)), names),
        classifier_answers(estimator, data.data[::4], categories, "species"),
    )


def rest_ensemble():
    """OneVsRestClassifier(SVC): a machine per category with support vectors of its own, the smallest decision wins."""
    data = load_iris()
    names = ["sepal length (cm)", "petal width (cm)"]
    x = data.data[:, [0, 3]]
    categories = [str(each) for each in data.target_names]
    vectors, machines, decisions = {}, [], []
    for i, category in enumerate(categories):
        estimator = SVC(kernel="rbf", gamma=0.6875, C=1.25).fit(x[::2], data.target[::2] == i)
        ids, own = vectors_of(estimator)
        vectors |= own
        machines.append(Machine(list(zip(ids, -estimator.dual_coef_[0])), -estimator.intercept_[0], target=category))
        decisions.append((-estimator.decision_function(x[::4])).tolist())
    predicted = [categories[int(np.argmin(row))] for row in zip(*decisions)]
    svm = Svm(
        "classification",
        [mining("species", "target"), *map(mining, names)],
        radial(0.6875),
        names,
        vectors,
        machines,
        {"classificationMethod": "OneAgainstAll"},
    )
    fields = [categorical("species", categories), *map(continuous, names)]
    answers = {f"decision_{k}": column for k, column in enumerate(decisions, 1)} | {"predicted_species": predicted}
    publish(
        "py_rest_ensemble",
        document("4.1", APPLICATION, fields, svm),
        rows_of(dict(zip(names, x[::4].T)), names),
        answers,
    )


def one_class():
    """OneClassSVM in an AnomalyDetectionModel; the document has no target at all."""
    data = load_iris()
    names = ["x1", "x2", "x3", "x4"]
    scaler = MinMaxScaler(clip=True).fit(data.data[:100])
    z = scaler.transform(data.data)
    estimator = OneClassSVM(kernel="rbf", gamma=0.8125, nu=0.125).fit(z[:100:2])
    local = [
        derived(
            f"minMaxScaler({name})",
            norm_continuous(name, [(scaler.data_min_[i], 0.0), (scaler.data_max_[i], 1.0)], outliers="asExtremeValues"),
        )
        for i, name in enumerate(names)
    ]
    svm = Svm(
        "regression",
        [*map(mining, names)],
        machine_kernel(estimator),
        [each.get("name") for each in local],
        vectors_of(estimator)[1],
        [regressor_machine(estimator)],
        local=local,
        output=[
            output("decisionFunction", data_type="double", optype="continuous"),
            output(
                "outlier",
                "transformedValue",
                call("lessOrEqual", "decisionFunction", const(0, "double")),
                data_type="boolean",
                optype="categorical",
            ),
        ],
    )
    wrapped = E(
        "AnomalyDetectionModel",
        {"functionName": "regression", "algorithmType": "ocsvm"},
        E("MiningSchema", None, *map(mining, names)),
        svm.element(),
    )
    rows = slice(0, None, 4)
    publish(
        "py_one_class",
        document("4.4", APPLICATION, [continuous(name) for name in names], wrapped),
        rows_of(dict(zip(names, data.data[rows].T)), names),
        {"decision_1": estimator.decision_function(z[rows]).tolist()},
    )


def chain():
    """The only segment of a MiningModel, with transformations of the outer model before those of the inner."""
    data = load_wine()
    names = ["alcohol", "hue", "proline"]
    x = data.data[:, [data.feature_names.index(name) for name in names]]
    scaler = StandardScaler().fit(x)
    z = scaler.transform(x)
    estimator = SVC(kernel="rbf", gamma=0.21875, decision_function_shape="ovo").fit(z[::2], data.target[::2])
    categories = ["Barolo", "Grignolino", "Barbera"]
    local = [derived(f"z({name})", scaled(name, scaler, i)) for i, name in enumerate(names)]
    svm = Svm(
        "classification",
        [mining("wine", "target"), *map(mining, names)],
        machine_kernel(estimator),
        [each.get("name") for each in local],
        vectors_of(estimator)[1],
        pair_machines(estimator, categories),
        {"classificationMethod": "OneAgainstOne"},
        local=local,
        output=[
            output("wine name", data_type="string"),
            output("P(Barolo)", "probability", value="Barolo", data_type="double"),
        ],
    )
    wrapped = E(
        "MiningModel",
        {"functionName": "classification"},
        E("MiningSchema", None, mining("wine", "target"), *map(mining, names)),
        E("Segmentation", {"multipleModelMethod": "modelChain"}, E("Segment", {"id": "1"}, E("True"), svm.element())),
    )
    fields = [categorical("wine", categories), *map(continuous, names)]
    publish(
        "py_mining_model",
        document("4.4", APPLICATION, fields, wrapped),
        rows_of(dict(zip(names, x[::4].T)), names),
        classifier_answers(estimator, z[::4], categories, "wine"),
    )


def dates():
    """Dates by dateDaysSinceYear, a clock time by dateSecondsSinceMidnight, and a count of days; SVR."""
    data = customers(60, 61)
    seconds = np.random.default_rng(62).integers(0, 86400, 60)
    joined = data["joined"]
    days = np.array([(datetime.date.fromisoformat(each) - datetime.date(1970, 1, 1)).days for each in joined])
    clock = [f"{s // 3600:02}:{s // 60 % 60:02}:{s % 60:02}" for s in seconds]
    counted = (
        np.array([(datetime.date.fromisoformat(each) - datetime.date(2000, 1, 1)).days for each in joined])
        + seconds % 7
    )
    z = np.column_stack([days / 1024.0, seconds / 32768.0, counted / 2048.0])
    estimator = SVR(kernel="rbf", gamma=0.09375, C=3).fit(z, data["worth"])
    local = [
        derived("days", call("dateDaysSinceYear", "joined", 1970), data_type="integer"),
        derived("days/1024", call("/", "days", const(1024, "double"))),
        derived("seconds/32768", call("/", call("dateSecondsSinceMidnight", "clock"), const(32768, "double"))),
        derived("counted/2048", call("/", "counted", const(2048, "double"))),
    ]
    fields = [
        continuous("worth"),
        categorical("joined", data_type="date", optype="ordinal"),
        categorical("clock", data_type="time", optype="ordinal"),
        continuous("counted", data_type="dateDaysSince[2000]"),
    ]
    svm = Svm(
        "regression",
        [mining("worth", "target"), mining("joined"), mining("clock"), mining("counted")],
        machine_kernel(estimator),
        [each.get("name") for each in local[1:]],
        vectors_of(estimator)[1],
        [regressor_machine(estimator)],
        local=local,
    )
    cases = [{"joined": a, "clock": b, "counted": str(c)} for a, b, c in zip(joined, clock, counted)][:40]
    cases += [
        {"joined": "2023-02-29", "clock": "10:00:00", "counted": "7000"},
        {"joined": "", "clock": "10:00:00", "counted": "7000"},
        {"joined": "2000-02-29", "clock": "24:61:00", "counted": "60"},
        {"joined": "1969-12-31", "clock": "00:00:00", "counted": "-1"},
        {"joined": "2012-05-06", "clock": "23:59:59", "counted": "2012-05-06"},
    ]
    publish(
        "py_dates",
        document("4.4", APPLICATION, fields, svm),
        cases,
        {"predicted_worth": estimator.predict(z[:40]).tolist()},
    )


def main():
    for make in (
        wine_scaled,
        one_hot,
        imputer,
        polynomial_features,
        k_bins,
        ordinal,
        logarithms,
        booleans,
        linear_one_against_all,
        rest_ensemble,
        one_class,
        chain,
        dates,
    ):
        make()


if __name__ == "__main__":
    main()
