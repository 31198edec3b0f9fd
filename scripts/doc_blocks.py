#!/usr/bin/python3
"""scripts/doc_blocks.py PREFIX PAGES: does what the documents tell to do, with the library that is installed in PREFIX. PAGES
is what scripts/docs made; scripts/check-docs calls it.

The blocks of a document are steps in one empty directory, in their order:

    ```ini conf/graph.cnf     a file of that name (cpp, csv, cmake, ... likewise)
    ```sh                     commands; /opt/melkar stands for PREFIX, `samples` is there as in the project's folder
    ```sh untried: WHY        isn't run, but listed
    ```cpp                    without a name: compiled, alone if it begins with an include, a class or a function, else as
                              lines of a function that knows two surfaces, `view` and `balloon`, and the `path` of a file

A block that names no language is no code. A picture that a document shows is to come out of its steps the same to the byte
wherever they make a file of that name; on the pages of kinds by command and by program.
"""

import concurrent.futures
import dataclasses
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
FENCE = re.compile(r"^(`{3,})([\w+-]*) *(.*)\n((?:.*\n)*?)\1$", re.M)
LAST = "The project"  # the part of docs/README.md from which on documents aren't for users
MOST_SECONDS = 300  # for the steps of a document
USUAL = "#include <MelkarCommon/MelkarCommon.h>\n#include <cstdio>\n#include <memory>\n#include <string>\n#include <vector>\n"
FUNCTION = "inline void Show([[maybe_unused]] HDC view, [[maybe_unused]] HDC balloon, [[maybe_unused]] char* path) {"


@dataclasses.dataclass
class Block:
    document: str
    line: int
    language: str
    name: str
    text: str

    @property
    def place(self):
        return f"{self.document}:{self.line}"

    @property
    def is_untried(self):
        return self.name.startswith("untried:")

    @property
    def is_piece(self):
        """Of a program: without a name, but code all the same."""
        return self.language == "cpp" and not self.name

    @property
    def is_step(self):
        return bool(self.language) and not self.is_untried and not self.is_piece


def blocks_of(document, text):
    return [Block(document, text.count("\n", 0, match.start()) + 2, match[2], match[3], match[4]) for match in FENCE.finditer(text)]


def read_documents(pages):
    """The blocks of each document for users, by its name."""
    front = (ROOT / "docs/README.md").read_text(encoding="utf-8").split(f"## {LAST}")[0]
    names = [os.path.normpath(f"docs/{name}") for name in re.findall(r"^- \[[^\]]+\]\(([^)]+\.md)\)", front, re.M)]
    documents = {name: (ROOT / name).read_text(encoding="utf-8") for name in names}
    documents |= {f"kinds/{path.name}": path.read_text(encoding="utf-8") for path in sorted(pages.glob("kinds/*.md"))}
    return {name: blocks_of(name, text) for name, text in documents.items()}


# Steps


def compared(name, picture, is_kind):
    """Lines that hold a file that was made against the picture; that of a kind is to be made again. Of a page it is what one
    sees: the command describes its charts as well."""
    again = f"; echo {name} >>.made; rm {name}" if is_kind else ""
    seen = "<(pdftoppm -r 96 {})" if name.endswith(".pdf") else "{}"
    same = f"cmp {seen.format(name)} {seen.format(shlex.quote(str(picture)))}"
    return f"if [[ -e {name} ]]; then {same}{again}; fi\n"


def script_of(blocks, prefix, shown, is_kind):
    """The steps as one script, so that what a command sets holds for the next. It says at which place it is."""
    parts = ["set -euo pipefail\n"]
    for block in blocks:
        parts.append(f"echo {shlex.quote(block.place)} >.place\n")
        if block.language == "sh" and not block.name:
            parts.append(block.text.replace("/opt/melkar", str(prefix)))
            parts += [compared(name, picture, is_kind) for name, picture in shown.items()]
        elif block.name:
            name = shlex.quote(block.name)
            parts.append(f"mkdir -p $(dirname {name})\ncat >{name} <<'END OF THE FILE'\n{block.text}END OF THE FILE\n")
        else:
            parts.append("echo 'a file without a name, or one that nobody reads'; false\n")
    return "".join(parts)


