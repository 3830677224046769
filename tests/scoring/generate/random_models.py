#!/usr/bin/python3
"""random_models.py BREVIX COUNT [SEED]: invents documents and holds the command against the evaluator.

Prints each difference and keeps the documents that show one in a folder of its own; exits with 1 when there is any.
"""

import csv
import random
import subprocess
import sys
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
    discretize,
    document,
    linear,
    map_values,
    mining,
    norm_continuous,
    norm_discrete,
    output,
    polynomial,
    radial,
    ref,
    sigmoid,
)
from publish import Document, cell, evaluate_tree, write_table

TOLERANCE = 1e-12
COLOURS = ["red", "green", "blue & white", "naïve"]


class Inventor:
    """One document from one seed. Numbers have three digits; steps are taken of raw fields, never of computed ones."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.numbers = [f"x{i}" for i in range(self.random.randint(1, 4))]
        self.whole, self.flag, self.colour, self.day = "count", "flag", "colour", "day"
        self.functions = []
        self.derived = []

    def chance(self, probability):
        return self.random.random() < probability

    def number(self, low=-3.0, high=3.0):
        return round(self.random.uniform(low, high), 3)

    # -- fields

    def fields(self):
        fields, schema = [], []
        for name in self.numbers:
            inner = [E("Value", {"value": "-99", "property": "missing"})] if self.chance(0.3) else []
            fields.append(continuous(name, *inner))
            schema.append(self.mining(name, shortest_number=True))
        fields += [
            continuous(self.whole, data_type="integer"),
            categorical(self.flag, data_type="boolean"),
            categorical(self.colour, COLOURS[:3] if self.chance(0.7) else ()),
            categorical(self.day, data_type="date", optype="ordinal"),
        ]
        schema += [
            self.mining(self.whole, replacement="3"),
            self.mining(self.flag, replacement="true"),
            self.mining(self.colour, replacement="green"),
            self.mining(self.day, replacement="2001-02-03"),
        ]
        order = list(range(len(schema)))
        self.random.shuffle(order)
        return fields, [schema[i] for i in order]

    def mining(self, name, replacement=None, shortest_number=False):
        attributes = {}
        if self.chance(0.4):
            attributes["missingValueReplacement"] = self.number() if shortest_number else replacement
        if self.chance(0.4):
            attributes["invalidValueTreatment"] = self.random.choice(["asMissing", "returnInvalid"])
        if shortest_number and self.chance(0.4):
            attributes |= {
                "outliers": self.random.choice(["asMissingValues", "asExtremeValues", "asIs"]),
                "lowValue": self.number(-3, -1),
                "highValue": self.number(1, 3),
            }
        return mining(name, **attributes)

    # -- expressions

    def raw_number(self):
        return self.random.choice([*self.numbers, self.whole])

    def any_number(self):
        known = [each for each, kind in self.known if kind == "number"]
        return ref(
            self.random.choice([*self.numbers, self.whole, *known, *known]),
            mapMissingTo=self.number() if self.chance(0.15) else None,
        )

    def treatment(self):
        given = {}
        if self.chance(0.12):
            given["mapMissingTo"] = self.number()
        if self.chance(0.12):
            given["defaultValue"] = self.number()
        return given

    def numeric(self, depth):
        if depth == 0:
            return self.any_number() if self.chance(0.7) else const(self.number(), "double")
        pick = self.random.choice
        inner = lambda: self.numeric(depth - 1)
        forms = [
            lambda: call(pick("+-*"), inner(), inner(), **self.treatment()),
            lambda: call(
                pick(["min", "max", "avg", "sum", "median"]), *(inner() for _ in range(self.random.randint(1, 4)))
            ),
            lambda: call(
                pick(["abs", "sin", "cos", "tanh", "atan", "erf", "stdNormalCDF"]), inner(), **self.treatment()
            ),
            lambda: call("/", inner(), call("+", const(1.5, "double"), call("abs", inner()))),
            lambda: call("ln", call("+", const(1.25, "double"), call("abs", inner()))),
            lambda: call("exp", call("-", const(0.5, "double"), call("abs", inner()))),
            lambda: call("sqrt", call("abs", inner())),
            lambda: call(
                "pow", call("+", call("abs", inner()), const(0.25, "double")), const(pick([0.5, 1.5, 2, -1]), "double")
            ),
            lambda: call(pick(["floor", "ceil", "rint"]), self.raw_number()),
            lambda: call("modulo", self.raw_number(), const(pick([1.25, -0.75, 2]), "double")),
            lambda: call(
                "if", self.condition(depth - 1), inner(), *([inner()] if self.chance(0.8) else []), **self.treatment()
            ),
            lambda: self.from_field(),
        ]
        if self.functions:
            forms.append(lambda: call(pick(self.functions), inner(), inner()))
        return pick(forms)()

    def from_field(self):
        pick = self.random.choice
        missing = self.number() if self.chance(0.4) else None
        kind = self.random.randrange(4)
        if kind == 0:
            marks = sorted({self.number() for _ in range(self.random.randint(2, 5))} | {-3.5, 3.5})[
                : self.random.randint(2, 6)
            ]
            return norm_continuous(
                self.raw_number(),
                [(mark, self.number()) for mark in marks],
                mapMissingTo=missing,
                outliers=pick([None, "asIs", "asMissingValues", "asExtremeValues"]),
            )
        if kind == 1:
            return norm_discrete(
                *pick(
                    [
                        (self.colour, pick(COLOURS)),
                        (self.whole, str(pick([0, 2, 3]))),
                        (self.flag, pick(["true", "false"])),
                    ]
                ),
                mapMissingTo=missing,
            )
        if kind == 2:
            marks = sorted({self.number() for _ in range(4)})
            bins = [
                (self.number(), pick(["openOpen", "openClosed", "closedOpen", "closedClosed"]), a, b)
                for a, b in zip([None, *marks], [*marks, None])
            ]
            return discretize(
                self.raw_number(),
                bins if self.chance(0.6) else bins[1:-1],
                dataType="double",
                mapMissingTo=missing,
                defaultValue=self.number() if self.chance(0.6) else None,
            )
        rows = [(colour, str(whole), self.number()) for colour in COLOURS for whole in (1, 2, 3)]
        self.random.shuffle(rows)
        return map_values(
            {"c": self.colour, "n": self.whole},
            "out",
            rows[:8],
            dataType="double",
            mapMissingTo=missing,
            defaultValue=self.number() if self.chance(0.7) else None,
        )

    def condition(self, depth):
        pick = self.random.choice
        compare = ["equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual"]
        forms = [
            lambda: call(pick(compare), self.raw_number(), const(float(pick([-2, 0, 0.5, 1, 2])), "double")),
            lambda: call(pick(compare), self.raw_number(), self.raw_number()),
            lambda: call(
                pick(["isMissing", "isNotMissing"]), pick([self.raw_number(), self.colour, self.flag, self.day])
            ),
            lambda: call(pick(["isIn", "isNotIn"]), self.colour, *(const(each, "string") for each in COLOURS[:2])),
            lambda: call(pick(["equal", "notEqual"]), self.colour, const(pick(COLOURS), "string")),
        ]
        if depth > 0:
            forms += [
                lambda: call(pick(["and", "or"]), *(self.sure(depth - 1) for _ in range(self.random.randint(2, 3)))),
                lambda: call("not", self.condition(depth - 1)),
            ]
        return pick(forms)()

    def sure(self, depth):
        """A condition that is never missing: `and` and `or` of what is missing is read in more than one way."""
        return (
            call("if", call("isMissing", self.raw_number()), const("true", "boolean"), const("false", "boolean"))
            if depth == 0
            else call("isNotMissing", self.any_number())
        )

    def definitions(self):
        made = []
        for i in range(self.random.randint(0, 2)):
            body = call(
                "+",
                call("*", "p", const(self.number(), "double")),
                call(self.functions[0], "q", "p") if self.functions else call("tanh", "q"),
            )
            parameters = [
                E("ParameterField", {"name": each, "optype": "continuous", "dataType": "double"}) for each in "pq"
            ]
            made.append(
                E(
                    "DefineFunction",
                    {"name": f"own{i}", "optype": "continuous", "dataType": "double"},
                    *parameters,
                    body,
                )
            )
            self.functions.append(f"own{i}")
        self.random.shuffle(made)
        return made

    def derivations(self):
        self.known, made = [], []
        for i in range(self.random.randint(1, 9)):
            name = f"d{i}"
            kind = self.random.random()
            if kind < 0.1:
                year = self.random.choice([1900, 1960, 2000])
                made.append(
                    derived(
                        name,
                        call("/", call("dateDaysSinceYear", self.day, const(year, "integer")), const(16384, "double")),
                    )
                )
            elif kind < 0.2:
                made.append(
                    derived(
                        name,
                        call(
                            "/",
                            call("stringLength", call("concat", self.colour, const("-", "string"))),
                            const(4, "double"),
                        ),
                    )
                )
            else:
                made.append(derived(name, self.numeric(self.random.randint(0, 3)) if kind < 0.8 else self.from_field()))
            self.known.append((name, "number"))
        self.random.shuffle(made)
        return made

    # -- the model

    def kernel(self):
        return self.random.choice(
            [
                linear,
                lambda: radial(self.number(0.05, 0.5)),
                lambda: polynomial(self.number(0.05, 0.3), self.number(0.1, 1.5), self.random.choice([1, 2, 3])),
                lambda: sigmoid(self.number(0.01, 0.2), self.number(-0.9, 0.9)),
            ]
        )()

    def tree(self):
        fields, schema = self.fields()
        functions = self.definitions()
        local = self.derivations()
        columns = [each.get("name") for each in local]
        columns += [name for name in self.numbers if self.chance(0.5)]
        if self.chance(0.4):
            columns.append(E("CategoricalPredictor", {"name": self.colour, "value": COLOURS[0], "coefficient": 1}))
        names = [f"v{i}" for i in range(self.random.randint(1, 8))]
        vectors = {name: [self.number() if self.chance(0.7) else 0.0 for _ in columns] for name in names}
        machine = lambda target=None, alternate=None: Machine(
            [(name, self.number()) for name in names if self.chance(0.9)] or [(names[0], 1.5)],
            self.number(),
            target,
            alternate,
        )
        attributes, targets, out = {}, None, []
        kind = self.random.choice(["regression", "regression", "pairs", "all", "binary"])
        if kind == "regression":
            function, machines = "regression", [machine()]
            fields.append(continuous("y"))
            if self.chance(0.5):
                targets = [
                    E(
                        "Target",
                        {
                            "field": "y",
                            "rescaleFactor": self.number(0.5, 4) if self.chance(0.7) else None,
                            "rescaleConstant": self.number() if self.chance(0.7) else None,
                            "min": self.number(-3, 0) if self.chance(0.3) else None,
                            "max": self.number(0, 3) if self.chance(0.3) else None,
                        },
                    )
                ]
            out = [
                output("prediction", data_type="double"),
                output("twice", "transformedValue", call("*", "prediction", const(2, "double")), data_type="double"),
            ]
        else:
            function, classes = "classification", ["a", "b", "c", "d"][: self.random.randint(3, 4)]
            if kind == "binary":
                machines = [machine("a", "b")]
                classes = ["b", "a"]
            elif kind == "all":
                machines = [machine(each) for each in classes]
                attributes["classificationMethod"] = "OneAgainstAll"
            else:
                machines = [machine(a, b) for i, a in enumerate(classes) for b in classes[i + 1 :]]
                attributes["classificationMethod"] = "OneAgainstOne"
                out = [
                    output("p", "probability", value="b", data_type="double"),
                    output("best", "probability", data_type="double"),
                ]
            self.random.shuffle(classes)
            fields.append(categorical("y", classes))
            if self.chance(0.5):
                attributes["maxWins"] = self.random.choice(["true", "false"])
            if self.chance(0.3):
                attributes["threshold"] = self.number(-0.5, 0.5)
        schema.insert(0, mining("y", "target"))
        front = functions if functions or self.chance(0.3) else None
        if self.chance(0.3):
            front, local = [*(front or []), *local[:2]], local[2:]
        svm = Svm(
            function,
            schema,
            self.kernel(),
            columns,
            vectors,
            machines,
            attributes,
            out or None,
            targets,
            local or None,
            self.chance(0.5),
        )
        return document(self.random.choice(["4.4", "4.3", "4.1"]), ("inventor", "1"), fields, svm, front)

    def cases(self):
        return [self.case() for _ in range(24)]

    def case(self):
        text = lambda value: f"{value:g}"
        row = {name: text(self.number(-4, 4)) for name in self.numbers}
        row |= {
            self.whole: str(self.random.randint(-1, 4)),
            self.flag: self.random.choice(["true", "false"]),
            self.colour: self.random.choice(COLOURS[:3]),
            self.day: "{}-{:02}-{:02}".format(
                *(self.random.randint(*each) for each in ((1890, 2100), (1, 12), (1, 28)))
            ),
        }
        for name in row:
            if self.chance(0.06):
                row[name] = ""
            elif self.chance(0.02):
                row[name] = "-99" if name in self.numbers else "wrong"
        return row


def differences(result, expected):
    for index, (got, wanted) in enumerate(zip(result, expected)):
        for column, value in wanted.items():
            if column.startswith(("scale_", "decision_")) or got.get(column) == value:
                continue
            try:
                scale = float(wanted.get(f"scale_{column}") or abs(float(value)))
                if abs(float(got[column]) - float(value)) <= TOLERANCE * scale:
                    continue
            except (KeyError, ValueError):
                pass
            yield index, column, got.get(column), value


def main(arguments):
    program, count, seed = arguments[0], int(arguments[1]), int(arguments[2]) if len(arguments) > 2 else 1
    folder = Path(tempfile.mkdtemp(prefix="random_models_"))
    failures = scored = rows = 0
    for number in range(seed, seed + count):
        inventor = Inventor(number)
        tree, model = inventor.tree(), folder / f"{number}.pmml"
        tree.write(model, encoding="UTF-8", xml_declaration=True)
        cases = inventor.cases()
        write_table(folder / f"{number}.csv", list(cases[0]), cases)
        run = subprocess.run(
            [program, "score", model, folder / f"{number}.csv", "-o", folder / "out.csv"],
            capture_output=True,
            text=True,
            check=False,
        )
        if run.returncode:
            print(f"{number}: {run.stderr.strip().splitlines()[-1]}")
            failures += 1
            continue
        with open(folder / "out.csv", encoding="utf-8", newline="") as out:
            result = list(csv.DictReader(out))
        expected = evaluate_tree(tree, cases)
        found = list(differences(result, expected))
        scored, rows = scored + 1, rows + sum(row["status"] == "0" for row in expected)
        for index, column, got, wanted in found[:3]:
            print(f"{number} row {index + 1}: {column} is {got}, not {wanted}; {cases[index]}")
        if found:
            failures += 1
        else:
            model.unlink()
            (folder / f"{number}.csv").unlink()
    print(
        f"{scored} documents scored, {rows} rows with a result; {failures} documents differ or are refused: see {folder}"
    )
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
