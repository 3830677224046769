#!/usr/bin/env python3
"""Writes ../<Member>.csv: arguments drawn over all branches of each member, and values from exact.py to 25 digits.

Run by hand (`tables.py [Member ...]`); the build never runs it. Arguments are exact doubles. An inverse is solved by
Newton's method for the double p; its table also holds the density there, which tells how far the result
may be off for an error in p.
"""
import math
import os
import random
import sys
import time
import zlib

import mpmath
from mpmath import mp, mpf

import exact
from exact import TooLong

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
ROWS = 240
SMALLEST = mpf(10) ** -300


def log_uniform(low, high):
    return math.exp(random.uniform(math.log(low), math.log(high)))


def beside(value):
    """A border at which a member changes its form, or the next double on either side."""
    return random.choice([value, math.nextafter(value, 0.0), math.nextafter(value, math.inf)])


def df(low=1e-3, high=1e10):
    """Degrees of freedom: mostly ordinary ones, some from the ends of the range, some at the borders of a form."""
    kind = random.random()
    if kind > 0.94:
        return random.choice([low, high, beside(2.0), beside(24.0)])
    if kind < 0.15:
        return float(random.randint(1, 60))
    return log_uniform(max(low, 0.2), min(high, 3e3)) if kind < 0.65 else log_uniform(low, high)


def shape(low=1e-5, high=1e8):
    if random.random() > 0.94:
        return random.choice([low, high, math.nextafter(1.0, random.choice([0.0, 2.0])), beside(12.0)])
    return log_uniform(max(low, 0.2), min(high, 3e3)) if random.random() < 0.5 else log_uniform(low, high)


def around(mean, deviation, spread=12):
    """A positive argument about the mean, now and then far from it."""
    if random.random() < 0.2:
        return mean * log_uniform(1e-4, 1e4)
    return mean + deviation * random.gauss(0, 1) * random.choice([1, 3, spread])


def gamma_x(p):
    return around(p, math.sqrt(p)) if p > 0.5 else log_uniform(1e-30, 30)


def beta_x(a, b):
    if a < 0.5 or b < 0.5:
        x = log_uniform(1e-30, 0.5)
        return x if random.random() < 0.5 or a > b else 1 - random.random() * 0.5
    return around(a / (a + b), math.sqrt(a * b / (a + b + 1)) / (a + b))


def f_x(d1, d2):
    deviation = math.sqrt(2 / d1 + 2 / d2)
    if random.random() < 0.05:
        return beside(1.0)
    return math.exp(random.gauss(0, 1) * deviation * random.choice([1, 3])) if deviation < 200 else log_uniform(1e-6, 1e6)


def t_x(d):
    t = random.choice([random.gauss(0, 1), random.uniform(-6, 6), random.gauss(0, 12), beside(random.choice([-1.0, 1.0]))])
    return t * log_uniform(1, 1e6) if abs(t) != 1 and d < 20 and random.random() < 0.3 else t


def probability():
    kind = random.random()
    if kind > 0.96:
        return random.choice([1e-300, 1 - 2.0 ** -53, beside(0.075), beside(0.925), beside(math.exp(-25))])
    if kind < 0.35:
        return log_uniform(1e-300, 1e-3)
    return random.random() if kind < 0.83 else 1 - log_uniform(1e-16, 1e-2)


def keep(value):
    """Draw again where a value tells nothing: 0, or 1 to more digits than a double has."""
    if not (SMALLEST < abs(value) and abs(value) < mpf(10) ** 300) or abs(value - 1) < mpf(10) ** -17:
        raise TooLong
    return value


def invert(tails, density, x):
    """The double p nearest to the lower tail at x, the x that belongs to it, and the density there."""
    x = mpf(x)
    lower, upper = tails(x)
    if not (SMALLEST < lower and SMALLEST < upper):
        raise TooLong
    p = float(lower)
    if not 0 < p < 1:
        raise TooLong
    for _ in range(40):
        slope = x * density(x)
        miss = mpmath.log(lower / p) * lower / slope if p < 0.5 else -mpmath.log(upper / (1 - mpf(p))) * upper / slope
        x = x * mpmath.exp(-miss)
        if abs(miss) < mpf(10) ** -14:
            return p, keep(x), density(x)
        lower, upper = tails(x)
    raise TooLong


