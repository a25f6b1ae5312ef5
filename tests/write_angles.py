#!/usr/bin/env python3
"""Writes data/angles.txt, against which platforms_test.cpp holds the angles that the client computes.

A line has the bits of a sine and a cosine of one angle, and of the heading of one matrix, all correctly rounded: they are
summed up as series with sixty digits, and rounded once. The angles and matrices are numbers of a generator that the test
has as well; the steps from a matrix to the two operands of its heading are rounded as the client rounds them.

usage: write_angles.py > data/angles.txt
"""
import math
import struct
from decimal import Decimal, getcontext

LINES = 1000
MASK = (1 << 64) - 1
getcontext().prec = 60


class SplitMix64:
    def __init__(self, seed):
        self.state = seed

    def next(self):
        self.state = (self.state + 0x9E3779B97F4A7C15) & MASK
        z = self.state
        z = ((z ^ (z >> 30)) * 0xBF58476D1CE4E5B9) & MASK
        z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & MASK
        return z ^ (z >> 31)

    def within(self, limit):
        """From -limit up to limit, a power of two, without rounding."""
        return (self.next() >> 11) * 2.0 ** -52 * limit - limit


def series(first, ratio):
    """The sum of terms, each of which is the one before it times ratio(its number)."""
    total, term, n = first, first, 0
    while abs(term) > Decimal(10) ** -58 * abs(total or 1):
        n += 1
        term *= ratio(n)
        total += term
    return total


def sine(x):
    return series(x, lambda n: -x * x / (2 * n * (2 * n + 1)))


def cosine(x):
    return series(Decimal(1), lambda n: -x * x / (2 * n * (2 * n - 1)))


def arctangent(x):
    """Of 0 to 1: halved twice, since the series is slow near 1."""
    for _ in range(2):
        x = x / (1 + (1 + x * x).sqrt())
    return 4 * sum((-1) ** n * x ** (2 * n + 1) / (2 * n + 1) for n in range(100))


PI = 4 * arctangent(Decimal(1))


def angle_of(y, x):
    """As atan2; neither is zero."""
    small, large = sorted((abs(y), abs(x)))
    angle = arctangent(small / large)
    if abs(y) > abs(x):
        angle = PI / 2 - angle
    if x < 0:
        angle = PI - angle
    return angle if y > 0 else -angle


def bits(value):
    return struct.pack(">d", float(value)).hex()


def main():
    numbers = SplitMix64(3)
    for _ in range(LINES):
        angle = Decimal(numbers.within(8.0))
        y, x = numbers.within(1.0), numbers.within(1.0)
        factor = 1.0 / math.sqrt(y * y + x * x)
        heading = angle_of(Decimal(y * factor), Decimal(x * factor))
        print(bits(sine(angle)), bits(cosine(angle)), bits(heading))


if __name__ == "__main__":
    main()
