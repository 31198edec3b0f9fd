"""A page for each kind of chart, as Markdown: what the command tells of it, a program, profile and data that draw its
picture, what a class that derives finds, and its pictures in the gallery. scripts/docs.py makes pages for a browser of them.
"""

import concurrent.futures
import dataclasses
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import tempfile

import gallery

ROOT = gallery.ROOT
PROGRAMS = ROOT / "docs/kinds"  # graph.cpp.in for all kinds but those that have a file

# What reads the file of kinds whose class is given its figures by the host.
READERS = {"line": "melkar::LineFromFile", "day": "melkar::DayFromFile", "circle": "melkar::CircleFromFile",
           "circle-separate": "melkar::SeparateCircleFromFile", "plot": "melkar::PlotFromFile", "pie": "melkar::PieFromFile",
           "quadrant": "CQuadrantDays"}
# Of kinds that `melkar new` lays out no program for, but those of samples/hosts: section and size.
OTHERS = {"week-print": ("WEEK_PRINT", (1190, 1684)), "image": ("COMMON", (384, 384)), "report": ("REPORT", (794, 1123))}
PICTURES = {"image": ["medal.bmp", "medal-mask.bmp"]}


@dataclasses.dataclass
class Kind:
    name: str
    says: str
    class_name: str
    section: str = ""
    size: tuple = (900, 500)
    is_new: bool = False  # `melkar new` lays it out
    files: dict = dataclasses.field(default_factory=dict)  # a path in the page's folder, and the text
    pictures: list = dataclasses.field(default_factory=list)  # files that are no texts, of samples/data

    @property
    def data(self):
        """The file that it draws; empty if it takes none."""
        return next((name for name in [*self.files, *self.pictures] if name.startswith(self.name + ".")),
                    self.pictures[0] if self.pictures else "")

    @property
    def sources(self):
        """What a program takes from the samples beside its own lines: the class of an example."""
        example = re.search(r"\bby samples/hosts/(\w+)\.h", self.says)
        return [f"{example[1]}.h", f"{example[1]}.cpp"] if example else []

    @property
    def product(self):
        """What its program writes."""
        return f"{self.name}.pdf" if self.name in ("report", "week-print") else f"{self.name}.png"

    def command(self, melkar, output, *options):
        """Draws it in a folder of its files."""
        data = ["--data", self.data] if self.data else []
        return [melkar, "draw", self.name, "--base", "bin", "--section", self.section, *data, "--size", "{}x{}".format(*self.size),
                *options, "-o", output]


def ask(melkar, *arguments):
    return subprocess.run([melkar, *arguments], check=True, capture_output=True, text=True).stdout


# What draws it


def program(kind):
    own = PROGRAMS / f"{kind.name}.cpp"
    if own.exists():
        return own.read_text(encoding="utf-8")
    text = (PROGRAMS / "graph.cpp.in").read_text(encoding="utf-8")
    values = {"KIND": kind.name, "SECTION": kind.section, "DATA": kind.data, "WIDTH": kind.size[0], "HEIGHT": kind.size[1],
              "GRAPH": READERS.get(kind.name, kind.class_name)}
    for name, value in values.items():
        text = text.replace(f"@{name}@", str(value))
    own_headers = "".join(f'#include "{name}"\n\n' for name in kind.sources if name.endswith(".h"))
    return own_headers + text


def lay_out_new(kind, melkar, application):
    """From what `melkar new` lays out."""
    row = re.search(r'\{"[^"]*", "(\w+)", "[^"]*", (\d+), (\d+)\}', (application / "charts.cpp").read_text())
    kind.section, kind.size = row[1], (int(row[2]), int(row[3]))
    dated = "YYYYMMDD" in ask(melkar, "data", kind.name)
    kind.files["conf/graph.cnf"] = re.sub(r"^;.*\n" + ("" if dated else "|^GRAPH_DATE_FORMAT_TYPE=.*\n"), "",
                                          (application / "conf/graph.cnf").read_text(), flags=re.M)
    if dated:
        kind.files["conf/config.cnf"] = (application / "conf/config.cnf").read_text()
    for path in sorted((application / "data").iterdir()):
        kind.files[path.name] = path.read_text()


