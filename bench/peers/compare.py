#!/usr/bin/python3
"""Runs the programs that scripts/bench has built, in turns, and tells how they compare.

    compare.py BUILD OUT [--rounds N] [--smoke RECORDED] [--page docs/performance.md]

Every figure is a ratio within this run: of the least times that a program had in any of its turns, since whatever else the
machine does only adds. --smoke holds the ratios to those of a file and fails where one is twice as bad.
"""
import argparse
import os
import subprocess
import sys
import time
from pathlib import Path

HERE = Path(__file__).resolve().parent
# Name, program, and the Debian package whose version the page tells.
PEERS = [
    ("MelkarCommon", "melkar", None),
    ("PLplot (memory driver)", "plplot", "libplplot17"),
    ("cairo and Pango by hand", "cairo", "libcairo2"),
    ("AGG by hand, no texts", "agg", "libagg-dev"),
    ("QCustomPlot", "qcustomplot", "libqcustomplot2.1-qt6"),
    ("Qt Charts", "qtcharts", "libqt6charts6"),
    ("gnuplot", "gnuplot", "gnuplot-nox"),
    ("matplotlib", "matplotlib", "python3-matplotlib"),
]


def command(build, name):
    program = build / f"{name}_peer"
    script = HERE / f"{name}_peer.py"
    if program.exists():
        return [str(program)]
    # Scripts are peers where their programs are installed, which CI's smoke run does without.
    wanted = {"gnuplot": "/usr/bin/gnuplot", "matplotlib": "/usr/lib/python3/dist-packages/matplotlib"}.get(name)
    return [str(script)] if wanted and Path(wanted).exists() else None


def run(arguments):
    """What a program prints, its seconds and its greatest memory in KiB; None if it doesn't draw that."""
    start = time.perf_counter()
    with subprocess.Popen(arguments, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as process:
        printed = process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        seconds = time.perf_counter() - start
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode == 3:
        return None
    if process.returncode != 0:
        sys.exit(f"{' '.join(arguments)} failed with {process.returncode}")
    return printed, seconds, usage.ru_maxrss


def least(old, new):
    return new if old is None else min(old, new)


def measure(build, out, rounds, programs, whats, smoke):
    """{(program, what, figure): least}; figures are steady (microseconds), first (seconds), memory (KiB), many and bytes."""
    best = {}

    def keep(key, value):
        best[key] = least(best.get(key), value)

    for turn in range(rounds):
        for name, arguments in programs.items():
            for what in whats:
                answer = run([*arguments, "steady", what, "0.3"])
                if answer is None:
                    continue
                keep((name, what, "steady"), float(answer[0].split()[0]))
                if name == "floor":
                    continue
                picture = out / f"{name}-{what}.png"
                _, seconds, memory = run([*arguments, "first", what, str(picture)])
                keep((name, what, "first"), seconds)
                keep((name, what, "memory"), memory)
                keep((name, what, "bytes"), picture.stat().st_size)
                if not smoke and turn < 3:
                    count = "5" if name == "matplotlib" else "40"
                    keep((name, what, "many"), float(run([*arguments, "many", what, str(picture), count])[0]))
        print(f"   round {turn + 1} of {rounds}", file=sys.stderr)
    return best


def ratios(best, whats):
    """What the smoke run holds on to: {"month/floor": ratio, ...}."""
    found = {}
    for what in whats:
        mine = best[("melkar", what, "steady")]
        found[f"{what}/floor"] = mine / best[("floor", what, "steady")]
        for figure in ("steady", "first"):
            found[f"{what}/cairo {figure}"] = best[("melkar", what, figure)] / best[("cairo", what, figure)]
    return found


def hold(found, recorded):
    """1 if a ratio is twice as bad as the recorded one."""
    failed = 0
    for line in recorded.read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        name, was = line.rsplit(" ", 1)
        now = found[name]
        print(f"{name:24} {now:6.2f}, recorded {float(was):.2f}")
        if now > 2 * float(was):
            print(f"error: {name} is twice as bad as recorded")
            failed = 1
    return failed


def version(package):
    if not package:
        return "this tree"
    shown = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], capture_output=True, text=True, check=False)
    return f"Debian's {shown.stdout}" if shown.returncode == 0 else "?"


def row(best, what, name, program):
    def figure(kind, scale=1.0, form="{:.1f}"):
        value = best.get((program, what, kind))
        return "" if value is None else form.format(value * scale)

    steady = best[(program, what, "steady")] / best[("floor", what, "steady")]
    mine = best[("melkar", what, "steady")]
    many = best.get((program, what, "many"))
    return (f"| {name} | {steady:.1f} | {best[(program, what, 'steady')] / mine:.1f} | {figure('first', 1000)} | "
            f"{figure('memory', 1 / 1024)} | {'' if many is None else f'{1e6 / many:.0f}'} | {figure('bytes', 1 / 1024)} |")


def page(best, whats):
    lines = []
    for what in whats:
        size = "900 x 500" if what == "month" else "900 x 160"
        lines += [f"### A {what}, {size}", "",
                  "| | floors | times ours | first picture, ms | memory, MiB | pictures a second | its file, KiB |",
                  "|---|---|---|---|---|---|---|"]
        drawn = [(best[(program, what, "steady")], name, program) for name, program, _ in PEERS
                 if (program, what, "steady") in best]
        lines += [row(best, what, name, program) for _, name, program in sorted(drawn)]
        lines.append("")
    lines += ["Versions: " + ", ".join(f"{name} {version(package)}" for name, program, package in PEERS
                                       if package and (program, whats[0], "steady") in best or program == "agg") + "."]
    return "\n".join(lines) + "\n"


def put_in_page(path, text):
    """Between the two marks of the page."""
    before, rest = path.read_text().split("<!-- figures -->\n", 1)
    after = rest.split("<!-- end of figures -->\n", 1)[1]
    path.write_text(f"{before}<!-- figures -->\n\n{text}\n<!-- end of figures -->\n{after}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("out", type=Path)
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--smoke", type=Path)
    parser.add_argument("--page", type=Path)
    options = parser.parse_args()
    options.out.mkdir(parents=True, exist_ok=True)
    os.environ["MELKAR_PEERS"] = str(options.build)
    names = ["floor", *(program for _, program, _ in PEERS)]
    if options.smoke:
        names = ["floor", "melkar", "cairo"]
    programs = {name: found for name in names if (found := command(options.build, name))}
    whats = ["month", "day"]
    best = measure(options.build, options.out, options.rounds, programs, whats, options.smoke is not None)
    found = ratios(best, whats)
    (options.out / "ratios.txt").write_text("".join(f"{name} {value:.2f}\n" for name, value in found.items()))
    bars = [(name, best[(program, "month", "steady")] / best[("floor", "month", "steady")]) for name, program, _ in PEERS
            if (program, "month", "steady") in best and program not in ("matplotlib", "gnuplot")]
    (options.out / "floors.csv").write_text("head\nhead\n" + "".join(f"0,{name},{value:.1f}\n" for name, value in bars))
    if options.smoke:
        return hold(found, options.smoke)
    text = page(best, whats)
    print(text)
    if options.page:
        put_in_page(options.page, text)
    return 0


if __name__ == "__main__":
    sys.exit(main())
