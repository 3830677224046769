#!/usr/bin/env python3
"""Writes ../kernels/elementary.csv: the functions that the kernels take from the platform, at 60 digits."""
import os
import random

import mpmath

mpmath.mp.dps = 60
HEAD = """\
# function  std::exp(x) as 0, std::pow(x, y) as 1, std::tanh(x) as 2     columns  function x y high low
# source    generate/kernels.py, mpmath {version} at 60 digits; random arguments, seed 20261121
# digits    all are hex floats: the value is high + low, high its nearest double
"""
HERE = os.path.dirname(os.path.abspath(__file__))


def row(function, x, y, value):
    high = float(value)
    return [str(function), x.hex(), y.hex(), high.hex(), float(value - mpmath.mpf(high)).hex()]


def rows():
    draw = random.Random(20261121)
    for start, end, count in ((-708.0, 709.0, 200), (-40.0, 1.0, 300), (-1.0, 1.0, 100)):
        for _ in range(count):
            x = draw.uniform(start, end)
            yield row(0, x, 0.0, mpmath.exp(mpmath.mpf(x)))
    for degree in (2.0, 3.0, 4.0, 5.0, 7.0, 8.0, 0.5, 1.5, 2.375):
        for _ in range(60):
            x = draw.uniform(-50.0, 50.0) if degree.is_integer() else draw.uniform(0.0, 50.0)
            yield row(1, x, degree, mpmath.power(mpmath.mpf(x), mpmath.mpf(degree)))
    for end in (0.01, 1.0, 5.0, 20.0):
        for _ in range(100):
            x = draw.uniform(-end, end)
            yield row(2, x, 0.0, mpmath.tanh(mpmath.mpf(x)))


def main():
    with open(os.path.join(HERE, "..", "kernels", "elementary.csv"), "w", encoding="ascii") as file:
        file.write(HEAD.format(version=mpmath.__version__))
        file.write("function,x,y,high,low\n")
        for fields in rows():
            file.write(",".join(fields) + "\n")


if __name__ == "__main__":
    main()
