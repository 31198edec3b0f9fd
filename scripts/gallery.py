#!/usr/bin/python3
"""scripts/gallery.py MELKAR OUTPUT: draws the rows of samples/gallery.txt with the command MELKAR and writes a page of
the pictures, OUTPUT/index.html. The page works without scripts: languages are radio buttons, and the light or the dark
scheme is the desktop's wish. scripts/demo calls it, scripts/check-gallery looks at what came out.
"""

import concurrent.futures
import dataclasses
import html
import os
import pathlib
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SAMPLES = ROOT / "samples"
COLUMNS = 8
DATA_LINES = 8  # of a file, to show what it is like
DATA_WIDTH = 240  # characters of a line; the file of a week has thousands


def fail(text):
    sys.exit(f"error: {text}")


# gallery.txt


@dataclasses.dataclass
class Picture:
    """A row in one of its languages."""

    name: str
    language: str
    kind: str
    section: str
    data: str
    size: tuple
    options: list
    caption: str
    palette: str = ""  # of samples/palettes; English

    @property
    def file(self):
        return self.name if self.language == "en" else f"{self.name}-{self.language}"

    @property
    def app(self):
        other = self.palette or (self.language if self.language != "en" else "")
        return f"samples/app-{other}" if other else "samples/app"

    @property
    def data_path(self):
        """That of the language comes first. None for kinds without a file."""
        if self.data == "-":
            return None
        own = f"samples/data/{self.language}/{self.data}"
        return (own if (ROOT / own).exists() else f"samples/data/{self.data}").removesuffix("/.")

    @property
    def is_report(self):
        return self.kind == "report"

    @property
    def has_balloon(self):
        return "--hover" in self.options

    def command(self, melkar, output):
        if self.is_report:
            return [melkar, "report", "--base", f"{self.app}/bin", "--section", self.section, "--header",
                    f"{self.data_path}/report-header.csv", "--data", self.data_path, "--printer", output, *self.options]
        data = ["--data", self.data_path] if self.data_path else []
        return [melkar, "draw", self.kind, "--base", f"{self.app}/bin", "--section", self.section, *data, "--size",
                "{}x{}".format(*self.size), *self.options, "--strict", "-o", output]


@dataclasses.dataclass
class Chapter:
    title: str
    purpose: str
    figures: dict = dataclasses.field(default_factory=dict)  # the pictures of a name, English first

    @property
    def anchor(self):
        return re.sub(r"\W+", "-", self.title.lower())


def word(language, name):
    text = (SAMPLES / f"words/{language}.txt").read_text(encoding="utf-8")
    return re.search(rf"^{name}=(.*)$", text, re.M).group(1)


def languages():
    """Codes, English first."""
    return sorted((path.stem for path in SAMPLES.glob("words/*.txt")), key=lambda code: (code != "en", code))


def pictures_of(line):
    fields = [field.strip() for field in line.split("|")]
    if len(fields) != COLUMNS:
        fail(f"gallery.txt: a row needs {COLUMNS} columns: {line}")
    name, spoken, kind, section, data, size, options, caption = fields
    if not re.fullmatch(r"\d+x\d+", size):
        fail(f"gallery.txt: a size is width x height, as in 900x500: {line}")
    for code in languages() if spoken == "all" else spoken.split():
        palette = code if (SAMPLES / f"palettes/{code}.txt").exists() else ""
        yield Picture(name, "en" if palette else code, kind, section, data, tuple(map(int, size.split("x"))),
                      options.split(), caption, palette)


def read_gallery():
    """Names of the best pictures, and the chapters."""
    best, chapters = [], []
    for line in (SAMPLES / "gallery.txt").read_text(encoding="utf-8").splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        if line.startswith("*"):
            best = line[1:].split()
        elif line.startswith("="):
            title, purpose = (part.strip() for part in line[1:].split("|"))
            chapters.append(Chapter(title, purpose))
        elif not chapters:
            fail(f"gallery.txt: no chapter begins before this row: {line}")
        else:
            for picture in pictures_of(line):
                chapters[-1].figures.setdefault(picture.name, []).append(picture)
    return best, chapters


# Drawing


