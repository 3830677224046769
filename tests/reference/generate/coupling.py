#!/usr/bin/env python3
"""Writes ../coupling/PairwiseCoupling.csv: pairwise probabilities and what coupling them gives, at 60 digits.

Two oracles. `exact` solves the optimality conditions as one linear system, Q p + b e = 0, e^T p = 1, by elimination
with pivoting. `reached` follows the same iteration in high precision, together with the number of iterations that
it takes. `reach` bounds how far any vector that passes the convergence test may lie from `exact`: the largest absolute
row sum of the block of the inverse that maps the residual to the deviation, times the tolerance.
"""
import os
import random
import sys

import mpmath
from mpmath import mpf

mpmath.mp.dps = 60
LIMIT = 100
HEAD = """\
# function  PairwiseCoupling::Solve(r, p)          columns  k pairs reached iterations exact reach
# source    generate/coupling.py, mpmath {version} at 60 digits; random pairs, seed 20260214
# digits    inputs are exact doubles (hex floats), r[i][j] for i < j in row order; r[j][i] is 1 - r[i][j] in doubles
#           and both are 0 for a pair of "-"
# tolerance reached REL(256 eps) of the largest probability; exact within reach; both are empty where the
#           iterations end without convergence
"""


def matrix_q(r, number=mpf):
    k = len(r)
    return [[sum((number(r[i][t]) ** 2 for i in range(k) if i != t), number(0)) if j == t
             else -number(r[j][t]) * number(r[t][j]) for j in range(k)] for t in range(k)]


def solve_exactly(q):
    k = len(q)
    bordered = mpmath.matrix(k + 1, k + 1)
    for t in range(k):
        for j in range(k):
            bordered[t, j] = q[t][j]
        bordered[t, k] = bordered[k, t] = 1
    inverse = bordered ** -1
    norm = max(sum((abs(inverse[t, j]) for j in range(k)), mpf(0)) for t in range(k))
    return [inverse[t, k] for t in range(k)], norm


def form(q, p):
    k = len(p)
    return sum(q[t][j] * p[t] * p[j] for t in range(k) for j in range(k))


def iterate(q, number=mpf):
    """Returns: the vector, the iterations, whether it converged, and the least relative distance to the tolerance."""
    k = len(q)
    p = [number(1) / k] * k
    tolerance = number(0.005 / k)
    margin = number(1)
    for iteration in range(1, LIMIT + 1):
        for t in range(k):
            others = sum(q[t][j] * p[j] for j in range(k) if j != t)
            p[t] = (form(q, p) - others) / q[t][t]
            total = sum(p)
            p = [x / total for x in p]
        pqp = form(q, p)
        error = max(abs(sum(q[t][j] * p[j] for j in range(k)) - pqp) for t in range(k))
        margin = min(margin, abs(error - tolerance) / tolerance)
        if error < tolerance:
            return p, iteration, True, margin
    return p, LIMIT, False, margin


def mirror(k, upper):
    r = [[0.0] * k for _ in range(k)]
    place = 0
    for i in range(k):
        for j in range(i + 1, k):
            if upper[place] is not None:
                r[i][j] = upper[place]
                r[j][i] = 1.0 - upper[place]
            place += 1
    return r


def source_between(random_source):
    return random_source.uniform(0.1, 0.9)


def clamp(x):
    return min(max(x, 1e-7), 0.9999999)


def random_pairs(random_source, k, kind):
    pairs = [(i, j) for i in range(k) for j in range(i + 1, k)]
    if kind == "even":
        return [random_source.uniform(0.02, 0.98) for _ in pairs]
    if kind == "extreme":
        return [random_source.choice([1e-7, 0.9999999, random_source.random(), random_source.random() ** 8])
                for _ in pairs]
    if kind == "consistent":
        strength = [random_source.uniform(0.1, 9.0) for _ in range(k)]
        return [clamp(strength[i] / (strength[i] + strength[j])) for i, j in pairs]
    if kind == "clusters":
        # The first two categories meet only each other; nothing but their sum ties them to the rest.
        return [source_between(random_source) if (i < 2) == (j < 2) else None for i, j in pairs]
    # Only the pairs with the first category.
    return [clamp(random_source.random() ** 6) if i == 0 else None for i, _ in pairs]


def unconverged_pairs(random_source, k):
    """Pairs within four clusters only, drawn until the iterations do not converge."""
    while True:
        cluster = [random_source.randrange(4) for _ in range(k)]
        upper = [clamp(abs(round(random_source.random()) - random_source.random() ** 0.5)) if cluster[i] == cluster[j]
                 else None for i in range(k) for j in range(i + 1, k)]
        q = matrix_q(mirror(k, upper), float)
        if all(q[t][t] != 0 for t in range(k)) and not iterate(q, float)[2]:
            return upper


def text(values):
    return ";".join("-" if x is None else float(x).hex() for x in values)


def make_row(k, upper):
    q = matrix_q(mirror(k, upper))
    reached, iterations, converged, margin = iterate(q)
    assert margin > mpf(10) ** -9, "an error too near the tolerance to be decided in double precision"
    if not converged:
        return [str(k), text(upper), text(reached), str(iterations), "", ""]
    exact, norm = solve_exactly(q)
    return [str(k), text(upper), text(reached), str(iterations), text(exact), mpmath.nstr(norm * mpf(0.005 / k), 17)]


def main():
    source = random.Random(20260214)
    rows = []
    for k in range(3, 11):
        for kind in ["even"] * 4 + ["extreme"] * 4 + ["consistent"] * 2 + ["star"] * 3 + ["clusters"] * 3:
            if kind == "clusters" and k < 5:
                continue
            upper = random_pairs(source, k, kind)
            rows.append(make_row(k, upper))
    rows += [make_row(k, unconverged_pairs(source, k)) for k in (14, 15, 16)]
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "coupling", "PairwiseCoupling.csv")
    with open(path, "w", encoding="ascii", newline="\n") as table:
        table.write(HEAD.format(version=mpmath.__version__))
        table.write("k,pairs,reached,iterations,exact,reach\n")
        for row in rows:
            table.write(",".join(row) + "\n")
    counts = [int(row[3]) for row in rows]
    print(len(rows), "rows; iterations", min(counts), "to", max(counts), "; at the limit:", counts.count(LIMIT), file=sys.stderr)


if __name__ == "__main__":
    main()
