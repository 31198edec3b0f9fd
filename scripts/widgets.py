#!/usr/bin/python3
"""scripts/widgets.py MELKAR HOST [SHOTS]: holds the widget in the window of HOST (widgets/tests) against the pictures and words
of the command MELKAR, by pointer, keyboard, menu and as programs that read aloud are told it. Screenshots go to the directory
SHOTS. With --sample before all, HOST is a window of samples/hosts; with --show, `melkar show` is looked at. To be called within a
display and a session bus of its own, as scripts/check-widgets does.
"""

import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import pyatspi

ROOT = pathlib.Path(__file__).resolve().parent.parent
SAMPLES = ROOT / "samples"
WEEK = ("bar", SAMPLES / "app/bin", "BAR_WEEK", SAMPLES / "data/bar-week.csv")
CIRCLE = ("circle", SAMPLES / "app/bin", "CIRCLE", SAMPLES / "data/circle.txt")
DARK = SAMPLES / "app-dark/bin"
IS_GTK = "gtk4" in sys.argv[2]
FIRST_OF_MENU = "Home" if IS_GTK else "Down"
PATIENCE = 15  # seconds for anything to happen, on a machine with other work

findings = []


def tell(name, text):
    findings.append(f"{name}: {text}")


def run(*words, **options):
    return subprocess.run([str(word) for word in words], capture_output=True, check=False, timeout=60, **options)


def waited(happened):
    """What is true in the end, however slow the machine. @return the last answer"""
    end = time.monotonic() + PATIENCE
    while not (answer := happened()) and time.monotonic() < end:
        time.sleep(0.05)
    return answer


def drawn(path, chart, size, *options):
    kind, base, section, data = chart
    done = run(sys.argv[1], "draw", kind, "--base", base, "--section", section, "--data", data, "--size", size, "-o", path, *options)
    if done.returncode:
        raise RuntimeError(done.stderr.decode())
    return path


def difference(one, other):
    """In pixels; text where they can't be compared."""
    done = run("compare", "-metric", "AE", one, other, "null:")
    said = done.stderr.decode().split()[0] if done.stderr else "0"
    return int(float(said)) if said.replace(".", "", 1).replace("e+", "", 1).isdigit() else done.stderr.decode()


class Window:
    """The host in a directory of its own."""

    def __init__(self, chart, size="900x500", environment=None, data=None):
        kind, base, section, file = chart
        self.size = size
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)
        self.said = (self.path / "said.txt").open("w+")
        self.errors = (self.path / "errors.txt").open("w+")
        self.process = subprocess.Popen(
            [sys.argv[2], size, kind, str(base), section, str(data or file), str(DARK)], cwd=self.path, stdout=self.said,
            stderr=self.errors, stdin=subprocess.DEVNULL, env={**os.environ, **(environment or {})})

    def __enter__(self):
        if not waited(lambda: self.lines("drawn")):
            raise RuntimeError(f"no window: {self.text(self.errors)}")
        found = waited(lambda: run("xdotool", "search", "--onlyvisible", "--pid", self.process.pid, "--name", "^host$").stdout.split())
        self.id = found[-1].decode()
        self.xdotool("windowfocus", "--sync", self.id)
        self.point(-1, -1)
        return self

    def __exit__(self, *_):
        self.keys("q")
        try:
            if self.process.wait(timeout=PATIENCE) != 0:
                tell("the end", f"exit code {self.process.returncode}")
        except subprocess.TimeoutExpired:
            tell("the end", "the window stays open")
            self.process.kill()
            self.process.wait()
        for line in self.text(self.errors).splitlines():
            # GTK counts wrong in its own menus where a button is let go above one that opens.
            is_known = "theme" in line.lower() or "Broken accounting" in line
            if any(word in line for word in ("CRITICAL", "WARNING", "QAccessible")) and not is_known:
                tell("errors", line)
        self.folder.cleanup()

    @staticmethod
    def text(file):
        file.flush()
        return pathlib.Path(file.name).read_text()

    def lines(self, word):
        return [line for line in self.text(self.said).splitlines() if line.startswith(word)]

    def hears(self, name, line, count=1):
        """Whatever it does next, it has printed the line that often."""
        if not waited(lambda: self.lines(line).count(line) >= count):
            tell(name, f"not heard: {line!r} but {self.text(self.said)!r}")

    def count(self):
        return len(run("xdotool", "search", "--onlyvisible", "--pid", self.process.pid).stdout.split())

    def xdotool(self, *words):
        return run("xdotool", *words)

    def point(self, x, y):
        self.xdotool("mousemove", "--window", self.id, x, y) if x >= 0 else self.xdotool("mousemove", 1599, 1199)

    def keys(self, *names):
        for name in names:
            self.xdotool("key", name)

    def shot(self, path):
        run("import", "-window", self.id, path)
        return path

    def shows(self, name, picture):
        """In the end the window is that picture."""
        shot = self.path / "shot.png"
        if not waited(lambda: difference(self.shot(shot), picture) == 0):
            tell(name, f"the window differs from the picture: {difference(shot, picture)}")
            keep(shot, f"{name}-window")
            keep(picture, f"{name}-picture")