def lay_out_other(kind, melkar):
    """From its references alone."""
    kind.section, kind.size = OTHERS.get(kind.name, (kind.name.upper().replace("-", "_"), kind.size))
    kind.pictures = PICTURES.get(kind.name, [])
    if kind.pictures:
        kind.files["conf/graph.cnf"] = "[COMMON]\nCANVASCOLOR_RGB=255,255,255\n"
        return
    kind.files["conf/graph.cnf"] = ask(melkar, "keys", kind.name, "--profile", "--section", kind.section)
    kind.files[f"{kind.name}.csv"] = ask(melkar, "data", kind.name, "--example")
    if kind.name == "report":  # a chart stands on its pages
        kind.files["conf/graph.cnf"] = ask(melkar, "keys", "report", "steps", "--profile")
        kind.files["steps.csv"] = ask(melkar, "data", "steps", "--example")


def lay_out(kind, melkar):
    """Profile, data and program."""
    with tempfile.TemporaryDirectory() as folder:
        application = pathlib.Path(folder) / "app"
        made = subprocess.run([melkar, "new", application, kind.name], capture_output=True)
        kind.is_new = made.returncode == 0
        if kind.is_new:
            lay_out_new(kind, melkar, application)
        else:
            lay_out_other(kind, melkar)
    for name in kind.sources:
        kind.files[name] = (ROOT / "samples/hosts" / name).read_text(encoding="utf-8")
    kind.files["main.cpp"] = program(kind)


