"""Writes the three files of a model and holds the trainer's answers against the evaluator's."""

import csv
import sys
import tempfile
from pathlib import Path

SCORING = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(SCORING / "reference"))

from evaluator import Document  # noqa: E402
from values import is_number, number_text, text_of  # noqa: E402

AGREEMENT = 1e-10
LARGEST_DOCUMENT = 100_000


def publish(name, tree, cases, trainer=None, writes_decisions=True, encoding="UTF-8"):
    """cases: one dict of texts per row. trainer: column -> values of the first rows, in row order.
    writes_decisions: False where the scorer may read the document's machines as other ones.

    What the trainer says is what is expected; the evaluator must agree, and says the rest.
    """
    folder = SCORING / name
    folder.mkdir(exist_ok=True)
    model = folder / "model.pmml"
    with open(model, "wb") as out:
        tree.write(out, encoding=encoding, xml_declaration=True)
        out.write(b"\n")
    if model.stat().st_size > LARGEST_DOCUMENT:
        raise ValueError(f"{name} has {model.stat().st_size} bytes")
    write_table(folder / "cases.csv", list(cases[0]), cases)
    evaluator = Document(model)
    rows = [evaluator.score(case) for case in cases]
    worst = compare(name, rows, trainer or {})
    header = list(dict.fromkeys(column for row in rows for column in row))
    header = [
        column
        for column in header
        if column != "status"
        and not column.endswith("_None")
        and (writes_decisions or not column.startswith(("decision_", "scale_")))
    ] + ["status"]
    write_table(
        folder / "expected.csv", header, [{column: cell(column, row.get(column)) for column in header} for row in rows]
    )
    statuses = sorted({row["status"] for row in rows})
    agreement = "evaluator only" if worst is None else f"trainer and evaluator differ by {worst:.1e} at most"
    print(f"{name}: {len(rows)} rows, status {statuses}, {model.stat().st_size} bytes; {agreement}")


def evaluate_tree(tree, cases):
    """The evaluator's rows as texts, for a document that is not published yet."""
    with tempfile.NamedTemporaryFile(suffix=".pmml") as file:
        tree.write(file)
        file.flush()
        evaluator = Document(file.name)
    return [{column: cell(column, value) for column, value in evaluator.score(case).items()} for case in cases]


def compare(name, rows, trainer):
    """Puts the trainer's values into the rows. Returns the largest difference in units of its scale."""
    worst = 0.0 if trainer else None
    for column, answers in trainer.items():
        for index, wanted in enumerate(answers):
            if wanted is None:
                continue
            row = rows[index]
            got = row[column]
            if isinstance(wanted, str):
                if text_of(got) != wanted:
                    raise ValueError(f"{name} row {index + 1}: {column} is {got}, the trainer says {wanted}")
                continue
            scale = scale_of(row, column)
            difference = abs(got - wanted) / scale
            worst = max(worst, difference)
            if difference > AGREEMENT:
                raise ValueError(f"{name} row {index + 1}: {column} is {got}, the trainer says {wanted}")
            row[column] = float(wanted)
    return worst


def scale_of(row, column):
    if column.startswith("decision_"):
        return row[f"scale_{column.removeprefix('decision_')}"]
    return row.get(f"scale_{column}", 1.0)


def cell(column, value):
    if is_number(value):
        return f"{value:.6g}" if column.startswith("scale_") else number_text(value)
    return text_of(value)


def write_table(path, header, rows):
    with open(path, "w", encoding="utf-8", newline="") as out:
        writer = csv.DictWriter(out, header, lineterminator="\n")
        writer.writeheader()
        writer.writerows(rows)
