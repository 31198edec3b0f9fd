#!/usr/bin/python3
"""scripts/look_at_docs.py PAGES [SHOTS]: looks at the pages that scripts/docs made in a browser, as wide as a phone and as a
desktop, in both schemes: nothing beyond the window, no picture missing, no pale text, nothing from elsewhere; links lead to pages and
places in them; the search finds, by the keyboard alone; without scripts a page lacks nothing else. SHOTS is a directory for
screenshots. scripts/check-docs calls it.
"""

import html
import pathlib
import re
import sys
import urllib.parse

from browser import Browser

ROOT = pathlib.Path(__file__).resolve().parent.parent
WIDTHS = (400, 1400)
problems = []


def tell(page, text):
    problems.append(f"{page}: {text}")


def anchors_of(path, known={}):
    if path not in known:
        known[path] = set(re.findall(r'\b(?:id|name)="([^"]+)"', path.read_text(encoding="utf-8", errors="replace")))
    return known[path]


def check_links(pages, path):
    """What the pages lead to, doxygen's among them. Their own links are doxygen's to keep."""
    name = path.relative_to(pages)
    for target in re.findall(r' (?:href|src)="([^"]+)"', path.read_text(encoding="utf-8")):
        target = html.unescape(target)
        if re.match(r"(https?|mailto|javascript):", target):
            continue
        place, _, anchor = target.partition("#")
        wanted = (path.parent / urllib.parse.unquote(place)).resolve() if place else path
        if not wanted.is_file():
            tell(name, f"a link to nothing: {target}")
        elif anchor and urllib.parse.unquote(anchor) not in anchors_of(wanted):
            tell(name, f"a link to no place in it: {target}")


def look_at(browser, pages, path, dark, width, shots):
    name = path.relative_to(pages)
    asked = browser.open(path, width=width, dark=dark)
    for address in asked:
        if not address.startswith((f"file://{pages}", "data:")):
            tell(name, f"asks for {address}")
    browser.run("loaded([...document.images])")
    found = browser.run(f"faultsOf(document, '{'dark' if dark else 'light'}')")
    for fault in found["faults"]:
        tell(name, f"{width} pixels, {'dark' if dark else 'light'}: {fault}")
    if shots:
        browser.shoot(shots / f"{str(name).replace('/', '-').removesuffix('.html')}-{width}-{'dark' if dark else 'light'}.png")
    return found["seen"]


def look_at_all(browser, pages, paths, shots):
    seen = 0
    for dark in (False, True):
        for width in WIDTHS:
            for number, path in enumerate(paths):
                seen += look_at(browser, pages, path, dark, width, shots)
                if number % 20 == 0:  # for who waits
                    print(f"   {width} pixels, {'dark' if dark else 'light'}: {path.relative_to(pages)}", flush=True)
    return seen


# What is typed, and a page that has to be among the first three that are found.
SEARCHES = (("CHARTMAX", "profile-keys.html"), ("gtk", "embedding.html"), ("decimal comma", "import.html"),
            ("CBarGraph", "api/classCBarGraph.html"), ("ten minutes", "start.html"), ("himand", "kinds/himand.html"))


def try_search(browser, pages, start):
    for words, wanted in SEARCHES:
        browser.open(pages / start)
        browser.call("Input.dispatchKeyEvent", type="keyDown", key="/", text="/")
        browser.call("Input.dispatchKeyEvent", type="keyUp", key="/")
        browser.call("Input.insertText", text=words)
        found = browser.run("""new Promise(done => { const look = () => { const links = [...document.querySelectorAll('.search a')];
            links.length ? done(links.map(link => link.href)) : setTimeout(look, 20); }; look(); setTimeout(() => done([]), 3000); })""")
        if not any(wanted in address for address in found[:3]):
            tell(start, f"a search for {words} doesn't find {wanted} but {found[:3]}")
    if browser.run("document.activeElement.localName") != "input":
        tell(start, "the key / doesn't go to the search")


def try_without_scripts(browser, pages):
    browser.open(pages / "start.html", scripts=False)
    lines = [name for role, name, _ in browser.tree() if role in ("heading", "link", "StaticText")]
    if not any("first.cpp" in line for line in lines) or any("Search" in line for line in lines):
        tell("start.html", "without scripts the page isn't whole, or offers a search")


class Looking(Browser):
    """A browser with look.js on each page."""

    def __enter__(self):
        super().__enter__()
        self.call("Page.addScriptToEvaluateOnNewDocument", source=(ROOT / "scripts/look.js").read_text(encoding="utf-8"))
        return self


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(f"error: {__doc__.split(':')[0]}")
    pages = pathlib.Path(sys.argv[1]).resolve()
    shots = pathlib.Path(sys.argv[2]) if len(sys.argv) == 3 else None
    if shots:
        shots.mkdir(parents=True, exist_ok=True)
    paths = sorted(path for path in pages.rglob("*.html") if path.relative_to(pages).parts[0] != "api")
    for path in [*paths, pages / "api/index.html"]:
        check_links(pages, path)
    with Looking() as browser:
        seen = look_at_all(browser, pages, paths, shots)
        for start in ("index.html", "kinds/bar.html"):
            try_search(browser, pages, start)
        try_without_scripts(browser, pages)
    for problem in problems:
        print(f"FAILED: {problem}")
    print(f"== {len(paths)} pages, {seen} elements looked at, {len(problems)} faults")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
