#!/usr/bin/env python3
"""Prints the rows of kFits in GeoRef_test.cpp: least squares in exact fractions, for the points of `points`."""
from fractions import Fraction as F
import math

PROBE, WORLD = (F('0.7'), F('-1.1')), (F('1.5'), F('0.4'))


def points(n):
    for i in range(n):
        x = 7 * i % 11 * F('0.4') - 2
        y = 5 * i % 13 * F('0.3') - F('1.8')
        yield (x, y, 1 + F('1.1') * x - F('0.2') * y + F('0.05') * ((3 * i * i + i) % 7),
               F('0.5') + F('0.3') * x - F('0.9') * y + F('0.04') * ((i * i + 2 * i) % 5))


def used(n, requested):
    most = 1 if n < 2 else 3 if n == 2 else 4 if n < 6 else 5 if n < 10 else 6 if n < 15 else 7
    return min(requested, most)


def terms(kind, a, b):
    if kind == 3:
        return [F(1), a]
    return [a**(d - k) * b**k for d in range(kind - 2) for k in range(d + 1)]


def least_squares(rows, wanted):
    m = len(rows[0])
    s = [[sum(r[i] * r[j] for r in rows) for j in range(m)] + [sum(r[i] * w for r, w in zip(rows, wanted))]
         for i in range(m)]
    for i in range(m):
        pivot = next(k for k in range(i, m) if s[k][i])
        s[i], s[pivot] = s[pivot], s[i]
        s[i] = [v / s[i][i] for v in s[i]]
        for k in range(m):
            if k != i and s[k][i]:
                s[k] = [v - s[k][i] * u for v, u in zip(s[k], s[i])]
    return [row[m] for row in s]


def fit(kind, pairs):
    c = least_squares([terms(kind, x, y) for x, y, _, _ in pairs], [p[2] for p in pairs])
    d = least_squares([terms(kind, y, x) for x, y, _, _ in pairs], [p[3] for p in pairs])
    value = lambda k, t: sum(u * v for u, v in zip(k, t))
    return lambda x, y: (value(c, terms(kind, x, y)), value(d, terms(kind, y, x)))


for n, requested in [(20, 3), (3, 4), (20, 4), (5, 6), (6, 5), (9, 7), (10, 6), (14, 9), (15, 7), (30, 12)]:
    kind = used(n, requested)
    pairs = list(points(n))
    forward = fit(kind, pairs)
    backward = fit(kind, [(X, Y, x, y) for x, y, X, Y in pairs])
    squares = [(X - forward(x, y)[0])**2 + (Y - forward(x, y)[1])**2 for x, y, X, Y in pairs]
    row = [*forward(*PROBE), *backward(*WORLD), math.sqrt(squares[2]), math.sqrt(sum(squares) / n)]
    print(f'    {{{n}, {requested}, {{' + ', '.join(f'{float(v):.9f}' for v in row) + '}},')
