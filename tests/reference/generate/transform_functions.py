#!/usr/bin/env python3
"""Values of PMML's built-in functions: mpmath for real functions, Python's own texts, dates and patterns for the others.

Usage: transform_functions.py > ../transform/built_in_functions.csv
"""
import csv
import datetime
import math
import re
import statistics
import sys
from fractions import Fraction

import mpmath

mpmath.mp.dps = 50
MISSING, INVALID = object(), object()
rows = []


def cell(value):
    if value is MISSING:
        return "missing"
    if value is INVALID:
        return "invalid"
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, str):
        return "'" + value
    if isinstance(value, datetime.datetime):
        return "'" + value.isoformat()
    if isinstance(value, datetime.date):
        return "'" + value.isoformat()
    return "#" + repr(float(value))


def row(function, arguments, expected):
    rows.append([function, cell(expected)] + [cell(argument) for argument in arguments])


def absent(function, count, good, texts=()):
    """Every argument missing, and every argument invalid, beside good ones."""
    for i in range(count):
        for bad in (MISSING, INVALID):
            arguments = list(good)
            arguments[i] = bad
            row(function, arguments, bad)


def exact(x):
    return mpmath.mpf(x)


def real(function, compute, arguments, outside=()):
    for argument in arguments:
        argument = argument if isinstance(argument, tuple) else (argument,)
        row(function, argument, float(compute(*[exact(x) for x in argument])))
    for argument in outside:
        row(function, argument if isinstance(argument, tuple) else (argument,), INVALID)
    first = arguments[0] if isinstance(arguments[0], tuple) else (arguments[0],)
    absent(function, len(first), first)


def half_up(x):
    return math.floor(Fraction(x) + Fraction(1, 2))


def half_even(x):
    return round(Fraction(x))


def modulo(x, y):
    x, y = Fraction(float(x)), Fraction(float(y))
    return float(x - y * math.floor(x / y))


pairs = [(2.385, -1.75), (-0.1, 0.2), (1e300, 3.0), (7.0, 2.0), (-5.5, -2.25), (0.0, 4.125)]
real("+", lambda a, b: a + b, pairs)
real("-", lambda a, b: a - b, pairs)
real("*", lambda a, b: a * b, pairs)
real("/", lambda a, b: a / b, pairs, [(1.5, 0.0), (0.0, 0.0)])
real("modulo", modulo, [(7.5, 2.0), (-7.5, 2.0), (7.5, -2.0), (-7.5, -2.0), (6.0, 3.0), (1e17, 7.0), (-0.25, 1.0)],
     [(2.5, 0.0)])
real("pow", lambda a, b: a ** b, [(2.5, 3.0), (0.5, -2.5), (-2.0, 3.0), (9.25, 0.5), (0.0, 0.0), (0.0, 2.5)],
     [(-2.0, 0.5), (0.0, -1.5)])
real("threshold", lambda a, b: 1.0 if a > b else 0.0, [(2.5, 1.5), (1.5, 2.5), (1.5, 1.5), (-1.0, -2.0), (0.0, 1e-9)])
real("hypot", mpmath.hypot, [(3.0, 4.0), (-1.5, 2.25), (1e200, 1e200), (1e-200, 1e-200), (0.0, -7.5)])
real("log10", mpmath.log10, [1000.0, 2.385, 1e-12, 7.5e200, 1.0], [0.0, -1.5])
real("ln", mpmath.log, [2.385, 1e-12, 7.5e200, 1.0, 0.99999], [0.0, -1.5])
real("ln1p", mpmath.log1p, [1e-10, -0.75, 2.5, 1e15, 0.0], [-1.0, -2.5])
real("sqrt", mpmath.sqrt, [2.0, 2.385, 1e-300, 6.25, 0.0], [-1e-9])
real("abs", abs, [-2.385, 2.385, 0.0, -1e300, 7.0])
real("exp", mpmath.exp, [1.0, -2.385, 30.25, 0.0, -700.5])
real("expm1", mpmath.expm1, [1e-10, -2.385, 30.25, 0.0, -40.5])
halves = [2.5, 3.5, -2.5, -3.5, 0.5, -0.5, 0.49999999999999994, 1e17 + 16, 2.385, -7.75]
real("floor", mpmath.floor, halves)
real("ceil", mpmath.ceil, halves)
real("round", lambda x: half_up(float(x)), halves)
real("rint", lambda x: half_even(float(x)), halves)
angles = [0.5, -2.385, 10.25, 1e-9, 100000.5]
for name in ("sin", "cos", "tan", "atan", "tanh"):
    real(name, getattr(mpmath, name), angles)
