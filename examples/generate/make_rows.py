#!/usr/bin/python3
"""make_rows.py N: writes a table of N iris rows, the 150 cases over and over, to standard output; for timing."""

import itertools
import sys
from pathlib import Path

CASES = Path(__file__).resolve().parent.parent / "iris" / "cases.csv"


def main(arguments):
    if len(arguments) != 1 or not arguments[0].isdecimal():
        sys.exit("usage: make_rows.py N")
    header, *rows = CASES.read_text(encoding="utf-8").splitlines(keepends=True)
    sys.stdout.write(header)
    sys.stdout.writelines(itertools.islice(itertools.cycle(rows), int(arguments[0])))


if __name__ == "__main__":
    main(sys.argv[1:])
