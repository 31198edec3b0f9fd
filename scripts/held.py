"""What a picture is said to show, held against its data file and its record: where figures stand, what is written, and which
figures they are. scripts/told.py calls it for each row of samples/gallery.txt.
"""

import csv
import math
import re

NEAR = 0.5  # of curved shapes, whose edges lie between units

BOX = re.compile(r"(fill|ellipse|slice) (-?[\d.]+),(-?[\d.]+) (-?[\d.]+)x(-?[\d.]+)(?: from (-?[\d.]+) sweep (-?[\d.]+))?")
TEXT = re.compile(r'text "((?:[^"\\]|\\.)*)" (-?\d+),(-?\d+) (\d+)x(\d+)')
LINE = re.compile(r"line (-?\d+),(-?\d+) (-?\d+),(-?\d+) \S+ w(\d+)")


def slice_box(x, y, across, down, start, sweep):
    """Found by walking along its rim."""
    steps = [math.radians(start + sweep * step / 3600) for step in range(3601)]
    return (min(x, *(x + across * math.cos(a) for a in steps)), min(y, *(y - down * math.sin(a) for a in steps)),
            max(x, *(x + across * math.cos(a) for a in steps)), max(y, *(y - down * math.sin(a) for a in steps)))


def stroke_box(stroke):
    x1, y1, x2, y2, width = stroke
    return (min(x1, x2), y1, max(x1, x2), y1 + width) if y1 == y2 else (x1, min(y1, y2), x1 + width, max(y1, y2))


class Record:
    """Boxes are left, top, right and bottom."""

    def __init__(self, lines):
        self.rectangles, self.curves, self.marks, self.lines, self.texts = set(), [], [], [], []
        for line in lines:
            if box := BOX.match(line):
                self.add_shape(box[1], *(float(number or 0) for number in box.groups()[1:]))
            elif line.startswith("polygon"):
                corners = [tuple(map(float, corner)) for corner in re.findall(r"(-?[\d.]+),(-?[\d.]+)", line)]
                xs, ys = zip(*corners)
                self.curves.append((min(xs), min(ys), max(xs), max(ys)))
            elif text := TEXT.match(line):
                x, y, width, height = map(int, text.groups()[1:])
                self.texts.append(re.sub(r"\\(.)", r"\1", text[1].replace(r"\n", "\n")))
                self.marks.append((x + width / 2, y + height / 2))
            elif stroke := LINE.match(line):
                self.lines.append(tuple(map(int, stroke.groups())))
        self.written = {squeezed(text) for text in self.texts}
        self.all_written = "".join(map(squeezed, self.texts))

    def add_shape(self, verb, x, y, width, height, start, sweep):
        if verb == "fill":  # a frame of a unit may stand around what is filled
            self.rectangles |= {(x - frame, y - frame, x + width + frame, y + height + frame) for frame in (0, 1)}
        else:
            start, sweep = (start, sweep) if verb == "slice" else (0, 360)
            self.curves.append(slice_box(x, y, width, height, start, sweep))

    def has_shape(self, box):
        return box in self.rectangles or any(
            all(abs(edge - other) <= NEAR for edge, other in zip(box, curve)) for curve in self.curves)

    def has_sign(self, box):
        """A text that is a mark: its middle counts, since fonts have letters of all sizes."""
        x, y = (box[0] + box[2]) / 2, (box[1] + box[3]) / 2
        return any(abs(x - at) <= NEAR and abs(y - down) <= NEAR for at, down in self.marks)

    def has_stroke(self, box):
        """A point of a line that is made of strokes of a unit: one above the other, as high as the box."""
        rows = {round(y1 + (y2 - y1) * (box[0] - x1) / ((x2 - x1) or 1)) for x1, y1, x2, y2, _ in self.lines
                if min(x1, x2) <= box[0] <= max(x1, x2)}
        return {round(row) for row in range(int(box[1]), int(box[3]))} <= rows

    def has_edge(self, box):
        """Where a rectangle begins: what lies between two of them is drawn by neither."""
        return 1 in (box[2] - box[0], box[3] - box[1]) and any(box[:2] == shape[:2] for shape in self.rectangles)

    def has_lines(self, box):
        """Level or upright strokes side by side, which fill it as far as their pattern goes."""
        inside = [stroke for stroke in map(stroke_box, self.lines) if
                  stroke[0] >= box[0] and stroke[1] >= box[1] and stroke[2] <= box[2] and stroke[3] <= box[3]]
        return bool(inside) and box == (min(b[0] for b in inside), min(b[1] for b in inside),
                                        max(b[2] for b in inside), max(b[3] for b in inside))

    def has_text(self, text):
        """What wraps stands on several lines."""
        wanted = squeezed(text)
        return wanted in self.written or wanted in self.all_written


