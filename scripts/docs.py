#!/usr/bin/python3
"""scripts/docs.py MELKAR XML OUTPUT: writes the documents as pages for a browser, OUTPUT/index.html, from the Markdown files
that docs/README.md leads to, and a page for each kind of chart that the command MELKAR tells of (kind_pages.py). XML is what
doxygen says of the interface, whose own pages lie in OUTPUT/api. A link that leads nowhere fails. scripts/docs calls it.
"""

import dataclasses
import html
import json
import os
import pathlib
import re
import shutil
import sys
import xml.etree.ElementTree as ElementTree

import markdown
import pygments
import pygments.formatters
import pygments.lexers
import pygments.token
import pygments.util

import kind_pages

ROOT = pathlib.Path(__file__).resolve().parent.parent
FRONT = "docs/README.md"  # its lists are the navigation
FENCE = re.compile(r"^(`{3,})([\w+-]*) *(.*)\n((?:.*\n)*?)\1$", re.M)
SEARCHED = 1500  # characters of a section of prose

problems = []


def tell(source, text):
    problems.append(f"{source}: {text}")


# The interface


class Interface:
    """Where doxygen's pages explain a name, and what they say of a class."""

    def __init__(self, folder):
        self.folder = folder
        self.pages = {}
        for compound in ElementTree.parse(folder / "index.xml").getroot():
            if compound.get("kind") in ("file", "page", "dir"):
                scope = ""
            else:
                scope = compound.findtext("name")
                self._keep(scope, f"api/{compound.get('refid')}.html")
            if compound.get("kind") == "file":
                self._keep(compound.findtext("name"), f"api/{compound.get('refid')}.html")
            for member in compound.iter("member"):
                page, _, anchor = member.get("refid").rpartition("_1")
                name = member.findtext("name")
                self._keep(f"{scope}::{name}" if scope else name, f"api/{page}.html#{anchor}")

    def _keep(self, name, address):
        self.pages.setdefault(name, address)

    def page_of(self, code):
        """Of what stands as code in a text, if it is a name that hosts may use."""
        if re.fullmatch(r"[\w/]+\.h", code):
            return self.pages.get(code.rsplit("/", 1)[-1])
        name = code.removesuffix("()")
        return re.fullmatch(r"(\w+::)*[A-Z]\w{3,}", name) and (self.pages.get(name) or self.pages.get(f"melkar::{name}"))

    def compound(self, name):
        """The element of a class; None if nothing is said of it."""
        address = self.pages.get(name)
        path = address and self.folder / (pathlib.Path(address).stem + ".xml")
        return ElementTree.parse(path).getroot().find("compounddef") if path and path.exists() else None


# Code


FAMILIES = ((pygments.token.Comment.Preproc, "k"), (pygments.token.Comment, "c"), (pygments.token.Keyword, "k"),
            (pygments.token.String, "s"), (pygments.token.Number, "n"), (pygments.token.Name.Function, "f"),
            (pygments.token.Name.Class, "f"), (pygments.token.Name.Attribute, "f"), (pygments.token.Name.Builtin, "f"))


def painted(code, language):
    try:
        lexer = pygments.lexers.get_lexer_by_name({"csv": "text", "": "text"}.get(language, language), stripnl=False)
    except pygments.util.ClassNotFound:
        return html.escape(code)
    parts = []
    for token, text in lexer.get_tokens(code):
        family = next((name for kind, name in FAMILIES if token in kind), None)
        parts.append(f'<span class="{family}">{html.escape(text)}</span>' if family and text.strip() else html.escape(text))
    return "".join(parts)


def code_block(language, caption, code):
    head = f"<div>{html.escape(caption)}</div>" if caption else ""
    return f'<div class="code">{head}<pre tabindex="0"><code>{painted(code, language).rstrip()}</code></pre></div>'


# Pages


def slug(heading, _separator="-"):
    """The anchor that hosts of repositories give a heading."""
    return re.sub(r"[^\w\- ]", "", html.unescape(heading).lower()).replace(" ", "-")


