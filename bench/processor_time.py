"""What a call costs in processor time, so that other programs on the machine count as little as can be."""

import time

ROUNDS = 8


def best(operation, repeat):
    """Microseconds for one call, the best of several rounds of `repeat` calls."""
    times = []
    for _ in range(ROUNDS):
        start = time.process_time()
        for _ in range(repeat):
            operation()
        times.append((time.process_time() - start) / repeat * 1e6)
    return min(times)
