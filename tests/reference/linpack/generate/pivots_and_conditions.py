#!/usr/bin/env python3
"""Writes ../PivotsAndConditions.csv: what the published pivot rules choose and what the published condition estimate
is, without rounding.

The estimate is |y| / (|A| |z|) in norm1, where A^T y = e, A z = y and the signs of e are chosen so that the solution of
the triangular system on the way grows. All scaling cancels, so y and z come from the inverse of A by mpmath's own
solver; only the choice of signs follows the publication (LINPACK Users' Guide, chapters 1 to 6). The pivoting
decompositions follow their definitions: the largest remaining diagonal element, the largest remaining column.
A choice that hangs on less than 1e-6 stops the generator, as rounding could turn it.
"""
import os
import random

import mpmath
from mpmath import matrix, mpf

mpmath.mp.dps = 50
HEAD = """\
# function  Linpack pivots and rcond               columns  routine n ml mu a pivots rcond
# source    generate/pivots_and_conditions.py, mpmath {version} at 50 digits; random matrices, seed 19790101
# digits    a by columns, exact doubles (hex floats); ml, mu: the diagonals of a band, mu also the job of dtrco
# tolerance pivots EXACT; rcond REL(256 eps / rcond), as rounding in the factors is magnified by the condition
routine,n,ml,mu,a,pivots,rcond
"""
random.seed(19790101)


def decide(difference, scale=1):
    assert abs(difference) > mpf('1e-6') * abs(scale), 'a tie'
    return difference > 0


def norm1(m):
    return max(sum(abs(m[i, j]) for i in range(m.rows)) for j in range(m.cols))


def grow(n, u):
    """The right side e of U^T w = e, U upper."""
    z = [mpf(0)] * n
    e = []
    sign = mpf(1)
    for k in range(n):
        if z[k] != 0:
            sign = mpf(-1) if z[k] > 0 else mpf(1)
        best = None
        for s in (sign, -sign):
            w = (s - z[k]) / u[k, k]
            moved = [z[j] + w * u[k, j] for j in range(k + 1, n)]
            total = abs(s - z[k]) + sum(abs(v) for v in moved)
            if best is None or (total != best[0] and decide(total - best[0], total)):
                best = (total, s, moved)
        e.append(best[1])
        z[k + 1:] = best[2]
    return matrix(e)


def estimate(a, y):
    z = mpmath.lu_solve(a, y)
    return norm1(y) / (norm1(a) * norm1(z))


def eliminate(a):
    n = a.rows
    a = a.copy()
    pivots = []
    for k in range(n):
        order = sorted(range(k, n), key=lambda i: -abs(a[i, k]))
        if len(order) > 1:
            decide(abs(a[order[0], k]) - abs(a[order[1], k]))
        p = order[0]
        pivots.append(p + 1)
        for j in range(n):
            a[k, j], a[p, j] = a[p, j], a[k, j]
        for i in range(k + 1, n):
            factor = a[i, k] / a[k, k]
            for j in range(k, n):
                a[i, j] -= factor * a[k, j]
    return a, pivots


def general(a):
    u, pivots = eliminate(a)
    e = grow(a.rows, u)
    return pivots, estimate(a, mpmath.lu_solve(a.T, e))


def definite(a):
    return [], estimate(a, mpmath.lu_solve(a, grow(a.rows, mpmath.cholesky(a).T)))


def triangular(t, lower):
    n = t.rows
    turned = matrix(n, n)
    for i in range(n):
        for j in range(n):
            turned[i, j] = t[n - 1 - i, n - 1 - j] if lower else t[i, j]
    e = grow(n, turned)
    if lower:
        e = matrix(list(e)[::-1])
    return [], estimate(t, mpmath.lu_solve(t.T, e))


def indefinite(a):
    """Bunch and Kaufman's pivoting from the last column, in LINPACK's order of tests."""
    n = a.rows
    s = a.copy()
    alpha = (1 + mpmath.sqrt(17)) / 8
    pivots = [0] * n
    blocks = []
    k = n - 1

    def exchange(i, j):
        for t in range(n):
            s[i, t], s[j, t] = s[j, t], s[i, t]
        for t in range(n):
            s[t, i], s[t, j] = s[t, j], s[t, i]

    while k >= 0:
        if k == 0:
            pivots[0] = 1
            blocks.append((0, 1, 0, None))
            break
        col = max(range(k), key=lambda i: abs(s[i, k]))
        largest = abs(s[col, k])
        order, row = 1, k
        if not decide(abs(s[k, k]) - alpha * largest):
            beside = max(abs(s[col, j]) for j in range(k + 1) if j != col)
            if decide(abs(s[col, col]) - alpha * beside):
                row = col
            elif not decide(abs(s[k, k]) - alpha * largest * largest / beside):
                order, row = 2, col
        place = k + 1 - order
        exchange(row, place)
        d = matrix([[s[i, j] for j in range(place, k + 1)] for i in range(place, k + 1)])
        c = matrix([[s[i, j] for j in range(place, k + 1)] for i in range(place)]) if place else None
        if place:
            multipliers = c * d ** -1
            update = multipliers * c.T
            for i in range(place):
                for j in range(place):
                    s[i, j] -= update[i, j]
        else:
            multipliers = None
        blocks.append((place, order, row, (multipliers, d)))
        for t in range(place, k + 1):
            pivots[t] = row + 1 if order == 1 else -(row + 1)
        k -= order
    # U D w = e, each element of e away from what the others left there.
    z = [mpf(0)] * n
    e = mpf(1)
    for place, order, row, parts in blocks:
        if parts is None:
            if z[0] != 0:
                e = abs(e) if z[0] > 0 else -abs(e)
            z[0] = (z[0] + e) / s[0, 0]
            continue
        multipliers, d = parts
        last = place + order - 1
        z[place], z[row] = z[row], z[place]
        for t in range(last, place - 1, -1):
            if z[t] != 0:
                e = abs(e) if z[t] > 0 else -abs(e)
            z[t] += e
            for i in range(place):
                z[i] -= multipliers[i, t - place] * z[t]
        w = mpmath.lu_solve(d, matrix(z[place:last + 1]))
        z[place:last + 1] = list(w)
    # y: the transposed steps backwards.
    for place, order, row, parts in reversed(blocks):
        if parts is None:
            continue
        multipliers, _ = parts
        for t in range(order):
            if multipliers is not None:
                z[place + t] -= sum(multipliers[i, t] * z[i] for i in range(place))
        z[place], z[row] = z[row], z[place]
    return pivots, estimate(a, matrix(z))