def draw(kind, melkar, folder):
    """Its files and its picture, in a folder of its own."""
    for name in ("bin", "conf", "log"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    for name, text in kind.files.items():
        (folder / name).write_text(text, encoding="utf-8")
    for name in kind.pictures:
        shutil.copy(ROOT / "samples/data" / name, folder)
    outputs = {f"{kind.name}.png": (), f"{kind.name}@2x.png": ("--scale", "2"), kind.product: ()} if kind.name != "report" else {}
    for output, options in outputs.items():
        subprocess.run(kind.command(melkar, output, *options), check=True, cwd=folder, env=os.environ | {"SOURCE_DATE_EPOCH": "0"})
    for name in ("bin", "log"):  # the page has them made
        shutil.rmtree(folder / name)


# Its pictures in the gallery


def draw_shown(picture, melkar, out):
    """@return the file, relative to `out`"""
    if picture.is_report:
        gallery.draw_report(picture, melkar, out)
        return f"{picture.file}-1.png"
    name = f"{picture.file}.png" if picture.has_balloon else f"{picture.file}.svg"
    gallery.run(picture.command(melkar, out / name) + ([] if picture.has_balloon else ["--svg-outlines"]))
    return name


def shown_of(kind, chapters):
    """English pictures, in light colours."""
    return [picture for chapter in chapters for pictures in chapter.figures.values() for picture in pictures
            if picture.kind == kind.name and picture.language == "en" and not picture.palette]


def more_pictures(kind, chapters, melkar, out):
    pictures = shown_of(kind, chapters)
    if not pictures:
        return ""
    folder = out / "kinds" / kind.name / "more"
    folder.mkdir(parents=True, exist_ok=True)
    text, commands = "## More pictures\n\n", []
    for picture in pictures:
        name = draw_shown(picture, melkar, folder)
        text += f"{picture.caption}:\n\n![{picture.caption}]({kind.name}/more/{name})\n\n"
        command = picture.command("melkar", f"more/{picture.file}.{'pdf' if picture.is_report else 'png'}")
        commands.append(shlex.join(word for word in command if word != "--strict"))
    section = pictures[0].section
    return (f"{text}By the samples, whose profile `samples/app/conf/graph.cnf` has the looks (section `{section}` and COMMON), from "
            "the folder of the project:\n\n```sh\nmkdir -p more\n" + "\n".join(commands) + "\n```\n")


# What a class that derives finds


def words(element):
    return re.sub(r"\s+", " ", "".join(element.itertext())).strip() if element is not None else ""


def as_markdown(element):
    """What doxygen has of a comment, without its examples."""
    if element.tag in ("programlisting", "title"):
        return ""
    if element.tag == "computeroutput":
        return f"`{words(element)}`"
    inner = re.sub(r"([\[\]*_<|])", r"\\\1", element.text or "")
    for child in element:
        inner += as_markdown(child) + re.sub(r"([\[\]*_<|])", r"\\\1", child.tail or "")
    before = {"simplesect": "Returns " if element.get("kind") == "return" else "", "para": " "}.get(element.tag, "")
    behind = {"parameternamelist": ": ", "parameterdescription": ". "}.get(element.tag, "")
    return before + inner + behind


def said_of(member):
    parts = (as_markdown(member.find(name)) for name in ("briefdescription", "detaileddescription"))
    return re.sub(r"\s+", " ", " ".join(parts)).strip()


def member_row(member):
    arguments = re.sub(r" *(override|final|=0)", "", member.findtext("argsstring") or "")
    declared = f"{words(member.find('type'))} {member.findtext('name')}{arguments}".strip()
    declared = re.sub(r" *([*&]) *(?=\w)", r"\1 ", re.sub(r"^MELKAR_\w+ ", "", declared))
    return f"| `{declared}` | {said_of(member)} |\n"


def members_table(heading, members):
    return f"| {heading} | What |\n|---|---|\n" + "".join(map(member_row, members)) + "\n" if members else ""


def lineage(class_name, interface):
    """The elements of a class and those that it derives from."""
    compound = interface.compound(class_name) if class_name else None
    while compound is not None:
        yield compound
        compound = interface.compound(compound.findtext("basecompoundref") or "")


def cycles_of(class_name):
    """The draw cycles that the sources of a class state: for each its name and its steps, with what their results mean."""
    for path in ROOT.glob("MelkarCommon/*/*.cpp"):
        table = re.search(rf"^struct {class_name}::Cycle .*?^\}};", path.read_text(encoding="utf-8"), re.M | re.S)
        if table:
            lists = re.findall(r" Step (\w+)\[\] = \{(.*?)\n? *\};", table[0], re.S)
            cycles = [(name, re.findall(r"&G::(\w+)>?(?:, (\w+)\})?", steps)) for name, steps in lists]
            return cycles if cycles and all(steps for _, steps in cycles) else gallery.fail(f"{path}: no steps are found in the cycle of {class_name}")
    return []


MEANINGS = {"": "", "Needed": " If it fails, nothing more is painted.", "LastIfPainted": " If it painted something, it is the last."}


def step_text(step, meaning, line):
    """What a step does, as its class or one that this derives from has it."""
    found = next((member for compound in line for member in compound.iter("memberdef")
                  if member.findtext("name") == step and said_of(member)), None)
    says = re.sub(r"\.? ?(Returns .*)?$", "", said_of(found)) if found is not None else ""
    return f"`{step}`{': ' * bool(says)}{says}{'.' * bool(meaning)}{MEANINGS[meaning]}"


def steps_of(kind, interface, kinds):
    """The cycles of the class, or of the first that it derives from and that has some."""
    line = list(lineage(kind.class_name, interface))
    owners = [name for name in (compound.findtext("compoundname") for compound in line) if cycles_of(name)]
    if not owners:
        return ""
    owner = owners[0]
    text = (f"## Draw steps\n\nWhat `{owner}` does in a drawing, in this order. A class that derives overrides the steps that are "
            "virtual.\n\n")
    cycles = cycles_of(owner)
    for name, steps in cycles:
        text += f"List `{name}`:\n\n" if len(cycles) > 1 else ""
        text += "".join(f"{number}. {step_text(step, meaning, line)}\n" for number, (step, meaning) in enumerate(steps, 1)) + "\n"
    base = next((other for other in kinds if other.class_name in owners[1:2] and other.name != kind.name), None)
    return text + (f"`{base.class_name}`, which it derives from, has a list of its own: [{base.name}]({base.name}.md#draw-steps).\n\n"
                   if base and owner == kind.class_name else "")


def members_of(kind, interface, kinds):
    compound = interface.compound(kind.class_name) if kind.class_name else None
    if compound is None:
        return ""
    members = [member for member in compound.iter("memberdef") if member.get("prot") != "private"]
    steps = [member for member in members if member.get("kind") == "function" and
             (member.get("virt") != "non-virtual" or member.get("prot") == "protected") and "~" not in member.findtext("name")]
    data = [member for member in members if member.get("kind") == "variable" and member.get("static") == "no"]
    base = compound.findtext("basecompoundref") or ""
    of_base = next((f" (kind [{other.name}]({other.name}.md#members-for-deriving))" for other in kinds if other.class_name == base), "")
    behind = f" What it has from `{base}`{of_base} isn't repeated here." if base else ""
    return (f"## Members for deriving\n\n`{kind.class_name}`: {said_of(compound)}{behind} How to derive stands in "
            "[For hosts](../hosts.md#a-graph-of-your-own).\n\n" + members_table("Operation", steps) + members_table("Member", data))


# The page


def fence(name, text):
    language = {".cnf": "ini", ".csv": "csv", ".sim": "csv", ".cpp": "cpp", ".h": "cpp"}[pathlib.Path(name).suffix]
    return f"```{language} {name}\n{text.rstrip()}\n```\n\n"


def below(reference, heading, level="##"):
    """A page of the command as a section: its headings one lower, without the first."""
    lines = reference.split("\n", 1)[1]
    return f"{level} {heading}\n" + re.sub(r"^## ", "### ", lines, flags=re.M).rstrip() + "\n\n"


def draws(kind):
    if kind.name == "report":
        return ""
    return "```sh\nmkdir -p bin log\n" + shlex.join(kind.command("melkar", f"{kind.name}.png")) + "\n```\n\n"


def builds(kind):
    sources = " ".join(["main.cpp", *(name for name in kind.sources if name.endswith(".cpp"))])
    return ("```sh\nmkdir -p bin log\n"
            f"g++ -std=c++17 {sources} -o bin/{kind.name} $(pkg-config --cflags --libs MelkarCommon)\nbin/{kind.name}\n" + ("pdfinfo report.pdf | grep '^Pages: *2$'    # by Debian's poppler-utils\n" if kind.name == "report" else "") + "```\n\n")


def purposes(kind, chapters):
    return " ".join(chapter.purpose for chapter in chapters
                    if any(pictures[0].kind == kind.name and not pictures[0].palette for pictures in chapter.figures.values())
                    and chapter.title != "Messages")


def page(kind, kinds, chapters, interface, melkar, out):
    by_class = f" A program draws it by the class `{kind.class_name}`." if kind.class_name else ""
    picture = f"{kind.name}/{kind.name}.png" if kind.name != "report" else "report/more/report-1.png"
    text = (f"# {kind.name}\n\n{kind.says[0].upper()}{kind.says[1:]}. {purposes(kind, chapters)}{by_class}\n\n"
            f"![{kind.says}]({picture})\n\n## Draw it\n\n")
    quickly = "" if not kind.is_new else f" `melkar new {kind.name} {kind.name}` lays out the same for several kinds."
    text += f"These files, in one folder with the empty folders `bin` and `log`.{quickly}\n\n"
    text += "".join(fence(name, content) for name, content in kind.files.items() if not name.endswith((".cpp", ".h")))
    for name in kind.pictures:
        text += f"And [{name}](../../samples/data/{name}).\n\n"
    by_command = draws(kind)
    text += (f"By the command:\n\n{by_command}" if by_command else "") + "By a program:\n\n"
    text += "".join(fence(name, content) for name, content in kind.files.items() if name.endswith((".cpp", ".h")))
    text += builds(kind)
    if kind.name != "image":
        text += below(ask(melkar, "keys", kind.name), "Keys")
        text += below(ask(melkar, "data", kind.name), "Data file") if kind.data else ""
    return text + steps_of(kind, interface, kinds) + members_of(kind, interface, kinds) + more_pictures(kind, chapters, melkar, out)


def read_kinds(listed):
    """What `melkar kinds` prints."""
    rows = re.findall(r"^\| `([\w-]+)` \| (.*?) \| (?:`(\w+)`)? *\|", listed, re.M)
    return [Kind(name, says, class_name) for name, says, class_name in rows]


def with_cards(listed, kinds):
    """The list of the kinds with a picture of each, which leads to its page."""
    cards = "".join(f'<li><a href="kinds/{kind.name}.html"><img src="kinds/{kind.name}/'
                    f'{kind.name + ".png" if kind.name != "report" else "more/report-1.png"}" alt="">'
                    f"<span><b>{kind.name}</b> {kind.says}</span></a></li>\n" for kind in kinds)
    listed = re.sub(r"^\| `([\w-]+)` \|", r"| [`\1`](kinds/\1.md) |", listed, flags=re.M)
    return listed.replace("\n| Kind |", f'\n<ul class="cards">\n{cards}</ul>\n\n| Kind |')


def make(melkar, interface, out):
    """@return the names of the kinds, and their pages: Markdown by the path that it would have in the project"""
    listed = ask(melkar, "kinds")
    kinds = read_kinds(listed)
    _, chapters = gallery.read_gallery()

    def one(kind):
        lay_out(kind, melkar)
        draw(kind, melkar, out / "kinds" / kind.name)
        text = page(kind, kinds, chapters, interface, melkar, out)
        print(f"   {kind.name}", flush=True)
        return text

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        pages = {f"docs/kinds/{kind.name}.md": text for kind, text in zip(kinds, pool.map(one, kinds))}
    pages["docs/kinds.md"] = with_cards(listed, kinds)
    return [kind.name for kind in kinds], pages
