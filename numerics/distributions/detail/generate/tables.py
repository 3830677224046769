#!/usr/bin/env python3
"""Writes ../tables.h: the coefficient tables of the distribution kernels, at 60 digits before they are rounded.

Every polynomial interpolates at Chebyshev points, its degree the smallest that reaches the wanted relative error (or the
degree that the caller fixes), and is turned into powers of its own variable. Run by hand; the build never runs it.
"""
import os
import mpmath
from mpmath import mp, mpf

mp.dps = 60


def interpolate(f, lo, hi, degree, centre):
    """Coefficients, constant first, in powers of (x - centre)."""
    n = degree + 1
    half, middle = (hi - lo) / 2, (hi + lo) / 2
    nodes = [middle + half * mpmath.cos(mpmath.pi * (2 * i + 1) / (2 * n)) for i in range(n)]
    values = [f(x) for x in nodes]
    newton = list(values)
    for j in range(1, n):
        for i in range(n - 1, j - 1, -1):
            newton[i] = (newton[i] - newton[i - 1]) / (nodes[i] - nodes[i - j])
    coefficients = [newton[-1]]
    for i in range(n - 2, -1, -1):
        shift = nodes[i] - centre
        raised = [mpf(0)] + coefficients
        for k, c in enumerate(coefficients):
            raised[k] -= shift * c
        raised[0] += newton[i]
        coefficients = raised
    return coefficients


def worst(f, coefficients, lo, hi, centre):
    error = mpf(0)
    for i in range(101):
        x = lo + (hi - lo) * mpf(i) / 100 + (hi - lo) * mpf(10) ** -9 * (1 if i == 0 else 0)
        value = f(x)
        error = max(error, abs(mpmath.polyval(coefficients[::-1], x - centre) / value - 1))
    return error


def fit(f, pieces, degree=None, target=mpf(2) ** -57):
    """One list of coefficients for each (lo, hi, centre), all of the same degree."""
    pieces = [tuple(mpf(v) for v in piece) for piece in pieces]
    for d in [degree] if degree else range(4, 40):
        tables = [interpolate(f, lo, hi, d, centre) for lo, hi, centre in pieces]
        error = max(worst(f, t, lo, hi, centre) for t, (lo, hi, centre) in zip(tables, pieces))
        if degree or error <= target:
            return tables, error
    raise ValueError("no degree reaches the target")


def number(x):
    return repr(float(x))


def rows(values, indent="    "):
    lines, line = [], indent
    for text in values:
        if len(line) + len(text) + 2 > 118:
            lines.append(line.rstrip())
            line = indent
        line += text + ", "
    lines.append(line.rstrip().rstrip(","))
    return "\n".join(lines)


def table(name, comment, tables, error):
    out = f"// {comment} Worst relative error {mpmath.nstr(error, 2)} before rounding.\n"
    count, terms = len(tables), len(tables[0])
    if count == 1:
        return out + f"inline constexpr double {name}[{terms}] = {{\n{rows([number(c) for c in tables[0]])}}};\n"
    body = ",\n".join("    {\n" + rows([number(c) for c in t], "        ") + "}" for t in tables)
    return out + f"inline constexpr double {name}[{count}][{terms}] = {{\n{body}}};\n"


def erf_over_x(s):
    if s == 0:
        return 2 / mpmath.sqrt(mpmath.pi)
    x = mpmath.sqrt(s)
    return mpmath.erf(x) / x


def scaled_erfc(t):
    """erfcx at x = 4/t - 4, divided by t so that t = 0 has the limit."""
    if t < mpf(1) / 5:
        x = 4 / t - 4
        total = term = mpf(1)
        for k in range(1, 250):
            if abs(term) < mpf(10) ** -62:
                break
            term *= -(2 * k - 1) / (2 * x * x)
            total += term
        return total / (x * mpmath.sqrt(mpmath.pi)) / t
    x = 4 / t - 4
    with mpmath.workdps(80 + int(x * x)):
        return +(mpmath.exp(x * x) * mpmath.erfc(x) / t)


def log_gamma_quotient(z):
    """log Gamma(x) / ((x - 1)(x - 2)) where z = x - 4.5 / (x + 0.5)."""
    half = mpf(1) / 2
    x = ((z - half) + mpmath.sqrt((z - half) ** 2 + 4 * (z / 2 + mpf(9) / 2))) / 2
    for zero, limit in ((1, mpmath.euler), (2, 1 - mpmath.euler)):
        if abs(x - zero) < mpf(10) ** -25:
            return limit
    return mpmath.loggamma(x) / ((x - 1) * (x - 2))


def stirling_error(x):
    return mpmath.loggamma(x) - (x - mpf(1) / 2) * mpmath.log(x) + x - mpmath.log(2 * mpmath.pi) / 2


def half_step(x):
    return mpmath.exp(mpmath.loggamma(x + mpf(1) / 2) - mpmath.loggamma(x)) / mpmath.sqrt(x)


def reciprocals():
    """Short reciprocals c of the slices [k/128, (k+1)/128], 90 <= k <= 181, and -log c in two doubles."""
    shorts, highs, lows = [], [], []
    for k in range(90, 182):
        c = mpf(1) if k in (127, 128) else mpmath.nint(mpf(512) / ((k + mpf(1) / 2) / 128)) / 512
        value = -mpmath.log(c)
        high = float(value)
        shorts.append(number(c))
        highs.append(number(high))
        lows.append(number(value - mpf(high)))
    return shorts, highs, lows


