"""A PMML evaluator for support vector machines, written from the standard alone: slow, small, no kin of the scorer.

    document = Document(path)
    row = document.score({"x": "1.5", "colour": "red"})      # cells as texts, "" is missing

A row is a dict of columns: `predicted_<target>`, `probability_<category>`, `confidence`, `stddev`, `ci_lower`,
`ci_upper`, the names of the OutputFields, `status` (0, 90027 for an invalid input, 90029 for a missing one), and beside
them `decision_<k>` and `scale_<k>` for each machine of the document: the scale is what a relative rounding error of the
terms weighs. An invalid input counts where the row's computation reads it, not in a branch of an `if` that is not
taken. What the evaluator does not know it refuses with NotImplementedError.
"""

import math
import xml.etree.ElementTree as ET

import functions
from values import INVALID, constant, convert, is_number, number_text, parse, text_of

EXTENDER = "ZARN"
INVALID_STATUS, MISSING_STATUS = 90027, 90029
INTERVAL_FACTOR = -math.log(1 - 0.95)


class RowError(Exception):
    """The row has no result; the argument is its status."""


def local(element):
    return element.tag.rpartition("}")[2] if isinstance(element.tag, str) else "comment"


def children(element, name):
    return [] if element is None else [child for child in element if local(child) == name]


def child(element, name):
    return next(iter(children(element, name)), None)


def strip_extensions(element):
    return [each for each in element if local(each) != "Extension"]


def number(element, name, default=None):
    text = element.get(name)
    return default if text is None else float(text)


def in_interval(interval, value):
    low, high = number(interval, "leftMargin", -math.inf), number(interval, "rightMargin", math.inf)
    closure = interval.get("closure")
    above = value >= low if closure.startswith("closed") else value > low
    below = value <= high if closure.endswith("Closed") else value < high
    return above and below


# ---- fields ----------------------------------------------------------------------------------------


class Field:
    """A DataField together with the MiningField that treats it."""

    def __init__(self, element):
        self.name, self.optype = element.get("name"), element.get("optype")
        self.type = element.get("dataType") or ("double" if self.optype == "continuous" else "string")
        if element.get("isCyclic", "0") != "0":
            raise NotImplementedError("cyclic fields")
        self.values = {"valid": [], "invalid": [], "missing": []}
        self.display = {}
        for value in children(element, "Value"):
            text = value.get("value")
            self.values[value.get("property", "valid")].append(text)
            self.display[text] = value.get("displayValue", text)
        self.intervals = children(element, "Interval")
        self.mining = None

    def value(self, text):
        """The cell's value after all treatments of the mining schema."""
        value = self._checked(text)
        mining = self.mining
        if value is INVALID:
            rule = mining.get("invalidValueTreatment", "returnInvalid")
            if rule == "asMissing":
                value = None
            elif rule == "asIs":
                value = parse(text, self.type)
            elif rule == "asValue":
                value = parse(mining.get("invalidValueReplacement"), self.type)
        if is_number(value):
            value = self._outlier(value)
        if value is None:
            if mining.get("missingValueTreatment") == "returnInvalid":
                return INVALID
            if mining.get("missingValueReplacement") is not None:
                value = parse(mining.get("missingValueReplacement"), self.type)
        return value

    def _checked(self, text):
        if text == "" or self._among(text, "missing"):
            return None
        value = parse(text, self.type)
        if value is INVALID or self._among(text, "invalid"):
            return INVALID
        if self.optype != "continuous":
            return value if not self.values["valid"] or self._among(text, "valid") else INVALID
        if self.intervals or self.values["valid"]:
            allowed = any(in_interval(each, value) for each in self.intervals) or self._among(text, "valid")
            return value if allowed else INVALID
        return value

    def _among(self, text, kind):
        value = parse(text, self.type)
        return any(
            parse(each, self.type) == value and value is not INVALID or each == text for each in self.values[kind]
        )

    def _outlier(self, value):
        rule = self.mining.get("outliers", "asIs")
        low, high = number(self.mining, "lowValue", -math.inf), number(self.mining, "highValue", math.inf)
        if rule == "asMissingValues":
            return value if low <= value <= high else None
        if rule == "asExtremeValues":
            clipped = min(max(value, low), high)
            return value if clipped == value else convert(clipped, self.type)
        return value