def squeezed(text):
    return re.sub(r"\s", "", text)


def box_of(area):
    return area["left"], area["top"], area["right"], area["bottom"]


def parts_of(shown):
    pages = [picture for page in shown.get("pages", []) for picture in page["pictures"]]
    return pages or shown.get("parts", [shown])


def hold_texts(part, record):
    """All that the picture writes; captions of days that don't fit are left out by it."""
    texts = [part["title"], *part["texts"], *part["messages"]]
    texts += [axis["label"] for axis in part["axes"]]
    texts += [item["text"] for item in part["items"]]
    texts += [mark["label"] for mark in part["marks"]]
    for text in texts:
        if text and not record.has_text(text):
            yield f"it writes no {text!r}"


def is_drawn(box, record):
    return record.has_shape(box) or record.has_sign(box) or record.has_stroke(box)


def hold_areas(part, record):
    for item in part["items"]:
        for figure in item["figures"]:
            box = box_of(figure["area"])
            if box[0] < box[2] and box[1] < box[3] and not is_drawn(box, record):
                yield f"{item['caption']}: {figure['text']} has nothing drawn at {box}"
    for mark in part["marks"]:
        box = box_of(mark["area"])
        found = is_drawn(box, record) or record.has_lines(box) or record.has_edge(box)
        if mark["kind"] != "border" and box[0] < box[2] and not found:
            yield f"{mark['kind']} {mark['label']}: nothing is drawn at {box}"


# Figures of the data file, by docs/data-files.md: a number for each series of an item, None for none.

PARTS = 15  # of a minute, in which time at a level is counted
LEVELS = slice(15, 24)


def number(field):
    return float(field) if field.strip() else None


def numbers(fields):
    return [number(field) for field in fields]


def sim_of(path):
    """Weights in the unit of the plan, by date."""
    rows = read(f"{path}.sim")[2:]
    return {row[0]: numbers(row[1:3]) for row in rows}


def read(path):
    with open(path, encoding="utf-8", newline="") as file:
        return [row for row in csv.reader(file) if row]


def levels_of(row):
    return [(number(field) or 0) / PARTS for field in row[LEVELS]]


def sheets_of(kind, path):
    """Minutes at the levels, and the texts of steps and calories, of each day."""
    if kind == "week-print":
        return [([number(field) or 0 for field in row[5:14]], row[2:5]) for row in read(path)[2:] if len(row) > 14]
    return [(levels_of(row), [row[5], *row[11:13]]) for row in read(path)[3:]]


DAYS = {  # head rows, and the figures of a row
    "bar": (2, lambda row, series: numbers(row[2:2 + series])),
    "line": (2, lambda row, _: numbers(row[2:4])),
    "steps": (2, lambda row, _: numbers(row[4:5])),
    "expenditure": (2, lambda row, _: [number(row[3]), number(row[2]) - number(row[3])]),
    "activity": (3, lambda row, _: numbers(row[11:12])),
    "simulation": (3, lambda row, _: numbers(row[11:12])),
}


def told(item):
    """The numbers of an item by series."""
    return {figure["series"]: figure["value"] for figure in item["figures"]}


def same(one, other):
    return one is not None and other is not None and math.isclose(one, other, rel_tol=1e-9, abs_tol=1e-9)


def hold_days(part, path):
    heads, figures_of = DAYS[part["kind"]]
    rows = read(path)[heads:]
    if len(rows) != len(part["items"]):
        yield f"{len(part['items'])} items of {len(rows)} days"
    for row, item in zip(rows, part["items"]):
        if int(row[0]) != item["status"]:
            yield f"{item['caption']}: status {item['status']}, not {row[0]}"
        if item["status"] != 0:
            continue
        for series, value in enumerate(figures_of(row, len(part["series"]))):
            if value is not None and not same(told(item).get(series), value):
                yield f"{item['caption']}: {told(item).get(series)} of series {series}, not {value}"


def hold_weights(part, path):
    """The squares of the measured weights, and the plan from its first day on."""
    first = read(f"{path}.sim")[1][0]
    for (date, weights), item in zip(sim_of(path).items(), part["items"]):
        for series, value in enumerate(weights, 1):
            wanted = value is not None and (series == 1 or date > first) and item["status"] == 0
            if wanted and not same(told(item).get(series), value):
                yield f"{item['caption']}: weight {told(item).get(series)}, not {value}"