def deviances():
    """u - log(1 + u) in the middle of sixteen slices a binade, as 26 bits and what they leave, and 1/(1 + u)."""
    out = ("// {u - log(1 + u) to 26 bits, what they leave, 1/(1 + u)} for the middles u of sixteen slices a binade from "
           "2^-5:\n// those above 0, up to 8, and those below it, down to -3/4.\n"
           "struct DeviancePoint {\n    double top;\n    double rest;\n    double reciprocal;\n};\n")
    for name, sign, end in (("kDevianceAbove", 1, mpf(8)), ("kDevianceBelow", -1, mpf(3) / 4)):
        lines = []
        for e in range(-5, 3):
            for k in range(16):
                u = sign * mpf(2) ** e * (1 + (mpf(k) + mpf(1) / 2) / 16)
                if abs(u) < end:
                    value = u - mpmath.log1p(u)
                    unit = mpf(2) ** (mpmath.floor(mpmath.log(value, 2)) - 25)
                    top = mpmath.floor(value / unit) * unit
                    lines.append("    {" + ", ".join(number(v) for v in (top, value - top, 1 / (1 + u))) + "}")
        out += f"inline constexpr DeviancePoint {name}[{len(lines)}] = {{\n" + ",\n".join(lines) + "};\n"
    return out


def main():
    out = ["// Coefficient tables of the distribution kernels. Written by generate/tables.py; do not edit.",
           "#pragma once", "", "namespace KwMath_930::detail {", ""]
    out.append(table("kErf", "erf(x)/x in powers of x^2, |x| <= 1.", *fit(erf_over_x, [(0, 1, 0)])))
    pieces = [(mpf(i) / 16, mpf(i + 1) / 16, (mpf(i) + mpf(1) / 2) / 16) for i in range(16)]
    tables, error = fit(scaled_erfc, [(max(lo, mpf(1) / 100000), hi, c) for lo, hi, c in pieces])
    tables = [[c / mpf(16) ** k for k, c in enumerate(t)] for t in tables]
    out.append(table("kScaledErfc", "exp(x^2) erfc(x) / t, t = 4/(4+x), in powers of 16t - i - 1/2, slice i = floor(16t).",
                     tables, error))
    out.append(table("kLogGammaMiddle", "log Gamma(x) in powers of x - (i + 3.5), i = floor(x) - 3, 3.5 <= x < 8.",
                     *fit(mpmath.loggamma, [(3.5, 4, 3.5)] + [(i + 3, i + 4, i + 3.5) for i in range(1, 5)], 12)))
    out.append(table("kLogGammaLow", "log Gamma(x)/((x-1)(x-2)) in powers of z - (i - 3.5), z = x - 4.5/(x + 0.5), "
                     "i = floor(z + 4).\n//", *fit(log_gamma_quotient, [(i - 4, min(i - 3, mpf(19) / 8), mpf(i) - 3.5)
                                                  for i in range(7)], 13)))
    out.append(table("kReciprocalGamma", "1/(x Gamma(x)) in powers of x: [0] for x < 0.25, [1] for 0.25 <= x < 0.5.",
                     *fit(lambda x: mpmath.rgamma(x + 1), [(0, 0.25, 0), (0.25, 0.5, 0)])))
    out.append(table("kReciprocalGamma1", "1/Gamma(1 + x) in powers of x - (i + 1/2)/2, i = floor(2x), 0 <= x < 2.",
                     *fit(lambda x: mpmath.rgamma(x + 1), [(i / 2, (i + 1) / 2, (2 * i + 1) / 4) for i in range(4)])))
    tables, error = fit(lambda s: (stirling_error(1 / mpmath.sqrt(s)) / mpmath.sqrt(s) - mpf(1) / 12) / s,
                        [(mpf(1) / 10 ** 8, mpf(1) / 64, 0)], 4)
    out.append(table("kStirlingSeries", "The six terms of Stirling's series for x >= 8: 1/12, then, in powers of 1/x^2, "
                     "what fits the rest.\n//", [[mpf(1) / 12] + tables[0]], error))
    slices = [mpf(2) ** e * (1 + mpf(k) / 4) for e in range(4) for k in range(4)] + [mpf(16)]
    out.append(table("kStirlingError", "Error of Stirling's formula for log Gamma(x), 1 <= x < 16, four slices a binade, "
                     "about their middles.\n//", *fit(stirling_error, [(lo, hi, (lo + hi) / 2)
                                                  for lo, hi in zip(slices, slices[1:])], target=mpf(2) ** -56)))
    out.append(deviances())
    out.append(table("kHalfStep", "Gamma(x + 1/2) / (Gamma(x) sqrt x), slices as of kStirlingError.\n//",
                     *fit(half_step, [(lo, hi, (lo + hi) / 2) for lo, hi in zip(slices, slices[1:])])))
    out.append(table("kHalfStepSeries", "The same for x >= 16 in powers of 1/x - 1/32.\n//",
                     *fit(lambda r: half_step(1 / r) if r > 0 else mpf(1), [(0, mpf(1) / 16, mpf(1) / 32)])))
    for name, what, values in zip(("kShortReciprocal", "kLogReciprocalHigh", "kLogReciprocalLow"),
                                  ("Reciprocals c, of at most 11 bits, of the slices (90 + i)/128 .. (91 + i)/128, about [sqrt(1/2), sqrt(2)].",
                                   "-log c, leading double.", "-log c, what the leading double leaves."), reciprocals()):
        out.append(f"// {what}\ninline constexpr double {name}[92] = {{\n{rows(values)}}};\n")
    out.append("}  // namespace KwMath_930::detail\n")
    target = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tables.h")
    with open(target, "w", encoding="ascii", newline="\n") as f:
        f.write("\n".join(out))


main()