def address_of(source):
    """Where the page of a file lies, from the folder of all pages."""
    if source == FRONT:
        return "index.html"
    if source.endswith(".md"):
        return source.removeprefix("docs/").removesuffix(".md") + ".html"
    if re.search(r"\.(png|svg|jpg|bmp)$", source):
        return source.removeprefix("docs/")
    return f"files/{source}.html"


@dataclasses.dataclass
class Page:
    source: str  # a path in the project; of a page that is made, one that would be
    text: str
    title: str = ""
    body: str = ""
    headings: list = dataclasses.field(default_factory=list)  # (level, anchor, text)
    anchors: set = dataclasses.field(default_factory=set)
    links: list = dataclasses.field(default_factory=list)  # (file of the project, anchor)

    @property
    def address(self):
        return address_of(self.source)

    @property
    def root(self):
        return "../" * self.address.count("/")


class Converter(markdown.treeprocessors.Treeprocessor):
    """Leads links to the pages of files, tables into boxes that scroll, names of the interface to its pages."""

    def __init__(self, page, interface, out):
        super().__init__()
        self.page, self.interface, self.out = page, interface, out

    def run(self, root):
        for parent in list(root.iter()):
            for at, child in enumerate(list(parent)):
                if child.tag == "table":
                    box = ElementTree.Element("div", {"class": "table", "tabindex": "0"})
                    box.append(child)
                    parent[at] = box
        self.link_names(root, inside_link=False)
        for element in root.iter():
            if element.tag == "a":
                element.set("href", self.target_of(element.get("href")))
            elif element.tag == "img":
                element.set("src", self.target_of(element.get("src")))
                finer = re.sub(r"\.png$", "@2x.png", element.get("src"))
                if (self.out / self.page.address).parent.joinpath(finer).exists() and finer != element.get("src"):
                    element.set("srcset", f"{element.get('src')}, {finer} 2x")

    def link_names(self, element, inside_link):
        for at, child in enumerate(list(element)):
            linked = inside_link or child.tag in ("a", "h1", "h2", "h3", "h4")
            address = child.tag == "code" and not linked and self.interface.page_of(html.unescape(child.text or ""))
            if address:
                link = ElementTree.Element("a", {"href": f"api:{address}"})
                link.tail, child.tail = child.tail, None
                link.append(child)
                element[at] = link
            else:
                self.link_names(child, linked)

    def target_of(self, target):
        if target.startswith("api:"):
            return self.page.root + target.removeprefix("api:")
        if re.match(r"\w+:", target):
            return target
        path, _, anchor = target.partition("#")
        source = os.path.normpath(os.path.join(os.path.dirname(self.page.source), path)) if path else self.page.source
        if (ROOT / source).is_dir():
            source += "/README.md"
        self.page.links.append((source, anchor))
        return self.page.root + address_of(source) + (f"#{anchor}" if anchor else "")


def convert(page, interface, out):
    """Fills in what is made of the text."""
    blocks = []

    def keep(match):
        language, caption = match[2], re.sub(r"^untried:.*", "", match[3])
        blocks.append(code_block(language, caption, match[4]))
        return f'<div class="kept">{len(blocks) - 1}</div>'

    text = FENCE.sub(keep, page.text)
    reader = markdown.Markdown(extensions=["tables", "sane_lists", "toc"],
                               extension_configs={"toc": {"slugify": slug, "permalink": False}})
    reader.treeprocessors.register(Converter(page, interface, out), "melkar", 0)
    body = reader.convert(text)

    def flatten(entries):
        for entry in entries:
            yield entry["level"], entry["id"], html.unescape(re.sub(r"<[^>]+>", "", entry["name"]))
            yield from flatten(entry["children"])
    page.headings = list(flatten(reader.toc_tokens))
    page.title = page.headings[0][2] if page.headings else page.source
    body = re.sub(r'<h([234]) id="([^"]+)">(.*?)</h\1>',
                  r'<h\1 id="\2">\3<a class="to-here" href="#\2" aria-label="A link to this">#</a></h\1>', body)
    page.body = re.sub(r'<div class="kept">(\d+)</div>', lambda match: blocks[int(match[1])], body)
    page.anchors = set(re.findall(r' id="([^"]+)"', page.body))