# --- one function for each member: returns (arguments, expected[, density]) ------------------------------------------

def CdfStdNorm():
    x = random.choice([random.gauss(0, 1), random.uniform(-37, 8), random.uniform(-0.8, 0.8)])
    return (x,), keep(exact.normal_tails(x)[0])


def CdfNorm():
    mean, sd = random.gauss(0, 50), log_uniform(1e-3, 1e3)
    x = mean + sd * random.uniform(-37, 6)
    return (x, mean, sd), keep(exact.normal_tails((mpf(x) - mean) / sd)[0])


def PdfNormalStandard():
    x = random.choice([random.gauss(0, 1), random.uniform(-37, 37)])
    return (x,), mpmath.npdf(mpf(x))


def PdfNormal():
    mean, sd = random.gauss(0, 50), log_uniform(1e-3, 1e3)
    x = mean + sd * random.uniform(-36, 36)
    return (x, mean, sd), mpmath.npdf((mpf(x) - mean) / sd) / sd


def normal_quantile(p):
    x = mpf(-1) if p < 0.5 else mpf(1)
    if min(p, 1 - p) < 0.02:
        x *= mpmath.sqrt(-2 * mpmath.log(min(p, 1 - mpf(p))))
    for _ in range(40):
        lower, upper = exact.normal_tails(x)
        step = (mpmath.log(lower / p) * lower if p < 0.5 else -mpmath.log(upper / (1 - mpf(p))) * upper) / mpmath.npdf(x)
        x -= step
        if abs(step) < mpf(10) ** -40:
            return x
    raise TooLong


def IdfStdNorm():
    p = probability()
    x = normal_quantile(p)
    return (p,), x, mpmath.npdf(x)


def IdfNorm():
    p, mean, sd = probability(), random.gauss(0, 50), log_uniform(1e-3, 1e3)
    z = normal_quantile(p)
    return (p, mean, sd), mean + sd * z, mpmath.npdf(z) / sd


def zarndnlgam():
    x = random.choice([log_uniform(1e-300, 0.5), random.uniform(0, 8.5), log_uniform(8, 1e300),
                       1 + random.choice([-1, 1]) * log_uniform(1e-15, 0.3),
                       beside(random.choice([0.25, 0.5, 3.5, 4.0, 5.0, 6.0, 7.0, 8.0])),
                       2 + random.choice([-1, 1]) * log_uniform(1e-15, 0.3)])
    return (x,), mpmath.loggamma(mpf(x))


def CdfChi():
    d = df()
    x = 2 * gamma_x(d / 2)
    return (x, d), keep(exact.gamma_tails(mpf(x) / 2, mpf(d) / 2)[0])


def SigChi():
    d = df()
    x = 2 * gamma_x(d / 2)
    return (x, d), keep(exact.gamma_tails(mpf(x) / 2, mpf(d) / 2)[1])


def IdfChi():
    d = df()
    half = mpf(d) / 2
    p, x, density = invert(lambda x: exact.gamma_tails(x, half), lambda x: exact.gamma_density(x, half),
                           gamma_x(d / 2))
    return (p, d), 2 * x, density / 2


def CdfGam():
    a, rate = shape(), log_uniform(1e-3, 1e3)
    x = gamma_x(a) / rate
    return (x, a, rate), keep(exact.gamma_tails(mpf(x) * rate, mpf(a))[0])


def PdfGamma():
    a, rate = shape(), log_uniform(1e-3, 1e3)
    x = gamma_x(a) / rate
    if x <= 0:
        raise TooLong
    return (x, a, rate), keep(exact.gamma_density(mpf(x) * rate, mpf(a)) * rate)


def IdfGam():
    a, rate = shape(), log_uniform(1e-3, 1e3)
    p, x, density = invert(lambda x: exact.gamma_tails(x, a), lambda x: exact.gamma_density(x, a), gamma_x(a))
    return (p, a, rate), keep(x / rate), density * rate


