#!/usr/bin/python3
"""scripts/told.py MELKAR [SHOTS]: holds what is told of the rows of samples/gallery.txt against their JSON, the schema and
a browser: descriptions, tables, pages that are read aloud, walked by keyboard and looked at on a phone. Screenshots of
pages go to the directory SHOTS. scripts/check-told calls it.
"""

import csv
import html
import json
import pathlib
import re
import subprocess
import sys
import tempfile

import jsonschema

import gallery
import held
from browser import Browser

ROOT = gallery.ROOT
PAGES = ["bar-week", "bar-month", "simulation-plan", "day-run", "circle", "himand", "week"]
PHONE, DESKTOP = 400, 1200

findings = []


def tell(name, text):
    findings.append(f"{name}: {text}")


def melkar(picture, command, *options):
    """Without what `draw` or `report` alone take."""
    words = [word for word in picture.command(sys.argv[1], "-")[1:-2] if word != "--strict"]
    if picture.is_report:
        words = ["", picture.kind, "--base", f"{picture.app}/bin", "--section", picture.section, "--data", picture.data_path,
                 *picture.options]
    if picture.has_balloon:
        at = words.index("--hover")
        del words[at:at + 2]
    done = subprocess.run([sys.argv[1], command, *words[1:], *options], cwd=ROOT, capture_output=True, text=True)
    if done.returncode != 0 or done.stderr:
        tell(picture.file, f"melkar {command}: exit code {done.returncode}: {done.stderr.strip()}")
    return done.stdout


def pictures():
    _, chapters = gallery.read_gallery()
    for chapter in chapters:
        for row in chapter.figures.values():
            yield from row


def items_of(shown):
    return [item for part in held.parts_of(shown) for item in part["items"]]


def check_texts(picture, validator):
    """@return what the picture shows"""
    shown = json.loads(melkar(picture, "describe", "--json"))
    for error in validator.iter_errors(shown):
        tell(picture.file, f"not as the schema has it: {error.message[:200]}")
    said = melkar(picture, "describe")
    if "__" in said:
        tell(picture.file, f"a gap is left: {said}")
    table = list(csv.reader(melkar(picture, "describe", "--csv").splitlines()))
    if len(table) != (len(items_of(shown)) + 1 if items_of(shown) else 0):
        tell(picture.file, f"{len(table)} lines of a table of {len(items_of(shown))} items")
    if len({len(row) for row in table}) > 1:
        tell(picture.file, "rows of the table have different lengths")
    return shown


def check_report(picture, shown, work):
    """What the pages say stands on them, in the file that is printed; its bookmarks lead to each picture."""
    command = picture.command(sys.argv[1], work / "report.pdf")
    subprocess.run(command, cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["pdftohtml", "-q", "-i", "-xml", work / "report.pdf", work / "report"], check=True)
    marked = html.unescape((work / "report.xml").read_text(encoding="utf-8"))
    marks = re.findall(r'<item page="(\d+)">(.*)</item>', marked)
    titles = [("1", shown["title"])]
    for number, page in enumerate(shown["pages"], 1):
        titles += [(str(number), picture["title"].strip()) for picture in page["pictures"]]
        text = subprocess.run(["pdftotext", "-f", str(number), "-l", str(number), work / "report.pdf", "-"],
                              check=True, capture_output=True, text=True).stdout
        for finding in held.hold_page(page, text):
            tell(picture.file, f"page {number}: {finding}")
    if marks != titles:
        tell(picture.file, f"its bookmarks are {marks}, not {titles}")


def check_truth(picture):
    """What it says is what is drawn, and what the data file has."""
    if picture.kind == "image":  # says nothing
        return
    shown = json.loads(melkar(picture, "describe", "--json", "--record"))
    record = melkar(picture, "draw", "--record")
    for finding in held.hold(picture.kind, shown, record, picture.data_path and ROOT / picture.data_path):
        tell(picture.file, finding)


def captions_of(shown):
    """As names begin; items without a place of their own may lack a part."""
    return [" ".join(item["caption"].split()) for item in items_of(shown)]


def check_names(name, browser, shown):
    tree = browser.tree()
    parts = [part for role, part, _ in tree if role == "graphics-symbol"]
    captions = captions_of(shown)
    if len(parts) != len(captions):
        tell(name, f"{len(parts)} parts are read, not {len(captions)}: {parts}")
    for part, caption in zip(parts, captions):
        if not part.startswith(caption):
            tell(name, f"a part is named {part!r}, not after {caption!r}")
    documents = [one for one in tree if one[0] == "graphics-document"]
    if captions and (len(documents) != 1 or not all(documents[0])):
        tell(name, f"the picture has no name or no description: {documents}")
    return parts