def page_of_file(source):
    """A file that is no document is shown as it is."""
    text = (ROOT / source).read_text(encoding="utf-8", errors="replace")
    if source.endswith(".md"):
        return Page(source, text)
    language = {".h": "cpp", ".cnf": "ini", "": "sh"}.get(pathlib.Path(source).suffix, pathlib.Path(source).suffix[1:])
    ticks = "`" * (1 + max(map(len, re.findall("`+", text)), default=2))
    return Page(source, f"# {source}\n\n{ticks}{language}\n{text.rstrip()}\n{ticks}\n")


def gather(made, interface, out):
    """All pages that the front page leads to, and those that are made."""
    pages, waiting = {}, [(FRONT, FRONT), *((source, source) for source in made)]
    while waiting:
        origin, source = waiting.pop()
        if source in pages:
            continue
        if re.search(r"\.(png|svg|jpg|bmp)$", source):
            if (ROOT / source).exists():
                (out / address_of(source)).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(ROOT / source, out / address_of(source))
            elif not (out / address_of(source)).exists():
                tell(origin, f"no such picture: {source}")
            continue
        if source in made:
            page = Page(source, made[source])
        elif (ROOT / source).is_file():
            page = page_of_file(source)
        else:
            tell(origin, f"a link to nothing: {source}")
            continue
        pages[source] = page
        convert(page, interface, out)
        waiting += [(source, target) for target, _ in page.links]
    return pages


def check_anchors(pages):
    for page in pages.values():
        for source, anchor in page.links:
            if anchor and source in pages and anchor not in pages[source].anchors:
                tell(page.source, f"a link to no heading: {source}#{anchor}")
    for path in (ROOT / "docs").glob("*.md"):
        if f"docs/{path.name}" not in pages:
            tell(FRONT, f"nothing leads to docs/{path.name}")


# Navigation


@dataclasses.dataclass
class Entry:
    title: str
    address: str
    source: str = ""


def navigation(front, kinds):
    """The lists of the front page: (heading, entries). A kind is an entry below that of all kinds."""
    groups = []
    for line in front.text.splitlines():
        if line.startswith("## "):
            groups.append((line[3:], []))
        elif groups and (match := re.match(r"- \[([^\]]+)\]\(([^)]+\.md)\)", line)):
            source = os.path.normpath(f"docs/{match[2]}")
            groups[-1][1].append(Entry(match[1], address_of(source), source))
            if source == "docs/kinds.md":
                groups[-1][1].extend(Entry(kind, address_of(f"docs/kinds/{kind}.md"), f"docs/kinds/{kind}.md") for kind in kinds)
            if source == "docs/hosts.md":
                groups[-1][1].append(Entry("The headers", "api/index.html"))
    return [(title, entries) for title, entries in groups if entries]


def in_navigation(page, entry):
    current = entry.source == page.source
    is_kind = entry.source.startswith("docs/kinds/")
    parts = "".join(f'<li><a href="#{anchor}">{html.escape(text)}</a></li>'
                    for level, anchor, text in page.headings if level == 2) if current and len(page.headings) < 40 else ""
    return (f'<li{" class=kind" if is_kind else ""}><a href="{page.root}{entry.address}"{" aria-current=page" if current else ""}>'
            f"{html.escape(entry.title)}</a>{f'<ul>{parts}</ul>' if parts else ''}</li>")


def side(page, groups):
    parts = []
    for title, entries in groups:
        about_kinds = page.source.startswith("docs/kinds")
        shown = [entry for entry in entries if about_kinds or not entry.source.startswith("docs/kinds/")]
        parts.append(f"<h2>{html.escape(title)}</h2><ul>{''.join(in_navigation(page, entry) for entry in shown)}</ul>")
    return "".join(parts)