def cholesky_pivots(a):
    n = a.rows
    s = a.copy()
    order = list(range(n))
    for k in range(n):
        best = sorted(range(k, n), key=lambda i: -s[i, i])
        if len(best) > 1:
            decide(s[best[0], best[0]] - s[best[1], best[1]])
        p = best[0]
        order[k], order[p] = order[p], order[k]
        for t in range(n):
            s[k, t], s[p, t] = s[p, t], s[k, t]
        for t in range(n):
            s[t, k], s[t, p] = s[t, p], s[t, k]
        for i in range(k + 1, n):
            for j in range(k + 1, n):
                s[i, j] -= s[i, k] * s[k, j] / s[k, k]
    return [i + 1 for i in order]


def column_pivots(x):
    n = x.cols
    columns = [x[:, j] for j in range(n)]
    order = list(range(n))
    for k in range(n):
        norms = [sum(v * v for v in c) for c in columns]
        best = sorted(range(k, n), key=lambda j: -norms[j])
        if len(best) > 1:
            decide(norms[best[0]] - norms[best[1]])
        p = best[0]
        columns[k], columns[p] = columns[p], columns[k]
        order[k], order[p] = order[p], order[k]
        for j in range(k + 1, n):
            share = sum(a * b for a, b in zip(columns[k], columns[j])) / norms[p]
            columns[j] = columns[j] - share * columns[k]
    return [j + 1 for j in order]


def square(n, kind):
    m = [[random.uniform(-1, 1) for _ in range(n)] for _ in range(n)]
    for i in range(n):
        for j in range(n):
            if kind == 'graded':
                m[i][j] *= 2.0 ** (-i - j)
            if kind == 'ill':
                m[i][j] = 1.0 / (i + j + 1.0) + m[i][j] * 1e-4
    return m


def keep(m, predicate):
    return [[v if predicate(i, j) else 0.0 for j, v in enumerate(row)] for i, row in enumerate(m)]


def mirrored(m):
    return [[m[min(i, j)][max(i, j)] for j in range(len(m))] for i in range(len(m))]


def gram(m):
    """Rounded to doubles, with a diagonal that keeps it positive definite."""
    n = len(m)
    g = [[sum(m[t][i] * m[t][j] for t in range(n)) for j in range(n)] for i in range(n)]
    return mirrored([[g[i][j] + (0.125 * (i + 1) if i == j else 0.0) for j in range(n)] for i in range(n)])


def main():
    rows = []

    def add(routine, m, result, ml='', mu=''):
        pivots, rcond = result
        n = len(m)
        values = ';'.join(float.hex(float(m[i][j])) for j in range(n) for i in range(n))
        rows.append(','.join([routine, str(n), str(ml), str(mu), values, ';'.join(map(str, pivots)),
                              '' if rcond is None else mpmath.nstr(rcond, 25)]))

    for n, kind in ((3, 'plain'), (5, 'plain'), (6, 'graded'), (5, 'ill'), (10, 'plain')):
        m = square(n, kind)
        add('dgeco', m, general(matrix(m)))
        for ml, mu in ((1, 1), (2, 1), (1, 2)):
            band = keep(square(n, kind), lambda i, j: i - j <= ml and j - i <= mu)
            add('dgbco', band, general(matrix(band)), ml, mu)
        g = gram(square(n, kind))
        add('dpoco', g, definite(matrix(g)))
        for m_above in (1, 2):
            band = keep(gram(square(n, kind)), lambda i, j: abs(i - j) <= m_above)
            for i in range(n):
                band[i][i] += 4.0
            add('dpbco', band, definite(matrix(band)), '', m_above)
        s = mirrored(square(n, kind))
        add('dsico', s, indefinite(matrix(s)))
        for i in range(n):
            s[i][i] *= 0.0625
        add('dsico', s, indefinite(matrix(s)))
        for job in (0, 1):
            t = keep(square(n, kind), lambda i, j: i >= j if job == 0 else i <= j)
            for i in range(n):
                t[i][i] += 0.75 if t[i][i] > 0 else -0.75
            add('dtrco', t, triangular(matrix(t), job == 0), '', job)
        add('dchdc', g, (cholesky_pivots(matrix(g)), None))
        x = square(n, 'plain')
        add('dqrdc', x, (column_pivots(matrix(x)), None))
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, '..', 'PivotsAndConditions.csv'), 'w', encoding='ascii', newline='\n') as out:
        out.write(HEAD.format(version=mpmath.__version__))
        out.write('\n'.join(rows) + '\n')


main()