def CdfBeta():
    a, b = shape(), shape()
    x = beta_x(a, b)
    return (x, a, b), keep(exact.beta_tails(mpf(x), 1 - mpf(x), mpf(a), mpf(b))[0])


def IdfBeta():
    a, b = shape(), shape()
    a_, b_ = mpf(a), mpf(b)
    x = mpf(beta_x(a, b))
    if not 0 < x < 1:
        raise TooLong
    # Solved in the odds u = x/(1 - x).
    p, u, density = invert(lambda u: exact.beta_tails(u / (1 + u), 1 / (1 + u), a_, b_),
                           lambda u: exact.beta_density(u / (1 + u), 1 / (1 + u), a_, b_) / (1 + u) ** 2, x / (1 - x))
    return (p, a, b), keep(u / (1 + u)), density * (1 + u) ** 2


def CdfT():
    d = df(high=1e8)
    t = t_x(d)
    return (t, d), keep(exact.t_tails(t, d)[0])


def SigT():
    d = df()
    t = t_x(d)
    return (t, d), keep(exact.t_tails(t, d)[1])


def PdfT():
    d = df()
    t = t_x(d)
    return (t, d), keep(exact.t_density(t, d))


def IdfT():
    d = df(high=1e8)
    t = t_x(d)
    if t < 0:
        p, x, density = invert(lambda t: exact.t_tails(-t, d)[::-1], lambda t: exact.t_density(t, d), -t)
        p, x = 1 - p, -x
        # 1 - p is exact only above a half: solve again for the lower tail itself.
        p = float(exact.t_tails(x, d)[0])
        x -= (exact.t_tails(x, d)[0] - p) / density
        return (p, d), x, density
    p, x, density = invert(lambda t: exact.t_tails(t, d), lambda t: exact.t_density(t, d), t)
    return (p, d), x, density


def CdfF():
    d1, d2 = df(), df()
    f = f_x(d1, d2)
    return (f, d1, d2), keep(exact.f_tails(f, d1, d2)[0])


def SigF():
    d1, d2 = df(), df()
    f = f_x(d1, d2)
    return (f, d1, d2), keep(exact.f_tails(f, d1, d2)[1])


def f_density(f, d1, d2):
    f, d1, d2 = mpf(f), mpf(d1), mpf(d2)
    whole = d2 + d1 * f
    return exact.beta_density(d1 * f / whole, d2 / whole, d1 / 2, d2 / 2) * d1 * d2 / whole ** 2


def IdfF():
    d1, d2 = df(), df()
    p, x, density = invert(lambda f: exact.f_tails(f, d1, d2), lambda f: f_density(f, d1, d2), f_x(d1, d2))
    return (p, d1, d2), x, density


def binomial_arguments():
    n = random.choice([random.randint(1, 60), int(log_uniform(10, 1e5)), int(log_uniform(1e3, 1e9))])
    p = random.choice([random.random(), log_uniform(1e-12, 1)])
    mean, deviation = n * p, math.sqrt(n * p * (1 - p))
    k = int(mean + random.gauss(0, 1) * deviation * random.choice([1, 4, 12]))
    if not 0 <= k <= n:
        k = random.randint(0, min(n, 6))
    return k, n, p


def CdfBin():
    k, n, p = binomial_arguments()
    if k == n:
        raise TooLong
    return (float(k), float(n), p), keep(exact.beta_tails(mpf(p), 1 - mpf(p), mpf(k) + 1, mpf(n) - k)[1])


def PdfBin():
    k, n, p = binomial_arguments()
    return (float(k), float(n), p), keep(exact.binomial_mass(k, n, p))


def PdfNegBin():
    p = random.choice([random.random(), log_uniform(1e-6, 1)])
    r = random.choice([float(random.randint(1, 50)), log_uniform(1e-5, 1e8)])
    mean = r * (1 - p) / p
    k = max(0, int(around(mean, math.sqrt(mean / p))))
    if k > 10 ** 10:
        raise TooLong
    value = mpmath.exp(mpmath.loggamma(mpf(k) + r) - mpmath.loggamma(mpf(r)) - mpmath.loggamma(mpf(k) + 1)
                       + r * mpmath.log(mpf(p)) + k * mpmath.log1p(-mpf(p)))
    return (float(k), r, p), keep(value)