# ---- expressions -----------------------------------------------------------------------------------


class Scope:
    """Values by name: given ones, and derived fields that are computed when they are first asked for."""

    def __init__(self, given, derived, defined):
        self.given, self.derived, self.defined = given, derived, defined

    def value(self, name):
        if name not in self.given:
            element = self.derived[name]
            value = evaluate(expression_of(element), self, element.get("dataType"))
            self.given[name] = convert(value, element.get("dataType"))
        return self.given[name]


def expression_of(element):
    return next(each for each in strip_extensions(element) if local(each) not in ("Value", "ParameterField"))


def evaluate(element, scope, data_type=None):
    handler = EXPRESSIONS.get(local(element))
    if handler is None:
        raise NotImplementedError(f"expression {local(element)}")
    return handler(element, scope, data_type)


def replacement(element, name, data_type):
    text = element.get(name)
    return None if text is None else constant(text, data_type)


def field_ref(element, scope, data_type):
    value = scope.value(element.get("field"))
    return replacement(element, "mapMissingTo", data_type) if value is None else value


def constant_expression(element, scope, data_type):
    if element.get("missing") == "true":
        return None
    return constant(element.text or "", element.get("dataType"))


def norm_continuous(element, scope, data_type):
    value = scope.value(element.get("field"))
    if value is INVALID:
        return value
    missing = number(element, "mapMissingTo")
    if value is None:
        return missing
    points = [(number(each, "orig"), number(each, "norm")) for each in children(element, "LinearNorm")]
    outliers = element.get("outliers", "asIs")
    if not points[0][0] <= value <= points[-1][0]:
        if outliers == "asMissingValues":
            return missing
        if outliers == "asExtremeValues":
            return points[0][1] if value < points[0][0] else points[-1][1]
    last = len(points) - 2
    segment = next((i for i in range(last) if value <= points[i + 1][0]), last)
    (a, fa), (b, fb) = points[segment : segment + 2]
    return fa + (value - a) / (b - a) * (fb - fa)


def norm_discrete(element, scope, data_type):
    value = scope.value(element.get("field"))
    if value is INVALID:
        return value
    if value is None:
        return number(element, "mapMissingTo")
    return 1.0 if matches_text(value, element.get("value")) else 0.0


def matches_text(value, text):
    """Whether a value is the one that an attribute or a cell of a document writes."""
    if is_number(value):
        other = parse(text, "double")
        return other is not INVALID and other == value
    return text_of(value) == text


def discretize(element, scope, data_type):
    value = scope.value(element.get("field"))
    if value is INVALID:
        return value
    if value is None:
        return replacement(element, "mapMissingTo", data_type)
    for each in children(element, "DiscretizeBin"):
        if in_interval(child(each, "Interval"), value):
            return constant(each.get("binValue"), data_type)
    return replacement(element, "defaultValue", data_type)


def map_values(element, scope, data_type):
    pairs = [(each.get("column"), scope.value(each.get("field"))) for each in children(element, "FieldColumnPair")]
    if any(value is INVALID for _, value in pairs):
        return INVALID
    if any(value is None for _, value in pairs):
        return replacement(element, "mapMissingTo", data_type)
    for row in children(child(element, "InlineTable"), "row"):
        cells = {local(cell): cell.text or "" for cell in row}
        if all(matches_text(value, cells.get(column, "")) for column, value in pairs):
            return constant(cells[element.get("outputColumn")], data_type)
    return replacement(element, "defaultValue", data_type)


def apply(element, scope, data_type):
    name, arguments = element.get("function"), strip_extensions(element)
    if name == "if":
        return apply_if(arguments, element, scope, data_type)
    values = [evaluate(each, scope) for each in arguments]
    if element.get("mapMissingTo") is not None and None in values:
        return replacement(element, "mapMissingTo", data_type)
    if name in scope.defined:
        result = call_defined(scope.defined[name], values, scope)
    else:
        result = functions.apply(name, values)
        if result is INVALID and INVALID not in values:
            rule = element.get("invalidValueTreatment", "returnInvalid")
            result = None if rule == "asMissing" else INVALID
    return replacement(element, "defaultValue", data_type) if result is None else result