for name in ("sinh", "cosh"):
    real(name, getattr(mpmath, name), [0.5, -2.385, 10.25, 1e-9, 300.5])
for name in ("asin", "acos"):
    real(name, getattr(mpmath, name), [0.5, -0.75, 1.0, 1e-9, -0.999], [1.0000001, -2.5])

probability = lambda x: mpmath.erfc(-x / mpmath.sqrt(2)) / 2
density = lambda x: mpmath.npdf(x)


def quantile(p):
    p = exact(p)
    start = statistics.NormalDist().inv_cdf(float(p)) if p > 1e-300 else -37.5
    return mpmath.findroot(lambda x: mpmath.log(probability(x)) - mpmath.log(p), start)


real("erf", mpmath.erf, [0.5, -2.385, 1e-9, 5.5, 0.0])
real("stdNormalCDF", probability, [0.0, 1.0, -2.385, -8.5, -37.0, 6.25])
real("stdNormalPDF", density, [0.0, 1.0, -2.385, -8.5, 20.5])
real("stdNormalIDF", quantile, [0.5, 0.975, 0.025, 1e-10, 0.07500000000000001, 1e-300, 0.999999], [0.0, 1.0, -0.5, 1.5])
real("normalCDF", lambda x, m, s: probability((x - m) / s),
     [(1.5, 0.25, 2.0), (0.0, 0.0, 1.0), (-7.5, 1.25, 0.5), (100.0, 90.0, 15.0), (3.0, 3.5, 0.125)],
     [(1.0, 0.0, 0.0), (1.0, 0.0, -2.0)])
real("normalPDF", lambda x, m, s: density((x - m) / s) / s,
     [(1.5, 0.25, 2.0), (0.0, 0.0, 1.0), (-7.5, 1.25, 2.5), (100.0, 90.0, 15.0), (3.0, 3.5, 0.125)],
     [(1.0, 0.0, 0.0), (1.0, 0.0, -2.0)])
real("normalIDF", lambda p, m, s: m + s * quantile(p),
     [(0.75, 0.25, 2.0), (0.5, 0.0, 1.0), (0.001, 1.25, 2.5), (0.9, 90.0, 15.0), (0.3, 3.5, 0.125)],
     [(0.0, 0.0, 1.0), (1.0, 0.0, 1.0), (0.5, 0.0, 0.0), (0.5, 0.0, -1.0)])

aggregates = {"min": min, "max": max, "sum": math.fsum, "avg": statistics.mean, "median": statistics.median,
              "product": math.prod}
for name, compute in aggregates.items():
    for numbers in ([2.5], [2.5, -1.25], [4.0, 2.0, 8.5], [1.5, 1.5, 0.25, 7.0], [3.0, -2.0, 0.5, 4.0, 1.0]):
        row(name, numbers, compute(numbers))
    row(name, [2.5, MISSING, 4.5], compute([2.5, 4.5]))
    row(name, [MISSING, -4.5], -4.5)
    row(name, [MISSING, MISSING], MISSING)
    row(name, [2.5, INVALID, MISSING], INVALID)

orders = {"equal": lambda a, b: a == b, "notEqual": lambda a, b: a != b, "lessThan": lambda a, b: a < b,
          "lessOrEqual": lambda a, b: a <= b, "greaterThan": lambda a, b: a > b, "greaterOrEqual": lambda a, b: a >= b}
for name, compute in orders.items():
    for a, b in [(2.5, 2.5), (-1.0, 2.0), (1e10, 3.0), ("b", "b"), ("abc", "abd"), ("b", "abc"), ("\u00e9", "z"),
                 (True, False), (datetime.date(2004, 2, 29), datetime.date(2004, 3, 1))]:
        row(name, [a, b], compute(a, b))
    absent(name, 2, (2.5, 3.5))
for name, is_in in (("isIn", True), ("isNotIn", False)):
    for arguments in ([2.5, 1.0, 2.5], [2.5, 1.0, 3.0, 4.0], ["b", "a", "b"], ["B", "a", "b"], [1.0, 1.0]):
        row(name, arguments, (arguments[0] in arguments[1:]) == is_in)
    absent(name, 3, (2.5, 1.0, 2.5))

