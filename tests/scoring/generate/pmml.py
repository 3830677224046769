"""Builds PMML elements: what the writers of the different exporters' dialects have in common."""

import math
import xml.etree.ElementTree as ET
from dataclasses import dataclass, field

EXTENDER = "ZARN"


def shortest(number):
    """The shortest text that reads back to the same double; a whole number goes without its `.0`."""
    text = repr(float(number))
    if not math.isfinite(float(number)):
        raise ValueError(f"{text} has no place in a document or a table")
    return text[:-2] if text.endswith(".0") else text


def attribute_text(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    return value if isinstance(value, str) else shortest(value)


def E(tag, attributes=None, *inner, text=None):
    """An element; attributes and inner elements that are None are left out."""
    given = {name: attribute_text(value) for name, value in (attributes or {}).items() if value is not None}
    element = ET.Element(tag, given)
    element.text = text
    element.extend(each for each in inner if each is not None)
    return element


# ---- fields ----------------------------------------------------------------------------------------


def continuous(name, *inner, data_type="double", **attributes):
    return E("DataField", {"name": name, "optype": "continuous", "dataType": data_type, **attributes}, *inner)


def categorical(name, categories=(), *inner, data_type="string", optype="categorical"):
    values = [E("Value", {"value": each}) for each in categories]
    return E("DataField", {"name": name, "optype": optype, "dataType": data_type}, *values, *inner)


def mining(name, usage="active", **attributes):
    return E("MiningField", {"name": name, "usageType": usage, **attributes})


# ---- expressions -----------------------------------------------------------------------------------


def ref(name, **attributes):
    return E("FieldRef", {"field": name, **attributes})


def const(value, data_type=None):
    return E("Constant", {"dataType": data_type}, text=attribute_text(value))


def expression(value):
    """An expression as it is; a text becomes a FieldRef, a number a Constant."""
    if isinstance(value, ET.Element):
        return value
    if isinstance(value, str):
        return ref(value)
    return const(value, "integer" if isinstance(value, int) else "double")


def call(function, *arguments, **attributes):
    return E("Apply", {"function": function, **attributes}, *(expression(each) for each in arguments))


def derived(name, inner, data_type="double", optype="continuous", **attributes):
    return E("DerivedField", {"name": name, "optype": optype, "dataType": data_type, **attributes}, inner)


def norm_continuous(name, points, **attributes):
    linear = [E("LinearNorm", {"orig": orig, "norm": norm}) for orig, norm in points]
    return E("NormContinuous", {"field": name, **attributes}, *linear)


def norm_discrete(name, value, **attributes):
    return E("NormDiscrete", {"field": name, "value": value, **attributes})


def interval(closure, left=None, right=None):
    return E("Interval", {"closure": closure, "leftMargin": left, "rightMargin": right})


def discretize(name, bins, **attributes):
    """bins: (value, closure, left, right)"""
    inner = [
        E("DiscretizeBin", {"binValue": value}, interval(closure, left, right)) for value, closure, left, right in bins
    ]
    return E("Discretize", {"field": name, **attributes}, *inner)


def map_values(columns, output, rows, **attributes):
    """columns: column name -> field; rows: tuples in the order of the columns, the output last."""
    pairs = [E("FieldColumnPair", {"field": source, "column": column}) for column, source in columns.items()]
    names = [*columns, output]
    table = [E("row", None, *(E(name, text=attribute_text(cell)) for name, cell in zip(names, row))) for row in rows]
    return E("MapValues", {"outputColumn": output, **attributes}, *pairs, E("InlineTable", None, *table))


def z_score(name, mean, deviation):
    """The two points by which R's exporters standardise a column."""
    return norm_continuous(
        name, [(0.0, -mean / deviation), (mean, 0.0)] if mean > 0 else [(mean, 0.0), (0.0, -mean / deviation)]
    )


# ---- machines --------------------------------------------------------------------------------------


@dataclass
class Machine:
    """decision = sum of coefficient * K(case, vector) + bias; `terms` holds pairs (vector id, coefficient)."""

    terms: list
    bias: float
    target: str = None
    alternate: str = None
    threshold: float = None
    probability: tuple = None  # (response, nonresponse, A, B)
    standard_deviation: float = None

    def negated(self):
        return Machine(
            [(each, -value) for each, value in self.terms],
            -self.bias,
            self.target,
            self.alternate,
            self.threshold,
            self.probability,
            self.standard_deviation,
        )


def machine_element(machine, width):
    vectors = [E("SupportVector", {"vectorId": vector}) for vector, _ in machine.terms]
    coefficients = [E("Coefficient", {"value": value}) for _, value in machine.terms]
    return E(
        "SupportVectorMachine",
        {
            "targetCategory": machine.target,
            "alternateTargetCategory": machine.alternate,
            "threshold": machine.threshold,
        },
        extension(machine),
        E("SupportVectors", {"numberOfAttributes": width, "numberOfSupportVectors": len(vectors)}, *vectors),
        E("Coefficients", {"numberOfCoefficients": len(coefficients), "absoluteValue": machine.bias}, *coefficients),
    )


def extension(machine):
    if machine.standard_deviation is not None:
        return E("Extension", {"extender": EXTENDER}, E("StandardDeviation", text=shortest(machine.standard_deviation)))
    if machine.probability is None:
        return None
    response, nonresponse, a, b = machine.probability
    return E(
        "Extension",
        {"extender": EXTENDER},
        E("ResponseCategory", {"response": response, "nonresponse": nonresponse}),
        E("ProbabilityParam", {"A": a, "B": b}),
    )


def dense_array(values):
    return E("Array", {"n": len(values), "type": "real"}, text=" ".join(shortest(each) for each in values))


def sparse_array(values):
    present = [index for index, value in enumerate(values) if value != 0]
    return E(
        "REAL-SparseArray",
        {"n": len(values)},
        E("Indices", text=" ".join(str(index + 1) for index in present)),
        E("REAL-Entries", text=" ".join(shortest(values[index]) for index in present)),
    )


def vector_dictionary(columns, vectors, dense):
    """columns: names of fields, or ready elements; vectors: id -> numbers"""
    fields = [ref(each) if isinstance(each, str) else each for each in columns]
    array = dense_array if dense else sparse_array
    instances = [E("VectorInstance", {"id": key}, array(list(values))) for key, values in vectors.items()]
    return E(
        "VectorDictionary",
        {"numberOfVectors": len(instances)},
        E("VectorFields", {"numberOfFields": len(fields)}, *fields),
        *instances,
    )


def linear():
    return E("LinearKernelType", {"description": "Linear kernel type"})


def radial(gamma):
    return E("RadialBasisKernelType", {"gamma": gamma, "description": "Radial basis kernel type"})


def polynomial(gamma, coef0, degree):
    return E(
        "PolynomialKernelType",
        {"gamma": gamma, "coef0": coef0, "degree": degree, "description": "Polynomial kernel type"},
    )


def sigmoid(gamma, coef0):
    return E("SigmoidKernelType", {"gamma": gamma, "coef0": coef0, "description": "Sigmoid kernel type"})


# ---- models and documents --------------------------------------------------------------------------


@dataclass
class Svm:
    """All of a SupportVectorMachineModel element."""

    function: str
    schema: list
    kernel: ET.Element
    columns: list
    vectors: dict
    machines: list
    attributes: dict = field(default_factory=dict)
    output: list = None
    targets: list = None
    local: list = None
    dense: bool = False
    verification: ET.Element = None

    def element(self):
        width = len(self.columns)
        return E(
            "SupportVectorMachineModel",
            {"functionName": self.function, **self.attributes},
            E("MiningSchema", None, *self.schema),
            None if self.output is None else E("Output", None, *self.output),
            None if self.targets is None else E("Targets", None, *self.targets),
            None if self.local is None else E("LocalTransformations", None, *self.local),
            self.kernel,
            vector_dictionary(self.columns, self.vectors, self.dense),
            *(machine_element(each, width) for each in self.machines),
            self.verification,
        )


def output(name, feature="predictedValue", *inner, optype=None, data_type=None, **attributes):
    return E(
        "OutputField", {"name": name, "optype": optype, "dataType": data_type, "feature": feature, **attributes}, *inner
    )


def document(version, application, fields, model, transformations=None):
    """version: "4.4.1" gives the name space PMML-4_4; transformations: a list, or None for no dictionary at all."""
    major, minor = version.split(".")[:2]
    root = E(
        "PMML",
        {"version": version, "xmlns": f"http://www.dmg.org/PMML-{major}_{minor}"},
        E(
            "Header",
            {"copyright": "", "description": "support vector machine"},
            E("Application", {"name": application[0], "version": application[1]}),
        ),
        E("DataDictionary", {"numberOfFields": len(fields)}, *fields),
        None if transformations is None else E("TransformationDictionary", None, *transformations),
        model.element() if isinstance(model, Svm) else model,
    )
    ET.indent(root, " ")
    return ET.ElementTree(root)
