"""Writes a trained support vector machine as a PMML 4.4 document: the one place that knows the format."""

import math
import xml.etree.ElementTree as ET
from dataclasses import dataclass, field

NAMESPACE = "http://www.dmg.org/PMML-4_4"
EXTENDER = "ZARN"


def shortest(number):
    """The shortest text that reads back to the same double; a whole number goes without its `.0`."""
    text = repr(float(number))
    if not math.isfinite(float(number)):
        raise ValueError(f"{text} has no place in a document or a table")
    return text[:-2] if text.endswith(".0") else text


@dataclass
class DataField:
    """A field of the data dictionary; `categories` (in category order) makes it categorical."""

    name: str
    categories: list = None


@dataclass
class Column:
    """A column of the vector space: the value of a field, or 1 where the field has the category `category`."""

    field: str
    category: str = None


@dataclass
class Kernel:
    """`name` is linear, poly, rbf or sigmoid, as scikit-learn calls them."""

    name: str
    gamma: float = None
    coef0: float = None
    degree: int = None


@dataclass
class Machine:
    """decision = sum of coefficient * K(case, vector) + bias; `terms` holds pairs (vector id, coefficient)."""

    terms: list
    bias: float
    target: str = None
    alternate: str = None
    probability: tuple = None  # (response, nonresponse, A, B)
    standard_deviation: float = None


@dataclass
class Model:
    name: str
    application: tuple  # (name, version) of the trainer
    target: DataField
    inputs: list  # DataField
    columns: list  # Column
    kernel: Kernel
    vectors: dict  # id -> dense sequence of numbers
    machines: list = field(default_factory=list)
    one_against_one: bool = False
    max_wins: bool = False

    @property
    def function(self):
        return "classification" if self.target.categories else "regression"


def write_pmml(model, path):
    root = ET.Element("PMML", {"xmlns": NAMESPACE, "version": "4.4"})
    name, version = model.application
    ET.SubElement(ET.SubElement(root, "Header"), "Application", {"name": name, "version": version})
    _add_dictionary(root, [*model.inputs, model.target])
    _add_model(root, model)
    ET.indent(root, " ")
    with open(path, "wb") as out:
        ET.ElementTree(root).write(out, encoding="UTF-8", xml_declaration=True)
        out.write(b"\n")


def _add_dictionary(root, fields):
    dictionary = ET.SubElement(root, "DataDictionary", {"numberOfFields": str(len(fields))})
    for data_field in fields:
        if not data_field.categories:
            ET.SubElement(dictionary, "DataField",
                          {"name": data_field.name, "optype": "continuous", "dataType": "double"})
            continue
        element = ET.SubElement(dictionary, "DataField",
                                {"name": data_field.name, "optype": "categorical", "dataType": "string"})
        for category in data_field.categories:
            ET.SubElement(element, "Value", {"value": category})


def _add_model(root, model):
    attributes = {"modelName": model.name, "functionName": model.function,
                  "algorithmName": "supportVectorMachine", "threshold": "0"}
    if model.one_against_one:
        attributes["classificationMethod"] = "OneAgainstOne"
    if model.max_wins:
        attributes["maxWins"] = "true"
    element = ET.SubElement(root, "SupportVectorMachineModel", attributes)

    schema = ET.SubElement(element, "MiningSchema")
    ET.SubElement(schema, "MiningField", {"name": model.target.name, "usageType": "target"})
    for data_field in model.inputs:
        ET.SubElement(schema, "MiningField", {"name": data_field.name, "usageType": "active"})

    _add_kernel(element, model.kernel)
    _add_vectors(element, model)
    for machine in model.machines:
        _add_machine(element, machine, len(model.columns))


def _add_kernel(parent, kernel):
    tag, names = {"linear": ("LinearKernelType", ()),
                  "poly": ("PolynomialKernelType", ("gamma", "coef0", "degree")),
                  "rbf": ("RadialBasisKernelType", ("gamma",)),
                  "sigmoid": ("SigmoidKernelType", ("gamma", "coef0"))}[kernel.name]
    values = {name: getattr(kernel, name) for name in names}
    if -1 in values.values():
        raise ValueError("a kernel parameter of exactly -1 reads as one that is not given")
    ET.SubElement(parent, tag, {name: shortest(value) for name, value in values.items()})


def _add_vectors(parent, model):
    dictionary = ET.SubElement(parent, "VectorDictionary", {"numberOfVectors": str(len(model.vectors))})
    fields = ET.SubElement(dictionary, "VectorFields", {"numberOfFields": str(len(model.columns))})
    for column in model.columns:
        if column.category is None:
            ET.SubElement(fields, "FieldRef", {"field": column.field})
        else:
            ET.SubElement(fields, "CategoricalPredictor",
                          {"name": column.field, "value": column.category, "coefficient": "1"})
    for vector_id, values in model.vectors.items():
        present = [index for index, value in enumerate(values) if value != 0]
        if not present:
            raise ValueError(f"vector {vector_id} has no entry; a reader would drop it")
        instance = ET.SubElement(dictionary, "VectorInstance", {"id": vector_id})
        array = ET.SubElement(instance, "REAL-SparseArray", {"n": str(len(values))})
        ET.SubElement(array, "Indices").text = " ".join(str(index + 1) for index in present)
        ET.SubElement(array, "REAL-Entries").text = " ".join(shortest(values[index]) for index in present)


def _add_machine(parent, machine, columns):
    categories = {"targetCategory": machine.target, "alternateTargetCategory": machine.alternate}
    element = ET.SubElement(parent, "SupportVectorMachine",
                            {key: value for key, value in categories.items() if value is not None})
    _add_extension(element, machine)
    vectors = ET.SubElement(element, "SupportVectors", {"numberOfAttributes": str(columns),
                                                        "numberOfSupportVectors": str(len(machine.terms))})
    coefficients = ET.SubElement(element, "Coefficients", {"numberOfCoefficients": str(len(machine.terms)),
                                                           "absoluteValue": shortest(machine.bias)})
    for vector_id, coefficient in machine.terms:
        ET.SubElement(vectors, "SupportVector", {"vectorId": vector_id})
        ET.SubElement(coefficients, "Coefficient", {"value": shortest(coefficient)})


def _add_extension(parent, machine):
    if machine.probability is None and machine.standard_deviation is None:
        return
    extension = ET.SubElement(parent, "Extension", {"extender": EXTENDER})
    if machine.standard_deviation is not None:
        ET.SubElement(extension, "StandardDeviation").text = shortest(machine.standard_deviation)
        return
    response, nonresponse, a, b = machine.probability
    ET.SubElement(extension, "ResponseCategory", {"response": response, "nonresponse": nonresponse})
    ET.SubElement(extension, "ProbabilityParam", {"A": shortest(a), "B": shortest(b)})
