#!/usr/bin/python3
"""The evaluator beside numexpr (at equal threads) and numpy: five expressions, 524288 points to codes, ratios in one run.

eval_peers.py BENCH_EVAL32    ends with 1 when a limit is passed.
"""
import subprocess
import sys
import time

import numexpr
import numpy

POINTS = 524288
ROUNDS = 12
EXPRESSIONS = [
    ("damped sine", "sin(2*pi*5*x)*exp(-3*x)",
     lambda x: numpy.sin(2 * numpy.pi * 5 * x) * numpy.exp(-3 * x)),
    ("cubic", "0.1+x*0.7-1.9*x**2+1.3*x**3",
     lambda x: 0.1 + x * 0.7 - 1.9 * x**2 + 1.3 * x**3),
    ("four sines", "(sin(2*pi*x)+sin(6*pi*x)/3+sin(10*pi*x)/5+sin(14*pi*x)/7)*0.9",
     lambda x: (numpy.sin(2 * numpy.pi * x) + numpy.sin(6 * numpy.pi * x) / 3 + numpy.sin(10 * numpy.pi * x) / 5
                + numpy.sin(14 * numpy.pi * x) / 7) * 0.9),
    ("min, max, abs, floor of a saw",
     "where(where(abs(2*(5*x-floor(5*x+0.5)))<0.8,abs(2*(5*x-floor(5*x+0.5))),0.8)>"
     "floor(6*(5*x-floor(5*x+0.5)))/4,where(abs(2*(5*x-floor(5*x+0.5)))<0.8,abs(2*(5*x-floor(5*x+0.5))),0.8),"
     "floor(6*(5*x-floor(5*x+0.5)))/4)",
     lambda x: saw_of(2 * (5 * x - numpy.floor(5 * x + 0.5)))),
    ("root and logarithm", "sqrt(abs(x-0.5))*log(1+9*x)*0.5",
     lambda x: numpy.sqrt(numpy.abs(x - 0.5)) * numpy.log(1 + 9 * x) * 0.5),
]


def saw_of(saw):
    return numpy.maximum(numpy.minimum(numpy.abs(saw), 0.8), numpy.floor(3 * saw) / 4)


def codes(values):
    return numpy.rint(numpy.clip(values * 32767, -32767, 32767)).astype(numpy.int16)


def best(work):
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        work()
        times.append((time.perf_counter() - start) * 1e6)
    return min(times)


def our_times(program, threads):
    output = subprocess.run([program, "times", str(threads)], check=True, capture_output=True, text=True).stdout
    return [float(line) for line in output.split()]


def main():
    x = numpy.arange(POINTS) / POINTS
    pi = numpy.pi
    is_over = False

    def row(figure, ours, peer, faster):
        nonlocal is_over
        is_fast = peer >= faster * ours
        is_over = is_over or not is_fast
        print(f"{figure:58} {ours:10.1f} {peer:10.1f} {peer / ours:6.1f}x {faster:5.1f}x {'ok' if is_fast else 'OVER'}")

    print(f"{'figure':58} {'ours us':>10} {'peer us':>10} {'faster':>7} {'limit':>6}")
    for threads in (1, 2):
        numexpr.set_num_threads(threads)
        ours = our_times(sys.argv[1], threads)
        for (name, text, by_numpy), time_of_ours in zip(EXPRESSIONS, ours):
            scope = {"x": x, "pi": pi}
            row(f"{name} / numexpr, threads: {threads}", time_of_ours,
                best(lambda: codes(numexpr.evaluate(text, local_dict=scope))), 8)
            if threads == 1:
                row(f"{name} / numpy", time_of_ours, best(lambda: codes(by_numpy(x))), 1.8)
    return 1 if is_over else 0


if __name__ == "__main__":
    sys.exit(main())
