"""The built-in functions of PMML 4.4.

Each takes values that are not missing, unless it is one of AGGREGATES, which ignore missing ones, or SEES_MISSING. A
result that does not exist (a division by zero, the logarithm of -1) is INVALID.
"""

import math
import re
import statistics

from values import INVALID, days_since, is_number, seconds_of_day, seconds_since, text_of


def _guarded(function):
    def call(*arguments):
        try:
            result = function(*arguments)
        except (ValueError, ZeroDivisionError, OverflowError):
            return INVALID
        return INVALID if isinstance(result, complex) else result

    return call


def _substring(text, start, length):
    if start < 1 or length < 0:
        return INVALID
    return text[int(start) - 1 : int(start) - 1 + int(length)]


def _standard_normal_cdf(x):
    return 0.5 * math.erfc(-x / math.sqrt(2))


def _standard_normal_pdf(x):
    return math.exp(-0.5 * x * x) / math.sqrt(2 * math.pi)


def _same(a, b):
    return float(a) == float(b) if is_number(a) and is_number(b) else a == b


def _replacement(text):
    return re.sub(r"\$(\d)", r"\\g<\1>", text.replace("\\", "\\\\"))


_NORMAL = statistics.NormalDist()

PLAIN = {
    "+": lambda a, b: a + b,
    "-": lambda a, b: a - b,
    "*": lambda a, b: a * b,
    "/": lambda a, b: a / b,
    "log10": math.log10,
    "ln": math.log,
    "sqrt": math.sqrt,
    "abs": abs,
    "exp": math.exp,
    "pow": lambda a, b: a**b,
    "threshold": lambda a, b: 1 if a > b else 0,
    "floor": math.floor,
    "ceil": math.ceil,
    "round": lambda a: math.floor(a + 0.5),
    "rint": lambda a: float(round(a)),
    "modulo": lambda a, b: a - b * math.floor(a / b),
    "hypot": math.hypot,
    "expm1": math.expm1,
    "ln1p": math.log1p,
    "sin": math.sin,
    "cos": math.cos,
    "tan": math.tan,
    "asin": math.asin,
    "acos": math.acos,
    "atan": math.atan,
    "sinh": math.sinh,
    "cosh": math.cosh,
    "tanh": math.tanh,
    "erf": math.erf,
    "stdNormalCDF": _standard_normal_cdf,
    "stdNormalPDF": _standard_normal_pdf,
    "stdNormalIDF": _NORMAL.inv_cdf,
    "normalCDF": lambda x, mu, sigma: _standard_normal_cdf((x - mu) / sigma),
    "normalPDF": lambda x, mu, sigma: _standard_normal_pdf((x - mu) / sigma) / sigma,
    "normalIDF": lambda p, mu, sigma: mu + sigma * _NORMAL.inv_cdf(p),
    "equal": _same,
    "notEqual": lambda a, b: not _same(a, b),
    "lessThan": lambda a, b: a < b,
    "lessOrEqual": lambda a, b: a <= b,
    "greaterThan": lambda a, b: a > b,
    "greaterOrEqual": lambda a, b: a >= b,
    "not": lambda a: not a,
    "isIn": lambda a, *each: any(_same(a, b) for b in each),
    "isNotIn": lambda a, *each: not any(_same(a, b) for b in each),
    "uppercase": str.upper,
    "lowercase": str.lower,
    "stringLength": len,
    "substring": _substring,
    "trimBlanks": str.strip,
    "concat": lambda *each: "".join(text_of(part) for part in each),
    "replace": lambda text, pattern, by: re.sub(pattern, _replacement(by), text),
    "matches": lambda text, pattern: re.search(pattern, text) is not None,
    "formatNumber": lambda number, pattern: pattern % number,
    "formatDatetime": lambda moment, pattern: moment.strftime(pattern),
    "dateDaysSinceYear": days_since,
    "dateSecondsSinceYear": seconds_since,
    "dateSecondsSinceMidnight": lambda moment: seconds_of_day(getattr(moment, "time", lambda: moment)()),
}

AGGREGATES = {
    "min": min,
    "max": max,
    "sum": math.fsum,
    "avg": lambda values: math.fsum(values) / len(values),
    "median": statistics.median,
    "product": math.prod,
}


def _all(*each):
    """Kleene's: false wins over missing, missing over true."""
    return False if False in each else None if None in each else True


def _any(*each):
    return True if True in each else None if None in each else False


SEES_MISSING = {
    "and": _all,
    "or": _any,
    "isMissing": lambda a: a is None,
    "isNotMissing": lambda a: a is not None,
    "isValid": lambda a: a is not None and a is not INVALID,
    "isNotValid": lambda a: a is None or a is INVALID,
}

SEES_INVALID = ("isMissing", "isNotMissing", "isValid", "isNotValid")


def apply(name, arguments):
    """The result of a built-in function other than `if`; KeyError for an unknown name."""
    if INVALID in arguments and name not in SEES_INVALID:
        return INVALID
    if name in SEES_MISSING:
        return SEES_MISSING[name](*arguments)
    if name in AGGREGATES:
        present = [value for value in arguments if value is not None]
        return _guarded(AGGREGATES[name])(present) if present else None
    if None in arguments:
        return None
    return _guarded(PLAIN[name])(*arguments)
