"""Values of the PMML evaluator: data types, missing and invalid, and conversions between them.

A missing value is None. INVALID stands for a value that a field or a function does not allow. Any other is a Python
int, float, bool or str, or a date, time or datetime; counts of days and seconds are ints.
"""

import datetime
import math
import re

INVALID = type("Invalid", (), {"__repr__": lambda self: "INVALID"})()

INTEGER_TYPES = re.compile(r"integer|timeSeconds|dateDaysSince\[.*\]|dateTimeSecondsSince\[.*\]")
REAL_TYPES = ("float", "double")
EPOCH_YEAR = re.compile(r"\[(\d+)\]")


def is_number(value):
    return isinstance(value, (int, float)) and not isinstance(value, bool)


def parse(text, data_type):
    """The value of a text of a document or a table; INVALID where the text is none of that type."""
    try:
        return _parse(text, data_type)
    except (ValueError, OverflowError):
        return INVALID


def _parse(text, data_type):
    if data_type == "string" or data_type is None:
        return text
    text = text.strip()
    if data_type in REAL_TYPES:
        number = float(text)
        return INVALID if math.isnan(number) else number
    if data_type == "boolean":
        return {"true": True, "1": True, "false": False, "0": False}.get(text, INVALID)
    if data_type == "date":
        return datetime.date.fromisoformat(text)
    if data_type == "time":
        return datetime.time.fromisoformat(text)
    if data_type == "dateTime":
        return datetime.datetime.fromisoformat(text)
    if data_type == "timeSeconds" and ":" in text:
        return seconds_of_day(datetime.time.fromisoformat(text))
    if data_type.startswith("dateDaysSince") and "-" in text[1:]:
        return days_since(datetime.date.fromisoformat(text), int(EPOCH_YEAR.search(data_type)[1]))
    if data_type.startswith("dateTimeSecondsSince") and "-" in text[1:]:
        return seconds_since(datetime.datetime.fromisoformat(text), int(EPOCH_YEAR.search(data_type)[1]))
    if INTEGER_TYPES.fullmatch(data_type):
        number = float(text)
        return int(number) if number == int(number) else INVALID
    raise KeyError(f"data type {data_type}")


def days_since(day, year):
    if isinstance(day, datetime.datetime):
        day = day.date()
    return (day - datetime.date(year, 1, 1)).days


def seconds_of_day(time):
    return time.hour * 3600 + time.minute * 60 + time.second


def seconds_since(moment, year):
    if not isinstance(moment, datetime.datetime):
        moment = datetime.datetime.combine(moment, datetime.time())
    return days_since(moment, year) * 86400 + seconds_of_day(moment)


def convert(value, data_type):
    """A value as another data type, as a DerivedField's or an OutputField's dataType asks."""
    if value is None or value is INVALID or data_type is None:
        return value
    if isinstance(value, str):
        return parse(value, data_type)
    if data_type in REAL_TYPES and isinstance(value, (bool, int, float)):
        return float(value)
    if data_type == "string":
        return text_of(value)
    if data_type == "boolean" and value in (0, 1):
        return bool(value)
    if INTEGER_TYPES.fullmatch(data_type) and isinstance(value, (bool, int, float)):
        if value != int(value):
            raise NotImplementedError("the corpora keep away from rounding by a cast")
        return int(value)
    if type(value).__name__.lower() == data_type.lower():
        return value
    return INVALID


def number_text(number):
    """The shortest text that reads back to the same double; whole numbers without their `.0`."""
    text = repr(float(number))
    return text[:-2] if text.endswith(".0") else text


def text_of(value):
    if value is None:
        return ""
    if isinstance(value, bool):
        return "true" if value else "false"
    if is_number(value):
        return number_text(value)
    return value if isinstance(value, str) else value.isoformat()


def constant(text, data_type=None):
    """A literal; without a data type a number if it reads as one."""
    if data_type is not None:
        return parse(text, data_type)
    for kind in ("integer", "double"):
        value = parse(text, kind)
        if value is not INVALID:
            return value
    return text