def keep_root(name):
    """For somebody to look at, menus included."""
    if len(sys.argv) > 3:
        time.sleep(0.5)
        run("import", "-window", "root", f"/tmp/shot-{os.getpid()}.png")
        keep(f"/tmp/shot-{os.getpid()}.png", name)
        os.unlink(f"/tmp/shot-{os.getpid()}.png")


def keep(path, name):
    if len(sys.argv) > 3:
        shutil.copy(path, pathlib.Path(sys.argv[3]) / f"{pathlib.Path(sys.argv[2]).name}-{name.replace(' ', '-')}.png")


def check_pointer(window, folder):
    window.shows("a picture", drawn(folder / "plain.png", WEEK, "900x500"))
    window.point(480, 340)
    window.shows("a balloon", drawn(folder / "hover.png", WEEK, "900x500", "--hover", "480,340"))
    keep_root("balloon")
    window.xdotool("click", 1)
    window.hears("a click", "day 3")
    window.point(550, 20)  # beside the bars
    window.xdotool("click", 1)
    window.shows("no balloon beside the bars", folder / "plain.png")
    if len(window.lines("day")) != 1:
        tell("a click beside the bars", f"{window.lines('day')}")


def check_keys(window):
    for keys, day in [(["Home", "Right", "Return"], 1), (["End", "space"], 6), (["Page_Up", "Return"], 0), (["Left", "Down", "Return"], 1)]:
        before = window.lines("day").count(f"day {day}")
        window.keys(*keys)
        window.hears(f"keys {keys}", f"day {day}", before + 1)


def check_size_and_looks(window, folder):
    window.keys("Escape")
    window.xdotool("windowsize", window.id, 700, 400)
    window.shows("another size", drawn(folder / "small.png", WEEK, "700x400"))
    window.keys("d")
    window.hears("the desktop turns dark", "dark 1")
    window.shows("dark", drawn(folder / "dark.png", ("bar", DARK, *WEEK[2:]), "700x400"))
    keep_root("dark")
    window.keys("d")
    window.shows("light again", folder / "small.png")
    window.xdotool("windowsize", window.id, 900, 500)
    window.shows("the former size", folder / "plain.png")


def open_menu(window):
    """By the pointer. A menu is a window that nobody manages."""
    before = window.count()
    window.point(300, 200)
    window.xdotool("click", 3)
    if not waited(lambda: window.count() > before):
        tell("menu", "it doesn't open")
    time.sleep(0.3)  # until it takes keys


def check_copy(window, folder):
    open_menu(window)
    keep_root("menu")
    window.keys(FIRST_OF_MENU, "Return")
    copied = folder / "copied.png"

    def is_copied():
        copied.write_bytes(run("xclip", "-selection", "clipboard", "-t", "image/png", "-o").stdout)
        return copied.stat().st_size > 0

    if not waited(is_copied) or difference(copied, folder / "plain.png") != 0:
        tell("copy", "another picture is on the clipboard")


