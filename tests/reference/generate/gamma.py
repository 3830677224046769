#!/usr/bin/env python3
"""Writes ../gamma/Digamma.csv and ../gamma/Trigamma.csv: psi and psi' by mpmath at 50 digits."""
import os
import random

import mpmath
from mpmath import mpf

mpmath.mp.dps = 50
EPS = mpf(2) ** -52
HEAD = """\
# function  KwMathFun::{name}(x)          columns  x expected allowed
# source    generate/gamma.py, mpmath {version} at 50 digits; random arguments, seed 20261121
# digits    25; arguments are exact doubles (hex floats)
# tolerance allowed is an absolute error: {steps} eps of the larger of |expected| and {floor}; below x = {small} also the
#           first term that the formula for small x leaves out, {left_out}
"""


def arguments(small, root):
    generator = random.Random(20261121)
    x = [1e-15, 3e-12, 2.385e-8, small / 2, small * (1 - 2.0 ** -53), small, small * (1 + 2.0 ** -52),
         0.25, 0.5, 1.0, 1.5, 2.0, 2.385, 3.0, 10.0, 100.0, 1e10, 1e15, 1e100, 1e300]
    x += [root * (1 + k * 2.0 ** -20) for k in range(-4, 5)]
    for low, high, count in [(-15, -5, 40), (-5, -1, 60), (-1, 1, 150), (1, 3, 60), (3, 15, 40)]:
        x += [10 ** generator.uniform(low, high) for _ in range(count)]
    return sorted(set(x))


def write(name, function, small, floor, steps, left_out, left_out_text):
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "gamma", name + ".csv")
    with open(path, "w", encoding="utf-8") as file:
        file.write(HEAD.format(name=name, version=mpmath.__version__, steps=steps, floor=floor, small=small,
                               left_out=left_out_text))
        file.write("x,expected,allowed\n")
        for x in arguments(small, 1.4616321449683622):
            value = function(mpf(x))
            allowed = steps * EPS * max(abs(value), mpf(floor)) + (left_out(mpf(x)) if x < small else 0)
            file.write(f"{x.hex()},{mpmath.nstr(value, 25)},{mpmath.nstr(allowed, 20)}\n")


write("Digamma", mpmath.digamma, 1e-5, 1, 6, lambda x: mpmath.zeta(2) * x, "x pi^2/6")
write("Trigamma", lambda x: mpmath.psi(1, x), 1e-4, 0, 6, lambda x: mpmath.zeta(2), "pi^2/6")