for a in (True, False, MISSING, INVALID):
    row("not", [a], a if a in (MISSING, INVALID) else not a)
    row("isMissing", [a], a is MISSING)
    row("isNotMissing", [a], a is not MISSING)
    row("isValid", [a], a not in (MISSING, INVALID))
    row("isNotValid", [a], a in (MISSING, INVALID))
    row("if", [a, 2.5, -1.5], a if a in (MISSING, INVALID) else 2.5 if a else -1.5)
    row("if", [a, "yes"], a if a in (MISSING, INVALID) else "yes" if a else MISSING)
    for b in (True, False, MISSING, INVALID):
        for name, deciding in (("and", False), ("or", True)):
            found = [deciding] if deciding in (a, b) else [x for x in (INVALID, MISSING) if x in (a, b)]
            row(name, [a, b], (found or [not deciding])[0])
for text in ("red", "", 2.5):
    row("isMissing", [text], False)
    row("isNotMissing", [text], True)
    row("isValid", [text], True)
    row("isNotValid", [text], False)
row("not", [1.0], False)
row("not", [0.5], INVALID)
row("and", [True, True, False], False)
row("or", [False, MISSING, False, True], True)
row("if", [True, 2.5, INVALID], 2.5)
row("if", [False, MISSING, 1.5], 1.5)

texts = ["aBc9x", " red ", "", "\u00c9t\u00e9 \u00df", "\u0416\u0443\u043a \u03a3\u03c3", "na\u00efve \u4e2d"]
for text in texts:
    row("uppercase", [text], text.upper().replace("SS", "\u00df"))
    row("lowercase", [text], "\u0436\u0443\u043a \u03c3\u03c3" if text.startswith("\u0416") else text.lower())
    row("trimBlanks", [text], text.strip(" "))
    row("stringLength", [text], len(text))
    for start, length in ((2, 3), (1, 1), (3, 100), (9, 2), (1, 0)):
        row("substring", [text, start, length], text[start - 1:start - 1 + length])
row("trimBlanks", ["\ta b  "], "\ta b")
row("substring", ["abc", 0, 2], INVALID)
row("substring", ["abc", -1, 2], INVALID)
row("substring", ["abc", 1, -1], INVALID)
row("substring", ["abc", 1.5, 1], INVALID)
absent("substring", 3, ("abc", 1.0, 2.0))
for name in ("uppercase", "lowercase", "trimBlanks", "stringLength"):
    absent(name, 1, ("abc",))
    row(name, [True], {"uppercase": "TRUE", "stringLength": 4}.get(name, "true"))
for arguments, expected in ((["a", "b"], "ab"), (["2", "-", "2000"], "2-2000"), ([2.0, "-", 2000.5], "2-2000.5"),
                            (["\u00e9", ""], "\u00e9"), ([True, " ", False], "true false")):
    row("concat", arguments, expected)
absent("concat", 2, ("a", "b"))

for text, pattern, by in (("BBBB", "B+", "c"), ("aBc9x", "[0-9]", "<$0>"), ("a.b.c", "\\.", "-"), ("abc", "x", "y"),
                          ("John Smith", "(\\w+) (\\w+)", "$2, $1"), ("abc", "", "-"), ("aaa", "a*", "x"),
                          ("\u00e9t\u00e9", "\u00e9", "e"), ("5", "5", "\\$5\\\\")):
    python = re.sub(r"\\(.)|\$(\d)", lambda m: re.escape(m[1]).replace("\\$", "$") if m[1] else "\\g<%s>" % m[2], by)
    row("replace", [text, pattern, by], re.sub(pattern, python, text))
absent("replace", 3, ("abc", "b", "x"))
row("replace", ["abc", "(", "x"], INVALID)
row("replace", ["abc", "b", "$"], INVALID)
row("replace", ["abc", "b", "$1"], INVALID)
for text, pattern in (("January", "ar?y"), ("May", "ar?y"), ("March", "ar?y"), ("BBB", "^B+$"), ("aBBB", "^B+$"),
                      ("", "^$"), ("\u00e9", "^.$"), ("x1", "\\d")):
    row("matches", [text, pattern], re.search(pattern, text) is not None)
absent("matches", 2, ("abc", "b"))
row("matches", ["abc", "(?=b)"], INVALID)
row("matches", ["abab", "(ab)\\1"], INVALID)

for number, pattern in ((2.0, "%3d"), (2.5, "%5.3f|"), (-7.25, "<%+08.2f>"), (255.0, "%#x"), (255.0, "%#X and %%"),
                        (8.0, "%#o"), (1234567.0, "%e"), (0.00012345, "%g"), (1e15, "%.3G"), (42.0, "%-6d|"),
                        (42.0, "%06d"), (42.0, "%+.4d"), (0.0, "% d"), (-0.0, "%f"), (3.0, "%u"), (1e300, "%.0f"),
                        (123.0, "%lld"), (0.1, "%.17g"), (100.0, "%g"), (6.02e23, "%E")):
    python = pattern.replace("ll", "").replace("%u", "%d")
    # Python writes 0o for an octal number's prefix.
    value = int(number) if re.search("[duxXo]", python) else number
    row("formatNumber", [number, pattern], "010" if pattern == "%#o" else python % value)