def run(command):
    done = subprocess.run(command, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    if done.returncode != 0:
        raise RuntimeError(f"{shlex.join(map(str, command))}\n{done.stderr}")
    sys.stderr.write(done.stderr)


def draw_report(picture, melkar, out):
    """The report, and its pages at both densities."""
    pdf = f"{picture.file}.pdf"
    run(picture.command(melkar, out / pdf))
    run(["pdftoppm", "-r", "96", "-png", out / pdf, out / picture.file])
    run(["pdftoppm", "-r", "192", "-png", out / pdf, out / f"{picture.file}@2x"])
    return [pdf]


def draw(picture, melkar, out):
    """@return the names of the files"""
    if picture.is_report:
        return draw_report(picture, melkar, out)
    files = {f"{picture.file}.png": [], f"{picture.file}@2x.png": ["--scale", "2"]}
    if not picture.has_balloon:  # one exists on pixels only
        files[f"{picture.file}.svg"] = []
        # For the page: the same with any fonts.
        files[f"{picture.file}-outlines.svg"] = ["--svg-outlines"]
    if picture.kind.endswith("-print"):
        files[f"{picture.file}.pdf"] = []
    for name, options in files.items():
        run(picture.command(melkar, out / name) + options)
        if (out / name).stat().st_size == 0:
            fail(f"nothing was drawn: {name}")
    return list(files)


def draw_all(pictures, melkar, out):
    count = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for files in pool.map(lambda picture: draw(picture, melkar, out), pictures):
            print("==", *files, flush=True)
            count += len(files)
    print(f"== {count} pictures", flush=True)


# The page


def text(string):
    return html.escape(str(string))


def image(source, picture, alt, finer=None):
    """`finer`: the same for screens of fine pixels."""
    srcset = f' srcset="{source}, {finer} 2x"' if finer else ""
    width, height = picture.size
    return f'<img src="{source}"{srcset} width="{width}" height="{height}" alt="{text(alt)}" loading="lazy">'


def looks_of(picture, title):
    """What is seen of it: outlines where they are the same picture, which are sharp on any screen."""
    if picture.has_balloon:
        return image(f"{picture.file}.png", picture, title, f"{picture.file}@2x.png")
    return image(f"{picture.file}-outlines.svg", picture, title)


def pages_of(picture, out, title):
    pages = sorted(path.name for path in out.glob(f"{picture.file}-[0-9]*.png"))
    return "".join(
        f'<a href="{page}">' + image(page, picture, f"{title}, page {number}", page.replace(picture.file, picture.file + "@2x"))
        + "</a>" for number, page in enumerate(pages, 1))


def profile_section(picture):
    profile = (ROOT / picture.app / "conf/graph.cnf").read_text(encoding="utf-8")
    section = re.search(rf"^\[{picture.section}\]\n(?:[^\[].*\n|\n)*", profile, re.M).group(0)
    return "".join(line + "\n" for line in section.splitlines() if line and not line.startswith(";"))


def data_head(path):
    with open(path, encoding="utf-8", errors="replace") as file:
        lines = [line.rstrip("\r\n") for line, _ in zip(file, range(DATA_LINES))]
    return "".join((line if len(line) <= DATA_WIDTH else line[:DATA_WIDTH] + " …") + "\n" for line in lines)


def to_copy(heading, content):
    return f"<h4>{heading}</h4><pre tabindex=0>{text(content.rstrip())}</pre>"


def sources_of(picture):
    """Command, profile section and head of the data."""
    suffix = "pdf" if picture.is_report else "png"
    parts = to_copy("Command", shlex.join(picture.command("build/release/bin/melkar", f"{picture.file}.{suffix}")))
    parts += to_copy(f"{picture.app}/conf/graph.cnf", profile_section(picture))
    data = picture.data_path and picture.data_path + ("/report-header.csv" if picture.is_report else "")
    if data and data.endswith((".csv", ".txt")):
        parts += to_copy(data, data_head(ROOT / data))
    return f"<details><summary>Command, profile, data</summary>{parts}</details>"


def links_of(picture, out):
    files = {"PNG": ".png", "PNG at scale 2": "@2x.png", "SVG": ".svg", "PDF": ".pdf"}
    return " · ".join(f'<a href="{picture.file}{end}">{name}</a>' for name, end in files.items()
                      if (out / (picture.file + end)).exists())


def variant(picture, shown_for, out, title):
    if picture.is_report:
        seen = f'<div class="pages">{pages_of(picture, out, title)}</div>'
    else:
        seen = f'<a href="{picture.file}.png">{looks_of(picture, title)}</a>'
    return (f'<div class="in {" ".join(shown_for)}">{seen}<p class="links">{links_of(picture, out)}</p>'
            f"{sources_of(picture)}</div>")


def shares(pictures):
    """Which languages see which picture: those without one of their own see English."""
    own = {picture.language for picture in pictures}
    for picture in pictures:
        others = [code for code in languages() if code not in own] if picture is pictures[0] else []
        yield picture, [picture.language, *others]


def figure(pictures, out):
    title = pictures[0].caption
    variants = "".join(variant(picture, shown_for, out, title) for picture, shown_for in shares(pictures))
    kind = "report" if pictures[0].is_report else ""
    return f'<figure id="{pictures[0].name}" class="{kind}"><figcaption>{text(title)}</figcaption>{variants}</figure>\n'


def chapter(content, out):
    kinds = dict.fromkeys(pictures[0].kind for pictures in content.figures.values())
    return (f'<section id="{content.anchor}"><h2>{text(content.title)}</h2><p>{text(content.purpose)} '
            f'<code>{"</code> <code>".join(kinds)}</code></p>\n<div class="pictures">\n'
            + "".join(figure(pictures, out) for pictures in content.figures.values()) + "</div></section>\n")


def best_of(names, chapters):
    """The window: each picture leads to where it stands with its sources."""
    found = {name: pictures for content in chapters for name, pictures in content.figures.items()}
    shown = []
    for name in names:
        pictures = found.get(name) or fail(f"gallery.txt: no row of that name: {name}")
        title = pictures[0].caption
        for picture, shown_for in shares(pictures):
            shown.append(f'<a class="in {" ".join(shown_for)}" href="#{name}">'
                         f"{looks_of(picture, title)}<span>{text(title)}</span></a>")
    return f'<div class="best">\n{"".join(shown)}\n</div>\n'


def language_rules():
    """Of a picture in several languages the one is seen whose button is chosen."""
    return "".join(f"#in-{code}:checked ~ main .in.{code} {{ display: block; }}\n"
                   f"#in-{code}:checked ~ nav label[for=in-{code}] {{ color: var(--card); background: var(--link); }}\n"
                   f"#in-{code}:focus-visible ~ nav label[for=in-{code}] {{ outline: 2px solid var(--text); }}\n"
                   for code in languages())


def page(best, chapters, out):
    style = "".join((ROOT / f"scripts/{name}.css").read_text(encoding="utf-8") for name in ("colors", "gallery"))
    style += language_rules()
    radios = "".join(f'<input type="radio" name="language" id="in-{code}" aria-label="{word(code, "language")}"'
                     f'{" checked" if code == "en" else ""}>' for code in languages())
    labels = "".join(f'<label for="in-{code}" lang="{code}">{word(code, "language")}</label>' for code in languages())
    jumps = "".join(f'<a href="#{content.anchor}">{text(content.title)}</a>' for content in chapters)
    common = Picture("", "en", "", "COMMON", "-", (0, 0), [], "")
    return f"""<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>MelkarCommon: gallery</title>
<style>
{style}</style>
</head>
<body>
{radios}
<nav><a href="#top">MelkarCommon</a><span>{labels}</span></nav>
<main id="top">
<h1>Charts of steps, energy and days</h1>
<p>Drawn by MelkarCommon, all of them: each from a section of a profile and a data file, on the screen, on paper, in any
language. Under a picture stands what draws it.</p>
{best_of(best, chapters)}<div class="jumps">{jumps}</div>
{"".join(chapter(content, out) for content in chapters)}<section id="common"><h2>What all charts share</h2>
<p>The section COMMON of the profile; the commands run in the project's folder.</p>
{to_copy("samples/app/conf/graph.cnf", profile_section(common))}</section>
</main>
</body>
</html>
"""


def main():
    if len(sys.argv) != 3:
        fail(__doc__.split(":")[0])
    melkar, out = sys.argv[1], pathlib.Path(sys.argv[2])
    for file in [*out.glob("*.png"), *out.glob("*.svg"), *out.glob("*.pdf"), *out.glob("index.html")]:
        file.unlink()
    best, chapters = read_gallery()
    try:
        draw_all([picture for content in chapters for pictures in content.figures.values() for picture in pictures], melkar, out)
    except RuntimeError as error:
        fail(error)
    (out / "index.html").write_text(page(best, chapters, out), encoding="utf-8")


if __name__ == "__main__":
    main()