def hold_levels(kind, parts, path):
    """Days of the file, in their order; not all of them need to be shown, nor with their minutes."""
    days = iter(sheets_of(kind, path))
    for part in parts:
        shown = [item["value"] for item in part["items"]]
        summary = re.findall(r"[\d.]+", " ".join(part["texts"]))
        if summary and not any(all(map(same, shown, levels)) and summary[:len(sums)] == sums for levels, sums in days):
            yield f"{part['title']}: no day of the file has {summary} and {shown} minutes"


def hold_values(part, expected):
    shown = [item["value"] for item in part["items"]]
    if len(shown) != len(expected) or not all(map(same, shown, expected)):
        yield f"it says {shown}, not {expected}"


def hold_quadrants(part, path):
    heads, rows = read(path)[:3], read(path)[3:]
    level = int(heads[0][10])
    days = [(number(row[5]), sum(levels_of(row)[level - 1:])) for row in rows if row[0] == "0"]
    shown = [tuple(told(item).values()) for item in part["items"][4:] if item["figures"]]
    if len(shown) != len(days) or not all(same(a[0], b[0]) and same(a[1], b[1]) for a, b in zip(shown, days)):
        yield f"it says {shown}, not {days}"
    aims = number(heads[0][7]), number(heads[0][8])
    counts = {(x, y): sum((day[0] >= aims[0], day[1] >= aims[1]) == (x, y) for day in days)
              for x in (True, False) for y in (True, False)}
    yield from hold_values({"items": part["items"][:4]},
                           [counts[key] for key in ((True, True), (False, True), (True, False), (False, False))])


def hold_points(part, path):
    rows = sorted((number(row[0]), number(row[1])) for row in read(path)[1:])
    shown = sorted((number(item["caption"]), item["value"]) for item in part["items"])
    if rows != shown:
        yield f"it says {shown}, not {rows}"


def hold_pressures(part, path):
    """Each day from the lowest to the highest of its figures."""
    days = {}
    for status, day, systolic, diastolic in (row[:4] for row in read(path)[2:]):
        high, low = days.get(day, (-math.inf, math.inf))
        counts = status == "0" and systolic and diastolic
        days[day] = (max(high, float(systolic)), min(low, float(diastolic))) if counts else (high, low)
    shown = {item["caption"]: tuple(told(item).values()) for item in part["items"] if item["figures"]}
    expected = {day: figures for day, figures in days.items() if math.isfinite(figures[0])}
    if shown != expected:
        yield f"it says {shown}, not {expected}"


def hold_data(kind, parts, path):
    """Kinds without a case read no figures."""
    part = parts[0]
    if kind in DAYS:
        yield from hold_days(part, path)
    if kind == "simulation":
        yield from hold_weights(part, path)
    elif kind in ("day", "week", "week-print"):
        yield from hold_levels(kind, parts, path)
    elif kind in ("circle", "circle-separate"):
        minutes = [number(row[0]) for row in read(path)]
        yield from hold_values(part, [sum(minutes[:3]), sum(minutes[3:6]), sum(minutes[6:])])
    elif kind in ("bmi", "himand"):
        yield from hold_values(part, [number(read(path)[1][0])])
    elif kind == "pie":
        yield from hold_values(part, [number(row[0]) for row in read(path)])
    elif kind == "quadrant":
        yield from hold_quadrants(part, path)
    elif kind == "pressure":
        yield from hold_pressures(part, path)
    elif kind in ("plot", "two-scales"):
        yield from hold_points(part, path)


def hold_page(page, text):
    """What a page of a report says stands in its text."""
    written = squeezed(text)
    texts = [page["name"], *page["texts"], *(item["text"] for item in page["heading"]["items"])]
    for picture in page["pictures"]:
        texts += [*picture["texts"], *picture["messages"], *(item["text"] for item in picture["items"])]
    for one in texts:
        if squeezed(one) not in written:
            yield f"it has no {one!r}"


def hold(kind, shown, record, path):
    """@return what is found to be wrong"""
    parts = parts_of(shown)
    drawn = Record(record.splitlines())
    for part in parts:
        yield from hold_texts(part, drawn)
        yield from hold_areas(part, drawn)
    yield from hold_data(kind, parts, path)