def check_save(window, folder):
    open_menu(window)
    window.keys(FIRST_OF_MENU, "Down", "Return")
    if not waited(lambda: run("xdotool", "getactivewindow").stdout.strip() not in (b"", window.id.encode())):
        tell("save", "no dialog opens")
    time.sleep(1)  # until its entry has the focus
    keep_root("save")
    window.keys("ctrl+a")
    window.xdotool("type", "--delay", "30", str(window.path / "typed.png"))
    time.sleep(0.5)  # until it has looked for names that begin so
    window.keys("Return")
    if not waited((window.path / "typed.png").exists):
        tell("save", "no file where the dialog was told to write one")
    elif not waited(lambda: difference(window.path / "typed.png", folder / "plain.png") == 0):
        tell("save", "another picture is in the file")
    window.point(-1, -1)
    window.xdotool("windowfocus", "--sync", window.id)


def check_files(window, folder):
    window.keys("s")
    if not waited(lambda: any("No such file" in line for line in window.lines("saved nowhere/host.png"))):
        tell("files", f"no reason for one that can't be written: {window.lines('saved')}")
    if difference(window.path / "host.png", folder / "plain.png") != 0:
        tell("files", "another picture in host.png")
    if "<title>Steps this week</title>" not in (window.path / "host.svg").read_text():
        tell("files", "no title in host.svg")
    window.shows("behind the files", folder / "plain.png")
    window.keys("p")
    window.hears("print", "printed")
    for name in ("host.pdf", "printed.pdf") if IS_GTK else ("host.pdf",):
        if "10904" not in run("pdftotext", window.path / name, "-").stdout.decode():
            tell(name, "the figure of the first day isn't there as text")
    widths = [line.split()[3] for line in run("pdfimages", "-list", window.path / "printed.pdf").stdout.decode().splitlines()[2:]]
    if widths != ([] if IS_GTK else ["7200"]):  # Qt prints pixels, eight a unit at most
        tell("printed.pdf", f"pictures of a width of {widths}")
    window.shows("behind the print", folder / "plain.png")


def program(process):
    """As programs that read aloud find it."""
    return waited(lambda: next((one for one in pyatspi.Registry.getDesktop(0) if one and one.get_process_id() == process.pid), None))


def below(node):
    yield node
    for child in node:
        if child:
            yield from below(child)


def of_role(node, *roles):
    return [one for one in below(node) if one.getRole() in roles]


def told(chart, *options):
    kind, base, section, data = chart
    return run(sys.argv[1], "describe", kind, "--base", base, "--section", section, "--data", data, *options).stdout.decode()


def check_spoken(window):
    top = program(window.process)
    if not top:
        return tell("spoken", "nobody is told of the window")
    tables = of_role(top, pyatspi.ROLE_TABLE)
    if len(tables) != 1:
        return tell("spoken", f"{len(tables)} tables")
    shown = json.loads(told(WEEK, "--json"))
    named = [one for one in below(top) if one.name == " ".join(shown["title"].split()) and one.description]
    if not named:
        return tell("spoken", "nothing has the title and a description")
    if named[0].description not in told(WEEK):
        tell("spoken", f"described otherwise: {named[0].description}")
    cells = [one.name for one in of_role(tables[0], pyatspi.ROLE_TABLE_CELL, pyatspi.ROLE_TABLE_ROW_HEADER, pyatspi.ROLE_ROW_HEADER)]
    for item in shown["items"]:
        for text in (item["caption"], item["figures"][0]["text"]):
            if text not in cells:
                tell("spoken", f"not in the table: {text}")
    if "steps" not in [one.name for one in below(tables[0])]:  # GTK has no role for heads
        tell("spoken", "the table has no heads")
    window.keys("Home", "Right")

    def focused():
        return [one.name + one.description for one in below(top) if one.getState().contains(pyatspi.STATE_FOCUSED)]

    if not waited(lambda: any("6462" in name for name in focused())):
        tell("spoken", f"the focus is on {focused()}")
    keep_root("ring")
    window.keys("Escape")