def apply_if(arguments, element, scope, data_type):
    condition = evaluate(arguments[0], scope)
    if condition is INVALID:
        return INVALID
    if condition is None:
        result = replacement(element, "mapMissingTo", data_type)
    else:
        branch = 1 if condition else 2
        result = evaluate(arguments[branch], scope) if branch < len(arguments) else None
    return replacement(element, "defaultValue", data_type) if result is None else result


def call_defined(definition, values, scope):
    parameters = children(definition, "ParameterField")
    if len(parameters) != len(values):
        raise ValueError("wrong number of arguments")
    given = {each.get("name"): convert(value, each.get("dataType")) for each, value in zip(parameters, values)}
    inner = Scope(given, {}, scope.defined)
    return convert(evaluate(expression_of(definition), inner, definition.get("dataType")), definition.get("dataType"))


EXPRESSIONS = {
    "FieldRef": field_ref,
    "Constant": constant_expression,
    "NormContinuous": norm_continuous,
    "NormDiscrete": norm_discrete,
    "Discretize": discretize,
    "MapValues": map_values,
    "Apply": apply,
}


# ---- machines --------------------------------------------------------------------------------------


def dot(a, b):
    return math.fsum(x * y for x, y in zip(a, b))


class Kernel:
    """Gives K(x, v), and the size that a rounding error in it is measured by."""

    def __init__(self, model):
        for name in ("LinearKernelType", "PolynomialKernelType", "RadialBasisKernelType", "SigmoidKernelType"):
            element = child(model, name)
            if element is not None:
                self.name = name
                self.gamma, self.coef0 = number(element, "gamma", 1.0), number(element, "coef0", 1.0)
                self.degree = number(element, "degree", 1.0)
                return
        raise NotImplementedError("no kernel")

    def __call__(self, x, v):
        if self.name == "RadialBasisKernelType":
            exponent = self.gamma * math.fsum((a - b) ** 2 for a, b in zip(x, v))
            value = math.exp(-exponent)
            return value, value * (1 + exponent)
        product, size = dot(x, v), math.fsum(abs(a * b) for a, b in zip(x, v))
        if self.name == "LinearKernelType":
            return product, size
        inner = self.gamma * product + self.coef0
        size = abs(self.gamma) * size + abs(self.coef0)
        if self.name == "PolynomialKernelType":
            return inner**self.degree, size**self.degree
        return math.tanh(inner), size


class Machine:
    def __init__(self, element, model):
        self.target, self.alternate = element.get("targetCategory"), element.get("alternateTargetCategory")
        if self.alternate is None:
            self.alternate = model.get("alternateBinaryTargetCategory")
        self.threshold = number(element, "threshold", number(model, "threshold", 0.0))
        self.vectors = [each.get("vectorId") for each in children(child(element, "SupportVectors"), "SupportVector")]
        coefficients = child(element, "Coefficients")
        self.coefficients = [number(each, "value", 0.0) for each in children(coefficients, "Coefficient")]
        self.bias = number(coefficients, "absoluteValue", 0.0)
        if len(self.vectors) != len(self.coefficients):
            raise ValueError("as many coefficients as support vectors")
        extension = child(element, "Extension")
        self.extension = extension if extension is not None and extension.get("extender") == EXTENDER else None

    def decide(self, kernels):
        terms = [(c * kernels[v][0], abs(c) * kernels[v][1]) for c, v in zip(self.coefficients, self.vectors)]
        return math.fsum([t for t, _ in terms] + [self.bias]), math.fsum([s for _, s in terms] + [abs(self.bias)])

    def choose(self, f, max_wins):
        hit = f > self.threshold if max_wins else f < self.threshold
        return self.target if hit else self.alternate