def IdfBin():
    k, n, p = binomial_arguments()
    if k == n or n > 10 ** 7:
        raise TooLong
    below = exact.beta_tails(mpf(p), 1 - mpf(p), mpf(k), mpf(n) - k + 1)[1] if k > 0 else mpf(0)
    here = exact.beta_tails(mpf(p), 1 - mpf(p), mpf(k) + 1, mpf(n) - k)[1]
    prob = float(below + (here - below) * mpf(random.uniform(0.01, 0.99)))
    if not (0 < prob < 1 and below + mpf(10) ** -14 * below < prob < here - mpf(10) ** -14 * here and here > SMALLEST):
        raise TooLong
    return (prob, float(n), p), mpf(k)


def hyper_arguments():
    size = random.choice([random.randint(2, 60), int(log_uniform(20, 1e5)), int(log_uniform(1e3, 1e9))])
    m, n = random.randint(1, size - 1), random.randint(1, size - 1)
    if random.random() < 0.4:
        n = min(n, int(log_uniform(1, 500)))
    mean = n * m / size
    deviation = math.sqrt(mean * (1 - m / size) * (size - n) / max(1, size - 1))
    k = int(mean + random.gauss(0, 1) * deviation * random.choice([1, 3, 10]))
    if not max(0, n + m - size) <= k < min(n, m):
        raise TooLong
    return k, n, m, size


def CDFHyper():
    k, n, m, size = hyper_arguments()
    if k > n * m / size:
        upper = exact.hyper_cdf(n - k - 1, n, size - m, size)
        return tuple(float(v) for v in (k, n, m, size)), keep(1 - upper)
    return tuple(float(v) for v in (k, n, m, size)), keep(exact.hyper_cdf(k, n, m, size))


def PdfHyper():
    k, n, m, size = hyper_arguments()
    return tuple(float(v) for v in (k, n, m, size)), keep(exact.hyper_mass(k, n, m, size))


def noncentral_half():
    return random.choice([log_uniform(1e-3, 50), log_uniform(1, 1e4)])


def NonCentralCdfChi():
    d, nc = df(), noncentral_half()
    x = around(d + nc, math.sqrt(2 * d + 4 * nc))
    if x <= 0 or x > 20 * (d + nc) + 100:
        raise TooLong
    return (x, d, nc), keep(exact.noncentral_gamma(mpf(x) / 2, mpf(d) / 2, mpf(nc) / 2))


def NonCentralCdfF():
    d1, d2, nc = df(), df(), noncentral_half()
    f = (1 + nc / d1) * f_x(d1, min(d2, d1 + nc)) if random.random() < 0.7 else log_uniform(1e-3, 1e3)
    whole = mpf(d2) + mpf(d1) * mpf(f)
    return (f, d1, d2, nc), keep(exact.noncentral_beta(mpf(d1) * f / whole, d2 / whole, mpf(d1) / 2, mpf(d2) / 2,
                                                       mpf(nc) / 2))


def t_arguments():
    d = df()
    delta = random.choice([-1, 1]) * random.choice([log_uniform(1e-2, 8), log_uniform(1, 40), log_uniform(1, 1e4)])
    t = delta * math.exp(random.gauss(0, 1) / math.sqrt(d + 1)) + random.gauss(0, 2)
    if random.random() < 0.3 and abs(delta) < 30:
        t = -t
    return t, d, delta


def NonCentralCdfT():
    t, d, delta = t_arguments()
    if t * delta < 0 and abs(delta) > 37:
        raise TooLong
    value = exact.noncentral_t_tail(t, d, delta) if t < 0 else exact.noncentral_t(t, d, delta)
    return (t, d, delta), keep(value)


def NonCentralPdfT():
    t, d, delta = t_arguments()
    if t == 0:
        raise TooLong
    return (t, d, delta), keep(exact.noncentral_t_density(t, d, delta))