row("formatNumber", [2.5, "%d"], "3")
row("formatNumber", [-2.5, "%d"], "-2")
row("formatNumber", [-3.0, "%u"], INVALID)
for pattern in ("%n", "%s", "%", "none", "%d%d", "%*d", "%999999999d", "%.999d", "%#f", "%d%", "%2$d", "%p", "%c"):
    row("formatNumber", [2.5, pattern], INVALID)
absent("formatNumber", 2, (2.5, "%d"))

moments = [datetime.datetime(2004, 8, 20, 5, 7, 9), datetime.datetime(1960, 1, 3, 3, 30, 3),
           datetime.datetime(2000, 2, 29, 23, 59, 59), datetime.datetime(2012, 12, 31, 12, 0, 0),
           datetime.datetime(2021, 1, 3, 0, 0, 0), datetime.datetime(1999, 1, 1, 0, 30, 0)]
for moment in moments:
    for pattern in ("%m/%d/%y", "%A %a %B %b %h", "%Y-%m-%dT%H:%M:%S", "%c", "%x %X %D %T %R %r %F", "%j %u %w %e|%I %p",
                    "%U %W %V %G %g", "%C%%%n%t.", "%y"):
        python = pattern.replace("%D", "%m/%d/%y").replace("%F", "%Y-%m-%d").replace("%C", str(moment.year // 100))
        row("formatDatetime", [moment, pattern], moment.strftime(python))
row("formatDatetime", [datetime.date(2004, 8, 20), "%m/%d/%y %H"], "08/20/04 00")
for pattern in ("%", "%Q", "%E", "%z", "%Ey", "%10d"):
    row("formatDatetime", [moments[0], pattern], INVALID)
row("formatDatetime", ["2004-02-30", "%d"], INVALID)
absent("formatDatetime", 2, (moments[0], "%d"))

for day in (datetime.date(2003, 4, 1), datetime.date(1960, 1, 1), datetime.date(1959, 12, 31),
            datetime.date(2000, 2, 29), datetime.date(9999, 12, 31)):
    for year in (1960, 1970, 1):
        row("dateDaysSinceYear", [day, year], (day - datetime.date(year, 1, 1)).days)
row("dateDaysSinceYear", [moments[0], 1960], (moments[0].date() - datetime.date(1960, 1, 1)).days)
row("dateDaysSinceYear", ["2003-13-01", 1960], INVALID)
row("dateDaysSinceYear", ["2003-04-01", 1960.5], INVALID)
row("dateDaysSinceYear", ["soon", 1960], INVALID)
absent("dateDaysSinceYear", 2, ("2003-04-01", 1960.0))
for moment in moments:
    for year in (1960, 1970):
        row("dateSecondsSinceYear", [moment, year], (moment - datetime.datetime(year, 1, 1)).total_seconds())
row("dateSecondsSinceYear", [datetime.date(1960, 1, 2), 1960], 86400)
row("dateSecondsSinceYear", ["1960-01-01T24:00:00", 1960], INVALID)
row("dateSecondsSinceYear", ["1960-01-01T01:00:00+02:00", 1960], -3600)
absent("dateSecondsSinceYear", 2, ("2003-04-01", 1960.0))
for moment in moments:
    row("dateSecondsSinceMidnight", [moment], moment.hour * 3600 + moment.minute * 60 + moment.second)
row("dateSecondsSinceMidnight", ["05:23:30"], 19410)
row("dateSecondsSinceMidnight", ["05:60:30"], INVALID)
absent("dateSecondsSinceMidnight", 1, ("05:23:30",))

print("# function  PMML's built-in functions                    columns  function expected arguments...")
print("# source    generate/transform_functions.py, mpmath %s at 50 digits, and Python's texts, dates and patterns"
      % mpmath.__version__)
print("# digits    17; a value is #number, 'text, true, false, missing or invalid")
print("# tolerance REL 4 eps for numbers, texts exactly")
writer = csv.writer(sys.stdout, lineterminator="\n")
writer.writerow(["function", "expected", "arguments"])
seen = set()
for line in rows:
    key = tuple(line)
    if key not in seen:
        seen.add(key)
        writer.writerow([part.replace("\n", "\\n") if "\n" in part else part for part in line])