def couple(r):
    """Pairwise coupling: Wu, Lin and Weng (2004), JMLR 5, algorithm 2."""
    k = len(r)
    q = [
        [sum(r[j][t] ** 2 for j in range(k) if j != t) if t == u else -r[u][t] * r[t][u] for u in range(k)]
        for t in range(k)
    ]
    p = [1 / k] * k
    for _ in range(100):
        for t in range(k):
            whole = sum(p[a] * q[a][b] * p[b] for a in range(k) for b in range(k))
            p[t] = (whole - sum(q[t][j] * p[j] for j in range(k) if j != t)) / q[t][t]
            total = sum(p)
            p = [each / total for each in p]
        qp = [dot(q[t], p) for t in range(k)]
        whole = dot(p, qp)
        if max(abs(each - whole) for each in qp) < 0.005 / k:
            break
    return p


# ---- document --------------------------------------------------------------------------------------


def unwrap(root):
    """The SupportVectorMachineModel, and the models around it from the outermost inwards."""
    around, here = [], root
    while True:
        inner = next(
            (
                each
                for each in here
                if local(each) in ("SupportVectorMachineModel", "MiningModel", "AnomalyDetectionModel")
            ),
            None,
        )
        if inner is None:
            raise NotImplementedError("no support vector machine")
        if local(inner) == "SupportVectorMachineModel":
            return inner, around
        around.append(inner)
        if local(inner) == "MiningModel":
            segments = children(child(inner, "Segmentation"), "Segment")
            if len(segments) != 1 or child(segments[0], "True") is None:
                raise NotImplementedError("more than one segment")
            inner = segments[0]
        here = inner