def find(cdf, nc):
    """The double p nearest to cdf(nc), the non-centrality that belongs to it, and -d cdf/d nc there."""
    nc = mpf(nc)
    value = keep(cdf(nc))
    p = float(value)
    if p > 1 - 1e-9:
        raise TooLong
    h = nc * mpf(10) ** -20
    slope = (cdf(nc + h) - cdf(nc - h)) / (2 * h)
    nc -= (value - p) / slope
    return p, nc, -slope


def FindNCParamChi():
    (x, d, nc), _ = NonCentralCdfChi()
    p, nc, slope = find(lambda v: exact.noncentral_gamma(mpf(x) / 2, mpf(d) / 2, v / 2), nc)
    return (p, x, d), nc, slope


def FindNCParamF():
    (f, d1, d2, nc), _ = NonCentralCdfF()
    whole = mpf(d2) + mpf(d1) * mpf(f)
    p, nc, slope = find(lambda v: exact.noncentral_beta(mpf(d1) * f / whole, d2 / whole, mpf(d1) / 2, mpf(d2) / 2,
                                                        v / 2), nc)
    return (p, f, d1, d2), nc, slope


def FindNCParamT():
    t, d, delta = t_arguments()
    if t < 0 or abs(delta) > 300:
        raise TooLong
    p, delta, slope = find(lambda v: exact.noncentral_t(t, d, v), delta)
    return (p, t, d), delta, slope


COLUMNS = {
    "CdfStdNorm": "x", "CdfNorm": "x mean sd", "PdfNormalStandard": "x", "PdfNormal": "x mean sd", "IdfStdNorm": "p",
    "IdfNorm": "p mean sd", "zarndnlgam": "x", "CdfChi": "x df", "SigChi": "x df", "IdfChi": "p df",
    "CdfGam": "x shape rate", "PdfGamma": "x shape rate", "IdfGam": "p shape rate", "CdfBeta": "x a b",
    "IdfBeta": "p a b", "CdfT": "t df", "SigT": "t df", "PdfT": "t df", "IdfT": "p df", "CdfF": "f df1 df2",
    "SigF": "f df1 df2", "IdfF": "p df1 df2", "CdfBin": "k n p", "PdfBin": "k n p", "IdfBin": "prob n p",
    "PdfNegBin": "k r p", "CDFHyper": "k n m N", "PdfHyper": "k n m N", "NonCentralCdfChi": "x df nc",
    "NonCentralCdfF": "f df1 df2 nc", "NonCentralCdfT": "t df nc", "NonCentralPdfT": "t df nc",
    "FindNCParamChi": "p x df", "FindNCParamF": "p f df1 df2", "FindNCParamT": "p t df"}


def write(member):
    random.seed(zlib.crc32(member.encode()))
    rows, begin, tries = [], time.time(), 0
    while len(rows) < ROWS:
        tries += 1
        try:
            arguments, expected, *density = globals()[member]()
        except (TooLong, ZeroDivisionError, ValueError, OverflowError, mpmath.libmp.NoConvergence, TypeError):
            continue
        cells = [float(v).hex() for v in arguments] + [mpmath.nstr(mpf(v), 25, min_fixed=1, max_fixed=0)
                                                       for v in (expected, *density)]
        rows.append(",".join(cells))
    names = COLUMNS[member].split() + ["expected"] + (["density"] if density else [])
    head = [f"# function  KwDistFun::{member}({', '.join(COLUMNS[member].split())})",
            f"# columns   {' '.join(names)}",
            f"# source    generate/tables.py, mpmath {mpmath.__version__} at {mp.dps} digits or more; drawn arguments",
            "# digits    25; arguments are exact doubles (hex floats)",
            "# tolerance in KwDistFun_reference_test.cpp, beside the member's name, with the worst error seen"]
    with open(os.path.join(FOLDER, member + ".csv"), "w", encoding="ascii", newline="\n") as f:
        f.write("\n".join(head + [",".join(names)] + rows) + "\n")
    print(member, tries, "draws", round(time.time() - begin, 1), "s", flush=True)


for name in sys.argv[1:] or COLUMNS:
    write(name)