def turns(page, groups):
    """The pages before and behind this one."""
    order = [entry for _, entries in groups for entry in entries if entry.source]
    at = next((index for index, entry in enumerate(order) if entry.source == page.source), None)
    if at is None:
        return ""
    before = f'<a href="{page.root}{order[at - 1].address}">← {html.escape(order[at - 1].title)}</a>' if at > 0 else "<span></span>"
    behind = f'<a href="{page.root}{order[at + 1].address}">{html.escape(order[at + 1].title)} →</a>' if at + 1 < len(order) else ""
    return f'<div class="turn">{before}{behind}</div>'


def whole(page, groups):
    title = page.title if page.source == FRONT else f"{page.title} · MelkarCommon"
    return f"""<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{html.escape(title)}</title>
<link rel="stylesheet" href="{page.root}docs.css">
<script src="{page.root}docs.js" data-root="{page.root}" defer></script>
</head>
<body>
<header><a href="{page.root}index.html">MelkarCommon</a><a class="to-pages" href="#pages">Pages</a></header>
<main>
{page.body}
{turns(page, groups)}
</main>
<nav id="pages" aria-label="Pages"><div>{side(page, groups)}</div></nav>
</body>
</html>
"""


# Searching


def plain(markup):
    """Prose and tables: what stands in code would be found on twenty pages alike."""
    markup = re.sub(r"<pre.*?</pre>", " ", markup, flags=re.S)
    return re.sub(r"\s+", " ", html.unescape(re.sub(r"<[^>]+>", " ", markup))).strip()


def sections(page):
    """[page, heading, address, text] of each section. Keys and columns of a kind are found where those of all stand."""
    parts = re.split(r'<h([234]) id="([^"]+)">(.*?)<a class="to-here".*?</h[234]>', page.body)
    yield [page.title, page.title, page.address, plain(parts[0])[:SEARCHED]]
    is_kind, part = page.source.startswith("docs/kinds/"), ""
    for level, anchor, heading, body in zip(parts[1::4], parts[2::4], parts[3::4], parts[4::4]):
        part = plain(heading) if level == "2" else part
        if is_kind and part in ("Keys", "Data file"):
            continue
        most = len(body) if "<table>" in body else SEARCHED
        yield [page.title, plain(heading), f"{page.address}#{anchor}", plain(body)[:most]]


def search_index(pages, groups, interface):
    known = [entry.source for _, entries in groups for entry in entries]
    order = sorted(pages.values(), key=lambda page: known.index(page.source) if page.source in known else len(known))
    rows = [row for page in order if page.source.endswith(".md") for row in sections(page)]
    rows += [["Interface", name, address, ""] for name, address in interface.pages.items()]
    return "window.searchIndex = " + json.dumps(rows, ensure_ascii=False, separators=(",", ":")) + ";\n"


def write(pages, groups, interface, out):
    for page in pages.values():
        path = out / page.address
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(whole(page, groups), encoding="utf-8")
    style = "".join((ROOT / f"scripts/{name}.css").read_text(encoding="utf-8") for name in ("colors", "docs"))
    (out / "docs.css").write_text(style, encoding="utf-8")
    shutil.copy(ROOT / "scripts/docs.js", out)
    for page in pages.values():
        if page.source.startswith("docs/kinds/") and page.source != "docs/kinds/README.md":  # scripts/check-docs tries what it tells
            (out / page.source.removeprefix("docs/")).write_text(page.text, encoding="utf-8")
    (out / "search-index.js").write_text(search_index(pages, groups, interface), encoding="utf-8")


def main():
    if len(sys.argv) != 4:
        sys.exit(f"error: {__doc__.split(':')[0]}")
    melkar, out, interface = sys.argv[1], pathlib.Path(sys.argv[3]), Interface(pathlib.Path(sys.argv[2]))
    kinds, made = kind_pages.make(melkar, interface, out)
    pages = gather(made, interface, out)
    check_anchors(pages)
    if problems:
        sys.exit("\n".join(f"error: {problem}" for problem in problems))
    write(pages, navigation(pages[FRONT], kinds), interface, out)
    print(f"== {len(pages)} pages", flush=True)


if __name__ == "__main__":
    main()
