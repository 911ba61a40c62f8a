"""Numbers as arguments are written: usual ones, finite ones of every size, and those that arithmetic is afraid of."""

from __future__ import annotations

import random

USUAL_WHOLE = [0, 1, 2, 3, 7, 64, -1]
EDGES = [2**31 - 1, 2**31, -(2**31), 2**32 - 1, 2**53, 2**63 - 1, -(2**63), 2**64 - 1, 2**64, 65536, 10**6, 10**9]
USUAL_REAL = ["0.0", "0.5", "1.0", "-1.0", "100.0", "1e-3"]
HOSTILE_REAL = ["float('inf')", "-float('inf')", "float('nan')", "1e308", "-1e308", "5e-324", "1e-308", "-0.0", "1e38"]


def whole(chance: random.Random, hostility: float) -> str:
    if chance.random() >= hostility:
        return str(chance.choice(USUAL_WHOLE))
    return str(chance.choice([chance.choice(EDGES), -chance.choice(EDGES), chance.randint(-(2**33), 2**33)]))


def real(chance: random.Random, hostility: float) -> str:
    if chance.random() >= hostility:
        return chance.choice(USUAL_REAL)
    if chance.random() < 0.4:
        return chance.choice(HOSTILE_REAL)
    return repr(chance.choice([-1, 1]) * chance.uniform(1, 10) * 10.0 ** chance.randint(-308, 307))