def check_walk(name, browser, parts):
    """From part to part by keyboard, with the balloon of each."""
    seen = "[document.activeElement.getAttribute('aria-label'), document.getElementById('balloon')?.textContent]"
    stops = 0
    while browser.run("document.activeElement.localName") != "g" and stops < 5:
        browser.press("Tab")
        stops += 1
    for key, part in ((None, 0), ("ArrowRight", 1), ("End", -1), ("ArrowRight", -1), ("ArrowLeft", -2), ("Home", 0)):
        if key:
            browser.press(key)
        expected = parts[part if abs(part) < len(parts) else 0]
        if browser.run(seen) != [expected] * 2:
            tell(name, f"{key or 'Tab'} leads to {browser.run(seen)}, not {expected!r}")
    browser.press("Escape")
    if not browser.run("document.getElementById('balloon').hidden"):
        tell(name, "the balloon stays behind Escape")
    browser.press("Tab")
    if browser.run("document.activeElement.localName") == "g":
        tell(name, "the tabulator goes through each part")


def check_hover(name, browser, parts):
    """Slices lie in each other's boxes: a point is taken that no other part covers."""
    for at in (0, len(parts) - 1):
        x, y = browser.run(f"""(async () => {{
            const part = document.querySelectorAll("g[role^=graphics]")[{at}];
            part.scrollIntoView({{block: "center"}});
            for (const frame of "ab") await new Promise(requestAnimationFrame); // until the page is there
            const box = part.getBoundingClientRect();
            for (let y = Math.ceil(box.top); y < box.bottom; ++y) // whole pixels, as a mouse has
                for (let x = Math.ceil(box.left); x < box.right; ++x)
                    if (document.elementFromPoint(x, y)?.parentNode === part) return [x, y];
            return [1, 1];
        }})()""")
        browser.point(x, y)
        text, left, right = browser.run("""(() => {
            const balloon = document.getElementById("balloon"), box = balloon.getBoundingClientRect();
            return [balloon.hidden ? "" : balloon.textContent, box.left, box.right];
        })()""")
        if text != parts[at]:
            tell(name, f"the balloon says {text!r} on {parts[at]!r}")
        browser.point(1, 1)
        if left < 0 or right > browser.run("document.documentElement.clientWidth"):
            tell(name, f"the balloon of {parts[at]!r} is cut")


def check_looks(name, browser, dark):
    browser.run((ROOT / "scripts/look.js").read_text(encoding="utf-8") + ";0")
    for fault in browser.run(f"faultsOf(document, '{'dark' if dark else 'light'}').faults"):
        tell(name, fault)


def check_page(picture, browser, work, shown, shots):
    page = work / f"{picture.file}.html"
    page.write_text(melkar(picture, "page", "-o", "-"), encoding="utf-8")
    for width, dark in ((DESKTOP, False), (PHONE, True)):
        asked = browser.open(page, width, 900, dark)
        if asked:
            tell(picture.file, f"the page asks for {asked}")
        check_looks(picture.file, browser, dark)
        parts = check_names(picture.file, browser, shown)
        if parts:
            check_hover(picture.file, browser, parts)
            check_walk(picture.file, browser, parts)
        if shots:  # last: the window grows for it
            browser.shoot(shots / f"{picture.file}-{width}.png")
    browser.open(page, PHONE, scripts=False)
    check_names(picture.file + " without scripts", browser, shown)


def check_svg(picture, browser, work, shown):
    """The plain file is one picture; the other can be walked by itself, if there is something to walk through."""
    walked_role = "graphics-document" if items_of(shown) else "image"
    for option, role in ((), "image"), (("--svg-interactive",), walked_role):
        file = work / f"{picture.file}.svg"
        file.write_text(melkar(picture, "draw", *option, "-o", "-", "--format", "svg"), encoding="utf-8")
        browser.open(file)
        tree = [node for node in browser.tree() if node[0] not in ("RootWebArea", "generic") or node[1] and node[0] == "generic"]
        if not tree or tree[0][0] != role or not tree[0][1] or not tree[0][2]:
            tell(file.name, f"is read as {tree[:1]}")
    parts = check_names(file.name, browser, shown)
    browser.press("Tab")
    browser.press("ArrowRight")
    walked = browser.run("document.activeElement?.textContent.trim()")
    if len(parts) > 1 and walked != parts[1]:
        tell(file.name, f"an arrow key leads to {walked!r}")


def main():
    shots = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
    schema = json.loads((ROOT / "docs/contents.schema.json").read_text(encoding="utf-8"))
    validator = jsonschema.Draft202012Validator(schema)
    count = 0
    with Browser() as browser, tempfile.TemporaryDirectory() as folder:
        for picture in pictures():
            shown = check_texts(picture, validator)
            count += 1
            if picture.is_report:
                check_report(picture, shown, pathlib.Path(folder))
                continue
            check_truth(picture)
            if picture.name in PAGES:
                check_svg(picture, browser, pathlib.Path(folder), shown)
                check_page(picture, browser, pathlib.Path(folder), shown, shots)
    if findings:
        sys.exit("\n".join(findings))
    print(f"== {count} pictures are told as they should be")


main()
