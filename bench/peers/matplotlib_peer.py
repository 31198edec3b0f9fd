#!/usr/bin/python3
"""matplotlib on its Agg canvas; what the figure shows is made once and given other numbers. Modes as in work.h."""
import sys
import time

import matplotlib

matplotlib.use("Agg")
from matplotlib.backends.backend_agg import FigureCanvasAgg
from matplotlib.figure import Figure

from numbers_of import months


class Month:
    def __init__(self):
        self.figure = Figure(figsize=(9, 5), dpi=100)
        self.canvas = FigureCanvasAgg(self.figure)
        axes = self.figure.add_axes([0.08, 0.09, 0.9, 0.79])
        axes.set_xlim(-0.5, 30.5)
        axes.set_ylim(0, 14000)
        axes.set_yticks(range(0, 14001, 2000))
        axes.grid(axis="y", color="#c6ced8", linewidth=0.7)
        axes.set_axisbelow(True)
        axes.set_ylabel("steps", family="Inter", size=8)
        axes.set_title("Steps this month", loc="left", family="Inter", size=12, weight="bold")
        axes.set_xticks(range(0, 31, 5), [f"03/{day + 1:02}" for day in range(0, 31, 5)], family="Inter", size=8)
        self.bars = axes.bar(range(31), [0] * 31, width=0.5)
        self.figures = [axes.text(day, 0, "", ha="center", va="bottom", family="Inter", size=8) for day in range(31)]
        target = axes.axhline(8000, color="#ba4808", linewidth=3, linestyle=":", label="Target: 8000 steps")
        axes.legend(handles=[target], loc="lower right", bbox_to_anchor=(1, 1), frameon=False, prop={"family": "Inter", "size": 8})

    def draw(self, steps):
        for bar, text, value in zip(self.bars, self.figures, steps):
            bar.set_height(value)
            bar.set_color("#0e5c48" if value >= 8000 else "#7c92ac")
            text.set_text(str(value))
            text.set_y(value)
        self.canvas.draw()


mode, what = sys.argv[1:3]
if what != "month":
    sys.exit(3)
chart = Month()
turns = months()
if mode == "first":
    chart.draw(turns[0])
    chart.figure.savefig(sys.argv[3])
elif mode == "steady":
    times, end = [], time.perf_counter() + float(sys.argv[3])
    while time.perf_counter() < end or len(times) < 10:
        start = time.perf_counter()
        chart.draw(turns[len(times) % 64])
        times.append((time.perf_counter() - start) * 1e6)
    times.sort()
    print(f"{times[0]:.2f} {times[len(times) // 2]:.2f}")
else:
    start, count = time.perf_counter(), int(sys.argv[4])
    for i in range(count):
        chart.draw(turns[i % 64])
        chart.figure.savefig(sys.argv[3])
    print(f"{(time.perf_counter() - start) * 1e6 / count:.2f}")
