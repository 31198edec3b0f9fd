#!/usr/bin/python3
"""gnuplot with its cairo terminal. It draws into files alone, so that steady redraws write a picture, too. Modes as in work.h."""
import subprocess
import sys
import time

from numbers_of import months

SETTINGS = """
set terminal pngcairo size 900,500 font "Inter,10"
set title "Steps this month" font "Inter Bold,15"
set xrange [-0.5:30.5]
set yrange [0:14000]
set ytics 2000
set ylabel "steps"
set grid ytics linecolor rgb "#c6ced8"
set style fill solid noborder
set xtics (%s)
set key outside top right
""" % ",".join(f'"03/{day + 1:02}" {day}' for day in range(0, 31, 5))


def plot(path, steps):
    rows = "\n".join(f"{day} {value} {0x0e5c48 if value >= 8000 else 0x7c92ac}" for day, value in enumerate(steps))
    return (f'$m << E\n{rows}\nE\nset output "{path}"\nplot $m using 1:2:(0.5):3 with boxes linecolor rgb variable notitle, '
            '$m using 1:2:2 with labels offset 0,0.6 notitle, 8000 with lines linewidth 4 dashtype 3 linecolor rgb "#ba4808" '
            'title "Target: 8000 steps"\nset output\n')


def run(program):
    subprocess.run(["gnuplot"], input=program, text=True, check=True)


mode, what = sys.argv[1:3]
if what != "month":
    sys.exit(3)
turns = months()
if mode == "first":
    run(SETTINGS + plot(sys.argv[3], turns[0]))
else:
    # One process for all; its start counts little among so many.
    path = "/dev/null" if mode == "steady" else sys.argv[3]
    count = 40 if mode == "steady" else int(sys.argv[4])
    start = time.perf_counter()
    run(SETTINGS + "".join(plot(path, turns[i % 64]) for i in range(count)))
    each = (time.perf_counter() - start) * 1e6 / count
    print(f"{each:.2f} {each:.2f}" if mode == "steady" else f"{each:.2f}")