def pictures_of(document, pages):
    """What a document shows and its steps may make: {name: file}."""
    if document.startswith("kinds/"):
        kind = pathlib.Path(document).stem
        files = [pages / "kinds" / kind / f"{kind}.{suffix}" for suffix in ("png", "pdf")]
        return {path.name: path for path in files if path.exists()}
    text = (ROOT / document).read_text(encoding="utf-8")
    files = [ROOT / os.path.dirname(document) / name for name in re.findall(r"!\[[^\]]*\]\(([^)]+\.png)\)", text)]
    return {path.name: path for path in files}


def environment(prefix):
    """That of a reader who has followed docs/start.md."""
    return os.environ | {"PATH": f"{prefix}/bin:{os.environ['PATH']}", "CMAKE_PREFIX_PATH": str(prefix), "LD_LIBRARY_PATH": f"{prefix}/lib",
                         "PKG_CONFIG_PATH": f"{prefix}/lib/pkgconfig", "CMAKE_GENERATOR": "Ninja", "NO_COLOR": "1", "SOURCE_DATE_EPOCH": "0"}


def run_steps(here, prefix):
    """@return the place and the last lines of what failed, or nothing"""
    try:
        done = subprocess.run(["bash", here / ".steps"], cwd=here, env=environment(prefix), stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace", timeout=MOST_SECONDS)
    except subprocess.TimeoutExpired:
        said = f"takes more than {MOST_SECONDS} s"
    else:
        if done.returncode == 0:
            return ""
        said = "".join(done.stdout.splitlines(keepends=True)[-12:])
    return f"{(here / '.place').read_text().strip()}: {said}"


def times_drawn(here):
    return len((here / ".made").read_text().split()) if (here / ".made").exists() else 0


def try_steps(document, blocks, prefix, pages):
    """@return what went wrong, or nothing"""
    steps = [block for block in blocks if block.is_step]
    is_kind, shown = document.startswith("kinds/"), pictures_of(document, pages)
    with tempfile.TemporaryDirectory() as folder:
        here = pathlib.Path(folder)
        if any("samples/" in block.text for block in steps):
            shutil.copytree(ROOT / "samples", here / "samples")
        for picture in (pages / document).with_suffix("").glob("*.bmp") if is_kind else ():
            shutil.copy(picture, here)
        (here / ".steps").write_text(script_of(steps, prefix, shown, is_kind), encoding="utf-8")
        fault = run_steps(here, prefix)
        if not fault and is_kind and shown and times_drawn(here) < 2:
            fault = f"{document}: the picture of the page isn't drawn by command and by program"
    print(f"   {document}", flush=True)
    return fault


# Pieces of programs


def unit_of(pieces):
    """Pieces without includes of their own as one unit."""
    parts = [USUAL]
    for number, piece in enumerate(pieces):
        alone = re.match(r"class|struct|inline|template", piece.text)
        head, end = ("", "") if alone else (FUNCTION, "}")
        parts.append(f'namespace piece{number} {{\n{head}\n#line {piece.line} "{piece.document}"\n{piece.text}{end}\n}}\n')
    return "".join(parts)


def compile_piece(text, prefix):
    flags = subprocess.run(["pkg-config", "--cflags", "MelkarCommon"], env=environment(prefix), check=True, capture_output=True,
                           text=True).stdout.split()
    options = ["-std=c++17", "-Wall", "-Wextra", "-Werror", "-Wno-unused-variable", "-fsyntax-only", *flags]
    return subprocess.run(["g++", *options, "-x", "c++", "-"], input=text, capture_output=True, text=True).stderr


def try_pieces(pieces, prefix):
    with_includes = [piece for piece in pieces if piece.text.startswith("#")]
    others = [piece for piece in pieces if not piece.text.startswith("#")]
    units = [f'#line {piece.line} "{piece.document}"\n{piece.text}' for piece in with_includes] + [unit_of(others)]
    return [error for error in (compile_piece(unit, prefix) for unit in units) if error]


def main():
    if len(sys.argv) != 3:
        sys.exit(f"error: {__doc__.split(':')[0]}")
    prefix, pages = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    documents = read_documents(pages)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        tried = list(pool.map(lambda item: try_steps(*item, prefix, pages), documents.items()))
    blocks = [block for blocks in documents.values() for block in blocks]
    pieces = [block for block in blocks if block.is_piece]
    faults = [fault for fault in tried if fault] + try_pieces(pieces, prefix)
    for fault in faults:
        print(f"FAILED: {fault}")
    for block in blocks:
        if block.is_untried:
            print(f"   {block.place}: {block.name}")
    steps = sum(block.is_step for block in blocks)
    print(f"== {steps} steps of {len(documents)} documents and {len(pieces)} pieces of programs, {len(faults)} failed")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