def check_week(folder):
    with Window(WEEK) as window:
        check_pointer(window, folder)
        check_keys(window)
        check_spoken(window)
        check_size_and_looks(window, folder)
        check_files(window, folder)
        check_copy(window, folder)
        check_save(window, folder)


def check_scale(folder):
    for scale in ("2",) if IS_GTK else ("2", "1.25"):
        with Window(WEEK, "400x240", {"GDK_SCALE": scale, "QT_SCALE_FACTOR": scale}) as window:
            window.shows(f"{scale} pixels a unit", drawn(folder / "scaled.png", WEEK, "400x240", "--scale", scale))


def check_missing(folder):
    """A file that comes later; one that goes leaves the picture."""
    data = folder / "late.csv"
    with Window(WEEK, data=data) as window:
        window.hears("a missing file", "drawn 101")
        keep_root("missing")
        shutil.copy(WEEK[3], data)
        window.keys("r")
        window.shows("a file that came", folder / "plain.png")
        data.unlink()
        window.keys("r")
        window.hears("a file that went", "drawn 101", 2)
        window.shows("the last good picture", folder / "plain.png")


def check_tip():
    """What has no balloons has a tooltip, and slices answer clicks."""
    with Window(CIRCLE, "420x380") as window:
        items = json.loads(told(CIRCLE, "--json", "--size", "420x380"))["items"]
        largest = max(range(len(items)), key=lambda at: items[at]["value"])
        left, top, right, bottom = (items[largest]["area"][edge] for edge in ("left", "top", "right", "bottom"))
        window.point((left + right) // 2, (top + bottom) // 2)
        window.xdotool("click", 1)
        window.hears("a click on a slice", f"day {largest}")
        window.point((left + right) // 2 + 2, (top + bottom) // 2)
        time.sleep(1)
        keep_root("tip")


def says(name, top, text, is_said=True):
    """In the end the text is somewhere in the window, or no longer."""
    def is_there():
        return any(text in one.name for one in below(top))

    if not waited(lambda: is_there() == is_said):
        tell(name, f"{'not said' if is_said else 'still said'}: {text}: {[one.name for one in below(top) if one.name]}")


def check_show(folder):
    """Files that change while a window shows them."""
    shutil.copytree(SAMPLES / "app", folder / "app")
    profile, data = folder / "app/conf/graph.cnf", folder / "week.csv"
    shutil.copy(WEEK[3], data)
    process = subprocess.Popen(
        [sys.argv[1], "show", "bar", "--base", str(folder / "app/bin"), "--section", "BAR_WEEK", "--data", str(data)])
    try:
        top = program(process)
        says("show", top, "10904")
        data.write_text(data.read_text().replace("10904", "11111"))
        says("show, other data", top, "11111")
        profile.write_text(profile.read_text().replace("Steps this week", "Steps of mine").replace("[BAR_WEEK]", "[BAR_WEEK]\nNONSENSE=1"))
        says("show, another profile", top, "Steps of mine")
        says("show, a doubt", top, "unknown-key")
        data.rename(folder / "away.csv")
        says("show, no data", top, "101: ")
        says("show, the last good picture", top, "11111")
        (folder / "away.csv").rename(data)
        says("show, data again", top, "101: ", False)
        keep_root("show")
    finally:
        process.terminate()
        process.wait(timeout=PATIENCE)


def check_sample(_):
    """The window in samples/hosts, as a reader of it would start it."""
    process = subprocess.Popen([sys.argv[2], str(WEEK[1]), str(WEEK[3])])
    try:
        says("a window of samples/hosts", program(process), "10904")
        keep_root("sample")
    finally:
        process.terminate()
        process.wait(timeout=PATIENCE)


def check_widget(folder):
    check_week(folder)
    check_scale(folder)
    check_missing(folder)
    check_tip()


CHECKS = {"--show": check_show, "--sample": check_sample}


def main():
    check = check_widget
    if sys.argv[1] in CHECKS:
        check = CHECKS[sys.argv.pop(1)]
    with tempfile.TemporaryDirectory() as name:
        check(pathlib.Path(name))
    print("\n".join(findings) or f"{pathlib.Path(sys.argv[2]).name}: as it should be")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
