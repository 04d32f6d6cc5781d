#!/usr/bin/env python3
"""Keeps docs/messages.md, the page of all messages, as the rows in src/*/messages.h have them.

    message_page.py [--write] [ROOT]

Prints each line in which the page differs, and ends with 1 if there is any; --write writes the page anew.
"""

import argparse
import ast
import re
import sys
from difflib import unified_diff
from pathlib import Path

LITERAL = r'(?:R"\(.*?\)"|"(?:[^"\\]|\\.)*")'
TEXT = rf"(?:{LITERAL}\s*)+"
ROW = re.compile(rf"\bMessageKind\s+(\w+)\s*\{{\s*({TEXT}),\s*Severity::(\w+),"
                 rf"\s*(?:{TEXT}|[\w.]+),\s*({TEXT}|[\w.]+)", re.S)
WORDS = {"Error": "error", "Warning": "warning", "Information": "note"}
HEAD = """# Messages

What `--json` and `--verbose` know each message by, and what it says; `…` stands for a name or a number. A code never
changes; the words may. With `--rules classic`, and for what a disc survives, some errors are told as warnings.
`tools/message_page.py --write` makes this page from the source.
"""


def words(literals):
    return "".join(part[3:-2] if part[0] == "R" else ast.literal_eval(part)
                   for part in re.findall(LITERAL, literals, re.S))


def rows(text):
    """Code, level and text of each row of a messages.h, in its order."""
    text = re.sub(r"^\s*//[^\n]*\n", "", text, flags=re.M)
    texts = {}
    for name, code, level, said in ROW.findall(text):
        texts[name] = words(said) or texts[said.removesuffix(".Text")]  # or those of a row above
        shown = re.sub(r"\{[^{}]*\}", "…", texts[name]).replace("|", "\\|").replace("\n", " ")
        yield words(code), WORDS[level], shown


def page(root):
    lines = [HEAD]
    for file in sorted(root.glob("src/*/messages.h")):
        lines.append(f"## {file.parent.name}\n\n| Code | Told as | Text |\n|---|---|---|")
        lines += [f"| `{code}` | {level} | {text} |" for code, level, text in sorted(rows(file.read_text("utf-8")))]
        lines[-1] += "\n"
    return "\n".join(lines).rstrip() + "\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--write", action="store_true")
    parser.add_argument("root", nargs="?", type=Path, default=Path(__file__).parent.parent)
    arguments = parser.parse_args()
    file = arguments.root / "docs/messages.md"
    if arguments.write:
        file.write_text(page(arguments.root), "utf-8")
    stands = file.read_text("utf-8").splitlines()
    differences = list(unified_diff(stands, page(arguments.root).splitlines(), "docs/messages.md", "src", n=0, lineterm=""))
    print("\n".join(differences), end="\n" if differences else "")
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