class Document:
    def __init__(self, path):
        root = ET.parse(path).getroot()
        self.fields = {each.get("name"): Field(each) for each in children(child(root, "DataDictionary"), "DataField")}
        self.model, around = unwrap(root)
        models = [*around, self.model]
        for model in models:
            for mining in children(child(model, "MiningSchema"), "MiningField"):
                field = self.fields.get(mining.get("name"))
                if field is not None and (field.mining is None or len(mining.attrib) > len(field.mining.attrib)):
                    field.mining = mining
        homes = [child(root, "TransformationDictionary"), *(child(each, "LocalTransformations") for each in models)]
        self.derived = {each.get("name"): each for home in homes for each in children(home, "DerivedField")}
        self.defined = {each.get("name"): each for home in homes for each in children(home, "DefineFunction")}
        self.outputs = [each for model in reversed(models) for each in children(child(model, "Output"), "OutputField")]
        roles = {
            name: field.mining.get("usageType", "active")
            for name, field in self.fields.items()
            if field.mining is not None
        }
        self.target = next((name for name, role in roles.items() if role in ("target", "predicted")), None)
        self.active = [name for name, role in roles.items() if role == "active"]
        self.treatment = next((each for model in models for each in children(child(model, "Targets"), "Target")), None)
        self.is_classification = self.model.get("functionName") == "classification"
        self._read_vectors()
        self.kernel = Kernel(self.model)
        self.machines = [Machine(each, self.model) for each in children(self.model, "SupportVectorMachine")]
        self._read_method()

    def _read_vectors(self):
        dictionary = child(self.model, "VectorDictionary")
        self.columns = strip_extensions(child(dictionary, "VectorFields"))
        self.vectors = {each.get("id"): self._vector(each) for each in children(dictionary, "VectorInstance")}

    def _vector(self, instance):
        dense = child(instance, "Array")
        if dense is not None:
            vector = [float(token) for token in dense.text.split()]
        else:
            sparse = child(instance, "REAL-SparseArray")
            vector = [number(sparse, "defaultValue", 0.0)] * int(sparse.get("n", len(self.columns)))
            indices, entries = child(sparse, "Indices"), child(sparse, "REAL-Entries")
            lists = [[] if each is None else (each.text or "").split() for each in (indices, entries)]
            for index, entry in zip(*lists):
                vector[int(index) - 1] = float(entry)
        if len(vector) != len(self.columns):
            raise ValueError("a vector has one entry per vector field")
        return vector

    def _read_method(self):
        self.max_wins = self.model.get("maxWins") == "true"
        method = self.model.get("classificationMethod")
        categories = [] if self.target is None else list(self.fields[self.target].values["valid"])
        if self.is_classification and not categories:
            for machine in self.machines:
                for name in (machine.target, machine.alternate):
                    if name is not None and name not in categories:
                        categories.append(name)
        self.categories = categories
        pairs = {frozenset((each.target, each.alternate)) for each in self.machines}
        all_pairs = len(categories) * (len(categories) - 1) // 2
        complete = all(each.alternate for each in self.machines) and len(pairs) == len(self.machines) == all_pairs
        self.one_against_one = method == "OneAgainstOne" or method is None and complete

    # -- one row

    def score(self, cells):
        row = {}
        try:
            return row | self._score(cells, row)
        except RowError as error:
            return {"status": error.args[0]}

    def _score(self, cells, row):
        raw = {name: self.fields[name].value(cells.get(name, "")) for name in self.active}
        scope = Scope(dict(raw), self.derived, self.defined)
        try:
            x = [self._entry(column, scope) for column in self.columns]
        except RowError as error:
            if error.args[0] != MISSING_STATUS or not self._answer_by_default(row):
                raise
        else:
            self._decide(x, row)
        self._write_outputs(cells, raw, scope, row)
        row["status"] = 0
        return row

    def _decide(self, x, row):
        kernels = {name: self.kernel(x, vector) for name, vector in self.vectors.items()}
        decisions = [machine.decide(kernels) for machine in self.machines]
        for k, (value, size) in enumerate(decisions, 1):
            row[f"decision_{k}"], row[f"scale_{k}"] = value, size
        if self.is_classification:
            self._classify([value for value, _ in decisions], row)
        else:
            self._regress(decisions[0], row)

    def _answer_by_default(self, row):
        """What the target says of a row that cannot be scored because an input is missing. Returns: whether it does."""
        values = children(self.treatment, "TargetValue")
        if self.is_classification:
            priors = {each.get("value"): number(each, "priorProbability") for each in values}
            if None in priors.values() or set(priors) != set(self.categories):
                return False
            row |= {f"probability_{each}": priors[each] for each in self.categories}
            row |= {
                "confidence": max(priors.values()),
                f"predicted_{self.target}": max(self.categories, key=priors.get),
            }
            return True
        default = next((each.get("defaultValue") for each in values if each.get("defaultValue") is not None), None)
        if default is not None:
            row[f"predicted_{self.target}"] = float(default)
            row[f"scale_predicted_{self.target}"] = abs(float(default))
        return default is not None

    def _entry(self, column, scope):
        if local(column) == "CategoricalPredictor":
            value = scope.value(column.get("name"))
            result = value if value is None or value is INVALID else float(matches_text(value, column.get("value")))
        else:
            result = field_ref(column, scope, "double")
        if result is INVALID:
            raise RowError(INVALID_STATUS)
        if result is None:
            raise RowError(MISSING_STATUS)
        return float(result)

    def _classify(self, f, row):
        if self.machines[-1].extension is not None:
            probabilities = self._coupled(f)
        elif self.one_against_one and len(self.categories) > 2:
            votes = [machine.choose(value, self.max_wins) for machine, value in zip(self.machines, f)]
            probabilities = [votes.count(category) / len(votes) for category in self.categories]
        else:
            probabilities = None
        if probabilities is not None:
            row |= {f"probability_{c}": p for c, p in zip(self.categories, probabilities)}
            row["confidence"] = max(probabilities)
            predicted = self.categories[probabilities.index(max(probabilities))]
        elif len(self.machines) == 1:
            predicted = self.machines[0].choose(f[0], self.max_wins)
        else:
            extreme = max(f) if self.max_wins else min(f)
            predicted = self.machines[f.index(extreme)].target
        row[f"predicted_{self.target}"] = predicted

    def _coupled(self, f):
        k = len(self.categories)
        r = [[0.0] * k for _ in range(k)]
        for machine, value in zip(self.machines, f):
            pair, sigmoid = child(machine.extension, "ResponseCategory"), child(machine.extension, "ProbabilityParam")
            i, j = self.categories.index(pair.get("response")), self.categories.index(pair.get("nonresponse"))
            exponent = number(sigmoid, "A") * value + number(sigmoid, "B")
            p = math.exp(-exponent) / (1 + math.exp(-exponent)) if exponent > 0 else 1 / (1 + math.exp(exponent))
            r[i][j] = min(max(p, 1e-7), 1 - 1e-7)
            r[j][i] = 1 - r[i][j]
        return couple(r) if k > 2 else [r[0][1], 1 - r[0][1]]

    # -- Targets

    def _rescaled(self, value):
        target = self.treatment
        if target is None:
            return value
        value = min(max(value, number(target, "min", -math.inf)), number(target, "max", math.inf))
        value = value * number(target, "rescaleFactor", 1.0) + number(target, "rescaleConstant", 0.0)
        cast = target.get("castInteger")
        rounding = {"round": lambda v: math.floor(v + 0.5), "ceiling": math.ceil, "floor": math.floor}
        return float(rounding[cast](value)) if cast else value

    def _regress(self, decision, row):
        value, size = decision
        factor = 1.0 if self.treatment is None else number(self.treatment, "rescaleFactor", 1.0)
        constant_size = 0.0 if self.treatment is None else abs(number(self.treatment, "rescaleConstant", 0.0))
        predicted = self._rescaled(value)
        row[f"predicted_{self.target}"] = predicted
        row[f"scale_predicted_{self.target}"] = size * abs(factor) + constant_size
        extension = self.machines[0].extension
        if extension is not None:
            deviation = float(child(extension, "StandardDeviation").text) * abs(factor)
            row |= {
                "stddev": deviation,
                "ci_lower": predicted - INTERVAL_FACTOR * deviation,
                "ci_upper": predicted + INTERVAL_FACTOR * deviation,
            }

    # -- Output

    def _write_outputs(self, cells, raw, scope, row):
        given = dict(scope.given)
        for element in self.outputs:
            name, feature = element.get("name"), element.get("feature", "predictedValue")
            if feature in ("transformedValue", "decision"):
                value = self._transformed(element, Scope(given, self.derived, self.defined))
            else:
                value = getattr(self, f"_output_{feature}")(element, cells, row)
            data_type = element.get("dataType")
            value = convert(value, data_type) if data_type else value
            given[name] = value
            row[name] = value
            if is_number(value) and feature in ("predictedValue", "residual") and not self.is_classification:
                row[f"scale_{name}"] = row[f"scale_predicted_{self.target}"]

    def _transformed(self, element, scope):
        expression = next(each for each in strip_extensions(element) if local(each) not in ("Value", "Decisions"))
        value = evaluate(expression, scope, element.get("dataType"))
        return None if value is INVALID else value

    def _output_predictedValue(self, element, cells, row):
        return row[f"predicted_{self.target}"]

    def _output_predictedDisplayValue(self, element, cells, row):
        predicted = row[f"predicted_{self.target}"]
        for value in children(self.treatment, "TargetValue"):
            if value.get("value") == predicted and value.get("displayValue") is not None:
                return value.get("displayValue")
        return self.fields[self.target].display.get(predicted, predicted)

    def _output_probability(self, element, cells, row):
        return row.get(f"probability_{element.get('value', row[f'predicted_{self.target}'])}")

    def _output_confidence(self, element, cells, row):
        return row.get("confidence")

    def _output_standardError(self, element, cells, row):
        return row.get("stddev")

    def _output_residual(self, element, cells, row):
        actual = self.fields[self.target].value(cells.get(self.target, ""))
        if actual is None or actual is INVALID:
            return None
        if not self.is_classification:
            return actual - row[f"predicted_{self.target}"]
        probability = row.get(f"probability_{text_of(actual)}")
        return None if probability is None else 1 - probability


if __name__ == "__main__":
    import csv
    import sys

    document = Document(sys.argv[1])
    with open(sys.argv[2], encoding="utf-8", newline="") as table:
        for cells in csv.DictReader(table):
            print(
                {
                    name: number_text(value) if is_number(value) else text_of(value)
                    for name, value in document.score(cells).items()
                }
            )
